// SPDX-License-Identifier: MIT
// The columns in which a table says what the elements of a drawing have. The shapefile writer declares them, and the
// reader knows a drawing by them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/AttributeTable.h"

namespace tesselink {

class tEntity;

enum class Column : std::size_t {
  Layer,
  Code,
  Number,
  Name,
  TrueColour,
  LineType,
  Block,
  EntityHandle,
  Text,
  Angle,
  Height,
  Placement,
};

struct ColumnForm {
  std::string_view name;
  int length;
  char type;
};

/// In the order in which they stand. The last four belong to points and texts.
inline constexpr std::array<ColumnForm, 12> kDrawingColumns{{
    {"Desc", 50, 'C'},
    {"Code", 10, 'C'},
    {"ColorNum", 12, 'N'},
    {"ColorName", 15, 'C'},
    {"TrueColor", 7, 'C'},    // as in "#ff8000"; blank: none
    {"LineType", 50, 'C'},    // of drawings that have them
    {"BlockName", 100, 'C'},  // likewise
    {"Handle", 16, 'C'},      // likewise, hexadecimal
    {"Text", 100, 'C'},
    {"TextAngle", 24, 'N'},
    {"TextSize", 24, 'N'},
    {"TextJust", 2, 'C'},  // as LettersWithBaseline has it; blank: it is no text but a point
}};
constexpr const ColumnForm& FormOf(Column column) { return kDrawingColumns[static_cast<std::size_t>(column)]; }

/// The columns of a table that has them.
class DrawingColumns {
 public:
  /// Finds them by name and type, wherever they stand. False where one is missing that every drawing's table has, or
  /// some but not all of those of points.
  bool Find(const AttributeTable& table);
  bool Has(Column column) const { return At(column) >= 0; }
  /// The fields that are none of them.
  const std::vector<int>& OtherFields() const { return others_; }
  /// Puts what a row, counted from 0, says into an element; a single point becomes a text where it says so. Values that
  /// are no numbers count as 0.
  void Store(AttributeTable& table, std::int64_t row, tEntity& entity) const;

 private:
  int At(Column column) const { return fields_[static_cast<std::size_t>(column)]; }
  void StoreText(AttributeTable& table, std::int64_t row, tEntity& entity) const;

  std::array<int, kDrawingColumns.size()> fields_{};
  std::vector<int> others_;
};

/// Some of the fields of another table, as a table.
class SomeFields final : public AttributeTable {
 public:
  /// The table outlives this.
  SomeFields(AttributeTable& table, std::vector<int> fields) : table_(table), fields_(std::move(fields)) {}

  int NumFields() const override { return static_cast<int>(fields_.size()) - 1; }
  std::int64_t NumRecs() const override { return table_.NumRecs(); }
  std::string GetFieldName(int field) const override { return table_.GetFieldName(Whole(field)); }
  char FieldType(int field) const override { return table_.FieldType(Whole(field)); }
  int FieldLength(int field) const override { return table_.FieldLength(Whole(field)); }
  int FieldDecimals(int field) const override { return table_.FieldDecimals(Whole(field)); }
  int FieldWidth(int field) override { return table_.FieldWidth(Whole(field)); }
  /// An unknown name is an error.
  int GetFieldNum(std::string_view name) const override;
  std::string_view GetFieldData(int field, std::int64_t record) override {
    return field < 0 ? std::string_view() : table_.GetFieldData(Whole(field), record);
  }

 private:
  int Whole(int field) const { return fields_.at(static_cast<std::size_t>(field)); }

  AttributeTable& table_;
  std::vector<int> fields_;
};

}  // namespace tesselink
