// SPDX-License-Identifier: MIT
#include "core/element/VertexChains.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/element/VertexAlgebra.h"
#include "core/element/tEntity.h"

namespace tesselink {
namespace {

// 1 - cos(2.5 degrees) is 0.00095: within 1/1000 of the radius.
constexpr double kStep = 5 * kRadians;

// The step of an arc whose chord is so far from it; a whole turn where any is near enough.
double StepWithin(double distance, double radius) {
  const double sine = radius > 0 ? std::sqrt(distance / (2 * radius)) : 1;
  return sine < 1 ? 4 * std::asin(sine) : kTurn;
}

struct Steps {
  int count = 1;
  bool enough = true;
};

// How many equal steps an arc of this angle takes in a chain of some length. By the classic rule a short arc is judged
// by its extent, not by its radius: of an angle a in n steps the height is r (a / n)^2 / 8, which is to stay within
// 1/1000 of the longer side of its box, r a / sqrt 2.
Steps StepsOf(double angle, double radius, const CurveTolerance& tolerance, std::size_t length) {
  const double magnitude = std::min(std::fabs(angle), kTurn);
  const double classic = std::max(magnitude / kStep, std::sqrt(magnitude / 0.0056));
  double steps = classic, most = classic;
  if (!tolerance.IsClassic() && radius > 0) {
    const double step = std::min(tolerance.GreatestTurn(), StepWithin(tolerance.Distance(), radius));
    steps = magnitude / std::max(step, 1e-300);
    most = length < kMostVerticesOfChain ? static_cast<double>(kMostVerticesOfCurve) : std::max(classic, 1.0);
  }
  if (std::isnan(steps)) return {};
  return {std::max(1, static_cast<int>(std::ceil(std::min(steps, most) - 1e-9))), steps <= most};
}

Vertex OnCircle(const Vertex& centre, double radius, double angle) {
  return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle), centre.z};
}

}  // namespace

// Stores from the last vertex down, so that each array grows once.
void StoreVertices(tEntity& entity, const VertexChain& chain) {
  entity.ClearVertices();
  for (auto i = std::ssize(chain); i-- > 0;) {
    const Vertex& v = chain[static_cast<std::size_t>(i)];
    entity.x(i, v.x);
    entity.Y(i, v.y);
    entity.Height(i, v.z);
  }
}

CurveTolerance CurveTolerance::Scaled(double factor) const {
  const double magnitude = std::fabs(factor);
  if (IsClassic() || !(magnitude > 0) || !std::isfinite(magnitude)) return *this;
  return {std::max(distance_ / magnitude, std::numeric_limits<double>::min()), turn_};
}

bool AppendArc(VertexChain& chain, const Vertex& centre, double radius, double start, double sweep,
               const CurveTolerance& tolerance) {
  const bool whole = std::fabs(sweep) >= 360;
  const double from = start * kRadians;
  const double angle = whole ? std::copysign(kTurn, sweep) : sweep * kRadians;
  const auto [steps, enough] = StepsOf(angle, std::fabs(radius), tolerance, chain.size());
  const std::size_t first = chain.size();
  for (int i = 0; i < steps; ++i) chain.push_back(OnCircle(centre, radius, from + angle * i / steps));
  chain.push_back(whole ? Vertex(chain[first]) : OnCircle(centre, radius, from + angle));
  return enough;
}

bool AppendCircle(VertexChain& chain, const Vertex& centre, double radius, const CurveTolerance& tolerance) {
  return AppendArc(chain, centre, radius, 0, 360, tolerance);
}

bool AppendCurve(VertexChain& chain, const tEntity& entity, const CurveTolerance& tolerance) {
  const Vertex centre{entity.x(0), entity.Y(0), entity.Height(0)};
  const auto [radius, start, end] = entity.Curve();
  if (entity.bType == kCircle) return AppendCircle(chain, centre, radius, tolerance);
  return AppendArc(chain, centre, radius, start, end > start ? end - start : end - start + 360, tolerance);
}

BulgeArc::BulgeArc(const Vertex& from, const Vertex& to, double bulge) : from_(from) {
  const double dx = to.x - from.x, dy = to.y - from.y, chord = std::hypot(dx, dy);
  if (!(bulge != 0 && std::isfinite(bulge) && chord > 0 && std::isfinite(chord))) return;
  perSine_ = chord * ((1 / bulge + bulge) / 2);
  if (!std::isfinite(perSine_)) return;
  angle_ = 4 * std::atan(bulge);
  direction_ = std::atan2(dy, dx) - angle_ / 2;
}

double BulgeArc::Radius() const { return std::fabs(perSine_) / 2; }

Vertex BulgeArc::At(double passed) const {
  const double secant = perSine_ * std::sin(passed / 2);
  return {from_.x + secant * std::cos(direction_ + passed / 2), from_.y + secant * std::sin(direction_ + passed / 2),
          from_.z};
}

bool AppendBulge(VertexChain& chain, const Vertex& from, const Vertex& to, double bulge,
                 const CurveTolerance& tolerance) {
  bool enough = true;
  const BulgeArc arc(from, to, bulge);
  if (!arc.IsStraight()) {
    const Steps steps = StepsOf(arc.Angle(), arc.Radius(), tolerance, chain.size());
    enough = steps.enough;
    for (int i = 1; i < steps.count; ++i) {
      chain.push_back(arc.At(arc.Angle() * i / steps.count));
      chain.back().z = from.z + (to.z - from.z) * i / steps.count;
    }
  }
  chain.push_back(to);
  return enough;
}

