// SPDX-License-Identifier: MIT
// The line types that a drawing defines.
#pragma once

#include <string>
#include <vector>

namespace tesselink {

/// A line type by its pattern, as far as it is of dashes; shapes and texts within it have no place here.
struct LineType {
  std::string name, description;
  std::vector<double> dashes;  ///< lengths in drawing units: above 0 a dash, below a gap, 0 a dot; none: a solid line
};

}  // namespace tesselink
