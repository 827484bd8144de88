// SPDX-License-Identifier: MIT
// What lies over a drawing in the preview: a chain that is measured, a window to clip by, the element that was chosen.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/run/ClipWindow.h"
#include "picture/Picture.h"
#include "picture/PictureView.h"

class QPainter;
class QPalette;

namespace tesselink {

struct PreviewOverlay {
  std::vector<PicturePoint> chain = {};
  std::optional<PicturePoint> chainEnd = {};  ///< where the pointer is, while the chain goes on
  std::optional<ClipBox> clip = {};
  std::uint32_t element = 0;  ///< of the picture; 0: none
  bool crosshair = false;     ///< in the middle, where keys act

  /// The length of the chain up to its end, and of its last leg.
  double Length() const;
  double LastLeg() const;

  void Paint(QPainter& painter, const PictureView& view, const Picture& picture, const QPalette& palette) const;

 private:
  void PaintElement(QPainter& painter, const PictureView& view, const Picture& picture) const;
};

}  // namespace tesselink
