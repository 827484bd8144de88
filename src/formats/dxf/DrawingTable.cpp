// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingTable.h"

#include <algorithm>
#include <charconv>

#include "core/io/Errors.h"
#include "core/io/Text.h"
#include "formats/dxf/DrawingText.h"
#include "formats/dxf/RecordsOut.h"

namespace tesselink {
namespace {

constexpr int kTextLength = 254;

// The word at the front of a text, which is taken off with the blank behind it.
std::string_view TakeWord(std::string_view& text) {
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(std::min(word.size() + 1, text.size()));
  return word;
}

int NumberOf(std::string_view word) {
  int number = 0;
  std::from_chars(word.data(), word.data() + word.size(), number);
  return number;
}

bool IsNumber(char type) { return type == 'N' || type == 'F'; }

}  // namespace

void DrawingTable::AddTables(std::span<const std::string> texts) {
  for (const std::string& bytes : texts) {
    text_.DecodeValue(bytes, decoded_);
    std::string_view text = decoded_;
    const std::string_view word = TakeWord(text);
    if (word == schema::kTable) {
      const ElementForm form = schema::FormOf(TakeWord(text));
      if (tables_.empty()) form_ = form;
      areDrawings_ = areDrawings_ || form.isDrawing;
      tables_.emplace_back();
    } else if (word == schema::kField && !tables_.empty()) {
      AddField(text);
    }
  }
}

void DrawingTable::AddField(std::string_view text) {
  Column column;
  const std::string_view type = TakeWord(text);
  column.type = type.empty() ? 'C' : type.front();
  column.length = std::clamp(NumberOf(TakeWord(text)), 1, 255);
  column.decimals = std::clamp(NumberOf(TakeWord(text)), 0, column.length);
  column.name = text;
  const std::size_t at = ColumnOf(column);
  if (at < columns_.size()) tables_.back().push_back({column.name, at});
}

// A column of that name whose values are of the same kind, or a new one; beyond the last where there is no room.
std::size_t DrawingTable::ColumnOf(const Column& column) {
  const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const Column& known) {
    return EqualsIgnoringCase(known.name, column.name) &&
           (known.type == column.type || (IsNumber(known.type) && IsNumber(column.type)));
  });
  if (found != columns_.end()) {
    found->length = std::max(found->length, column.length);
    return static_cast<std::size_t>(found - columns_.begin());
  }
  if (columns_.size() == kMostColumns) {
    ++leftOut_;
    return columns_.size();
  }
  columns_.push_back(column);
  return columns_.size() - 1;
}

void DrawingTable::AddTag(const std::string& tag) {
  text_.DecodeName(tag, decoded_);
  ColumnOf({.name = decoded_, .length = kTextLength});
}

void DrawingTable::Clear(Row& row) const {
  row.resize(columns_.size());
  for (std::string& value : row) value.clear();
}

// Values come in the order of the fields, of which those without one are left out.
void DrawingTable::Fill(Row& row, std::int32_t table, std::span<const std::string> texts) {
  Clear(row);
  if (table < 1 || static_cast<std::size_t>(table) > tables_.size()) return;
  const auto& fields = tables_[static_cast<std::size_t>(table) - 1];
  auto next = fields.begin();
  for (const std::string& bytes : texts) {
    text_.DecodeValue(std::string_view(bytes).substr(0, bytes.find('=')), decoded_);
    const auto isIt = [&](const TableColumn& field) { return field.name == decoded_; };
    auto at = std::find_if(next, fields.end(), isIt);
    if (at == fields.end()) at = std::find_if(fields.begin(), fields.end(), isIt);
    if (at == fields.end()) continue;
    text_.DecodeValue(std::string_view(bytes).substr(std::min(bytes.find('='), bytes.size() - 1) + 1), row[at->column]);
    next = at + 1;
  }
}

bool DrawingTable::Set(Row& row, std::string_view tag, const std::string& value) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(),
                                  [&](const Column& column) { return EqualsIgnoringCase(column.name, tag); });
  if (found == columns_.end()) return false;
  row[static_cast<std::size_t>(found - columns_.begin())] = value;
  return true;
}

void DrawingTable::Decode(std::string_view bytes, std::string& value) const { text_.DecodeValue(bytes, value); }

void DrawingTable::DecodeName(std::string_view bytes, std::string& name) const { text_.DecodeName(bytes, name); }

const DrawingTable::Column& DrawingTable::At(int field) const {
  if (field < 0 || static_cast<std::size_t>(field) >= columns_.size()) {
    throw Error("there is no field " + std::to_string(field), "GetFieldName");
  }
  return columns_[static_cast<std::size_t>(field)];
}

int DrawingTable::GetFieldNum(std::string_view name) const {
  if (name.empty()) return -1;
  const auto found = std::find_if(columns_.begin(), columns_.end(),
                                  [&](const Column& column) { return EqualsIgnoringCase(column.name, Trimmed(name)); });
  return found == columns_.end() ? 0 : static_cast<int>(found - columns_.begin());
}

std::string_view DrawingTable::GetFieldData(int field, std::int64_t record) {
  if (field < 0 || record < 0 || static_cast<std::size_t>(field) >= current_.size()) return {};
  return current_[static_cast<std::size_t>(field)];
}

}  // namespace tesselink
