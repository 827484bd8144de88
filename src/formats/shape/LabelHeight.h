// SPDX-License-Identifier: MIT
// The height of labels that nobody has given one.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tesselink {

/// The least x and y and the greatest x and y of a file, as its header tells them.
using ShapeBox = std::array<double, 4>;

struct LabelHeight {
  double height;
  std::string_view why;  ///< as in "a hundredth of the drawing's longer side"
};

/// A height by the size of a drawing. Its coordinates are degrees by what the file says that names its system, or where
/// there is none, which is an empty path, by its box.
LabelHeight HeightOfLabels(const ShapeBox& box, const std::string& projectionPath);

}  // namespace tesselink
