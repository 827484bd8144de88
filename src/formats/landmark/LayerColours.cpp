// SPDX-License-Identifier: MIT
#include "formats/landmark/LayerColours.h"

#include <algorithm>

#include "core/element/ColourNames.h"
#include "core/io/Text.h"

namespace tesselink {

bool NoteLayerColour(std::string_view text, std::vector<std::string>& layers) {
  const NamedColour* colour = LayerNamedForColour(Trimmed(text));
  if (colour == nullptr) return false;
  if (std::find(layers.begin(), layers.end(), colour->name) == layers.end()) layers.emplace_back(colour->name);
  return true;
}

}  // namespace tesselink
