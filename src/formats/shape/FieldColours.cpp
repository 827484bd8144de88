// SPDX-License-Identifier: MIT
#include "formats/shape/FieldColours.h"

#include <cmath>

#include "core/element/ColourNames.h"
#include "core/element/tEntity.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "core/run/Report.h"

namespace tesselink {

void FieldColours::Give(std::string_view value, tEntity& entity, const std::string& path, std::int64_t row) {
  constexpr double kLeast = 1, kGreatest = 255;
  value = Trimmed(value);
  if (value.empty()) return;
  if (const double number = NumberOrNone(value);
      number >= kLeast && number <= kGreatest && number == std::floor(number)) {
    entity.Colour = static_cast<std::int32_t>(number);
    entity.RGB = numbered_.Of(entity.Colour);
  } else if (const auto colour = ColourOfText(value)) {
    entity.Colour = NearestNumber(*colour);
    entity.RGB = *colour;
    entity.IsBlack = *colour == 0;
  } else if (entity.bType != kText) {  // of a label it was told at its shape
    report_.Warn(WarningKind::ColourValues, path + ", row " + std::to_string(row + 1) + ": \"" + std::string(value) +
                                                "\" is no colour: neither a number from 1 to 255 nor a name, and not "
                                                "as #ff8000 or 255,128,0");
  }
}

// Without a table there is no number; numbers that stand in the field tell of that.
std::int32_t FieldColours::NearestNumber(std::int32_t colour) {
  try {
    return table_.Nearest(colour);
  } catch (const Error&) {
    return 0;
  }
}

}  // namespace tesselink
