// SPDX-License-Identifier: MIT
// A window onto a picture, and what of a chain is seen in it.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/element/Extents.h"
#include "picture/Picture.h"

namespace tesselink {

/// A place on the screen, in pixels from the upper left corner; y grows downwards.
struct ScreenPoint {
  double x = 0, y = 0;
};

struct PictureView {
  double width = 1, height = 1;  ///< of the window, in pixels
  PicturePoint centre;           ///< the place of the drawing in the middle of the window
  double scale = 1;              ///< pixels to a unit of the drawing

  bool operator==(const PictureView&) const = default;

  /// The view that shows the whole box with a margin of so many pixels around it. A box of a single place is shown at
  /// a scale of 1.
  static PictureView Fit(const Extents& box, double width, double height, double margin);

  ScreenPoint ToScreen(PicturePoint at) const {
    return {Bounded(width / 2 + (at.x - centre.x) * scale), Bounded(height / 2 - (at.y - centre.y) * scale)};
  }
  PicturePoint ToDrawing(ScreenPoint at) const {
    return {centre.x + (at.x - width / 2) / scale, centre.y - (at.y - height / 2) / scale};
  }
  /// Shows the same place under `at` at another scale; the scale stays within what numbers can tell apart.
  void ZoomAbout(ScreenPoint at, double factor);
  /// Moves the drawing by so many pixels.
  void Pan(double right, double down);

 private:
  // So far outside, a place only tells a direction.
  static double Bounded(double pixels) {
    constexpr double kFarthest = 1e15;
    return pixels > kFarthest ? kFarthest : pixels > -kFarthest ? pixels : -kFarthest;
  }
};

/// A text's height is that of its capitals; a font's size is greater by this factor.
inline constexpr double kEmPerTextHeight = 1.4;

/// The height at which a text is drawn, in the drawing's unit: its own. Labels from attribute tables have heights that
/// have nothing to do with their drawing; they get not more than 1/40 of the box's longer side.
double TextHeight(const PictureText& text, const Extents& box);

/// Where a text lies about its place.
struct TextAnchor {
  int across = 0;  ///< 0 begins there, 1 is centred, 2 ends there
  int down = 0;    ///< 0 stands on it, 1 is centred, 2 hangs from it
};
TextAnchor AnchorOf(std::int16_t justification);

/// Shortens a segment to what of it lies within `margin` pixels around the view; false where nothing does.
bool ClipSegment(const PictureView& view, double margin, ScreenPoint& from, ScreenPoint& to);

/// Cuts chains into the pieces that are seen. Its buffer is reused from chain to chain.
class ChainTracer {
 public:
  /// Vertices closer than `tolerance` pixels to the one before are passed over.
  ChainTracer(const PictureView& view, double tolerance, double margin)
      : view_(view), tolerance_(tolerance), margin_(margin) {}

  /// Calls `piece` with the places of each piece, at least two of them; a chain of one vertex is a piece of one.
  template <typename Piece>
  void Trace(std::span<const PicturePoint> chain, Piece&& piece) {
    piece_.clear();
    if (chain.empty()) return;
    ScreenPoint last = view_.ToScreen(chain.front());
    if (chain.size() == 1 && Sees(last)) piece_.push_back(last);
    bool onPiece = false;  // the piece ends at `last`
    for (std::size_t i = 1; i < chain.size(); ++i) {
      const ScreenPoint next = view_.ToScreen(chain[i]);
      const bool isNear = std::abs(next.x - last.x) < tolerance_ && std::abs(next.y - last.y) < tolerance_;
      if (isNear && i + 1 < chain.size()) continue;
      ScreenPoint from = last, to = next;
      last = next;
      if (!ClipSegment(view_, margin_, from, to)) {
        onPiece = false;
        continue;
      }
      if (!onPiece) {
        if (!piece_.empty()) piece(std::span<const ScreenPoint>(piece_));
        piece_.assign(1, from);
      }
      piece_.push_back(to);
      onPiece = to.x == next.x && to.y == next.y;
    }
    if (!piece_.empty()) piece(std::span<const ScreenPoint>(piece_));
  }

  /// What of a ring is seen, as a polygon: its first vertex follows its last. Where the ring goes on outside, the
  /// polygon runs along the margin. Empty where nothing is seen.
  std::span<const ScreenPoint> Ring(std::span<const PicturePoint> ring);

  /// Whether a place lies in the view or its margin.
  bool Sees(ScreenPoint at) const {
    return at.x >= -margin_ && at.x <= view_.width + margin_ && at.y >= -margin_ && at.y <= view_.height + margin_;
  }

 private:
  PictureView view_;
  double tolerance_, margin_;
  std::vector<ScreenPoint> piece_, cut_;
};

}  // namespace tesselink
