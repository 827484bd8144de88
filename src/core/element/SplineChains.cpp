// SPDX-License-Identifier: MIT
#include "core/element/SplineChains.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

bool IsFinite(const Vertex& a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

// When a curve is refined no further. The distance and the turn are those of the classic dialect.
struct Limits {
  double error = 0;      // greatest distance of the curve from a chord
  double smallest = 0;   // length below which a piece is not looked at
  std::size_t most = 0;  // chain length at which refining ends, whatever the curve
};

double DistanceFromChord(const Vertex& p, const Vertex& from, const Vertex& to) {
  const Vertex chord = to - from, offset = p - from;
  const double square = Dot(chord, chord);
  const double t = square > 0 ? std::clamp(Dot(offset, chord) / square, 0.0, 1.0) : 0;
  return Length(offset - t * chord);
}

double AngleBetween(const Vertex& a, const Vertex& b) {
  const double lengths = Length(a) * Length(b);
  return lengths > 0 ? std::acos(std::clamp(Dot(a, b) / lengths, -1.0, 1.0)) : 0;
}

// Whether a piece may be drawn as one chord, judged by three points between its ends.
template <typename Curve>
bool IsStraight(const Curve& at, double from, const Vertex& first, double to, const Vertex& last,
                const Limits& limits) {
  constexpr double kMostTurn = 6 * kRadians;
  std::array<Vertex, 5> points{first, {}, {}, {}, last};
  double turn = 0, length = 0, distance = 0;
  for (std::size_t i = 1; i < 4; ++i) {
    points[i] = at(from + (to - from) * static_cast<double>(i) / 4);
    if (!IsFinite(points[i])) return true;
    distance = std::max(distance, DistanceFromChord(points[i], first, last));
  }
  for (std::size_t i = 1; i < 5; ++i) {
    length += Length(points[i] - points[i - 1]);
    if (i > 1) turn += AngleBetween(points[i - 1] - points[i - 2], points[i] - points[i - 1]);
  }
  return length < limits.smallest || (turn <= kMostTurn && distance <= limits.error);
}

// Appends the curve between two parameters without its first vertex, halving until each piece is straight enough.
template <typename Curve>
void AppendRefined(VertexChain& chain, const Curve& at, double from, double to, const Limits& limits) {
  constexpr int kDeepest = 8;
  struct Piece {
    double to;
    Vertex last;
    int depth;
  };
  std::array<Piece, kDeepest + 1> waiting;
  std::size_t count = 0;
  waiting[count++] = {to, at(to), 0};
  Vertex first = at(from);
  while (count > 0) {
    Piece& piece = waiting[count - 1];
    if (piece.depth == kDeepest || chain.size() >= limits.most ||
        IsStraight(at, from, first, piece.to, piece.last, limits)) {
      chain.push_back(piece.last);
      from = piece.to;
      first = piece.last;
      --count;
    } else {
      const double middle = from + (piece.to - from) / 2;
      ++piece.depth;
      waiting[count] = {middle, at(middle), piece.depth};
      ++count;
    }
  }
}

// The larger side of the box around some points of the curve; never more than the curve's own extent.
class SideOfBox {
 public:
  void Add(const Vertex& v) {
    least_ = {std::min(least_.x, v.x), std::min(least_.y, v.y), std::min(least_.z, v.z)};
    most_ = {std::max(most_.x, v.x), std::max(most_.y, v.y), std::max(most_.z, v.z)};
  }
  double Largest() const {
    const Vertex side = most_ - least_;
    return std::max({side.x, side.y, side.z, 0.0});
  }

 private:
  Vertex least_{1e300, 1e300, 1e300}, most_{-1e300, -1e300, -1e300};
};

double SmallestOf(const SideOfBox& box) { return box.Largest() * 1e-5; }

Limits LimitsFor(const SideOfBox& box, std::size_t length, std::size_t pieces) {
  constexpr std::size_t kMostPerPiece = 100;
  return {box.Largest() * 0.0008, SmallestOf(box), length + pieces * kMostPerPiece + 1000};
}

struct Homogeneous {
  Vertex v;
  double w = 1;

  Vertex Projected() const { return w == 1 ? v : (1 / w) * v; }
};

Homogeneous Mixed(const Homogeneous& a, const Homogeneous& b, double f) {
  return {(1 - f) * a.v + f * b.v, (1 - f) * a.w + f * b.w};
}

// A piece of a curve as a rational Bezier curve: it begins and ends on its first and last control point and lies within
// the hull of all, since weights are positive.
struct Bezier {
  std::array<Homogeneous, SplineCurve::kGreatestDegree + 1> points;
  std::size_t degree = 0;
  int depth = 0;

  Vertex First() const { return points[0].Projected(); }
  Vertex Last() const { return points[degree].Projected(); }

  // Keeps the second half and gives the first, after de Casteljau.
  void TakeFirstHalf(Bezier& half) {
    half.degree = degree;
    half.depth = ++depth;
    for (std::size_t k = 0; k <= degree; ++k) {
      half.points[k] = points[0];
      for (std::size_t i = 0; i + k < degree; ++i) points[i] = Mixed(points[i], points[i + 1], 0.5);
    }
  }
};

// Appends pieces of a curve within a tolerance: a chord is near enough when all control points are near it, as what is
// near a segment is convex.
class BezierChain {
 public:
  BezierChain(VertexChain& chain, const CurveTolerance& tolerance, double smallest, std::size_t pieces)
      : chain_(chain), tolerance_(tolerance), smallest_(smallest) {
    const bool room = chain.size() < kMostVerticesOfChain;
    most_ = chain.size() + pieces + (room ? kMostVerticesOfCurve : 0);
  }

  // Without the first vertex.
  void Append(const Bezier& whole) {
    constexpr int kDeepest = 30;
    waiting_.assign(1, whole);
    while (!waiting_.empty()) {
      const bool straight = IsStraight(waiting_.back());
      if (straight || waiting_.back().depth == kDeepest || chain_.size() + waiting_.size() >= most_) {
        enough_ = enough_ && straight;
        chain_.push_back(waiting_.back().Last());
        waiting_.pop_back();
      } else {
        waiting_.emplace_back();
        waiting_[waiting_.size() - 2].TakeFirstHalf(waiting_.back());
      }
    }
  }
  bool Enough() const { return enough_; }

 private:
  // Where the curve has a corner, halving ends at the smallest length.
  bool IsStraight(const Bezier& piece) const {
    const Vertex first = piece.First(), last = piece.Last();
    Vertex before = first, leg;
    double distance = 0, turn = 0, length = 0;
    for (std::size_t i = 1; i <= piece.degree; ++i) {
      const Vertex point = piece.points[i].Projected();
      if (!IsFinite(point)) return true;
      distance = std::max(distance, DistanceFromChord(point, first, last));
      turn += AngleBetween(leg, point - before);
      leg = Length(point - before) > 0 ? point - before : leg;
      length += Length(point - before);
      before = point;
    }
    return distance <= tolerance_.Distance() && (turn <= tolerance_.GreatestTurn() || length <= smallest_);
  }

  VertexChain& chain_;
  const CurveTolerance tolerance_;
  const double smallest_;
  std::size_t most_ = 0;
  std::vector<Bezier> waiting_;
  bool enough_ = true;
};

// A rational B-spline evaluated after de Boor, in homogeneous coordinates.
class BSpline {
 public:
  explicit BSpline(const SplineCurve& curve) : curve_(curve), degree_(static_cast<std::size_t>(curve.degree)) {}

  std::size_t FirstSpan() const { return degree_; }
  std::size_t SpanCount() const { return curve_.control.size(); }
  double Knot(std::size_t i) const { return curve_.knots[i]; }
  bool IsEmpty(std::size_t span) const { return !(Knot(span + 1) > Knot(span)); }

  Vertex At(std::size_t span, double t) const {
    return Steps(span, [t](std::size_t) { return t; }).Projected();
  }
  // A control point is where de Boor's steps arrive when as many of them as its number go by the end of the span, and
  // the others by its beginning.
  void ToBezier(std::size_t span, Bezier& piece) const {
    piece.degree = degree_;
    for (std::size_t j = 0; j <= degree_; ++j) {
      piece.points[j] = Steps(span, [&](std::size_t r) { return Knot(r <= j ? span + 1 : span); });
    }
  }

 private:
  template <typename Parameter>
  Homogeneous Steps(std::size_t span, const Parameter& parameter) const {
    std::array<Homogeneous, SplineCurve::kGreatestDegree + 1> d;
    for (std::size_t j = 0; j <= degree_; ++j) {
      const std::size_t i = span - degree_ + j;
      const double w = curve_.weights.empty() ? 1 : curve_.weights[i];
      d[j] = {w * curve_.control[i], w};
    }
    for (std::size_t r = 1; r <= degree_; ++r) {
      const double t = parameter(r);
      for (std::size_t j = degree_; j >= r; --j) {
        const double low = Knot(span - degree_ + j), high = Knot(span + 1 + j - r);
        d[j] = Mixed(d[j - 1], d[j], high > low ? (t - low) / (high - low) : 0);
      }
    }
    return d[degree_];
  }

  const SplineCurve& curve_;
  std::size_t degree_;
};

bool AppendBSpline(VertexChain& chain, const SplineCurve& curve, const CurveTolerance& tolerance) {
  const BSpline spline(curve);
  SideOfBox box;
  std::size_t spans = 0;
  for (std::size_t i = spline.FirstSpan(); i < spline.SpanCount(); ++i) {
    if (spline.IsEmpty(i)) continue;
    if (spans++ == 0) chain.push_back(spline.At(i, spline.Knot(i)));
    for (const double part : {0.0, 0.5, 1.0}) {
      box.Add(spline.At(i, spline.Knot(i) + part * (spline.Knot(i + 1) - spline.Knot(i))));
    }
  }
  if (!tolerance.IsClassic()) {
    Bezier piece;
    BezierChain pieces(chain, tolerance, SmallestOf(box), spans);
    for (std::size_t i = spline.FirstSpan(); i < spline.SpanCount(); ++i) {
      if (spline.IsEmpty(i)) continue;
      spline.ToBezier(i, piece);
      pieces.Append(piece);
    }
    return pieces.Enough();
  }
  const Limits limits = LimitsFor(box, chain.size(), spans * static_cast<std::size_t>(curve.degree));
  for (std::size_t i = spline.FirstSpan(); i < spline.SpanCount(); ++i) {
    if (spline.IsEmpty(i)) continue;
    const auto at = [&](double t) { return spline.At(i, t); };
    const double from = spline.Knot(i), step = (spline.Knot(i + 1) - from) / curve.degree;
    for (int piece = 1; piece <= curve.degree; ++piece) {
      const double to = piece == curve.degree ? spline.Knot(i + 1) : from + step * piece;
      AppendRefined(chain, at, from + step * (piece - 1), to, limits);
    }
  }
  return true;
}

// The interpolating cubic spline over chord lengths: the derivatives at the points solve a tridiagonal system, which
// for a closed curve without tangents is cyclic.
class Interpolation {
 public:
  explicit Interpolation(const SplineCurve& curve) {
    for (const Vertex& v : curve.fit) {
      if (points_.empty() || Length(v - points_.back()) > 0) points_.push_back(v);
    }
    if (curve.closed && points_.size() > 2 && !(points_.front() == points_.back())) points_.push_back(points_.front());
    if (points_.size() < 2) return;
    const std::size_t n = points_.size();
    for (std::size_t i = 0; i + 1 < n; ++i) chords_.push_back(Length(points_[i + 1] - points_[i]));
    const bool free = Length(curve.startTangent) == 0 && Length(curve.endTangent) == 0;
    if (curve.closed && free && n > 3) {
      SolveCyclic();
    } else {
      SolveOpen(curve.startTangent, curve.endTangent);
    }
  }

  std::size_t Pieces() const { return chords_.size(); }
  const Vertex& First() const { return points_.front(); }
  bool Empty() const { return points_.empty(); }

  // The curve in piece i, t from 0 to 1: cubic Hermite.
  Vertex At(std::size_t i, double t) const {
    if (t >= 1) return points_[i + 1];
    const double s = 1 - t, h = chords_[i];
    return s * s * (1 + 2 * t) * points_[i] + t * t * (3 - 2 * t) * points_[i + 1] + (s * s * t * h) * slopes_[i] -
           (t * t * s * h) * slopes_[i + 1];
  }
  void ToBezier(std::size_t i, Bezier& piece) const {
    const double third = chords_[i] / 3;
    piece.degree = 3;
    piece.points[0] = {points_[i]};
    piece.points[1] = {points_[i] + third * slopes_[i]};
    piece.points[2] = {points_[i + 1] - third * slopes_[i + 1]};
    piece.points[3] = {points_[i + 1]};
  }

 private:
  Vertex Slope(std::size_t i) const { return (1 / chords_[i]) * (points_[i + 1] - points_[i]); }

  // Row i of the inner equations: chords[i] m[i-1] + 2 (chords[i-1] + chords[i]) m[i] + chords[i-1] m[i+1] = right.
  Vertex Right(std::size_t before, std::size_t after) const {
    return 3 * (chords_[after] * Slope(before) + chords_[before] * Slope(after));
  }

  // Thomas' elimination; the first and last coupling of the system may be 0.
  static void Eliminate(std::span<const double> below, std::span<double> diagonal, std::span<const double> above,
                        std::span<Vertex> right) {
    for (std::size_t i = 1; i < diagonal.size(); ++i) {
      const double f = below[i] / diagonal[i - 1];
      diagonal[i] -= f * above[i - 1];
      right[i] = right[i] - f * right[i - 1];
    }
    for (std::size_t i = diagonal.size(); i-- > 0;) {
      if (i + 1 < diagonal.size()) right[i] = right[i] - above[i] * right[i + 1];
      right[i] = (1 / diagonal[i]) * right[i];
    }
  }

  void SolveOpen(const Vertex& startTangent, const Vertex& endTangent) {
    const std::size_t n = points_.size();
    std::vector<double> below(n, 0), diagonal(n, 1), above(n, 0);
    slopes_.resize(n);
    const auto end = [&](std::size_t i, const Vertex& tangent, double& coupling, std::size_t chord) {
      const double length = Length(tangent);
      if (length > 0) {
        slopes_[i] = (1 / length) * tangent;
      } else {
        diagonal[i] = 2;
        coupling = 1;
        slopes_[i] = 3 * Slope(chord);
      }
    };
    end(0, startTangent, above[0], 0);
    for (std::size_t i = 1; i + 1 < n; ++i) {
      below[i] = chords_[i];
      diagonal[i] = 2 * (chords_[i - 1] + chords_[i]);
      above[i] = chords_[i - 1];
      slopes_[i] = Right(i - 1, i);
    }
    end(n - 1, endTangent, below[n - 1], n - 2);
    Eliminate(below, diagonal, above, slopes_);
  }

  // After Sherman and Morrison: the two corners of the cyclic matrix as a correction of the tridiagonal one.
  void SolveCyclic() {
    const std::size_t n = chords_.size();
    std::vector<double> below(n), diagonal(n), above(n);
    slopes_.assign(n, {});
    for (std::size_t i = 0; i < n; ++i) {
      const std::size_t before = i == 0 ? n - 1 : i - 1;
      below[i] = chords_[i];
      diagonal[i] = 2 * (chords_[before] + chords_[i]);
      above[i] = chords_[before];
      slopes_[i] = Right(before, i);
    }
    const double corner = -diagonal[0], upper = below[0], lower = above[n - 1];
    diagonal[0] -= corner;
    diagonal[n - 1] -= upper * lower / corner;
    std::vector<double> again = diagonal;
    std::vector<Vertex> correction(n);
    correction.front().x = corner;
    correction.back().x = lower;
    Eliminate(below, diagonal, above, slopes_);
    Eliminate(below, again, above, correction);
    const double share = upper / corner;
    const double divisor = 1 + correction.front().x + share * correction.back().x;
    const Vertex factor = (1 / divisor) * (slopes_.front() + share * slopes_.back());
    for (std::size_t i = 0; i < n; ++i) slopes_[i] = slopes_[i] - correction[i].x * factor;
    slopes_.push_back(slopes_.front());
  }

  VertexChain points_, slopes_;
  std::vector<double> chords_;
};

bool AppendInterpolated(VertexChain& chain, const SplineCurve& curve, const CurveTolerance& tolerance) {
  const Interpolation spline(curve);
  if (spline.Empty()) return true;
  chain.push_back(spline.First());
  SideOfBox box;
  for (std::size_t i = 0; i < spline.Pieces(); ++i) {
    for (const double t : {0.0, 0.5, 1.0}) box.Add(spline.At(i, t));
  }
  if (!tolerance.IsClassic()) {
    Bezier piece;
    BezierChain pieces(chain, tolerance, SmallestOf(box), spline.Pieces());
    for (std::size_t i = 0; i < spline.Pieces(); ++i) {
      spline.ToBezier(i, piece);
      pieces.Append(piece);
    }
    return pieces.Enough();
  }
  const Limits limits = LimitsFor(box, chain.size(), spline.Pieces());
  for (std::size_t i = 0; i < spline.Pieces(); ++i) {
    const auto at = [&](double t) { return spline.At(i, t); };
    AppendRefined(chain, at, 0, 0.5, limits);
    AppendRefined(chain, at, 0.5, 1, limits);
  }
  return true;
}

// A closed curve ends on its first vertex: an end that misses it by rounding is moved, any other is joined to it.
void CloseChain(VertexChain& chain, std::size_t first) {
  if (chain.size() < first + 2) return;
  SideOfBox box;
  for (std::size_t i = first; i < chain.size(); ++i) box.Add(chain[i]);
  if (Length(chain.back() - chain[first]) <= box.Largest() * 1e-6) {
    chain.back() = chain[first];
  } else {
    chain.push_back(Vertex(chain[first]));
  }
}

}  // namespace

