// SPDX-License-Identifier: MIT
#include "picture/PicturePick.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "picture/PictureView.h"

namespace tesselink {
namespace {

// How wide a letter is, as a share of the height of capitals.
constexpr double kLetterWidth = 0.85;

double DistanceToSegment(PicturePoint at, PicturePoint from, PicturePoint to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  const double length = dx * dx + dy * dy;
  const double along = length > 0 ? std::clamp(((at.x - from.x) * dx + (at.y - from.y) * dy) / length, 0.0, 1.0) : 0;
  return std::hypot(at.x - from.x - along * dx, at.y - from.y - along * dy);
}

double DistanceTo(std::span<const PicturePoint> chain, PicturePoint at) {
  double nearest = DistanceToSegment(at, chain.front(), chain.front());
  for (std::size_t i = 1; i < chain.size(); ++i) {
    nearest = std::min(nearest, DistanceToSegment(at, chain[i - 1], chain[i]));
  }
  return nearest;
}

bool CrossesOddly(std::span<const PicturePoint> ring, PicturePoint at) {
  bool odd = false;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const PicturePoint a = ring[i - 1], b = ring[i];
    if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (at.y - a.y) / (b.y - a.y) * (b.x - a.x)) odd = !odd;
  }
  return odd;
}

double AreaOf(std::span<const PicturePoint> ring) {
  double doubled = 0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    doubled +=
        (ring[i - 1].x - ring[0].x) * (ring[i].y - ring[0].y) - (ring[i].x - ring[0].x) * (ring[i - 1].y - ring[0].y);
  }
  return std::abs(doubled);
}

// Whether a place lies on the letters.
bool IsOn(const PictureText& text, double height, PicturePoint at, double reach) {
  constexpr double kDegree = 0.017453292519943295;
  const double c = std::cos(text.angle * kDegree), s = std::sin(text.angle * kDegree);
  const double dx = at.x - text.at.x, dy = at.y - text.at.y;
  const double width = height * kLetterWidth * static_cast<double>(text.text.size());
  const TextAnchor anchor = AnchorOf(text.justification);
  const double along = dx * c + dy * s + width * anchor.across / 2, up = dy * c - dx * s + height * anchor.down / 2;
  return along >= -reach && along <= width + reach && up >= -reach && up <= height + reach;
}

class Search {
 public:
  Search(const Picture& picture, const std::vector<bool>& hidden, PicturePoint at, double reach)
      : picture_(picture), hidden_(hidden), at_(at), nearest_(reach), reach_(reach) {}

  std::optional<std::uint32_t> Element() {
    LookAtMarks();
    LookAtTexts();
    return found_ ? found_ : surrounding_;
  }

 private:
  bool IsHidden(std::size_t style) const {
    const std::size_t layer = picture_.Styles().LayerOf(style);
    return layer < hidden_.size() && hidden_[layer];
  }

  // The rings of an area follow each other; it holds what an odd number of them does.
  void LookAtMarks() {
    std::uint32_t area = 0;
    bool inside = false;
    double size = 0;
    const auto endArea = [&] {
      if (inside && size < smallest_) {
        smallest_ = size;
        surrounding_ = area;
      }
      area = 0;
      inside = false;
      size = 0;
    };
    for (std::size_t i = 0; i < picture_.MarkCount(); ++i) {
      const PictureMark& mark = picture_.Mark(i);
      if (mark.element != area) endArea();
      if (IsHidden(mark.style)) continue;
      const auto vertices = picture_.Vertices(i);
      if (const double distance = DistanceTo(vertices, at_); distance <= nearest_) {
        nearest_ = distance;
        found_ = mark.element;
      }
      if (mark.kind != MarkKind::Ring) continue;
      area = mark.element;
      if (CrossesOddly(vertices, at_)) inside = !inside;
      size = std::max(size, AreaOf(vertices));
    }
    endArea();
  }

  void LookAtTexts() {
    const Extents box = picture_.View();
    for (const PictureText& text : picture_.Texts()) {
      if (IsHidden(text.style)) continue;
      const double distance = std::hypot(at_.x - text.at.x, at_.y - text.at.y);
      const bool onText = IsOn(text, TextHeight(text, box), at_, reach_ / 2);
      if (distance > nearest_ && (!onText || (found_ && nearest_ < reach_ / 2))) continue;
      nearest_ = std::min(distance, nearest_);
      found_ = text.element;
    }
  }

  const Picture& picture_;
  const std::vector<bool>& hidden_;
  PicturePoint at_;
  double nearest_, reach_;
  double smallest_ = std::numeric_limits<double>::max();
  std::optional<std::uint32_t> found_, surrounding_;
};

}  // namespace

std::optional<std::uint32_t> ElementAt(const Picture& picture, const std::vector<bool>& hiddenLayers, PicturePoint at,
                                       double reach) {
  return Search(picture, hiddenLayers, at, reach).Element();
}

}  // namespace tesselink
