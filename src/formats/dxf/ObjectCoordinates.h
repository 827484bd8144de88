// SPDX-License-Identifier: MIT
// Object coordinates: the plane that an extrusion direction puts a flat entity in.
#pragma once

#include <cmath>

#include "core/element/VertexChains.h"

namespace tesselink {

/// The axes that belong to an extrusion direction by the arbitrary axis rule: the x axis is Y x N where N is within
/// 1/64 of the z axis, else Z x N; the y axis is N x X.
class ObjectCoordinates {
 public:
  /// World coordinates.
  ObjectCoordinates() = default;
  /// A direction without length or that is no number gives world coordinates.
  explicit ObjectCoordinates(const Vertex& extrusion);

  /// Whether object coordinates are world coordinates.
  bool IsWorld() const { return facing_ == Facing::Up; }
  /// Whether the plane is seen from below: x and z change their sign, angles run the other way.
  bool IsMirrored() const { return facing_ == Facing::Down; }
  /// Whether the plane stands at an angle to the map.
  bool IsTilted() const { return facing_ == Facing::Tilted; }

  Vertex ToWorld(const Vertex& v) const {
    if (IsWorld()) return v;
    if (IsMirrored()) return {-v.x, v.y, -v.z};
    return {v.x * x_.x + v.y * y_.x + v.z * n_.x, v.x * x_.y + v.y * y_.y + v.z * n_.y,
            v.x * x_.z + v.y * y_.z + v.z * n_.z};
  }
  Vertex FromWorld(const Vertex& v) const {
    if (IsTilted()) return {Along(v, x_), Along(v, y_), Along(v, n_)};
    return ToWorld(v);
  }
  /// The direction that an angle of the plane has on the map; degrees.
  double AngleToWorld(double degrees) const;

  /// The direction of the plane, of length 1.
  const Vertex& Normal() const { return n_; }

 private:
  static double Along(const Vertex& v, const Vertex& axis) { return v.x * axis.x + v.y * axis.y + v.z * axis.z; }

  enum class Facing { Up, Down, Tilted };
  Facing facing_ = Facing::Up;
  Vertex x_{1, 0, 0}, y_{0, 1, 0}, n_{0, 0, 1};
};

/// a x b
inline Vertex Cross(const Vertex& a, const Vertex& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

}  // namespace tesselink
