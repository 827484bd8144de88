// SPDX-License-Identifier: MIT
#include "ui/LostKinds.h"

#include <string_view>

#include "core/run/Nobody.h"
#include "core/run/Report.h"
#include "core/run/Traits.h"
#include "ui/PictureRenderer.h"

namespace tesselink {
namespace {

// What the writer of a format leaves out: always, or by the value of an option.
struct LeftOut {
  std::string_view output, option, value;
  std::uint32_t kinds;
};

constexpr LeftOut kLeftOut[] = {
    {"asc", {}, {}, kLosesPoints},
    {"cdf", "points", "ignore", kLosesPoints},
    {"grd", {}, {}, kLosesPoints | kLosesTexts},
    {"shp", "shape-type", "points", kLosesLines},
    {"shp", "shape-type", "multipoints", kLosesLines},
    {"shp", "shape-type", "polylines", kLosesPoints | kLosesTexts},
    {"shp", "shape-type", "polygons", kLosesPoints | kLosesTexts},
};

std::uint32_t LackedBy(const Holding& holding) {
  return (holding.areas || holding.levelAreas ? 0U : kLosesAreas) |
         ((holding.lacks & kHasLineType) != 0 ? kLosesLineTypes : 0U) |
         ((holding.lacks & kHasColour) != 0 ? kLosesColours : 0U);
}

}  // namespace

std::uint32_t LostKindsOf(const OutputFormat& format, const FilterOptions& options, const OptionValues& values,
                          Settings& settings) {
  Nobody nobody;
  Report report;
  std::uint32_t kinds = LackedBy(format.create({nobody, settings, report, options})->Holds());
  for (const LeftOut& left : kLeftOut) {
    if (format.key == left.output && values.Text(left.option) == left.value) kinds |= left.kinds;
  }
  return kinds;
}

}  // namespace tesselink
