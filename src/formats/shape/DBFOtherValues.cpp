// SPDX-License-Identifier: MIT
// Values of a dBase table that do not stand in its rows as text: binary ones, those of varying length, memos.
#include <algorithm>
#include <charconv>
#include <utility>

#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/shape/Bytes.h"
#include "formats/shape/DBFInFilter.h"

namespace tesselink {

// Numbers the bits that a FoxPro field has among the null flags of a row: one where its length varies, one where it may
// be null. False for the field that holds these bits, which is none of the table's own.
bool DBFInFilter::TakeFlags(std::span<const std::byte> descriptor, Field& field) {
  constexpr std::size_t kFlagsAt = 18;
  constexpr std::byte kNullable{2};
  if (!IsFoxPro()) return true;
  if (field.type == '0') {
    flags_ = field;
    return false;
  }
  if (field.type == 'V' || field.type == 'Q') field.lengthBit = flagBits_++;
  if ((descriptor[kFlagsAt] & kNullable) != std::byte{0}) field.nullBit = flagBits_++;
  return true;
}

bool DBFInFilter::HasFlag(int bit, std::int64_t record) {
  if (bit < 0) return false;
  const auto flags = BytesOf(flags_, record);
  const auto byte = static_cast<std::size_t>(bit) / 8;
  return byte < flags.size() && (flags[byte] & std::byte{1} << (bit % 8)) != std::byte{0};
}

std::string_view DBFInFilter::OtherValue(Field& field, std::int64_t record) {
  if (HasFlag(field.nullBit, record)) return {};
  if (field.type == 'V') return VaryingText(field, record);
  if (field.type == 'M') return MemoText(field, record);
  const auto bytes = BytesOf(field, record);
  value_.clear();
  const bool known = IsBinaryType(field.type, static_cast<std::size_t>(field.length), IsFoxPro());
  if (!known) {
    WarnOfType(field);
  } else if (std::ssize(bytes) == field.length && !AppendValue(value_, field.type, bytes, IsLevel7())) {
    WarnOfType(field);
    value_.clear();
  }
  return value_;
}

// The last byte counts the others where the text does not fill its field.
std::string_view DBFInFilter::VaryingText(const Field& field, std::int64_t record) {
  const bool varies = HasFlag(field.lengthBit, record);
  auto bytes = BytesOf(field, record);
  if (varies && !bytes.empty()) {
    bytes = bytes.first(std::min(std::to_integer<std::size_t>(bytes.back()), bytes.size() - 1));
  }
  return Decoded(CutAtNul({reinterpret_cast<const char*>(bytes.data()), bytes.size()}), record);
}

std::string_view DBFInFilter::MemoText(Field& field, std::int64_t record) {
  const auto bytes = BytesOf(field, record);
  std::int64_t block = 0;
  if (bytes.size() == 4) {
    block = LittleEndian<std::int32_t>(bytes.data());
  } else {
    const std::string_view digits = Trimmed(CutAtNul({reinterpret_cast<const char*>(bytes.data()), bytes.size()}));
    std::from_chars(digits.data(), digits.data() + digits.size(), block);
  }
  if (block == 0) return {};
  if (memosState_ == Memos::NotTried) {
    memosState_ = memos_.OpenBeside(filename_) ? Memos::Open : Memos::Missing;
    if (memosState_ == Memos::Missing) {
      WarnOfMemo(record, "the memo file (.dbt or .fpt) beside the table is missing, so that its memo fields are empty");
    }
  }
  if (memosState_ == Memos::Missing) return {};
  switch (memos_.Read(block, value_)) {
    case MemoFile::Found::Nothing:
      WarnOfMemo(record, memos_.Path() + " holds no text at its block " + std::to_string(block));
      return {};
    case MemoFile::Found::Cut:
      WarnOfMemo(record, "its memo was cut to " + std::to_string(value_.size()) + " bytes");
      break;
    case MemoFile::Found::Whole:
      break;
  }
  return Decoded(CutAtNul(value_), record);
}

void DBFInFilter::WarnOfMemo(std::int64_t record, const std::string& what) {
  if (report_ != nullptr) report_->Warn(WarningKind::Memos, PlaceOf(record) + ": " + what);
}

void DBFInFilter::WarnOfType(Field& field) {
  if (report_ == nullptr || std::exchange(field.told, true)) return;
  const std::string name(CutAtNul(field.name));
  report_->Warn(WarningKind::FieldsNotRead,
                filename_ + ": values of the field " + name + " (type " + field.type + ") that are not read are empty",
                name);
}

}  // namespace tesselink
