// SPDX-License-Identifier: MIT
#include "formats/dxf/ObjectCoordinates.h"

#include <cmath>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

Vertex Normalised(const Vertex& v) {
  const double length = std::hypot(v.x, v.y, v.z);
  return {v.x / length, v.y / length, v.z / length};
}

}  // namespace

ObjectCoordinates::ObjectCoordinates(const Vertex& extrusion) {
  const double length = std::hypot(extrusion.x, extrusion.y, extrusion.z);
  if (!(length > 0) || !std::isfinite(length)) return;
  n_ = Normalised(extrusion);
  constexpr double kRounding = 1e-12;
  if (std::fabs(n_.x) < kRounding && std::fabs(n_.y) < kRounding) {
    facing_ = n_.z > 0 ? Facing::Up : Facing::Down;
    n_ = {0, 0, n_.z > 0 ? 1.0 : -1.0};
    return;
  }
  facing_ = Facing::Tilted;
  constexpr double kNearZ = 1.0 / 64;
  const bool nearZ = std::fabs(n_.x) < kNearZ && std::fabs(n_.y) < kNearZ;
  x_ = Normalised(Cross(nearZ ? Vertex{0, 1, 0} : Vertex{0, 0, 1}, n_));
  y_ = Normalised(Cross(n_, x_));
}

double ObjectCoordinates::AngleToWorld(double degrees) const {
  if (IsWorld()) return degrees;
  if (IsMirrored()) return 180 - degrees;
  const Vertex direction = ToWorld({std::cos(degrees * kRadians), std::sin(degrees * kRadians), 0});
  return std::atan2(direction.y, direction.x) / kRadians;
}

}  // namespace tesselink
