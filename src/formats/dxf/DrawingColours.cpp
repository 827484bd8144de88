// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingColours.h"

#include "core/io/Errors.h"
#include "core/run/Report.h"

namespace tesselink {

std::int32_t DrawingColours::Of(std::int32_t number) {
  const auto slot = static_cast<std::size_t>(number);
  if (known_[slot] || missing_) return colours_[slot];
  try {
    colours_[slot] = table_.Colour(number);
    known_.set(slot);
  } catch (const Error& error) {
    missing_ = true;
    report_.Warn(WarningKind::ColourTable, std::string(error.what()) + "; the elements keep their colour numbers only");
  }
  return colours_[slot];
}

}  // namespace tesselink
