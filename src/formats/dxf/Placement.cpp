// SPDX-License-Identifier: MIT
#include "formats/dxf/Placement.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

constexpr double kRounding = 1e-12;
constexpr double kGreatestSingle = static_cast<double>(std::numeric_limits<float>::max());

// The direction of an angle, exact along the axes.
Vertex DirectionOf(double degrees) {
  const double turns = std::remainder(degrees, 360);
  if (turns == 0) return {1, 0, 0};
  if (std::fabs(turns) == 180) return {-1, 0, 0};
  if (std::fabs(turns) == 90) return {0, turns / 90, 0};
  return {std::cos(turns * kRadians), std::sin(turns * kRadians), 0};
}

double AngleOf(const Vertex& direction) { return std::atan2(direction.y, direction.x) / kRadians; }

double WithinATurn(double degrees) {
  const double within = std::fmod(degrees, 360);
  return within < 0 ? within + 360 : within;
}

}  // namespace

bool Placement::KeepsCircles() const {
  const double a = Length(x), b = Length(y), least = kRounding * a;
  return std::fabs(a - b) <= least && std::fabs(Dot(x, y)) <= least * b && std::fabs(x.z) <= least &&
         std::fabs(y.z) <= least;
}

double Placement::GreatestScale() const { return std::max({Length(x), Length(y), Length(z)}); }

Vertex BlockPlace::Location(std::int64_t n) const {
  const Vertex along = DirectionOf(rotation);
  const std::int64_t column = n % columns, row = n / columns;
  const double dx = static_cast<double>(column) * stepX, dy = static_cast<double>(row) * stepY;
  if (n == 0) return plane.ToWorld(place);
  return plane.ToWorld({place.x + dx * along.x - dy * along.y, place.y + dx * along.y + dy * along.x, place.z});
}

Placement BlockPlace::Step(std::int64_t n) const {
  Placement step;
  step.origin = Location(n) - Location(0);
  return step;
}

Placement BlockPlace::PlacementOf(std::int64_t n, const Vertex& base) const {
  const Vertex along = DirectionOf(rotation);
  Placement placement{plane.ToWorld({scale.x * along.x, scale.x * along.y, 0}),
                      plane.ToWorld({-scale.y * along.y, scale.y * along.x, 0}), plane.ToWorld({0, 0, scale.z}),
                      Location(n)};
  placement.origin = placement.At({-base.x, -base.y, -base.z});
  return placement;
}

bool Placing::Place(tEntity& element, const Placement& placement) {
  coarse_ = tooHigh_ = false;
  const bool isShape = element.bType == kPoint && element.TextSize != 0;
  if (element.bType == kText || isShape) PlaceText(element, placement);
  if (!element.Bulges.empty()) PlaceBulges(element, placement);
  if (IsCurve(element.bType)) {
    PlaceCurve(element, placement);
  } else {
    PlaceVertices(element, placement);
  }
  for (tEntity::Index i = 0; i < std::ssize(element.AllZ()); ++i) {
    if (std::fabs(element.Height(i)) <= kGreatestSingle) continue;
    element.Height(i, 0);
    tooHigh_ = true;
  }
  const auto isFinite = [](double value) { return std::isfinite(value); };
  const auto [radius, start, end] = element.Curve();
  return std::all_of(element.AllX().begin(), element.AllX().end(), isFinite) &&
         std::all_of(element.AllY().begin(), element.AllY().end(), isFinite) && std::fabs(radius) <= kGreatestSingle &&
         isFinite(start) && isFinite(end) && isFinite(element.TextSize) && isFinite(element.TextAng);
}

void Placing::PlaceVertices(tEntity& element, const Placement& placement) {
  if (element.IsArea && placement.IsMirrored()) element.TurnParts();
  // A single vertex at the base of the block is one, whatever it counts as elsewhere.
  for (tEntity::Index i = 0; i < std::ssize(element.AllX()); ++i) {
    const Vertex at = placement.At({element.x(i), element.Y(i), element.Height(i)});
    element.x(i, at.x);
    element.Y(i, at.y);
    element.Height(i, at.z);
  }
}

// What is drawn here is enlarged afterwards.
void Placing::PlaceBulges(tEntity& element, const Placement& placement) {
  if (!placement.KeepsCircles()) {
    coarse_ = !DrawBulges(element, chain_, tolerance_.Scaled(placement.GreatestScale()));
    element.Lost |= kLostCurve;
  } else if (placement.IsMirrored()) {
    for (double& bulge : element.Bulges) bulge = -bulge;
  }
}

void Placing::PlaceCurve(tEntity& element, const Placement& placement) {
  if (!placement.KeepsCircles()) return StoreEllipse(element, placement);
  auto [radius, start, end] = element.Curve();
  const double sweep = end - start, turn = AngleOf(placement.x);
  if (element.bType == kArc) {
    start = WithinATurn(placement.IsMirrored() ? turn - end : turn + start);
    end = start + sweep;
  }
  element.Curve({radius * Length(placement.x), start, end});
  PlaceVertices(element, placement);
}

// The images of two radii at right angles are conjugate; the axes of the ellipse lie at an angle to them.
void Placing::StoreEllipse(tEntity& element, const Placement& placement) {
  const auto [radius, from, to] = element.Curve();
  const bool whole = element.bType == kCircle;
  const Vertex centre = placement.At({element.x(0), element.Y(0), element.Height(0)});
  const Vertex u = placement.Direction({radius, 0, 0}), v = placement.Direction({0, radius, 0});
  const double t = std::atan2(2 * Dot(u, v), Dot(u, u) - Dot(v, v)) / 2, c = std::cos(t), s = std::sin(t);
  const Vertex major = c * u + s * v, minor = c * v - s * u;
  const double sweep = whole ? kTurn : (to > from ? to - from : to - from + 360) * kRadians;
  chain_.clear();
  coarse_ = !AppendEllipse(chain_, centre, major, minor, whole ? 0 : from * kRadians - t, sweep, tolerance_);
  element.bType = kPolyline;
  element.Closed = sweep >= kTurn;
  element.Lost |= kLostCurve;
  element.Curve({});
  StoreVertices(element, chain_);
}

// The height is what the text has across its baseline, which need not run along an axis of the block.
void Placing::PlaceText(tEntity& element, const Placement& placement) {
  if (placement.KeepsCircles()) {
    const double turn = AngleOf(placement.x);
    element.TextAng = placement.IsMirrored() ? turn - element.TextAng : turn + element.TextAng;
    element.TextSize *= Length(placement.y);
    return;
  }
  const Vertex along = DirectionOf(element.TextAng);
  const Vertex baseline = placement.Direction(along), up = placement.Direction({-along.y, along.x, 0});
  element.TextAng = AngleOf(baseline);
  const double stretched = Length(baseline);
  element.TextSize *= stretched > 0 ? Length(Cross(baseline, up)) / stretched : 0;
}

}  // namespace tesselink
