// SPDX-License-Identifier: MIT
// What a drawing says of its layers besides how they look.
#pragma once

#include <string>

namespace tesselink {

/// A layer that CAD does not show, or does not let anybody change.
struct LayerState {
  std::string name;
  bool isOff = false, isFrozen = false, isLocked = false;

  bool IsHidden() const { return isOff || isFrozen; }
};

}  // namespace tesselink
