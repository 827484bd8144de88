// SPDX-License-Identifier: MIT
#include "formats/dxf/HatchEntities.h"

#include <algorithm>
#include <cmath>

#include "core/element/VertexAlgebra.h"
#include "core/run/Report.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/RingNesting.h"

namespace tesselink {
namespace {

enum PathFlag : std::int32_t { kPolylinePath = 2 };
enum EdgeType : std::int32_t { kNoEdge = 0, kLineEdge = 1, kArcEdge = 2, kEllipseEdge = 3, kSplineEdge = 4 };
enum Style : std::int32_t { kEveryOther = 0, kOutermost = 1, kIgnoringHoles = 2 };

// Edges give their ends by the angles at which they are seen; an ellipse runs by its parameter.
double Parameter(double degrees, double ratio) {
  const double angle = degrees * kRadians;
  return angle + std::remainder(std::atan2(std::sin(angle) / ratio, std::cos(angle)) - angle, kTurn);
}

// Ends that meet but for the rounding of a computed point.
bool Meet(const Vertex& a, const Vertex& b) {
  constexpr double kRounding = 1e-12;
  return Length(a - b) <= kRounding * Length(a);
}

// The boundary data of a hatch: groups whose meaning depends on those before them, from code 91 to the style.
class Boundaries {
 public:
  explicit Boundaries(EntityContext& context) : context_(context), ring_(context.scratch) {
    ring_.clear();
    context_.bulges.clear();
  }

  // Whether the group is one of them.
  bool Take(int code) {
    if (code == 91) {
      isWithin_ = true;
    } else if (isWithin_ && code == 75) {
      End();
      return false;
    } else if (isWithin_ && code == 92) {
      EndPath();
      isPolyline_ = (context_.source.scanner.Integer().value_or(0) & kPolylinePath) != 0;
    } else if (isWithin_) {
      isPolyline_ ? TakeVertex(code) : TakeEdge(code);
    } else {
      // Seeds of the pattern have the codes of vertices.
      return isBehind_ && code < 60;
    }
    return true;
  }
  // To be called once more at the end: a style may be missing.
  void End() {
    if (isWithin_) EndPath();
    isBehind_ = isBehind_ || isWithin_;
    isWithin_ = false;
  }

 private:
  void TakeVertex(int code) {
    if (code == 10) {
      ring_.push_back({NumberHere(context_), 0, 0});
    } else if (code == 20 && !ring_.empty()) {
      ring_.back().y = NumberHere(context_);
    } else if (code == 42 && !ring_.empty()) {
      context_.bulges.resize(ring_.size());
      context_.bulges.back() = NumberHere(context_);
    }
  }

  void TakeEdge(int code) {
    SplineCurve& spline = context_.spline;
    const auto add = [this](VertexChain& points, bool isX) {
      if (isX) points.push_back({NumberHere(context_), 0, 0});
      if (!isX && !points.empty()) points.back().y = NumberHere(context_);
    };
    const auto whole = [this] { return context_.source.scanner.Integer().value_or(0); };
    if (code == 72) {
      EndEdge();
      type_ = whole();
    } else if (code == 10 || code == 20) {
      add(spline.control, code == 10);
    } else if (code == 11 || code == 21) {
      add(spline.fit, code == 11);
    } else if (code == 40) {
      spline.knots.push_back(NumberHere(context_));
    } else if (code == 42) {
      spline.weights.push_back(NumberHere(context_));
    } else if (code == 50 || code == 51) {
      (code == 50 ? start_ : end_) = NumberHere(context_);
    } else if (code == 73) {
      isCounterClockwise_ = whole() != 0;
    } else if (code == 94) {
      spline.degree = whole();
    }
  }

  // Appends the edge in the direction in which it goes on from the one before.
  void EndEdge() {
    edge_.clear();
    Draw();
    type_ = kNoEdge;
    context_.spline.Clear();
    isCounterClockwise_ = true;
    if (edge_.empty()) return;
    const auto off = [](const Vertex& a, const Vertex& b) { return Length(a - b); };
    if (ring_.empty()) {
      ring_.assign(edge_.begin(), edge_.end());
      return;
    }
    const auto nearest = [&](const Vertex& v) { return std::min(off(v, edge_.front()), off(v, edge_.back())); };
    if (isFirstEdge_ && nearest(ring_.front()) < nearest(ring_.back())) std::reverse(ring_.begin(), ring_.end());
    isFirstEdge_ = false;
    if (off(ring_.back(), edge_.back()) < off(ring_.back(), edge_.front())) std::reverse(edge_.begin(), edge_.end());
    ring_.insert(ring_.end(), edge_.begin() + (Meet(ring_.back(), edge_.front()) ? 1 : 0), edge_.end());
  }