// ---- ellipses

namespace {

// How far the parameter goes on from vertex to vertex: until the tangent has turned by the greatest angle, and no
// further than a step of its own.
class EllipseSteps {
 public:
  EllipseSteps(double a, double b, double sweep, const CurveTolerance& tolerance)
      : a_(a),
        b_(b),
        tolerance_(tolerance),
        regular_(a > 0 && b > 0 && std::isfinite(a) && std::isfinite(b)),
        even_(sweep / StepsOf(sweep, 0, tolerance, 0).count),
        least_(sweep / static_cast<double>(kMostVerticesOfCurve)),
        turn_(tolerance.IsClassic() ? kStep : tolerance.GreatestTurn()) {}

  double From(double t) {
    constexpr int kMostTurns = 200, kMostFineTurns = 1000;  // more than a whole turn needs is rounding
    const bool classic = tolerance_.IsClassic();
    const double most = classic || !(std::max(a_, b_) < kHuge) ? even_ : Within(t);
    const double turning = !regular_ || turns_ > (classic ? kMostTurns : kMostFineTurns) ? most : UntilTurned(t);
    const bool turned = turning > 0 && turning < most;
    turns_ += turned ? 1 : 0;
    return turned ? turning : most;
  }
  bool Enough() const { return enough_; }

 private:
  static constexpr double kHuge = 1e300;

  // The tangent's direction at t, and how much further t is when it has turned on by one step.
  double UntilTurned(double t) const {
    const double direction = std::atan2(b_ * std::cos(t), -a_ * std::sin(t)) + turn_;
    const double turned = std::atan2(-b_ * std::cos(direction), a_ * std::sin(direction));
    return std::remainder(turned - t, kTurn);
  }

  // Over a step s of t, a chord is 1 - cos(s / 2) times as far from the curve as the centre is from the tangent in its
  // middle. Steps end where an axis does: within a quarter that distance grows or falls throughout, and no part of the
  // curve lies beyond the chord's ends.
  double Within(double t) {
    constexpr double kQuarter = kPi / 2;
    const auto allowed = [&](double at) {
      const double tangent = regular_ ? 1 / std::hypot(std::sin(at) / b_, std::cos(at) / a_) : std::max(a_, b_);
      return StepWithin(tolerance_.Distance(), tangent);
    };
    const double ahead = (std::floor(t / kQuarter + 1e-9) + 1) * kQuarter - t;
    const double most = std::min(kPi / 4, ahead);
    double step = std::min(most, allowed(t));
    step = std::min(step, allowed(t + step));
    if (step >= std::min(least_, most)) return step;
    enough_ = false;
    return std::min(least_, most);
  }

  const double a_, b_;
  const CurveTolerance tolerance_;
  const bool regular_;
  const double even_, least_, turn_;
  int turns_ = 0;
  bool enough_ = true;
};

}  // namespace

bool DrawCurve(tEntity& entity, VertexChain& drawn, const CurveTolerance& tolerance) {
  drawn.clear();
  const bool enough = AppendCurve(drawn, entity, tolerance);
  entity.Closed = entity.bType == kCircle;
  entity.bType = kPolyline;
  StoreVertices(entity, drawn);
  return enough;
}

// A chain of several parts is drawn part by part, since its parts begin elsewhere afterwards.
bool DrawBulges(tEntity& entity, VertexChain& drawn, const CurveTolerance& tolerance) {
  bool enough = true;
  entity.Bulges.resize(static_cast<std::size_t>(entity.PointCount() + 1));
  drawn.clear();
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const tEntity::Index begin = entity.PartBegin(part), end = entity.PartEnd(part);
    if (part > 0) entity.Parts[part - 1] = std::ssize(drawn);
    if (begin < end) drawn.push_back(VertexAt(entity, begin));
    for (tEntity::Index i = begin; i + 1 < end; ++i) {
      const double bulge = entity.Bulges[static_cast<std::size_t>(i)];
      enough = AppendBulge(drawn, VertexAt(entity, i), VertexAt(entity, i + 1), bulge, tolerance) && enough;
    }
  }
  std::vector<tEntity::Index> parts;
  parts.swap(entity.Parts);
  StoreVertices(entity, drawn);
  entity.Parts.swap(parts);
  return enough;
}

bool AppendEllipse(VertexChain& chain, const Vertex& centre, const Vertex& major, const Vertex& minor, double start,
                   double sweep, const CurveTolerance& tolerance) {
  const bool whole = sweep >= kTurn;
  const double total = whole ? kTurn : sweep;
  if (std::fabs(start) > 1000) start = std::remainder(start, kTurn);  // so that a step changes it
  const auto at = [&](double t) { return centre + std::cos(t) * major + std::sin(t) * minor; };
  EllipseSteps steps(Length(major), Length(minor), total, tolerance);
  const std::size_t first = chain.size();
  chain.push_back(at(start));
  for (double passed = 0;;) {
    passed += steps.From(start + passed);
    if (!(passed < total * (1 - 1e-9))) break;
    chain.push_back(at(start + passed));
  }
  chain.push_back(whole ? Vertex(chain[first]) : at(start + total));
  return steps.Enough();
}

}  // namespace tesselink
