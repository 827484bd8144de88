// SPDX-License-Identifier: MIT
#include "formats/shape/RecordWalk.h"

#include <algorithm>

#include "formats/shape/Bytes.h"
#include "formats/shape/ShapeLayout.h"

namespace tesselink {
namespace {

constexpr std::int64_t kLeastRecord = kRecordHeaderSize + kTypeSize;
constexpr std::int64_t kAnnouncedAt = 24;
constexpr std::size_t kEntriesAtOnce = ReadWindow::kCapacity / kIndexEntrySize;

std::int64_t AnnouncedSize(ReadWindow& window) {
  const auto bytes = window.At(kAnnouncedAt, 4);
  return bytes.size() < 4 ? 0 : std::int64_t{BigEndian32(bytes.data())} * 2;
}

// An entry of an index, in bytes.
struct Entry {
  std::int64_t at, size;

  explicit Entry(const std::byte* bytes)
      : at(std::int64_t{BigEndian32(bytes)} * 2), size(std::int64_t{BigEndian32(bytes + 4)} * 2) {}
  std::int64_t End() const { return at + kRecordHeaderSize + size; }
};

// Hands the entries to a function until it says that one does not fit. Returns the number of that one, from 1, or 0.
template <typename Function>
std::int64_t FirstWithout(BinaryFile& shx, Function fits) {
  ReadWindow window(shx);
  const std::int64_t count = (shx.Size() - kShapeHeaderSize) / kIndexEntrySize;
  for (std::int64_t begin = 0; begin < count;) {
    const auto bytes = window.At(kShapeHeaderSize + begin * kIndexEntrySize, kEntriesAtOnce * kIndexEntrySize);
    const std::int64_t got = std::min(std::ssize(bytes) / kIndexEntrySize, count - begin);
    if (got == 0) return begin + 1;
    for (std::int64_t i = 0; i < got; ++i) {
      if (!fits(begin + i + 1, Entry(&bytes[static_cast<std::size_t>(i * kIndexEntrySize)]))) return begin + i + 1;
    }
    begin += got;
  }
  return 0;
}

}  // namespace

void RecordWalk::Begin(std::int32_t fileType) {
  fileType_ = fileType;
  window_.Reset();
  end_ = shp_.Size();
  FindEnd(AnnouncedSize(window_));
  Rewind();
}

void RecordWalk::Rewind() {
  at_ = words_ = number_ = 0;
  behind_ = kShapeHeaderSize;
  numbered_ = true;
  found_ = false;
}

// The announced size holds where a record ends with it.
void RecordWalk::FindEnd(std::int64_t announced) {
  if (announced <= kShapeHeaderSize || announced >= end_) return;
  Rewind();
  while (behind_ < announced && Next()) {
  }
  if (behind_ == announced) end_ = announced;
}

// False where there is none that the file holds whole.
bool RecordWalk::HeaderAt(std::int64_t at, Header& header) {
  if (at + kLeastRecord > end_) return false;
  const auto bytes = window_.At(at, static_cast<std::size_t>(kLeastRecord));
  if (std::ssize(bytes) < kLeastRecord) return false;
  header = {BigEndian32(bytes.data()), BigEndian32(&bytes[4]), LittleEndian<std::int32_t>(&bytes[8])};
  return header.words * 2 >= kTypeSize && at + header.Size() <= end_;
}

// Numbers and types are often wrong in files that are whole otherwise, but seldom both.
bool RecordWalk::IsRecord(const Header& header) const {
  return header.number == number_ + 1 || header.type == fileType_ || header.type == 0;
}

void RecordWalk::Take(std::int64_t at, const Header& header, std::int64_t number) {
  at_ = at;
  words_ = header.words;
  behind_ = at + header.Size();
  number_ = number;
}

// Looks for a header with a number to come, whose record is followed by another one or by the end.
bool RecordWalk::Find(std::int64_t from, std::int64_t before) {
  Header header, following;
  for (std::int64_t at = from; at < before; at += 2) {
    if (!HeaderAt(at, header) || header.number <= number_ || header.number > number_ + 1 + (at - from) / kLeastRecord ||
        (header.type != fileType_ && header.type != 0)) {
      continue;
    }
    const std::int64_t behind = at + header.Size();
    if (behind != end_ && !(HeaderAt(behind, following) && following.number == header.number + 1)) continue;
    Take(at, header, header.number);
    return true;
  }
  return false;
}

// Where what follows is no record, or has the number of another one, the length that led there may be the wrong one,
// and reach over records.
bool RecordWalk::Next() {
  Header header;
  found_ = false;
  const bool isRecord = HeaderAt(behind_, header) && IsRecord(header);
  const bool inTurn = isRecord && (header.number == number_ + 1 || !numbered_);
  if (!inTurn && behind_ < end_) {
    found_ = Find(at_ == 0 ? behind_ : at_ + kLeastRecord, isRecord ? behind_ : end_);
    if (found_) return true;
  }
  if (!isRecord) return false;
  numbered_ = inTurn && numbered_;
  Take(behind_, header, number_ + 1);
  return true;
}

std::string MisfitOfIndex(BinaryFile& shp, BinaryFile& shx, std::int32_t fileType) {
  if (shx.Size() < kShapeHeaderSize) return "it is shorter than its header";
  const std::int64_t count = (shx.Size() - kShapeHeaderSize) / kIndexEntrySize;
  // Most often the entries follow one another, to the end of the file.
  std::int64_t end = kShapeHeaderSize;
  const auto followsOn = [&](std::int64_t, const Entry& entry) {
    const bool follows = entry.at == end && entry.size >= kTypeSize;
    end = entry.End();
    return follows;
  };
  if (FirstWithout(shx, followsOn) == 0 && end == shp.Size()) return {};

  // Else each has to lead to a record: programs that change a shape may put it at the end.
  ReadWindow window(shp);
  std::int64_t behind = kShapeHeaderSize;
  end = kShapeHeaderSize;
  const auto leadsToRecord = [&](std::int64_t number, const Entry& entry) {
    if (entry.at < kShapeHeaderSize || entry.size < kTypeSize || entry.End() > shp.Size()) return false;
    const auto header = window.At(entry.at, static_cast<std::size_t>(kRecordHeaderSize));
    const bool fits = std::ssize(header) == kRecordHeaderSize &&
                      std::int64_t{BigEndian32(&header[4])} * 2 == entry.size &&
                      (entry.at == behind || BigEndian32(header.data()) == number);
    behind = entry.End();
    end = std::max(end, behind);
    return fits;
  };
  if (const std::int64_t misfit = FirstWithout(shx, leadsToRecord); misfit != 0) {
    return "its entry " + std::to_string(misfit) + " leads to no such record";
  }
  RecordWalk walk(shp);
  walk.Begin(fileType);
  if (end >= walk.End()) return {};
  const auto left = window.At(end, static_cast<std::size_t>(kLeastRecord));
  const bool isRecord = std::ssize(left) == kLeastRecord && Entry(left.data()).size >= kTypeSize &&
                        (BigEndian32(left.data()) == count + 1 || LittleEndian<std::int32_t>(&left[8]) == fileType);
  return isRecord ? "it ends with record " + std::to_string(count) + ", and the file does not" : "";
}

}  // namespace tesselink
