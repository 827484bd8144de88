// The eighteen named colours. A 24-bit colour holds red in the low byte, green in the middle one, blue in the high one.
#pragma once

#include <array>
#include <cstdint>
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

/// The sum of the squares of the differences in red, green and blue.
std::int32_t ColourDistance(std::int32_t a, std::int32_t b);
/// The name of the nearest named colour; of equally near ones the first.
std::string_view ColourName(std::int32_t colour);
/// The colour of a name, letter case ignored; black, which is 0, for a text that is no name.
std::int32_t ColourOfName(std::string_view name);

}  // namespace tesselink
