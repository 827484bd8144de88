// SPDX-License-Identifier: MIT
// The attributes that the entities of a drawing carry, as a table.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/AttributeTable.h"
#include "core/run/Filters.h"

namespace tesselink {

class DrawingText;

/// The columns of all tables that a drawing tells of, each name once, and the values of the entity at hand: those of
/// this program's extended data, and attributes of blocks by their tags. It knows of no other row.
class DrawingTable final : public AttributeTable {
 public:
  /// What a drawing may have; columns beyond are left out.
  static constexpr std::size_t kMostColumns = 2048;

  /// Values of one entity or record, in the order of the columns.
  using Row = std::vector<std::string>;

  explicit DrawingTable(const DrawingText& text) : text_(text) {}

  /// Takes the tables that layer 0 tells of, as the drawing has the texts.
  void AddTables(std::span<const std::string> texts);
  /// Takes a block's attribute, by its tag.
  void AddTag(const std::string& tag);
  bool Any() const { return !columns_.empty() || !tables_.empty(); }
  /// How many tables there are, and what the elements of the first are.
  std::size_t Tables() const { return tables_.size(); }
  const ElementForm& Form() const { return form_; }
  /// Whether any of them is that of a drawing, whose elements have layers, colours and texts besides.
  bool AreDrawings() const { return areDrawings_; }
  /// Columns that were left out.
  std::size_t LeftOut() const { return leftOut_; }

  /// Empties a row.
  void Clear(Row& row) const;
  /// Fills a row by texts as "NAME=value" of a table, counted from 1.
  void Fill(Row& row, std::int32_t table, std::span<const std::string> texts);
  /// Sets the value of a tag. False when there is no such column.
  bool Set(Row& row, std::string_view tag, const std::string& value) const;
  /// Decodes what the drawing has for a value, or for a name.
  void Decode(std::string_view bytes, std::string& value) const;
  void DecodeName(std::string_view bytes, std::string& name) const;
  /// The values of the element that was delivered last.
  Row& Current() { return current_; }

  int NumFields() const override { return static_cast<int>(columns_.size()) - 1; }
  std::int64_t NumRecs() const override { return 0; }
  std::string GetFieldName(int field) const override { return At(field).name; }
  char FieldType(int field) const override { return At(field).type; }
  int FieldLength(int field) const override { return At(field).length; }
  int FieldDecimals(int field) const override { return At(field).decimals; }
  int GetFieldNum(std::string_view name) const override;
  std::string_view GetFieldData(int field, std::int64_t record) override;

 private:
  struct Column {
    std::string name;
    char type = 'C';
    int length = 0, decimals = 0;
  };
  struct TableColumn {
    std::string name;  // in its table
    std::size_t column;
  };
  const Column& At(int field) const;
  void AddField(std::string_view text);
  std::size_t ColumnOf(const Column& column);

  const DrawingText& text_;
  std::vector<Column> columns_;
  std::vector<std::vector<TableColumn>> tables_;
  ElementForm form_;
  bool areDrawings_ = false;
  std::size_t leftOut_ = 0;
  Row current_;
  std::string decoded_;
};

}  // namespace tesselink
