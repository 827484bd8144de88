// SPDX-License-Identifier: MIT
// Splines as chains of vertices; see VertexChains.h for what holds of all chains.
#pragma once

#include <string>
#include <vector>

#include "core/element/VertexChains.h"

namespace tesselink {

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

/// Why a spline cannot be evaluated; empty where it can.
std::string WhyNoSpline(const SplineCurve& curve);

/// Appends a spline: by control points after de Boor, by fit points as the cubic spline over the lengths of its chords.
/// What cannot be evaluated is appended as straight segments through its points. False where the tolerance would take
/// more vertices than a curve may have.
bool AppendSpline(VertexChain& chain, const SplineCurve& curve, const CurveTolerance& tolerance);

}  // namespace tesselink