void SplineCurve::Clear() {
  degree = 3;
  closed = false;
  knots.clear();
  weights.clear();
  control.clear();
  fit.clear();
  startTangent = endTangent = {};
}

std::string WhyNoSpline(const SplineCurve& curve) {
  if (curve.control.empty()) return {};
  const std::size_t points = curve.control.size(), knots = curve.knots.size();
  if (curve.degree < 1 || curve.degree > SplineCurve::kGreatestDegree) {
    return "its degree " + std::to_string(curve.degree) + " is not between 1 and " +
           std::to_string(SplineCurve::kGreatestDegree);
  }
  const auto degree = static_cast<std::size_t>(curve.degree);
  if (points <= degree || knots != points + degree + 1) {
    return std::to_string(knots) + " knots do not go with " + std::to_string(points) + " control points of degree " +
           std::to_string(degree);
  }
  if (!std::is_sorted(curve.knots.begin(), curve.knots.end()) ||
      !std::all_of(curve.knots.begin(), curve.knots.end(), [](double k) { return std::isfinite(k); })) {
    return "its knots do not ascend";
  }
  if (!(curve.knots[points] > curve.knots[degree])) return "its knots are all the same";
  if (!curve.weights.empty() &&
      (curve.weights.size() != points ||
       !std::all_of(curve.weights.begin(), curve.weights.end(), [](double w) { return w > 0 && std::isfinite(w); }))) {
    return "its weights do not go with its control points";
  }
  return {};
}

bool AppendSpline(VertexChain& chain, const SplineCurve& curve, const CurveTolerance& tolerance) {
  const std::size_t first = chain.size();
  bool enough = true;
  if (curve.control.empty()) {
    enough = AppendInterpolated(chain, curve, tolerance);
  } else if (WhyNoSpline(curve).empty()) {
    enough = AppendBSpline(chain, curve, tolerance);
  } else {
    const VertexChain& points = curve.fit.empty() ? curve.control : curve.fit;
    chain.insert(chain.end(), points.begin(), points.end());
  }
  if (curve.closed) CloseChain(chain, first);
  return enough;
}

}  // namespace tesselink
