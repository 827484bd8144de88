#include "formats/landmark/LayerColours.h"

#include <algorithm>
#include <array>

#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr std::array<std::string_view, 20> kNames{
    "BLACK", "DARKBLUE",  "BLUE", "DARKGRAY", "DARKGREEN", "GREEN",  "LIGHTGREEN", "LIGHTBLUE", "MAROON",      "PURPLE",
    "BROWN", "LIGHTGRAY", "RED",  "PINK",     "YELLOW",    "ORANGE", "SALMON",     "VIOLET",    "LIGHTYELLOW", "WHITE"};

}  // namespace

bool NoteLayerColour(std::string_view text, std::vector<std::string>& layers) {
  text = Trimmed(text);
  const auto name =
      std::find_if(kNames.begin(), kNames.end(), [&](std::string_view n) { return EqualsIgnoringCase(n, text); });
  if (name == kNames.end()) return false;
  if (std::find(layers.begin(), layers.end(), *name) == layers.end()) layers.emplace_back(*name);
  return true;
}

}  // namespace tesselink
