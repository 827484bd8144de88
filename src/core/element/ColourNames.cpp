// SPDX-License-Identifier: MIT
#include "core/element/ColourNames.h"

#include <algorithm>
#include <charconv>

#include "core/io/Text.h"

namespace tesselink {
namespace {

template <std::size_t Count>
const NamedColour* Find(const std::array<NamedColour, Count>& names, std::string_view name) {
  const auto named = std::find_if(names.begin(), names.end(),
                                  [&](const NamedColour& colour) { return EqualsIgnoringCase(colour.name, name); });
  return named == names.end() ? nullptr : &*named;
}

}  // namespace

std::int32_t ColourDistance(std::int32_t a, std::int32_t b) {
  std::int32_t sum = 0;
  for (const int shift : {0, 8, 16}) {
    const std::int32_t difference = ((a >> shift) & 255) - ((b >> shift) & 255);
    sum += difference * difference;
  }
  return sum;
}

std::string_view ColourName(std::int32_t colour) {
  const auto distance = [colour](const NamedColour& named) { return ColourDistance(colour, ColourOf(named)); };
  return std::min_element(kColourNames.begin(), kColourNames.end(),
                          [&](const NamedColour& a, const NamedColour& b) { return distance(a) < distance(b); })
      ->name;
}

std::int32_t ColourOfName(std::string_view name) {
  const NamedColour* named = Find(kColourNames, name);
  return named == nullptr ? 0 : ColourOf(*named);
}

std::array<char, 7> HexOfColour(std::int32_t colour) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::array<char, 7> text{'#'};
  std::size_t at = 0;
  for (const int shift : {4, 0, 12, 8, 20, 16}) text[++at] = kDigits[static_cast<std::size_t>(colour >> shift & 0xF)];
  return text;
}

std::optional<std::int32_t> ColourOfText(std::string_view text) {
  if (const NamedColour* named = Find(kColourNames, text)) return ColourOf(*named);
  std::array<std::int32_t, 3> parts{};
  const bool isHex = text.size() == 7 && text.front() == '#';
  const char *at = text.data() + (isHex ? 1 : 0), *const end = text.data() + text.size();
  for (std::int32_t& part : parts) {
    if (!isHex && &part != &parts.front()) {
      if (at == end || *at++ != ',') return {};
    }
    while (!isHex && at != end && *at == ' ') ++at;
    const auto [behind, error] = std::from_chars(at, isHex ? at + 2 : end, part, isHex ? 16 : 10);
    if (error != std::errc() || part < 0 || part > 255 || (isHex && behind != at + 2)) return {};
    at = behind;
  }
  return at == end ? std::optional(ColourOf(parts[0], parts[1], parts[2])) : std::nullopt;
}

const NamedColour* LayerNamedForColour(std::string_view name) {
  const NamedColour* named = Find(kColourNames, name);
  return named == nullptr ? Find(kFurtherLayerNames, name) : named;
}

}  // namespace tesselink
