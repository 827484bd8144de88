// SPDX-License-Identifier: MIT
// Where a block comes to lie: the coordinates of its definition as those of what it is inserted in.
#pragma once

#include <string>

#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "formats/dxf/ObjectCoordinates.h"

namespace tesselink {

/// An affine map: the images of the three axes, and of the origin.
struct Placement {
  Vertex x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1}, origin{};

  Vertex Direction(const Vertex& v) const {
    return {v.x * x.x + v.y * y.x + v.z * z.x, v.x * x.y + v.y * y.y + v.z * z.y, v.x * x.z + v.y * y.z + v.z * z.z};
  }
  Vertex At(const Vertex& v) const {
    const Vertex turned = Direction(v);
    return {origin.x + turned.x, origin.y + turned.y, origin.z + turned.z};
  }
  /// What another placement does first, and then this one.
  Placement After(const Placement& first) const {
    return {Direction(first.x), Direction(first.y), Direction(first.z), At(first.origin)};
  }
  /// Whether circles of the plane of x and y stay circles of it.
  bool KeepsCircles() const;
  /// Whether what runs counter-clockwise on the map runs clockwise then.
  bool IsMirrored() const { return x.x * y.y - x.y * y.x < 0; }
  /// The greatest factor by which it lengthens an axis.
  double GreatestScale() const;
};

/// What an insert says of its place. A point p of the block lies at plane (place + R (scale * (p - base))), R the
/// rotation; the columns and rows of an array are turned with it, but not scaled.
struct BlockPlace {
  Vertex place, scale{1, 1, 1};
  double rotation = 0;  ///< degrees
  ObjectCoordinates plane;
  std::int64_t columns = 1, rows = 1;
  double stepX = 0, stepY = 0;

  std::int64_t Count() const { return columns * rows; }
  /// The place of the array's n-th insertion, from 0, row by row.
  Vertex Location(std::int64_t n) const;
  /// How far it lies from the first one, as a map.
  Placement Step(std::int64_t n) const;
  Placement PlacementOf(std::int64_t n, const Vertex& base) const;
};

/// Makes an element that lies in a block what it is where the block is placed. Circles and arcs that are none there
/// become chains within the tolerance; a text has the height that is left across its baseline.
class Placing {
 public:
  explicit Placing(const CurveTolerance& tolerance) : tolerance_(tolerance) {}
  /// False when it lies beyond all numbers then, or is as large.
  bool Place(tEntity& element, const Placement& placement);
  /// Whether a curve was drawn there with fewer vertices than the tolerance takes.
  bool WasCoarse() const { return coarse_; }
  /// Whether z values lay beyond those of single precision there, and became 0.
  bool WasTooHigh() const { return tooHigh_; }

 private:
  void PlaceVertices(tEntity& element, const Placement& placement);
  void PlaceBulges(tEntity& element, const Placement& placement);
  void PlaceCurve(tEntity& element, const Placement& placement);
  void StoreEllipse(tEntity& element, const Placement& placement);
  void PlaceText(tEntity& element, const Placement& placement);

  CurveTolerance tolerance_;
  VertexChain chain_;
  bool coarse_ = false, tooHigh_ = false;
};

}  // namespace tesselink
