// SPDX-License-Identifier: MIT
// Curves as chains of vertices: circles and arcs, bulges and ellipses. Splines are in SplineChains.h.
//
// The first and the last vertex of a chain lie on the curve's ends; a closed curve ends on its first vertex. Each
// function appends to a chain that the caller keeps and reuses, so that a curve costs no memory once the chain has
// grown. Values that are no number give vertices that are no number, never a chain without end.
#pragma once

#include <cstddef>
#include <numbers>
#include <vector>

#include "core/element/tEntity.h"

namespace tesselink {

struct Vertex {
  double x = 0, y = 0, z = 0;
  bool operator==(const Vertex&) const = default;
};

using VertexChain = std::vector<Vertex>;

inline Vertex VertexAt(const tEntity& entity, tEntity::Index i) { return {entity.x(i), entity.Y(i), entity.Height(i)}; }

/// Puts a chain in the place of an element's vertices.
void StoreVertices(tEntity& entity, const VertexChain& chain);

/// How far a chain may depart from its curve.
class CurveTolerance {
 public:
  /// The classic dialect's chains: within 1/1000 of the curve's radius or extent, in steps that turn by 10 degrees at
  /// most except where the curve has a corner.
  static constexpr CurveTolerance Classic() { return {0, 0}; }
  /// The lesser of 0.01 drawing units and what steps give that turn by 1.62 degrees: a ten-thousandth of the radius.
  static constexpr CurveTolerance Standard() { return {0.01, 0.028284}; }
  /// A distance in drawing units, greater than 0. A circle has 8 vertices at least.
  static constexpr CurveTolerance Within(double distance) { return {distance, std::numbers::pi / 4}; }

  /// That of a curve which is drawn so many times larger afterwards.
  CurveTolerance Scaled(double factor) const;

  constexpr bool IsClassic() const { return distance_ == 0; }
  /// Drawing units.
  double Distance() const { return distance_; }
  /// By which a chain may turn in one step; radians.
  double GreatestTurn() const { return turn_; }

 private:
  constexpr CurveTolerance(double distance, double turn) : distance_(distance), turn_(turn) {}
  double distance_, turn_;
};

/// What a curve may add to a chain, so that neither a huge curve nor many in one chain exhaust memory: beyond it a
/// curve is drawn as coarsely as need be, and the function that draws it says so by false.
constexpr std::size_t kMostVerticesOfCurve = 100'000;
/// The length of a chain from which on its curves get no more vertices than in the classic dialect.
constexpr std::size_t kMostVerticesOfChain = 2'000'000;

/// An arc about a centre in the plane of the centre's z; angles in degrees, a positive sweep counter-clockwise. A sweep
/// of a whole turn or more is the circle, which ends on its first vertex.
bool AppendArc(VertexChain& chain, const Vertex& centre, double radius, double start, double sweep,
               const CurveTolerance& tolerance);
/// The whole circle, from its easternmost point counter-clockwise.
bool AppendCircle(VertexChain& chain, const Vertex& centre, double radius, const CurveTolerance& tolerance);
/// What an element that is a circle or an arc draws, in the plane of its z; arcs run counter-clockwise.
bool AppendCurve(VertexChain& chain, const tEntity& circleOrArc, const CurveTolerance& tolerance);

/// Makes a circle or an arc a chain of what it draws, by way of a chain whose memory is used again.
bool DrawCurve(tEntity& circleOrArc, VertexChain& drawn, const CurveTolerance& tolerance);

/// A segment that is an arc in the plane of x and y: the bulge is the tangent of a quarter of the arc's angle, positive
/// counter-clockwise. Points of it follow from the angle passed along a secant, which stays exact for the flattest
/// arcs, whose centre is too far away to compute with.
class BulgeArc {
 public:
  BulgeArc(const Vertex& from, const Vertex& to, double bulge);
  /// Whether the segment is straight: no bulge, no length, something is no number or the radius too large for one.
  bool IsStraight() const { return angle_ == 0; }
  /// Of the whole arc in radians, and its radius.
  double Angle() const { return angle_; }
  double Radius() const;
  /// The tangent's direction where the arc begins; radians.
  double Direction() const { return direction_; }
  /// The point in x and y at which so much of the angle is passed.
  Vertex At(double passed) const;

 private:
  Vertex from_;
  double angle_ = 0, direction_ = 0;
  double perSine_ = 0;  // length of a secant, for the sine of half the angle passed
};

/// The segment from one vertex to another with a bulge, without its first vertex. z runs evenly.
bool AppendBulge(VertexChain& chain, const Vertex& from, const Vertex& to, double bulge,
                 const CurveTolerance& tolerance);

/// Draws the segments of an element that have a bulge, by way of a chain whose memory is used again.
bool DrawBulges(tEntity& entity, VertexChain& drawn, const CurveTolerance& tolerance);

/// centre + cos t * major + sin t * minor, for t from `start` over `sweep` (radians, positive); the axes are at right
/// angles. A sweep of a whole turn or more is the closed ellipse.
bool AppendEllipse(VertexChain& chain, const Vertex& centre, const Vertex& major, const Vertex& minor, double start,
                   double sweep, const CurveTolerance& tolerance);

}  // namespace tesselink
