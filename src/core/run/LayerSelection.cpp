// SPDX-License-Identifier: MIT
#include "core/run/LayerSelection.h"

#include <algorithm>
#include <utility>

#include "core/io/Text.h"

namespace tesselink {

LayerSelection::LayerSelection(const std::vector<std::string>& wanted, const std::vector<std::string>& unwanted)
    : hasWanted_(!wanted.empty()) {
  for (const std::string& pattern : wanted) items_.push_back({pattern, true});
  for (const std::string& pattern : unwanted) items_.push_back({pattern, false});
}

void LayerSelection::Heed(std::vector<LayerState> states) {
  states_ = std::move(states);
  isFirst_ = true;
}

bool LayerSelection::Fits(const Item& item, const std::string& layer) const {
  const auto state = std::find_if(states_.begin(), states_.end(), [&](const auto& s) { return s.name == layer; });
  if (state != states_.end()) {
    if (state->isOff && item.pattern == ":off") return true;
    if (state->isFrozen && item.pattern == ":frozen") return true;
    if (state->isLocked && item.pattern == ":locked") return true;
  }
  return MatchesPattern(layer, item.pattern);
}

void LayerSelection::Decide(const std::string& layer) {
  last_ = layer;
  isFirst_ = false;
  bool isWanted = !hasWanted_, isUnwanted = false;
  for (Item& item : items_) {
    if (!Fits(item, layer)) continue;
    item.isFound = true;
    (item.isWanted ? isWanted : isUnwanted) = true;
  }
  taken_ = isWanted && !isUnwanted;
}

std::vector<std::string> LayerSelection::Unfound() const {
  std::vector<std::string> unfound;
  for (const Item& item : items_) {
    if (!item.isFound) unfound.push_back(item.pattern);
  }
  return unfound;
}

}  // namespace tesselink
