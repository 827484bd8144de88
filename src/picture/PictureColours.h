// SPDX-License-Identifier: MIT
// The colours of a picture's layers. A 24-bit colour holds red in the low byte, green in the middle one, blue in the
// high one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tesselink {

/// The colour that a layer is named for, as layers of Landmark drawings are; letter case is ignored.
std::optional<std::int32_t> ColourNamed(std::string_view layer);
/// A colour for a layer that has none, by its number: eight that people who confuse red and green can tell apart (after
/// Okabe and Ito), again and again.
std::int32_t PaletteColour(std::size_t layer);
/// The colour itself where it stands out against the background, else one of its kind that does: its contrast ratio
/// (WCAG 2) is at least 3. White on a light background and black on a dark one change places.
std::int32_t Legible(std::int32_t colour, std::int32_t background);
/// How much an area's colour covers of what lies beneath it, so that nothing is hidden; from 0 to 1.
inline constexpr double kAreaOpacity = 0.25;
/// The contrast ratio of two colours after WCAG 2, from 1 to 21.
double Contrast(std::int32_t a, std::int32_t b);

}  // namespace tesselink
