// SPDX-License-Identifier: MIT
#include "picture/PictureView.h"

#include <limits>

#include "core/element/Justification.h"

namespace tesselink {

PictureView PictureView::Fit(const Extents& box, double width, double height, double margin) {
  PictureView view;
  view.width = std::max(width, 1.0);
  view.height = std::max(height, 1.0);
  if (box.Empty()) return view;
  // Halves, lest a difference overflow.
  view.centre = {box.minX / 2 + box.maxX / 2, box.minY / 2 + box.maxY / 2};
  const double halfWidth = box.maxX / 2 - box.minX / 2, halfHeight = box.maxY / 2 - box.minY / 2;
  const double roomX = std::max(view.width - 2 * margin, 1.0), roomY = std::max(view.height - 2 * margin, 1.0);
  // Units to a pixel.
  const double step = 2 * std::max(halfWidth / roomX, halfHeight / roomY);
  view.scale = step > std::numeric_limits<double>::min() ? 1 / step : 1;
  return view;
}

void PictureView::ZoomAbout(ScreenPoint at, double factor) {
  const PicturePoint fixed = ToDrawing(at);
  const double farthest = std::max({std::abs(centre.x), std::abs(centre.y), std::numeric_limits<double>::min()});
  constexpr double kSteps = 1e14;  // that numbers of this size can tell apart
  const double most = std::min(kSteps / farthest, std::numeric_limits<double>::max());
  scale = std::clamp(scale * factor, std::numeric_limits<double>::min(), std::max(most, scale));
  centre = {fixed.x - (at.x - width / 2) / scale, fixed.y + (at.y - height / 2) / scale};
}

void PictureView::Pan(double right, double down) {
  centre.x -= right / scale;
  centre.y += down / scale;
}

double TextHeight(const PictureText& text, const Extents& box) {
  constexpr double kMostOfBox = 0.025;
  const double side = std::max(box.maxX - box.minX, box.maxY - box.minY);
  return side > 0 ? std::min(text.size, side * kMostOfBox) : text.size;
}

TextAnchor AnchorOf(std::int16_t justification) {
  const auto [across, up] = PlacementOf(justification);
  return {across <= 2 ? across : 0, up == TextPlacement::kCentre ? 1 : up == TextPlacement::kTop ? 2 : 0};
}

// After Liang and Barsky.
bool ClipSegment(const PictureView& view, double margin, ScreenPoint& from, ScreenPoint& to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  double begin = 0, end = 1;
  const auto cut = [&](double towards, double room) {
    if (towards == 0) return room >= 0;
    const double at = room / towards;
    if (towards < 0) {
      begin = std::max(begin, at);
    } else {
      end = std::min(end, at);
    }
    return begin <= end;
  };
  const bool seen = cut(-dx, from.x + margin) && cut(dx, view.width + margin - from.x) && cut(-dy, from.y + margin) &&
                    cut(dy, view.height + margin - from.y);
  if (!seen) return false;
  const ScreenPoint origin = from;
  if (end < 1) to = {origin.x + end * dx, origin.y + end * dy};
  if (begin > 0) from = {origin.x + begin * dx, origin.y + begin * dy};
  return true;
}

}  // namespace tesselink
