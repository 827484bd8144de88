// SPDX-License-Identifier: MIT
// Line types as a screen shows them.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/element/LineType.h"

namespace tesselink {

/// The pattern of a name that drawing programs give without being told it, as "DASHED", "CENTER2" or "DOTX2"; letter
/// case is ignored. Nothing for any other name.
std::optional<LineType> StandardLineType(std::string_view name);

/// A dash, the gap behind it, and so on; pixels. The whole of the pattern is as long as the scale makes it, but neither
/// so short that it looks solid nor so long that it is not seen. Empty for a solid line.
std::vector<double> DashesOnScreen(const LineType& lineType, double pixelsPerUnit);

}  // namespace tesselink
