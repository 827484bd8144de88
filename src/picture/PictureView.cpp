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
  if (!text.ofTable) return text.size;
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

namespace {

// Keeps what of a polygon lies where `room` is not below 0. After Sutherland and Hodgman.
template <typename Room>
void CutPolygon(std::vector<ScreenPoint>& polygon, std::vector<ScreenPoint>& kept, Room&& room) {
  kept.clear();
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const ScreenPoint from = polygon[i == 0 ? polygon.size() - 1 : i - 1], to = polygon[i];
    const double before = room(from), after = room(to);
    if ((before < 0) != (after < 0)) {
      const double share = before / (before - after);
      kept.push_back({from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share});
    }
    if (after >= 0) kept.push_back(to);
  }
  polygon.swap(kept);
}

}  // namespace

std::span<const ScreenPoint> ChainTracer::Ring(std::span<const PicturePoint> ring) {
  piece_.clear();
  bool seesAll = true;
  for (const PicturePoint at : ring) {
    const ScreenPoint next = view_.ToScreen(at);
    const bool isNear = !piece_.empty() && std::abs(next.x - piece_.back().x) < tolerance_ &&
                        std::abs(next.y - piece_.back().y) < tolerance_;
    if (isNear) continue;
    piece_.push_back(next);
    seesAll = seesAll && Sees(next);
  }
  if (seesAll) return piece_;
  const double margin = margin_, right = view_.width + margin, bottom = view_.height + margin;
  CutPolygon(piece_, cut_, [=](ScreenPoint at) { return at.x + margin; });
  CutPolygon(piece_, cut_, [=](ScreenPoint at) { return at.y + margin; });
  CutPolygon(piece_, cut_, [=](ScreenPoint at) { return right - at.x; });
  CutPolygon(piece_, cut_, [=](ScreenPoint at) { return bottom - at.y; });
  return piece_;
}

}  // namespace tesselink
