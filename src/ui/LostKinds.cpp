// SPDX-License-Identifier: MIT
#include "ui/LostKinds.h"

#include "core/run/Nobody.h"
#include "core/run/Report.h"
#include "core/run/Traits.h"
#include "ui/PictureRenderer.h"

namespace tesselink {
namespace {

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
  const KindSet leftOut = format.LeftOut(values);
  return LackedBy(format.create({nobody, settings, report, options})->Holds()) |
         ((leftOut & SetOf(kPoint)) != 0 ? kLosesPoints : 0U) | ((leftOut & SetOf(kText)) != 0 ? kLosesTexts : 0U) |
         ((leftOut & kChainsAndCurves) != 0 ? kLosesLines : 0U);
}

}  // namespace tesselink
