// SPDX-License-Identifier: MIT
// An attribute table as the questions about its fields see it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tesselink {

/// The type letters of fields whose values every table has as text: text, number, number, date, logical.
inline constexpr std::string_view kTextTypes = "CNFDL";
constexpr bool IsTextType(char type) { return kTextTypes.find(type) != std::string_view::npos; }

class AttributeTable {
 public:
  virtual ~AttributeTable() = default;
  /// The highest field index, one less than the number of fields.
  virtual int NumFields() const = 0;
  virtual std::int64_t NumRecs() const = 0;
  /// The name of a field, counted from 0. Throws Error when there is no such field or its name has no end.
  virtual std::string GetFieldName(int field) const = 0;
  /// The type letter, the length in bytes and the count of decimals of a field, counted from 0.
  virtual char FieldType(int field) const = 0;
  virtual int FieldLength(int field) const = 0;
  virtual int FieldDecimals(int field) const = 0;
  /// The bytes that the values of a field take, its length at least: letters of other code pages grow as UTF-8.
  virtual int FieldWidth(int field) { return FieldLength(field); }
  /// The index of the first field of that name, letter case and blanks around it ignored: -1 for the empty text. A name
  /// that no field has stands for the first field, 0, or throws Error, by the dialect.
  virtual int GetFieldNum(std::string_view name) const = 0;
  /// The value of a field in a record, both counted from 0, cut at its first NUL and trimmed of blanks; empty for a
  /// negative field and beyond the last record. Valid until the next call. Throws Error when there is no such field.
  virtual std::string_view GetFieldData(int field, std::int64_t record) = 0;
};

/// The index of the first field of a name, letter case and blanks around it ignored; -1 where there is none.
int FieldNamed(const AttributeTable& table, std::string_view name);
/// The names of all fields, as in "LAYER, LABEL"; "none" where there are none.
std::string FieldNames(const AttributeTable& table);

}  // namespace tesselink
