// SPDX-License-Identifier: MIT
// The window that a run takes elements from.
#pragma once

#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"

namespace tesselink {

/// A rectangle along the axes, in drawing units; its edge belongs to it.
struct ClipBox {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;

  bool Holds(double x, double y) const { return x >= minX && x <= maxX && y >= minY && y <= maxY; }
};

/// Tells which elements touch a box: points with one of theirs in it, texts with their place, chains with any of their
/// segments, circles and arcs with their curve, areas also where they surround it.
class ClipWindow {
 public:
  ClipWindow(const ClipBox& box, const CurveTolerance& tolerance) : box_(box), tolerance_(tolerance) {}

  bool Touches(const tEntity& entity);

 private:
  bool TouchesCurve(const tEntity& circleOrArc);
  bool TouchesChain(const tEntity& chain) const;
  bool TouchesSegment(const Vertex& from, const Vertex& to) const;

  ClipBox box_;
  CurveTolerance tolerance_;
  VertexChain chain_;
  tEntity drawn_;
};

}  // namespace tesselink
