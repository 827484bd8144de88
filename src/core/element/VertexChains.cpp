#include "core/element/VertexChains.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "core/element/tEntity.h"

namespace tesselink {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTurn = 2 * kPi;
constexpr double kRadians = kPi / 180;
// 1 - cos(2.5 degrees) is 0.00095: within 1/1000 of the radius.
constexpr double kStep = 5 * kRadians;

Vertex operator+(const Vertex& a, const Vertex& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vertex operator-(const Vertex& a, const Vertex& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vertex operator*(double f, const Vertex& a) { return {f * a.x, f * a.y, f * a.z}; }
double Dot(const Vertex& a, const Vertex& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double Length(const Vertex& a) { return std::hypot(a.x, a.y, a.z); }
bool IsFinite(const Vertex& a) { return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z); }

// How many equal steps an arc of this angle takes. A short arc is judged by its extent, not by its radius: of an angle
// a in n steps the height is r (a / n)^2 / 8, which is to stay within 1/1000 of the longer side of its box, r a /
// sqrt 2.
int StepsOf(double angle) {
  const double magnitude = std::min(std::fabs(angle), kTurn);
  const double steps = std::max(magnitude / kStep, std::sqrt(magnitude / 0.0056));
  return std::isnan(steps) ? 1 : std::max(1, static_cast<int>(std::ceil(steps - 1e-9)));
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

void AppendArc(VertexChain& chain, const Vertex& centre, double radius, double start, double sweep) {
  const bool whole = std::fabs(sweep) >= 360;
  const double from = start * kRadians;
  const double angle = whole ? std::copysign(kTurn, sweep) : sweep * kRadians;
  const int steps = StepsOf(angle);
  const std::size_t first = chain.size();
  for (int i = 0; i < steps; ++i) chain.push_back(OnCircle(centre, radius, from + angle * i / steps));
  chain.push_back(whole ? Vertex(chain[first]) : OnCircle(centre, radius, from + angle));
}

void AppendCircle(VertexChain& chain, const Vertex& centre, double radius) { AppendArc(chain, centre, radius, 0, 360); }

void AppendCurve(VertexChain& chain, const tEntity& entity) {
  const Vertex centre{entity.x(0), entity.Y(0), entity.Height(0)};
  const auto [radius, start, end] = entity.Curve();
  if (entity.bType == kCircle) return AppendCircle(chain, centre, radius);
  AppendArc(chain, centre, radius, start, end > start ? end - start : end - start + 360);
}

// A point of the arc is reached from `from` along a secant, whose direction and length follow from the angle passed.
// That stays exact for the flattest arcs, whose centre is too far away to compute with.
void AppendBulge(VertexChain& chain, const Vertex& from, const Vertex& to, double bulge) {
  const double dx = to.x - from.x, dy = to.y - from.y, chord = std::hypot(dx, dy);
  if (bulge != 0 && std::isfinite(bulge) && chord > 0 && std::isfinite(chord)) {
    const double angle = 4 * std::atan(bulge);
    const double direction = std::atan2(dy, dx) - angle / 2;
    const double perSine = chord * ((1 / bulge + bulge) / 2);
    const int steps = StepsOf(angle);
    for (int i = 1; i < steps; ++i) {
      const double passed = angle * i / steps;
      const double secant = perSine * std::sin(passed / 2);
      chain.push_back({from.x + secant * std::cos(direction + passed / 2),
                       from.y + secant * std::sin(direction + passed / 2), from.z + (to.z - from.z) * i / steps});
    }
  }
  chain.push_back(to);
}

void AppendEllipse(VertexChain& chain, const Vertex& centre, const Vertex& major, const Vertex& minor, double start,
                   double sweep) {
  const double a = Length(major), b = Length(minor);
  const bool whole = sweep >= kTurn;
  const double total = whole ? kTurn : sweep;
  if (std::fabs(start) > 1000) start = std::remainder(start, kTurn);  // so that a step changes it
  const double step = total / StepsOf(total);
  const auto at = [&](double t) { return centre + std::cos(t) * major + std::sin(t) * minor; };
  // The tangent's direction at t, and how much further t is when it has turned on by one step.
  const auto untilTurned = [&](double t) {
    const double direction = std::atan2(b * std::cos(t), -a * std::sin(t)) + kStep;
    const double turned = std::atan2(-b * std::cos(direction), a * std::sin(direction));
    return std::remainder(turned - t, kTurn);
  };
  const bool flat = !(a > 0 && b > 0 && std::isfinite(a) && std::isfinite(b));
  constexpr int kMostTurns = 200;  // a whole turn needs 72 at most; more is rounding
  int turns = 0;
  const std::size_t first = chain.size();
  chain.push_back(at(start));
  for (double passed = 0;;) {
    const double turning = flat || turns > kMostTurns ? step : untilTurned(start + passed);
    const bool turned = turning > 0 && turning < step;
    passed += turned ? turning : step;
    turns += turned ? 1 : 0;
    if (!(passed < total * (1 - 1e-9))) break;
    chain.push_back(at(start + passed));
  }
  chain.push_back(whole ? Vertex(chain[first]) : at(start + total));
}

// ---- splines

namespace {

// When a curve is refined no further.
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

Limits LimitsFor(const SideOfBox& box, std::size_t length, std::size_t pieces) {
  constexpr std::size_t kMostPerPiece = 100;
  const double extent = box.Largest();
  return {extent * 0.0008, extent * 1e-5, length + pieces * kMostPerPiece + 1000};
}

// A rational B-spline evaluated after de Boor, in homogeneous coordinates.
class BSpline {
 public:
  explicit BSpline(const SplineCurve& curve) : curve_(curve), degree_(static_cast<std::size_t>(curve.degree)) {}

  std::size_t FirstSpan() const { return degree_; }
  std::size_t SpanCount() const { return curve_.control.size(); }
  double Knot(std::size_t i) const { return curve_.knots[i]; }
  bool IsEmpty(std::size_t span) const { return !(Knot(span + 1) > Knot(span)); }

  Vertex At(std::size_t span, double t) const {
    struct Homogeneous {
      Vertex v;
      double w;
    };
    std::array<Homogeneous, SplineCurve::kGreatestDegree + 1> d;
    for (std::size_t j = 0; j <= degree_; ++j) {
      const std::size_t i = span - degree_ + j;
      const double w = curve_.weights.empty() ? 1 : curve_.weights[i];
      d[j] = {w * curve_.control[i], w};
    }
    for (std::size_t r = 1; r <= degree_; ++r) {
      for (std::size_t j = degree_; j >= r; --j) {
        const double low = Knot(span - degree_ + j), high = Knot(span + 1 + j - r);
        const double f = high > low ? (t - low) / (high - low) : 0;
        d[j] = {(1 - f) * d[j - 1].v + f * d[j].v, (1 - f) * d[j - 1].w + f * d[j].w};
      }
    }
    return d[degree_].w == 1 ? d[degree_].v : (1 / d[degree_].w) * d[degree_].v;
  }

 private:
  const SplineCurve& curve_;
  std::size_t degree_;
};

void AppendBSpline(VertexChain& chain, const SplineCurve& curve) {
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
}

std::string WhyNoBSpline(const SplineCurve& curve) {
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

void AppendInterpolated(VertexChain& chain, const SplineCurve& curve) {
  const Interpolation spline(curve);
  if (spline.Empty()) return;
  chain.push_back(spline.First());
  SideOfBox box;
  for (std::size_t i = 0; i < spline.Pieces(); ++i) {
    for (const double t : {0.0, 0.5, 1.0}) box.Add(spline.At(i, t));
  }
  const Limits limits = LimitsFor(box, chain.size(), spline.Pieces());
  for (std::size_t i = 0; i < spline.Pieces(); ++i) {
    const auto at = [&](double t) { return spline.At(i, t); };
    AppendRefined(chain, at, 0, 0.5, limits);
    AppendRefined(chain, at, 0.5, 1, limits);
  }
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

std::string AppendSpline(VertexChain& chain, const SplineCurve& curve) {
  const std::size_t first = chain.size();
  std::string reason;
  if (curve.control.empty()) {
    AppendInterpolated(chain, curve);
  } else if (reason = WhyNoBSpline(curve); reason.empty()) {
    AppendBSpline(chain, curve);
  } else {
    const VertexChain& points = curve.fit.empty() ? curve.control : curve.fit;
    chain.insert(chain.end(), points.begin(), points.end());
  }
  if (curve.closed) CloseChain(chain, first);
  return reason;
}

}  // namespace tesselink
