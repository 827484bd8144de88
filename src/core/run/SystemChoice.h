// SPDX-License-Identifier: MIT
// What a person said of coordinate systems.
#pragma once

#include <string>

namespace tesselink {

/// A system is a code, a .prj or WKT file, or a PROJ text; empty for none.
struct SystemChoice {
  std::string from = {};       ///< that of every input, whatever stands beside it
  std::string to = {};         ///< that of the output
  bool allowBallpark = false;  ///< grids may be missing, and systems be unknown

  bool IsGiven() const { return !from.empty() || !to.empty(); }
};

}  // namespace tesselink
