// SPDX-License-Identifier: MIT
#include "formats/shape/LabelHeight.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/io/Files.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr double kShare = 100, kShareOfDegrees = 5000;
// Of drawings that have no size.
constexpr double kOfPlace = 10, kOfPlaceInDegrees = 0.0001;

std::string BeginningOf(const std::string& path) {
  constexpr std::size_t kLongest = 4096;
  if (path.empty()) return {};
  BinaryFile file(path);
  std::string text(std::min(static_cast<std::size_t>(file.Size()), kLongest), ' ');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return UpperCase(text);
}

bool IsInDegrees(const ShapeBox& box, const std::string& text) {
  const auto says = [&](std::string_view word) { return text.find(word) != std::string::npos; };
  if (says("PROJCS") || says("PROJCRS")) return false;
  const double east = says("GEOGCS") || says("GEOGCRS") ? 360 : 180;
  return box != ShapeBox{} && box[0] >= -east && box[2] <= east && box[1] >= -90 && box[3] <= 90;
}

// In few digits, as people would write it.
double Rounded(double value) {
  constexpr int kDigits = 3;
  std::array<char, 40> text;
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, kDigits).ptr;
  std::from_chars(text.data(), end, value);
  return value;
}

}  // namespace

LabelHeight HeightOfLabels(const ShapeBox& box, const std::string& projectionPath) {
  const double side = std::max(box[2] - box[0], box[3] - box[1]);
  const bool inDegrees = IsInDegrees(box, BeginningOf(projectionPath));
  const double height = Rounded(side / (inDegrees ? kShareOfDegrees : kShare));
  if (!std::isfinite(height) || !(height > 0)) {
    return {inDegrees ? kOfPlaceInDegrees : kOfPlace, "for its header tells no size of the drawing"};
  }
  return {height, inDegrees ? "a 5,000th of the drawing's longer side, which is in degrees"
                            : "a hundredth of the drawing's longer side"};
}

}  // namespace tesselink
