// SPDX-License-Identifier: MIT
// The named colours. A 24-bit colour holds red in the low byte, green in the middle one, blue in the high one.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tesselink {

struct NamedColour {
  std::string_view name;
  std::uint8_t red, green, blue;
};

/// The names in the order in which ties between equally near colours are decided. The values are the system's own, the
/// green of 12 in "PINK" included.
inline constexpr std::array<NamedColour, 18> kColourNames{{
    {"BLACK", 0, 0, 0},
    {"BLUE", 0, 0, 255},
    {"DARKGRAY", 60, 60, 60},
    {"GREEN", 60, 255, 0},
    {"LIGHTGREEN", 50, 205, 50},
    {"LIGHTBLUE", 173, 216, 230},
    {"MAROON", 178, 96, 48},
    {"PURPLE", 160, 32, 240},
    {"BROWN", 165, 42, 42},
    {"LIGHTGRAY", 211, 211, 211},
    {"RED", 255, 0, 0},
    {"PINK", 255, 12, 203},
    {"YELLOW", 255, 255, 0},
    {"ORANGE", 255, 165, 0},
    {"SALMON", 250, 128, 144},
    {"VIOLET", 238, 130, 232},
    {"LIGHTYELLOW", 255, 255, 232},
    {"WHITE", 255, 255, 255},
}};

/// The names that layers of Landmark drawings may have besides, which makes twenty. No colour is ever given one of
/// them; a picture draws them in these.
inline constexpr std::array<NamedColour, 2> kFurtherLayerNames{{{"DARKBLUE", 0, 0, 139}, {"DARKGREEN", 0, 100, 0}}};

/// The three parts as a 24-bit colour.
constexpr std::int32_t ColourOf(int red, int green, int blue) { return red | green << 8 | blue << 16; }
constexpr std::int32_t ColourOf(const NamedColour& named) { return ColourOf(named.red, named.green, named.blue); }

/// The sum of the squares of the differences in red, green and blue.
std::int32_t ColourDistance(std::int32_t a, std::int32_t b);
/// The name of the nearest named colour; of equally near ones the first.
std::string_view ColourName(std::int32_t colour);
/// The colour of a name, letter case ignored; black, which is 0, for a text that is no name.
std::int32_t ColourOfName(std::string_view name);
/// The colour as "#rrggbb".
std::array<char, 7> HexOfColour(std::int32_t colour);
/// The colour that a text says: one of the eighteen names, "#rrggbb", or three numbers up to 255 as in "255,128,0";
/// nothing for any other.
std::optional<std::int32_t> ColourOfText(std::string_view text);
/// The entry of one of the twenty names of layers, letter case ignored; null for a text that is none.
const NamedColour* LayerNamedForColour(std::string_view name);

}  // namespace tesselink
