// SPDX-License-Identifier: MIT
#include "picture/LinePattern.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "core/io/Text.h"

namespace tesselink {
namespace {

struct Pattern {
  std::string_view name;
  std::array<double, 6> dashes;
  std::size_t count;
};
constexpr std::array kStandard{
    Pattern{"DASHED", {2, -1}, 2},
    Pattern{"HIDDEN", {1, -0.5}, 2},
    Pattern{"CENTER", {5, -1, 1, -1}, 4},
    Pattern{"PHANTOM", {5, -1, 1, -1, 1, -1}, 6},
    Pattern{"DOT", {0, -1}, 2},
    Pattern{"DASHDOT", {2, -1, 0, -1}, 4},
    Pattern{"BORDER", {2, -1, 2, -1, 0, -1}, 6},
    Pattern{"DIVIDE", {2, -1, 0, -1, 0, -1}, 6},
};

constexpr double kLeastLength = 5;  // pixels to each dash with its gap
constexpr double kMostLength = 24;
constexpr double kLeastPart = 1;

double LengthOf(const std::vector<double>& parts) {
  double sum = 0;
  for (const double part : parts) sum += std::abs(part);
  return sum;
}

}  // namespace

std::optional<LineType> StandardLineType(std::string_view name) {
  std::string known = UpperCase(name);
  if (known.ends_with("X2")) known.resize(known.size() - 2);
  if (known.ends_with("2")) known.pop_back();
  const auto found =
      std::find_if(kStandard.begin(), kStandard.end(), [&](const Pattern& p) { return p.name == known; });
  if (found == kStandard.end()) return std::nullopt;
  const double times = name.size() == known.size() ? 1 : name.size() == known.size() + 1 ? 0.5 : 2;
  LineType lineType{std::string(name), {}, {}};
  for (std::size_t i = 0; i < found->count; ++i) lineType.dashes.push_back(found->dashes[i] * times);
  return lineType;
}

std::vector<double> DashesOnScreen(const LineType& lineType, double pixelsPerUnit) {
  // Neighbours of one kind become one, and a pattern that begins with a gap has it at its end.
  std::vector<double> parts;
  for (const double dash : lineType.dashes) {
    if (!std::isfinite(dash)) return {};
    const bool joins = !parts.empty() && (parts.back() < 0) == (dash < 0);
    joins ? static_cast<void>(parts.back() += dash) : parts.push_back(dash);
  }
  if (parts.size() > 1 && parts.front() < 0) std::rotate(parts.begin(), parts.begin() + 1, parts.end());
  if (parts.size() % 2 != 0 && parts.size() > 1) {
    if (parts.back() < 0) return {};
    parts.front() += parts.back();
    parts.pop_back();
  }
  const double length = LengthOf(parts);
  if (parts.size() < 2 || !(length > 0)) return {};
  const double pairs = static_cast<double>(parts.size()) / 2;
  const double shown = std::clamp(length * pixelsPerUnit, kLeastLength * pairs, kMostLength * pairs);
  for (double& part : parts) part = std::max(std::abs(part) * shown / length, kLeastPart);
  return parts;
}

}  // namespace tesselink
