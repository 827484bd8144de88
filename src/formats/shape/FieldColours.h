// SPDX-License-Identifier: MIT
// Colours that stand in a field of an attribute table.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "formats/dxf/DrawingColours.h"

namespace tesselink {

class Report;
class tEntity;

/// Takes a colour number of drawings, 1 to 255, or what ColourOfText reads; of the latter the nearest number goes with
/// the colour. Nothing is a blank value, and any other, which is told.
class FieldColours {
 public:
  /// The folder is the one that holds the colour table; the report outlives this.
  FieldColours(const std::string& programFolder, Report& report)
      : report_(report), numbered_(programFolder, report), table_(programFolder) {}

  /// Gives an element the colour that a value says; `path` and `row`, from 0, are where that stands.
  void Give(std::string_view value, tEntity& entity, const std::string& path, std::int64_t row);

 private:
  std::int32_t NearestNumber(std::int32_t colour);

  Report& report_;
  DrawingColours numbered_;
  cColourTab table_;
};

}  // namespace tesselink
