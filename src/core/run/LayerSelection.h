// SPDX-License-Identifier: MIT
// Which layers a run takes.
#pragma once

#include <string>
#include <vector>

#include "core/element/LayerState.h"

namespace tesselink {

/// Layers by name or by pattern (* and ?), without regard to the case of ASCII letters; ":off", ":frozen" and ":locked"
/// stand for those that the input marks so. With wanted ones these alone are taken, and of them none that is unwanted.
class LayerSelection {
 public:
  LayerSelection() = default;
  LayerSelection(const std::vector<std::string>& wanted, const std::vector<std::string>& unwanted);

  /// Takes the states of the next input's layers.
  void Heed(std::vector<LayerState> states);
  bool Takes(const std::string& layer) {
    if (items_.empty()) return true;
    if (isFirst_ || layer != last_) Decide(layer);
    return taken_;
  }
  /// The names and patterns that no layer had so far.
  std::vector<std::string> Unfound() const;

 private:
  struct Item {
    std::string pattern;
    bool isWanted = false, isFound = false;
  };
  void Decide(const std::string& layer);
  bool Fits(const Item& item, const std::string& layer) const;

  std::vector<Item> items_;
  bool hasWanted_ = false;
  std::vector<LayerState> states_;
  std::string last_;  // layer that was asked for, and the answer
  bool isFirst_ = true, taken_ = true;
};

}  // namespace tesselink
