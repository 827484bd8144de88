// SPDX-License-Identifier: MIT
#include "formats/shape/DBFOutFilter.h"

#include <algorithm>
#include <ctime>

#include "core/io/Errors.h"
#include "core/io/FixedTime.h"
#include "formats/shape/Bytes.h"

namespace tesselink {
namespace {

constexpr std::size_t kHeaderBytes = 30;  // the last two of the header's 32 are not written
constexpr std::size_t kDescriptorBytes = 32;
constexpr std::size_t kLongestName = 10;
// Header and records are counted in 16 bits each.
constexpr std::int64_t kGreatestLength = 65535;

constexpr DBFWriting kClassicTableWriting{.version = 0,
                                          .languageMark = 0x57,
                                          .nameEnd = ' ',
                                          .terminator = "",
                                          .flagLength = 0,
                                          .blankBefore = true,
                                          .padding = '\0',
                                          .lostBytes = 1,
                                          .numbersRight = false,
                                          .endByte = ""};
constexpr DBFWriting kStandardTableWriting{.version = 3,
                                           .languageMark = 0,
                                           .nameEnd = '\0',
                                           .terminator = "\x0D",
                                           .flagLength = 1,
                                           .blankBefore = false,
                                           .padding = ' ',
                                           .lostBytes = 0,
                                           .numbersRight = true,
                                           .endByte = "\x1A"};

// Where one date is set for all, it is the same in every time zone.
std::tm DateOfTable() {
  if (const std::optional<std::int64_t> fixed = FixedTime()) {
    const std::time_t then = *fixed;
    return *std::gmtime(&then);
  }
  const std::time_t now = std::time(nullptr);
  return *std::localtime(&now);
}

}  // namespace

DBFOutFilter::DBFOutFilter(Dialect dialect)
    : writing_(dialect == Dialect::Classic ? kClassicTableWriting : kStandardTableWriting) {}

DBFOutFilter::~DBFOutFilter() {
  try {
    Release();
  } catch (...) {  // whoever wants to know calls Release
  }
}

void DBFOutFilter::filename(const std::string& path) {
  Release();
  fields_.clear();
  fieldsLength_ = recordCount_ = 0;
  file_ = FileWriter(path);
  path_ = path;
  WriteHeader();
}

std::int64_t DBFOutFilter::HeaderLength(std::size_t fields) const {
  return 32 + 32 * static_cast<std::int64_t>(fields) + static_cast<std::int64_t>(writing_.terminator.size());
}

std::int64_t DBFOutFilter::RoomFor(int fields) const {
  const std::size_t all = fields_.size() + static_cast<std::size_t>(fields);
  return HeaderLength(all) > kGreatestLength ? 0 : kGreatestLength - writing_.flagLength - fieldsLength_;
}

// Header and descriptors at the start of the file; what lies behind them stays.
void DBFOutFilter::WriteHeader() {
  const std::int64_t length = HeaderLength(fields_.size()), recordLength = RecordLength();
  if (recordLength != 0) {
    // Less than nothing while the file is shorter than its header; that is no count of records.
    recordCount_ = std::max<std::int64_t>((file_.Size() - length + recordLength / 2) / recordLength, 0);
  }
  const std::tm today = DateOfTable();
  std::string head(kHeaderBytes, '\0');
  head[0] = writing_.version;
  head[1] = static_cast<char>(today.tm_year);  // years since 1900
  head[2] = static_cast<char>(today.tm_mon + 1);
  head[3] = static_cast<char>(today.tm_mday);
  PutLittleEndian(&head[4], static_cast<std::uint32_t>(recordCount_));
  PutLittleEndian(&head[8], static_cast<std::uint16_t>(length));
  PutLittleEndian(&head[10], static_cast<std::uint16_t>(recordLength));
  head[29] = writing_.languageMark;
  if (file_.Size() == 0) {
    file_.Write(head);
  } else {
    file_.Overwrite(0, head);
  }
  if (!fields_.empty()) WriteDescriptors(length);
}

void DBFOutFilter::WriteDescriptors(std::int64_t headerLength) {
  std::string descriptors;
  for (const Field& field : fields_) {
    std::string descriptor = field.name;
    descriptor.resize(kLongestName, '\0');
    descriptor += writing_.nameEnd;
    descriptor += field.type;
    descriptor.resize(kDescriptorBytes, '\0');
    descriptor[16] = static_cast<char>(field.length);
    descriptor[17] = static_cast<char>(field.decimals);
    descriptors += descriptor;
  }
  if (file_.Size() < headerLength) {
    // The file grew by one descriptor; the two bytes that the header leaves out come first.
    file_.Write(std::string(static_cast<std::size_t>(headerLength - file_.Size()), '\0'));
  }
  file_.Overwrite(32, descriptors.append(writing_.terminator));
}

void DBFOutFilter::RequireOpen(const char* member) const {
  if (!file_.IsOpen()) throw Error("File Name not yet entered", member);
}

void DBFOutFilter::AddField(const std::string& name, int length, std::string_view type, int decimals) {
  RequireOpen("AddField");
  if (recordCount_ >= 1) return;
  if (name.size() > kLongestName) throw Error(path_ + ": the field name \"" + name + "\" is longer than 10 characters");
  if (length < 1 || length > 255) throw Error(path_ + ": a field of " + std::to_string(length) + " bytes cannot be");
  if (RoomFor(1) < length) throw Error(path_ + ": has no room for the field \"" + name + "\"; leave fields out");
  fields_.push_back({name, type.empty() ? ' ' : type.front(), length, decimals});
  fieldsLength_ += length;
  WriteHeader();
}

void DBFOutFilter::AddRecord(std::string_view values) {
  split_.clear();
  for (std::size_t bar = 0; bar != std::string_view::npos;) {
    bar = values.find('|');
    split_.push_back(values.substr(0, bar));
    values.remove_prefix(bar == std::string_view::npos ? values.size() : bar + 1);
  }
  AddRecord(split_);
}

void DBFOutFilter::AddRecord(std::span<const std::string_view> values) {
  RequireOpen("AddRecord");
  if (recordCount_ == 0) WriteHeader();
  record_.assign(static_cast<std::size_t>(RecordLength()), writing_.padding);
  char* out = record_.data() + 1;
  for (std::size_t i = 0; i < fields_.size() && i < values.size(); ++i) {
    const std::string_view value = values[i];
    const auto length = static_cast<std::size_t>(fields_[i].length);
    if (value.size() > length) ThrowTooLong(fields_[i], value);
    const std::size_t size = std::min(value.size(), length - static_cast<std::size_t>(writing_.lostBytes));
    const bool isRight = writing_.numbersRight && (fields_[i].type == 'N' || fields_[i].type == 'F');
    if (size > 0) std::memcpy(isRight ? out + length - size : out, value.data(), size);
    out += length;
  }
  if (writing_.blankBefore) file_.ReplaceLast(' ');
  file_.Write(record_);
  ++recordCount_;
}

void DBFOutFilter::ThrowTooLong(const Field& field, std::string_view value) const {
  throw Error(path_ + ": \"" + std::string(value.substr(0, 60)) + "\" is longer than the field " + field.name + " of " +
              std::to_string(field.length));
}

void DBFOutFilter::Release() {
  if (!file_.IsOpen()) return;
  try {
    WriteHeader();
    file_.Write(writing_.endByte);
    file_.Close();
  } catch (...) {
    file_.Discard();
    throw;
  }
}

}  // namespace tesselink
