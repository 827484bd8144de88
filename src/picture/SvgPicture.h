// SPDX-License-Identifier: MIT
// A picture as a file that every browser and drawing program shows: Scalable Vector Graphics 1.1 (W3C, 2011), with
// `vector-effect` of SVG Tiny 1.2 and SVG 2.
#pragma once

#include <string>

#include "picture/Picture.h"

namespace tesselink {

/// The budget with which a picture's file stays below 15 MB.
inline constexpr PictureBudget kSvgBudget{200'000, 5'000};

/// Writes the picture to a file, replacing one that is there. Each layer is a group. Throws Error when the writing
/// fails; then no file of that name is left.
void WriteSvg(const Picture& picture, const std::string& title, const std::string& path);

}  // namespace tesselink
