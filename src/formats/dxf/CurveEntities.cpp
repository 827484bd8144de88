// SPDX-License-Identifier: MIT
#include "formats/dxf/CurveEntities.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "core/run/Report.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

constexpr double kPi = std::numbers::pi;

}  // namespace

// A circle that is tilted against the map is no circle there.
bool MakeCircle(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10) || !groups.Has(40)) return Damaged(context, "has no centre or no radius");
  const ObjectCoordinates plane(groups.Extrusion());
  const double radius = std::fabs(groups.Number(40, 0));
  if (plane.IsTilted()) {
    NoteCurve(context, AppendCircle(context.chain, groups.Point(0), radius, context.source.tolerance));
    ToWorld(context, plane);
    element.Closed = true;
    return StoreChain(context, element, kPolyline);
  }
  return StoreCurve(context, element, {radius, 0, 0}) &&
         StorePoint(context, element, kCircle, plane.ToWorld(groups.Point(0)));
}

bool MakeArc(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10) || !groups.Has(40)) return Damaged(context, "has no centre or no radius");
  const ObjectCoordinates plane(groups.Extrusion());
  const double radius = std::fabs(groups.Number(40, 0));
  double start = groups.Number(50, 0), end = groups.Number(51, 0);
  if (!(end > start && end - start <= 360)) {
    const double sweep = std::fmod(end - start, 360);
    end = start + (sweep > 0 ? sweep : sweep + 360);
  }
  if (!std::isfinite(start) || !std::isfinite(end)) return Damaged(context, "has an angle that is no number");
  if (plane.IsTilted()) {
    NoteCurve(context, AppendArc(context.chain, groups.Point(0), radius, start, end - start, context.source.tolerance));
    ToWorld(context, plane);
    return StoreChain(context, element, kPolyline);
  }
  if (plane.IsMirrored()) {
    start = 180 - std::exchange(end, 180 - start);
    const double turn = start < 0 ? 360 : 0;
    start += turn;
    end += turn;
  }
  return StoreCurve(context, element, {radius, start, end}) &&
         StorePoint(context, element, kArc, plane.ToWorld(groups.Point(0)));
}

bool MakeEllipse(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10) || !groups.Has(11)) return Damaged(context, "has no centre or no axis");
  const ObjectCoordinates plane(groups.Extrusion());
  const Vertex& major = groups.Point(1);
  const double ratio = groups.Number(40, 1);
  const Vertex across = Cross(plane.Normal(), major);
  const Vertex minor{ratio * across.x, ratio * across.y, ratio * across.z};
  const double start = groups.Number(41, 0);
  double sweep = groups.Number(42, 2 * kPi) - start;
  if (!(std::hypot(major.x, major.y, major.z) > 0)) return Damaged(context, "has an axis without length");
  if (!std::isfinite(sweep) || !std::isfinite(ratio)) return Damaged(context, "has a parameter that is no number");
  constexpr double kRounding = 1e-9;
  if (sweep <= 0 || sweep > 2 * kPi + kRounding) {
    sweep = std::fmod(sweep, 2 * kPi);
    if (sweep <= 0) sweep += 2 * kPi;
  }
  element.Closed = sweep >= 2 * kPi - kRounding;
  NoteCurve(context, AppendEllipse(context.chain, groups.Point(0), major, minor, start,
                                   element.Closed ? 2 * kPi : sweep, context.source.tolerance));
  return StoreChain(context, element, kPolyline);
}

void GatherSpline(EntityContext& context) {
  SplineCurve& spline = context.spline;
  spline.Clear();
  const auto coordinate = [&context](VertexChain& points, int code) {
    if (code < 20) points.push_back({NumberHere(context), 0, 0});
    if (points.empty() || code < 20) return;
    (code < 30 ? points.back().y : points.back().z) = NumberHere(context);
  };
  GatherWith(context, [&](int code) {
    switch (code) {
      case 10:
      case 20:
      case 30:
        coordinate(spline.control, code);
        return true;
      case 11:
      case 21:
      case 31:
        coordinate(spline.fit, code);
        return true;
      case 40:
        spline.knots.push_back(NumberHere(context));
        return true;
      case 41:
        spline.weights.push_back(NumberHere(context));
        return true;
      default:
        return false;
    }
  });
}

bool MakeSpline(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  SplineCurve& spline = context.spline;
  // A degree that is not given follows from the number of knots.
  const auto implied =
      static_cast<std::int64_t>(spline.knots.size()) - static_cast<std::int64_t>(spline.control.size()) - 1;
  spline.degree = groups.Integer(71, static_cast<std::int32_t>(std::clamp<std::int64_t>(implied, 0, 1000)));
  spline.closed = (groups.Integer(70, 0) & 1) != 0;
  if (groups.Has(12)) spline.startTangent = groups.Point(2);
  if (groups.Has(13)) spline.endTangent = groups.Point(3);
  if (const std::string reason = WhyNoSpline(spline); !reason.empty()) {
    Warn(context, WarningKind::Splines, reason + "; straight segments through its points were delivered");
  }
  NoteCurve(context, AppendSpline(context.chain, spline, context.source.tolerance));
  element.Closed = spline.closed;
  return StoreChain(context, element, kPolyline);
}

}  // namespace tesselink
