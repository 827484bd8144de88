// SPDX-License-Identifier: MIT
#include "picture/PictureColours.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/element/ColourNames.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr double kLeastContrast = 3;
constexpr std::int32_t kBlack = 0;
constexpr std::int32_t kWhite = 0xFFFFFF;

constexpr std::array<std::int32_t, 8> kPalette{
    ColourOf(0, 114, 178),  ColourOf(213, 94, 0),  ColourOf(0, 158, 115), ColourOf(204, 121, 167),
    ColourOf(86, 180, 233), ColourOf(230, 159, 0), ColourOf(96, 96, 96),  ColourOf(240, 228, 66),
};

// Relative luminance after WCAG 2.
double Luminance(std::int32_t colour) {
  const auto linear = [colour](int shift) {
    const double part = static_cast<double>(colour >> shift & 0xFF) / 255;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(0) + 0.7152 * linear(8) + 0.0722 * linear(16);
}

std::int32_t Mixed(std::int32_t from, std::int32_t to, double share) {
  const auto part = [&](int shift) {
    const double a = from >> shift & 0xFF, b = to >> shift & 0xFF;
    return static_cast<int>(std::lround(a + (b - a) * share));
  };
  return ColourOf(part(0), part(8), part(16));
}

}  // namespace

std::optional<std::int32_t> ColourNamed(std::string_view layer) {
  const NamedColour* named = LayerNamedForColour(Trimmed(layer));
  return named == nullptr ? std::nullopt : std::optional(ColourOf(*named));
}

std::int32_t PaletteColour(std::size_t layer) { return kPalette[layer % kPalette.size()]; }

double Contrast(std::int32_t a, std::int32_t b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

std::int32_t Legible(std::int32_t colour, std::int32_t background) {
  const std::int32_t ink = Contrast(kBlack, background) > Contrast(kWhite, background) ? kBlack : kWhite;
  const std::int32_t paper = kWhite - ink;
  if (colour == paper && Contrast(colour, background) < kLeastContrast) return ink;
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const std::int32_t mixed = Mixed(colour, ink, static_cast<double>(step) / kSteps);
    if (Contrast(mixed, background) >= kLeastContrast) return mixed;
  }
  return ink;
}

}  // namespace tesselink
