// Curves as chains of vertices: circles and arcs, bulges, ellipses and splines.
//
// A chain departs from its curve by at most 1/1000 of the curve's own radius or extent and turns by at most 10 degrees
// a step, except where the curve itself has a corner. The first and the last vertex lie on the curve's ends; a closed
// curve ends on its first vertex. Each function appends to a chain that the caller keeps and reuses, so that a curve
// costs no memory once the chain has grown. Values that are no number give vertices that are no number, never a chain
// without end.
#pragma once

#include <string>
#include <vector>

#include "core/element/tEntity.h"

namespace tesselink {

class tEntity;

struct Vertex {
  double x = 0, y = 0, z = 0;
  bool operator==(const Vertex&) const = default;
};

using VertexChain = std::vector<Vertex>;

/// Puts a chain in the place of an element's vertices.
void StoreVertices(tEntity& entity, const VertexChain& chain);

/// An arc about a centre in the plane of the centre's z; angles in degrees, a positive sweep counter-clockwise. A sweep
/// of a whole turn or more is the circle, which ends on its first vertex.
void AppendArc(VertexChain& chain, const Vertex& centre, double radius, double start, double sweep);
/// The whole circle, from its easternmost point counter-clockwise.
void AppendCircle(VertexChain& chain, const Vertex& centre, double radius);
/// What an element that is a circle or an arc draws, in the plane of its z; arcs run counter-clockwise.
void AppendCurve(VertexChain& chain, const tEntity& circleOrArc);

/// The segment from one vertex to another that is an arc in the plane of x and y, without its first vertex: the bulge
/// is the tangent of a quarter of the arc's angle, positive counter-clockwise; 0 is a straight segment. z runs evenly.
void AppendBulge(VertexChain& chain, const Vertex& from, const Vertex& to, double bulge);

/// centre + cos t * major + sin t * minor, for t from `start` over `sweep` (radians, positive); the axes are at right
/// angles. A sweep of a whole turn or more is the closed ellipse.
void AppendEllipse(VertexChain& chain, const Vertex& centre, const Vertex& major, const Vertex& minor, double start,
                   double sweep);

/// A spline as drawings give it: a rational B-spline by control points, or points that it passes through.
struct SplineCurve {
  static constexpr int kGreatestDegree = 25;

  int degree = 3;
  bool closed = false;
  std::vector<double> knots;    ///< control points + degree + 1, not decreasing
  std::vector<double> weights;  ///< one a control point, or none when all are 1
  VertexChain control;
  VertexChain fit;      ///< passed through when there are no control points
  Vertex startTangent;  ///< of an interpolated curve; (0, 0, 0) leaves the end free
  Vertex endTangent;

  /// Forgets the curve and keeps its memory.
  void Clear();
};

/// Appends a spline: by control points evaluated after de Boor, by fit points as the cubic spline over the lengths of
/// its chords. What cannot be evaluated is appended as straight segments through its points, and the reason is
/// returned; it is empty for a curve.
std::string AppendSpline(VertexChain& chain, const SplineCurve& curve);

}  // namespace tesselink
