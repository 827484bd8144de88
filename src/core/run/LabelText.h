// SPDX-License-Identifier: MIT
// What the labels of shapes say: the values of a field, or a template of several.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

class AttributeTable;

/// In a template "{FIELD}" stands for a value, without the blanks around it, and "{{" and "}}" for braces, as in
/// "{NAME} ({DEPTH} ft)".
class LabelText {
 public:
  /// Whether a text that is no name of a field is a template.
  static bool IsTemplate(std::string_view text) { return text.find_first_of("{}") != std::string_view::npos; }

  /// The values of a field as they are; -1: nothing.
  explicit LabelText(int field = -1) : field_(field) {}
  /// A template. Throws Error for a lone brace, and for a field that the table does not have.
  LabelText(std::string_view text, const AttributeTable& table);

  bool Any() const { return field_ >= 0 || !pieces_.empty(); }
  /// Replaces `text` by that of a row, counted from 0. False for a template of which every value is blank.
  bool Write(AttributeTable& table, std::int64_t row, std::string& text) const;

 private:
  struct Piece {
    std::string before;
    int field = -1;  // whose value stands behind that; -1: none
  };

  int field_;
  std::vector<Piece> pieces_;
};

/// The field that a name in braces and nothing else stands for, as in "{HEIGHT}", or a name without them. Throws Error
/// for one that the table does not have.
int FieldMeant(std::string_view name, const AttributeTable& table);

}  // namespace tesselink