  void Draw() {
    const SplineCurve& given = context_.spline;
    const CurveTolerance& tolerance = context_.source.tolerance;
    const bool hasCentre = !given.control.empty();
    const double sign = isCounterClockwise_ ? 1 : -1, sweep = end_ > start_ ? end_ - start_ : end_ - start_ + 360;
    if (type_ == kLineEdge && hasCentre && !given.fit.empty()) {
      edge_.assign({given.control[0], given.fit[0]});
    } else if (type_ == kArcEdge && hasCentre && !given.knots.empty()) {
      NoteCurve(context_, AppendArc(edge_, given.control[0], given.knots[0], sign * start_, sign * sweep, tolerance));
    } else if (type_ == kEllipseEdge && hasCentre && !given.fit.empty() && !given.knots.empty()) {
      const Vertex& major = given.fit[0];
      const double ratio = given.knots[0], from = Parameter(start_, ratio), to = Parameter(start_ + sweep, ratio);
      NoteCurve(context_, AppendEllipse(edge_, given.control[0], major, sign * ratio * Vertex{-major.y, major.x, 0},
                                        from, to - from, tolerance));
    } else if (type_ == kSplineEdge) {
      NoteCurve(context_, AppendSpline(edge_, given, tolerance));
    }
  }

  // The path becomes a wire whose last vertex is its first one.
  void EndPath() {
    if (!isPolyline_) EndEdge();
    isFirstEdge_ = true;
    const std::vector<double>& bulges = context_.bulges;
    VertexChain& chain = context_.chain;
    const std::size_t begin = chain.size();
    if (!ring_.empty() && !Meet(ring_.front(), ring_.back())) ring_.push_back(Vertex(ring_.front()));
    for (std::size_t i = 0; i < ring_.size(); ++i) {
      const double bulge = i > 0 && i <= bulges.size() ? bulges[i - 1] : 0;
      if (bulge != 0) {
        NoteCurve(context_, AppendBulge(chain, ring_[i - 1], ring_[i], bulge, context_.source.tolerance));
      } else {
        chain.push_back(ring_[i]);
      }
    }
    const auto isWild = [](const Vertex& v) { return !IsFinite(v); };
    chain.erase(std::remove_if(chain.begin() + static_cast<std::ptrdiff_t>(begin), chain.end(), isWild), chain.end());
    EndRing(context_, begin);
    ring_.clear();
    context_.bulges.clear();
  }

  EntityContext& context_;
  VertexChain& ring_;  // of the path at hand
  VertexChain edge_;   // of the edge at hand
  bool isWithin_ = false, isBehind_ = false, isPolyline_ = false;
  bool isFirstEdge_ = true;  // of the path: it may have to be turned
  std::int32_t type_ = kNoEdge;
  double start_ = 0, end_ = 0;
  bool isCounterClockwise_ = true;
};

int DeepestRing(std::int32_t style) {
  if (style == kOutermost) return 1;
  return style == kIgnoringHoles ? 0 : kAnyDepth;
}

}  // namespace

void GatherHatch(EntityContext& context) {
  context.spline.Clear();
  Boundaries boundaries(context);
  context.hatch.clear();
  GatherWith(context, [&](int code) {
    if (code == 5) context.hatch = context.source.scanner.Text();
    return boundaries.Take(code);
  });
  boundaries.End();
}

bool MakeHatch(EntityContext& context, tEntity& element) {
  const ObjectCoordinates plane(context.groups.Extrusion());
  for (Vertex& v : context.chain) v.z = context.groups.Point(0).z;
  ToWorld(context, plane);
  if (context.wires.IsEmpty()) {
    context.hatch.clear();
    return Damaged(context, "has no boundary that surrounds anything");
  }
  context.lost |= kLostPattern;
  return StoreRings(context, element, DeepestRing(context.groups.Integer(75, kEveryOther)));
}

}  // namespace tesselink
