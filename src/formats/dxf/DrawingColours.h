// SPDX-License-Identifier: MIT
// The colours that the numbers of a drawing stand for.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>

#include "formats/dxf/cColourTab.h"

namespace tesselink {

class Report;

/// Asks the colour table for each number once. Without the table every colour is 0, and a warning says so once.
class DrawingColours {
 public:
  /// The folder is the one that holds the table; the report outlives this.
  DrawingColours(std::string programFolder, Report& report) : report_(report), table_(std::move(programFolder)) {}

  /// The colour of a number from 0 to 255, red in the low byte.
  std::int32_t Of(std::int32_t number);

 private:
  Report& report_;
  cColourTab table_;
  std::array<std::int32_t, 256> colours_{};
  std::bitset<256> known_;
  bool missing_ = false;
};

}  // namespace tesselink
