// SPDX-License-Identifier: MIT
// What of a picture lies at a place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "picture/Picture.h"

namespace tesselink {

/// The element that is drawn at a place, or not farther from it than `reach` drawing units: the nearest line, point or
/// text; where there is none, the smallest area that surrounds the place. Hidden layers are passed over.
std::optional<std::uint32_t> ElementAt(const Picture& picture, const std::vector<bool>& hiddenLayers, PicturePoint at,
                                       double reach);

}  // namespace tesselink
