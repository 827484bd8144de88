// SPDX-License-Identifier: MIT
#include "core/run/LabelText.h"

#include "core/io/Errors.h"
#include "core/io/Text.h"
#include "core/run/AttributeTable.h"

namespace tesselink {
namespace {

int KnownField(std::string_view name, const AttributeTable& table) {
  const int field = FieldNamed(table, name);
  if (field >= 0) return field;
  throw Error("there is no field \"" + std::string(name) + "\"; the fields are " + FieldNames(table));
}

[[noreturn]] void ThrowLoneBrace(std::string_view text) {
  throw Error("the template \"" + std::string(text) +
              "\" has a lone brace; {NAME} stands for a field, {{ and }} for braces");
}

}  // namespace

LabelText::LabelText(std::string_view text, const AttributeTable& table) : field_(-1) {
  pieces_.emplace_back();
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (c != '{' && c != '}') {
      pieces_.back().before += c;
    } else if (text.substr(at + 1).starts_with(c)) {
      pieces_.back().before += c;
      ++at;
    } else {
      const std::size_t end = c == '{' ? text.find('}', at) : std::string_view::npos;
      if (end == std::string_view::npos) ThrowLoneBrace(text);
      pieces_.back().field = KnownField(text.substr(at + 1, end - at - 1), table);
      pieces_.emplace_back();
      at = end;
    }
  }
}

bool LabelText::Write(AttributeTable& table, std::int64_t row, std::string& text) const {
  if (field_ >= 0) {
    text = table.GetFieldData(field_, row);
    return true;
  }
  bool says = pieces_.size() < 2;
  text.clear();
  for (const Piece& piece : pieces_) {
    text += piece.before;
    if (piece.field < 0) continue;
    const std::string_view value = Trimmed(table.GetFieldData(piece.field, row));
    says = says || !value.empty();
    text += value;
  }
  return says;
}

int FieldMeant(std::string_view name, const AttributeTable& table) {
  const bool inBraces = name.size() > 2 && name.front() == '{' && name.back() == '}';
  return KnownField(inBraces ? name.substr(1, name.size() - 2) : name, table);
}

}  // namespace tesselink
