// SPDX-License-Identifier: MIT
#include "formats/shape/DBFInFilter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Report.h"
#include "formats/shape/Bytes.h"

namespace tesselink {
namespace {

constexpr std::int64_t kHeaderSize = 32;
constexpr std::size_t kNameSize = 11;
constexpr std::size_t kLargestDescriptor = 48;

constexpr std::byte kTerminator{0x0D};
constexpr std::byte kDeleted{'*'};

constexpr DBFReading kClassicTableReading{.byHeader = false,
                                          .unknownFieldIsFirst = true,
                                          .longNames = false,
                                          .asUtf8 = false,
                                          .keepsIndent = false,
                                          .everyType = false};
constexpr DBFReading kStandardTableReading{.byHeader = true,
                                           .unknownFieldIsFirst = false,
                                           .longNames = true,
                                           .asUtf8 = true,
                                           .keepsIndent = true,
                                           .everyType = true};

std::string_view AsText(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

DBFInFilter::DBFInFilter(Dialect dialect, Report* report, const CodePage* page)
    : reading_(dialect == Dialect::Classic ? kClassicTableReading : kStandardTableReading),
      report_(report),
      page_(page) {}

void DBFInFilter::filename(const std::string& path) {
  if (!IsThere(path)) return;
  Close();
  filename_ = path;
  try {
    file_ = BinaryFile(path);
    ReadHeader();
  } catch (...) {
    Close();
    throw;
  }
}

void DBFInFilter::OpenExisting(const std::string& path) {
  if (const std::string reason = WhyNotReadable(path); !reason.empty()) throw ReadFailed(reason);
  filename(path);
}

void DBFInFilter::Close() {
  file_.Close();
  window_.Reset();
  fields_.clear();
  widths_.clear();
  position_ = 0;
  bytesTold_ = false;
  flags_ = {};
  flagBits_ = 0;
  memos_.Close();
  memosState_ = Memos::NotTried;
}

void DBFInFilter::ReadHeader() {
  const auto header = window_.At(0, kHeaderSize);
  if (std::ssize(header) < kHeaderSize) {
    throw Error(filename_ + ": holds " + std::to_string(file_.Size()) +
                " bytes; a dBase table begins with a header of 32");
  }
  headerLength_ = LittleEndian<std::uint16_t>(&header[8]);
  recordLength_ = LittleEndian<std::uint16_t>(&header[10]);
  headerRecords_ = LittleEndian<std::uint32_t>(&header[4]);
  version_ = static_cast<unsigned char>(header[0]);
  const auto languageByte = static_cast<unsigned char>(header[29]);
  ReadEncoding(languageByte);
  ReadFields();
}

void DBFInFilter::ReadEncoding(unsigned char languageByte) {
  encoding_ = {};
  if (!reading_.asUtf8) return;
  if (page_ != nullptr) {
    encoding_.FromPage(*page_);
  } else if (const std::string named = PartnerFile(filename_, "CPG"); !named.empty()) {
    constexpr std::size_t kLongestName = 64;
    BinaryFile file(named);
    ReadWindow window(file);
    encoding_.FromName(AsText(window.At(0, kLongestName)));
  } else {
    encoding_.FromLanguageByte(languageByte);
  }
}

// The list is as long as the header's length says: where the file ends before it, the bytes that are missing are NULs.
void DBFInFilter::ReadFields() {
  constexpr Layout kUsual{kHeaderSize, 32, kNameSize, 16}, kLevel7{68, kLargestDescriptor, 32, 33};
  const Layout& layout = reading_.everyType && IsLevel7() ? kLevel7 : kUsual;
  position_ = layout.firstAt;
  const auto size = static_cast<double>(layout.size);
  const auto last = static_cast<int>(
      RoundHalfEven((static_cast<double>(headerLength_) - static_cast<double>(layout.firstAt) - 2) / size - 1));
  std::int64_t offset = 1;
  for (int i = 0; i <= last; ++i) {
    const auto bytes = window_.At(position_, static_cast<std::size_t>(layout.size));
    // What lies behind the record's end would be read out of other rows.
    if (reading_.byHeader && ((!bytes.empty() && bytes[0] == kTerminator) || offset > recordLength_)) return;
    if (reading_.byHeader && std::ssize(bytes) < layout.size) {
      throw Error(filename_ + ": ends within its field descriptors; the header announces " + std::to_string(last + 1));
    }
    std::array<std::byte, kLargestDescriptor> descriptor{};
    std::copy(bytes.begin(), bytes.end(), descriptor.begin());
    Field field = FieldOf(descriptor, layout, offset);
    offset += field.length;
    position_ += layout.size;
    if (!reading_.everyType || TakeFlags(descriptor, field)) fields_.push_back(std::move(field));
  }
}

DBFInFilter::Field DBFInFilter::FieldOf(std::span<const std::byte> descriptor, const Layout& layout,
                                        std::int64_t offset) const {
  Field field;
  field.name = AsText(descriptor.first(layout.nameSize));
  field.type = static_cast<char>(descriptor[layout.nameSize]);
  field.length = static_cast<int>(descriptor[layout.lengthAt]);
  field.decimals = static_cast<int>(descriptor[layout.lengthAt + 1]);
  field.isText = !reading_.everyType || IsTextType(field.type);
  field.offset = offset;
  field.stored =
      reading_.byHeader ? static_cast<int>(std::min<std::int64_t>(field.length, recordLength_ - offset)) : field.length;
  return field;
}

int DBFInFilter::Progress() const {
  return file_.IsOpen() ? static_cast<int>(RoundHalfEven(Percentage(position_, file_.Size()))) : 0;
}

std::int64_t DBFInFilter::NumRecs() const {
  if (!file_.IsOpen()) throw Error("File Name not yet entered", "NumRecs");
  if (recordLength_ == 0) throw Error(filename_ + ": its header gives a record length of 0; the table cannot be read");
  const std::int64_t bytes = std::max<std::int64_t>(file_.Size() - headerLength_, 0);
  if (reading_.byHeader) return std::min(headerRecords_, bytes / recordLength_);
  return static_cast<std::int64_t>(RoundHalfEven(static_cast<double>(bytes) / static_cast<double>(recordLength_)));
}

const DBFInFilter::Field& DBFInFilter::Descriptor(int field) const {
  if (field < 0 || field > NumFields()) {
    throw Error("Subscript out of range: " + filename_ + " has no field number " + std::to_string(field),
                "GetFieldData");
  }
  return fields_[static_cast<std::size_t>(field)];
}

std::string DBFInFilter::GetFieldName(int field) const {
  const std::string& name = Descriptor(field).name;
  const std::string_view cut = CutAtNul(name);
  if (reading_.longNames) {
    std::string decoded;
    std::size_t none = 0;
    return std::string(encoding_.AsUtf8(WithoutBlanksBehind(cut), decoded, none));
  }
  if (cut.size() == kNameSize) {
    throw Error(filename_ + ": the name of field " + std::to_string(field + 1) +
                    " fills all 11 bytes without a closing NUL; shorten it to 10 characters",
                "GetFieldName");
  }
  return std::string(cut);
}

int DBFInFilter::GetFieldNum(std::string_view name) const {
  if (name.empty()) return -1;
  if (const int field = FieldNamed(*this, name); field >= 0) return field;
  if (reading_.unknownFieldIsFirst) return 0;
  throw Error(filename_ + ": has no field \"" + std::string(name) + "\"; its fields are " + FieldNames(*this),
              "GetFieldNum");
}

int DBFInFilter::FieldWidth(int field) {
  if (widths_.empty()) MeasureFields();
  return std::max(FieldLength(field), widths_[static_cast<std::size_t>(field)]);
}

void DBFInFilter::MeasureFields() {
  widths_.assign(fields_.size(), 0);
  if (!reading_.asUtf8) return;
  const std::int64_t records = NumRecs();
  for (std::int64_t record = 0; record < records; ++record) {
    const auto row = window_.At(headerLength_ + recordLength_ * record, static_cast<std::size_t>(recordLength_));
    if (IsAscii(AsText(row))) continue;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (fields_[i].type != 'C') continue;
      widths_[i] = std::max(widths_[i], static_cast<int>(GetFieldData(static_cast<int>(i), record).size()));
    }
  }
}

bool DBFInFilter::IsDeleted(std::int64_t record) {
  if (record < 0 || record >= NumRecs()) return false;
  const auto flag = window_.At(headerLength_ + recordLength_ * record, 1);
  return !flag.empty() && flag[0] == kDeleted;
}

std::string_view DBFInFilter::GetFieldData(int field, std::int64_t record) {
  if (field < 0) return {};
  if (!file_.IsOpen()) throw Error("File Name not yet entered", "GetFieldData");
  const Field& descriptor = Descriptor(field);
  if (reading_.byHeader && (record < 0 || record >= NumRecs())) return {};
  if (!descriptor.isText) {
    return OtherValue(fields_[static_cast<std::size_t>(field)], record);
  }
  const std::string_view value = CutAtNul(AsText(BytesOf(descriptor, record)));
  const bool keepsIndent = reading_.keepsIndent && descriptor.type == 'C';
  const std::string_view trimmed = keepsIndent ? WithoutBlanksBehind(value) : Trimmed(value);
  return reading_.asUtf8 ? Decoded(trimmed, record) : trimmed;
}

std::span<const std::byte> DBFInFilter::BytesOf(const Field& field, std::int64_t record) {
  const std::int64_t offset = headerLength_ + recordLength_ * record + field.offset;
  position_ = offset + field.length;
  return window_.At(offset, static_cast<std::size_t>(field.stored));
}

std::string_view DBFInFilter::Decoded(std::string_view text, std::int64_t record) {
  std::size_t none = 0;
  const std::string_view decoded = encoding_.AsUtf8(text, decoded_, none);
  if (none > 0) WarnOfBytes(PlaceOf(record));
  return decoded;
}

void DBFInFilter::WarnOfEncoding() const {
  if (report_ == nullptr || encoding_.Unknown().empty()) return;
  report_->Warn(WarningKind::Encoding, filename_ + ": its " + encoding_.Unknown() +
                                           " is not known; texts were read as UTF-8 or else as code page 1252");
}

void DBFInFilter::WarnOfBytes(const std::string& where) {
  if (report_ == nullptr || std::exchange(bytesTold_, true)) return;
  report_->Warn(WarningKind::Bytes, where +
                                        ": bytes that are no letters of the table's encoding, as where a text was "
                                        "cut within a letter, became U+FFFD; there may be more");
}

}  // namespace tesselink
