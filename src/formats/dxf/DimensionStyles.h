// SPDX-License-Identifier: MIT
// Dimension styles, as far as what is drawn by itself needs them: leaders and tolerances.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace tesselink {

class GroupScanner;

/// What a style says; drawings leave out what is as it is here.
struct DimensionStyle {
  double textHeight = 0.18, gap = 0.09, scale = 1;
  bool isTextAbove = false;  ///< the text stands on the line, not in a gap of it

  /// Takes a value by the code that it has in the table; others are passed over.
  void Take(int code, double value);
  double Scaled(double size) const { return size * (scale > 0 ? scale : 1); }
};

/// The styles of a drawing. Names match without regard to the case of ASCII letters.
class DimensionStyles {
 public:
  /// Takes a group of an entry of the table.
  void TakeGroup(const GroupScanner& scanner);
  /// Ends the entry.
  void EndEntry();
  /// The style of a name; one that the table does not hold is as the structure has it.
  DimensionStyle Of(std::string_view name) const;

 private:
  std::unordered_map<std::string, DimensionStyle> styles_;  // by name in lower case
  std::string name_;
  DimensionStyle read_;
};

}  // namespace tesselink
