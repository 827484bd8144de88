// SPDX-License-Identifier: MIT
#include "formats/shape/ShapeRecords.h"

#include <algorithm>
#include <cmath>

#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/shape/Bytes.h"

namespace tesselink {
namespace {

// Bytes of a record up to the end of the counts of its parts and points, the record header included.
constexpr std::size_t kHeadSize = 52;

std::string Bytes(std::int64_t count) { return Counted(count, "byte"); }

}  // namespace

void ShapeRecords::Close() {
  shp_.Close();
  shx_.Close();
  for (ReadWindow* window : {&index_, &recordBytes_, &partStarts_, &vertices_, &values_}) window->Reset();
  count_ = number_ = position_ = 0;
  walking_ = false;
  listed_ = kShapeHeaderSize;
  inOrder_ = true;
  current_ = {};
  part_ = 0;
}

void ShapeRecords::Open(const std::string& path) {
  Close();
  shp_ = BinaryFile(path);
  const auto header = recordBytes_.At(0, kShapeHeaderSize);
  if (static_cast<std::int64_t>(header.size()) < kShapeHeaderSize) {
    throw Error(path + ": holds " + Bytes(shp_.Size()) + "; a shapefile begins with a header of 100");
  }
  if (BigEndian32(header.data()) != kShapeFileCode) {
    throw Error(path + ": is not a shapefile; it begins with the number " + std::to_string(BigEndian32(header.data())) +
                " where shapefiles have 9994");
  }
  fileType_ = LittleEndian<std::int32_t>(&header[32]);
  for (std::size_t i = 0; i < box_.size(); ++i) box_[i] = LittleEndian<double>(&header[36 + 8 * i]);
}

void ShapeRecords::OpenIndex(const std::string& path) {
  shx_ = BinaryFile(path);
  if (everyType_) {
    if (const std::string misfit = MisfitOfIndex(shp_, shx_, fileType_); !misfit.empty()) {
      WalkInstead(path + ": does not fit the shapefile; " + misfit);
      return;
    }
  }
  if (shx_.Size() < kShapeHeaderSize) {
    throw Error(path + ": holds " + Bytes(shx_.Size()) + "; an index begins with a header of 100");
  }
  const std::int64_t entries = shx_.Size() - kShapeHeaderSize;
  if (entries % kIndexEntrySize != 0) {
    report_.Warn(WarningKind::IndexCut, path + ": ends within an entry; it may list fewer records than there are");
  }
  count_ = static_cast<std::int64_t>(RoundHalfEven(static_cast<double>(entries) / kIndexEntrySize));
  if (count_ == 0) WarnOfUnlisted();
}

void ShapeRecords::OpenWithoutIndex() { WalkInstead(shp_.Path() + ": its index (.shx) is missing"); }

void ShapeRecords::WalkInstead(const std::string& reason) {
  report_.Warn(WarningKind::Index, reason + "; the records were read one behind the other");
  walking_ = true;
  walk_.Begin(fileType_);
  while (walk_.Next()) {
  }
  count_ = walk_.Number();
  if (count_ == 0) WarnOfUnlisted();
  walk_.Rewind();
}

void ShapeRecords::WarnOfUnlisted() {
  if (!inOrder_) return;
  if (walking_ && walk_.Behind() < shp_.Size()) {
    const bool ended = walk_.Behind() == walk_.End();
    report_.Warn(WarningKind::NoRecord,
                 shp_.Path() + ": " + Bytes(shp_.Size() - walk_.Behind()) + " behind record " + std::to_string(count_) +
                     " were not read; " +
                     (ended ? "the file's header says that it ends before them" : "no record could be found there"));
  } else if (!walking_ && listed_ < shp_.Size()) {
    report_.Warn(WarningKind::NotInTheIndex, shp_.Path() + ": the index lists nothing of " +
                                                 Bytes(shp_.Size() - listed_) + " of the file; they were not read");
  }
  inOrder_ = false;
}

void ShapeRecords::Warn(WarningKind kind, const std::string& what) { report_.Warn(kind, Where() + ": " + what); }

void ShapeRecords::MoveTo(std::int64_t number) {
  if (walking_ && number <= walk_.Number()) walk_.Rewind();
  while (walking_ && walk_.Number() + 1 < number && walk_.Next()) {
  }
  number_ = number - 1;
  inOrder_ = false;
  current_ = {};
  part_ = 0;
}

bool ShapeRecords::Next() {
  ++number_;
  part_ = 0;
  nextPoint_ = 0;
  current_ = {};
  return walking_ ? Walk() : Load();
}

bool ShapeRecords::Walk() {
  if (!walk_.Next()) {
    number_ = count_;
    return false;
  }
  if (walk_.Found()) {
    Warn(WarningKind::RecordLength,
         "its header, or that of the record before it, is damaged; the next record that "
         "could be found is number " +
             std::to_string(walk_.Number()));
  }
  number_ = walk_.Number();
  ownLength_ = kRecordHeaderSize + walk_.Words() * 2;
  return LoadAt(walk_.At(), recordBytes_.At(walk_.At(), kHeadSize), ownLength_);
}

// The bytes of the record at a position, its header included, by the index; 0 when there are none. What the record
// itself says, up to where the index puts the next one, is kept for a record that needs more: real files carry a wrong
// length in one of the two places. `next` is 0 where the index lists no more.
std::int64_t ShapeRecords::RecordLength(std::int64_t at, std::int64_t next, std::int64_t indexWords,
                                        std::int64_t ownWords) {
  const std::int64_t room = (next > at ? std::min(next, shp_.Size()) : shp_.Size()) - at;
  const auto bounded = [](std::int64_t words, std::int64_t most) {
    return words < 2 ? 0 : std::min(words * 2 + kRecordHeaderSize, most);
  };
  std::int64_t available = bounded(indexWords, shp_.Size() - at);
  ownLength_ = bounded(ownWords, room);
  if (available == 0 && ownLength_ == 0) {
    Warn(WarningKind::RecordLength, "its length is given as " + Bytes(indexWords * 2) + "; it was skipped");
  } else if (available == 0) {
    WarnOfLength();
    available = ownLength_;
  }
  listed_ += std::min(std::max(bounded(ownWords, room), available), room);
  if (listed_ > shp_.Size() && inOrder_) {
    Warn(WarningKind::RepeatedInTheIndex, "the index lists bytes more than once, and so they are read");
    inOrder_ = false;
  }
  return available;
}

void ShapeRecords::WarnOfLength() {
  Warn(WarningKind::IndexLength, "the index gives it fewer bytes than it needs; the record's own length was taken");
}

// Whether the record has so many bytes, by the index or else by its own word.
bool ShapeRecords::Holds(std::int64_t bytes, std::int64_t available) {
  if (bytes <= available) return true;
  if (bytes > ownLength_) return false;
  WarnOfLength();
  return true;
}

// Finds out what the current record holds. False when it holds nothing that is delivered.
bool ShapeRecords::Load() {
  const auto entry = index_.At(kShapeHeaderSize + kIndexEntrySize * (number_ - 1), 2 * kIndexEntrySize);
  if (entry.size() < static_cast<std::size_t>(kIndexEntrySize)) {
    Warn(WarningKind::IndexCut, "the index ends within this record's entry; the record was skipped");
    return false;
  }
  const std::int64_t at = std::int64_t{BigEndian32(entry.data())} * 2;
  const auto head = recordBytes_.At(at, kHeadSize);
  if (at < kShapeHeaderSize || head.size() < static_cast<std::size_t>(kRecordHeaderSize) + 4) {
    Warn(WarningKind::IndexOutside, "the index points to byte " + std::to_string(at) + ", where the file of " +
                                        Bytes(shp_.Size()) + " holds no record; it was skipped");
    return false;
  }
  const bool isLast = entry.size() < static_cast<std::size_t>(kIndexEntrySize) + 4;
  const std::int64_t next = isLast ? 0 : std::int64_t{BigEndian32(&entry[kIndexEntrySize])} * 2;
  const std::int64_t available = RecordLength(at, next, BigEndian32(&entry[4]), BigEndian32(&head[4]));
  return available > 0 && LoadAt(at, head, available);
}

bool ShapeRecords::LoadAt(std::int64_t at, std::span<const std::byte> head, std::int64_t available) {
  position_ = at + available;
  whole_ = {};
  if (available <= static_cast<std::int64_t>(ReadWindow::kCapacity)) {
    const auto size = static_cast<std::size_t>(available);
    head = whole_ = size <= head.size() ? head.first(size) : recordBytes_.At(at, size);
    wholeAt_ = at;
  }
  current_.code = LittleEndian<std::int32_t>(&head[8]);
  current_.pointsAt = at;
  const ShapeType* type = ShapeTypeOf(current_.code);
  if (type == nullptr || !Reads(*type)) return false;
  switch (type->layout) {
    case ShapeLayout::None:
      current_.isEmpty = true;
      return false;
    case ShapeLayout::Point:
      return LoadPoint(*type, available);
    case ShapeLayout::MultiPoint:
      return LoadMultiPoint(*type, head, available);
    case ShapeLayout::Parts:
    case ShapeLayout::Patches:
      return LoadParts(*type, head, available);
  }
  return false;
}

bool ShapeRecords::LoadPoint(const ShapeType& type, std::int64_t available) {
  constexpr std::int64_t kXYAt = 12;
  const std::int64_t at = current_.pointsAt;
  std::int64_t end = kXYAt + kXYSize;
  if (!Holds(end, available)) {
    Warn(WarningKind::RecordCut, "its " + Bytes(available) + " cannot hold a point; it was skipped");
    return false;
  }
  current_.parts = current_.points = 1;
  current_.pointsAt += kXYAt;
  if (type.hasZ) {
    if (Holds(end + 8, available)) {
      current_.zAt = at + end;
    } else {
      WarnOfNoZ();
    }
    end += 8;
  }
  if (type.mayHaveM && end + 8 <= available) FindMeasures(type, at + end, 1);
  return true;
}

bool ShapeRecords::LoadParts(const ShapeType& type, std::span<const std::byte> head, std::int64_t available) {
  if (head.size() < kHeadSize || available < static_cast<std::int64_t>(kHeadSize)) {
    Warn(WarningKind::RecordCut, "ends before the counts of its parts and points; it was skipped");
    return false;
  }
  const std::int64_t at = current_.pointsAt;
  const bool isPatch = type.layout == ShapeLayout::Patches;
  const auto parts = LittleEndian<std::int32_t>(&head[44]);
  const auto points = LittleEndian<std::int32_t>(&head[48]);
  const std::int64_t pointsAt = 52 + std::int64_t{parts} * (isPatch ? 8 : 4);
  const std::int64_t needed = pointsAt + std::int64_t{points} * kXYSize;
  if (parts < 0 || points < 0 || !Holds(needed, available)) {
    Warn(WarningKind::RecordCounts, "gives " + Counted(parts, "part") + " and " + Counted(points, "point") +
                                        ", which its " + Bytes(available) + " cannot hold; it was skipped");
    return false;
  }
  current_.partsAt = at + 52;
  if (isPatch) current_.partTypesAt = current_.partsAt + std::int64_t{parts} * 4;
  current_.pointsAt = at + pointsAt;
  current_.parts = parts;
  current_.points = points;
  FindZAndM(type, at, needed, available);
  if (parts == 0 && points > 0)
    Warn(WarningKind::PointsWithoutPart, Counted(points, "point") + " left out: in no part");
  current_.isEmpty = parts == 0 || points == 0;
  return parts > 0;
}

bool ShapeRecords::LoadMultiPoint(const ShapeType& type, std::span<const std::byte> head, std::int64_t available) {
  const std::int64_t at = current_.pointsAt;
  const auto points = head.size() < 48 || available < 48 ? -1 : LittleEndian<std::int32_t>(&head[44]);
  const std::int64_t needed = 48 + points * kXYSize;
  if (points < 0 || !Holds(needed, available)) {
    Warn(WarningKind::RecordCounts, "gives more points than its " + Bytes(available) + " can hold; it was skipped");
    return false;
  }
  current_.pointsAt += 48;
  current_.parts = points > 0 ? 1 : 0;
  current_.points = points;
  current_.isEmpty = points == 0;
  FindZAndM(type, at, needed, available);
  return points > 0;
}

// Finds what may follow the points of a record: z values, then m values, each behind their least and greatest.
void ShapeRecords::FindZAndM(const ShapeType& type, std::int64_t at, std::int64_t behindPoints,
                             std::int64_t available) {
  const std::int64_t size = 16 + std::int64_t{current_.points} * 8;
  std::int64_t end = behindPoints;
  if (type.hasZ) {
    if (Holds(end + size, available)) {
      current_.zAt = at + end + 16;
    } else {
      WarnOfNoZ();
    }
    end += size;
  }
  if (type.mayHaveM && end + size <= available) FindMeasures(type, at + end + 16, current_.points);
}

void ShapeRecords::WarnOfNoZ() { Warn(WarningKind::NoZValues, "has no room for the z values of its type; z is 0"); }

// The system's own convention knows no m, and a MultiPatch, whose vertices may come in another order, gives its up:
// they are counted where the record's range of them and one of them say something.
void ShapeRecords::FindMeasures(const ShapeType& type, std::int64_t at, std::int32_t count) {
  constexpr std::int32_t kAtOnce = 4096, kRange = 2;
  const bool ofPatch = type.layout == ShapeLayout::Patches;
  if (everyType_ && !ofPatch) {
    current_.mAt = at;
    return;
  }
  const auto saySomething = [&](std::int64_t from, std::int32_t number) {
    const auto values = Piece(values_, from, static_cast<std::size_t>(number) * 8);
    for (std::size_t i = 0; i < values.size(); i += 8) {
      const auto m = LittleEndian<double>(&values[i]);
      if (m > kLeastMeasure && m != 0) return true;
    }
    return false;
  };
  if (!saySomething(at - std::int64_t{8} * kRange, kRange)) return;
  for (std::int32_t begin = 0; begin < count; begin += kAtOnce) {
    if (!saySomething(at + std::int64_t{begin} * 8, std::min(kAtOnce, count - begin))) continue;
    Warn(WarningKind::Measures,
         std::string("its m values are left out") + (ofPatch ? ", as those of every MultiPatch" : ""));
    return;
  }
}

std::span<const std::byte> ShapeRecords::Piece(ReadWindow& window, std::int64_t offset, std::size_t count) {
  const std::int64_t inside = offset - wholeAt_;
  const bool isWhole = !whole_.empty() && inside >= 0 &&
                       inside + static_cast<std::int64_t>(count) <= static_cast<std::int64_t>(whole_.size());
  const auto piece = isWhole ? whole_.subspan(static_cast<std::size_t>(inside), count) : window.At(offset, count);
  if (piece.size() < count) throw Error(shp_.Path() + ": became shorter while it was read");
  return piece;
}

// The next part's range of points. Parts follow one another: where a start lies before the end of the part before, or
// beyond the points, no chain of this record can be trusted any more. False when the part holds nothing.
bool ShapeRecords::NextRange(Range& range) {
  const std::int32_t part = part_++;
  if (current_.partsAt == 0) {
    range = {0, current_.points};
    return true;
  }
  const auto starts = Piece(partStarts_, current_.partsAt + std::int64_t{part} * 4, part_ < current_.parts ? 8 : 4);
  const auto first = LittleEndian<std::int32_t>(starts.data());
  const std::int32_t end = part_ < current_.parts ? LittleEndian<std::int32_t>(&starts[4]) : current_.points;
  if (first < nextPoint_ || end < first || end > current_.points) {
    Warn(WarningKind::PartIndices, "part " + std::to_string(part + 1) + " is said to run from point " +
                                       std::to_string(first) + " to before point " + std::to_string(end) + " of " +
                                       std::to_string(current_.points) + "; the record was skipped from there on");
    part_ = current_.parts;
    return false;
  }
  if (first > nextPoint_) {
    Warn(WarningKind::PointsWithoutPart,
         Counted(first - nextPoint_, "point") + " before part " + std::to_string(part + 1) + " left out: in no part");
  }
  nextPoint_ = end;
  range = {first, end - first};
  return range.count > 0;
}

bool ShapeRecords::ReadPart(tEntity& entity) {
  Range range;
  const std::int32_t part = part_;
  if (!NextRange(range) || !StoreVertices(entity, range)) return false;
  if (current_.partTypesAt != 0) OutlineOfPatch(entity, part);
  return true;
}

// Where each part but the first begins. False where a part is empty, or does not follow on the one before it.
bool ShapeRecords::FollowOn(std::vector<tEntity::Index>& starts) {
  constexpr std::int32_t kAtOnce = 8192;
  std::int32_t before = -1;
  for (std::int32_t begin = 0; current_.partsAt != 0 && begin < current_.parts; begin += kAtOnce) {
    const std::int32_t end = std::min(begin + kAtOnce, current_.parts);
    const auto bytes =
        Piece(partStarts_, current_.partsAt + std::int64_t{begin} * 4, static_cast<std::size_t>(end - begin) * 4);
    for (std::int32_t part = begin; part < end; ++part) {
      const auto start = LittleEndian<std::int32_t>(&bytes[static_cast<std::size_t>(part - begin) * 4]);
      if (start <= before || start >= current_.points || (part == 0 && start != 0)) return false;
      if (part > 0) starts.push_back(start);
      before = start;
    }
  }
  return true;
}

// What is whole is stored at once; the rest part by part, so that each finds out what is wrong with it.
bool ShapeRecords::ReadShape(tEntity& entity) {
  const Range all{0, current_.points};
  if (current_.partTypesAt == 0 && FollowOn(entity.Parts) && StoreXY(entity, all)) {
    if (current_.zAt != 0) StoreZ(entity, all);
    if (current_.mAt != 0) StoreMeasures(entity, all);
  } else {
    ReadPiecewise(entity);
  }
  Leave();
  const auto isNone = [](double m) { return std::isnan(m); };
  if (std::all_of(entity.Measures.begin(), entity.Measures.end(), isNone)) entity.Measures.clear();
  return !entity.IsNull();
}

void ShapeRecords::ReadPiecewise(tEntity& entity) {
  entity.ClearVertices();
  tEntity::Index count = 0;
  while (PartsLeft()) {
    piece_.ClearVertices();
    if (!ReadPart(piece_)) continue;
    if (count > 0) entity.Parts.push_back(count);
    const auto size = std::ssize(piece_.AllX());
    for (tEntity::Index i = 0; i < size; ++i) {
      entity.x(count + i, piece_.x(i));
      entity.Y(count + i, piece_.Y(i));
      if (current_.zAt != 0) entity.Height(count + i, piece_.Height(i));
    }
    entity.Measures.insert(entity.Measures.end(), piece_.Measures.begin(), piece_.Measures.end());
    count += size;
  }
}

}  // namespace tesselink
