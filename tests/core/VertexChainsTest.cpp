// SPDX-License-Identifier: MIT
#include "core/element/VertexChains.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "core/element/Extents.h"
#include "core/element/SplineChains.h"
#include "support/Support.h"

namespace tesselink {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr CurveTolerance kClassic = CurveTolerance::Classic();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double Distance(const Vertex& a, const Vertex& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

double DistanceFromSegment(const VertexChain& chain, std::size_t i, const Vertex& p) {
  const Vertex &a = chain[i], &b = chain[i + 1];
  const double dx = b.x - a.x, dy = b.y - a.y, dz = b.z - a.z, square = dx * dx + dy * dy + dz * dz;
  double t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy + (p.z - a.z) * dz) / square : 0;
  t = std::fmin(std::fmax(t, 0), 1);
  return Distance(p, {a.x + t * dx, a.y + t * dy, a.z + t * dz});
}

double DistanceFrom(const VertexChain& chain, const Vertex& p) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < chain.size(); ++i) least = std::fmin(least, DistanceFromSegment(chain, i, p));
  return least;
}

// The greatest distance of a curve from a chain that goes along with it: each point is held against the segment that it
// has come to, which gives no less.
double Departure(const VertexChain& chain, const std::function<Vertex(double)>& curve, double from, double to) {
  double greatest = 0;
  std::size_t at = 0;
  const auto samples = static_cast<double>(chain.size() * 16);
  for (double i = 0; i <= samples; ++i) {
    const Vertex p = curve(from + (to - from) * i / samples);
    double distance = DistanceFromSegment(chain, at, p);
    for (double next; at + 2 < chain.size() && (next = DistanceFromSegment(chain, at + 1, p)) <= distance; ++at) {
      distance = next;
    }
    greatest = std::fmax(greatest, distance);
  }
  return greatest;
}

// The greatest turn between neighbouring steps in the plane of x and y; degrees.
double GreatestTurn(const VertexChain& chain) {
  double greatest = 0;
  for (std::size_t i = 0; i + 2 < chain.size(); ++i) {
    const double before = std::atan2(chain[i + 1].y - chain[i].y, chain[i + 1].x - chain[i].x);
    const double after = std::atan2(chain[i + 2].y - chain[i + 1].y, chain[i + 2].x - chain[i + 1].x);
    greatest = std::fmax(greatest, std::fabs(std::remainder(after - before, 2 * kPi)) * 180 / kPi);
  }
  return greatest;
}

TEST(VertexChainsTest, ArcsStayWithinTheChordErrorOfRadiusAndExtent) {
  const Vertex centre{1e6, -2e6, 7};
  for (const double sweep : {0.5, 5.0, 30.0, -90.0, 200.0, -359.0}) {
    VertexChain chain{{1, 2, 3}};
    AppendArc(chain, centre, 50, 33, sweep, kClassic);
    EXPECT_EQ(chain.front(), (Vertex{1, 2, 3})) << "what the chain held stays";
    chain.erase(chain.begin());
    const auto at = [&](double degrees) {
      return Vertex{centre.x + 50 * std::cos(degrees * kPi / 180), centre.y + 50 * std::sin(degrees * kPi / 180), 7};
    };
    EXPECT_LT(Distance(chain.front(), at(33)), 1e-8);
    EXPECT_LT(Distance(chain.back(), at(33 + sweep)), 1e-8);
    const double extent = std::fmin(50, 50 * std::fabs(sweep) * kPi / 180);
    EXPECT_LE(Departure(chain, at, 33, 33 + sweep), extent / 1000) << sweep;
    EXPECT_LE(GreatestTurn(chain), 10) << sweep;
  }
}

TEST(VertexChainsTest, ABulgeIsTheArcBetweenItsEndsOnItsSide) {
  const Vertex from{10, 10, 0}, to{14, 10, 8};
  for (const double bulge : {1.0, -1.0, 0.3, -3.0, 1e-7}) {
    VertexChain chain{from};
    AppendBulge(chain, from, to, bulge, kClassic);
    EXPECT_EQ(chain.back(), to) << "exactly";
    const double radius = 4 * (1 + bulge * bulge) / (4 * std::fabs(bulge));
    const double up = (1 - bulge * bulge) / (4 * bulge) * 4;  // of the centre above the chord
    for (const Vertex& v : chain) {
      EXPECT_NEAR(std::hypot(v.x - 12, v.y - 10 - up), radius, 1e-9 * radius) << bulge;
    }
    const Vertex& middle = chain[chain.size() / 2];
    if (chain.size() > 2) {
      EXPECT_EQ(middle.y<10, bulge> 0) << "a positive bulge runs counter-clockwise";
    }
    EXPECT_LE(GreatestTurn(chain), 10);
  }
  VertexChain straight;
  AppendBulge(straight, from, to, 0, kClassic);
  AppendBulge(straight, from, to, kNaN, kClassic);
  AppendBulge(straight, from, from, 1, kClassic);
  EXPECT_EQ(straight, (VertexChain{to, to, from}));
}

TEST(VertexChainsTest, EllipsesOfAnyRatio) {
  for (const double ratio : {1.0, 0.3, 1e-3, 1e-6, 4.0}) {
    const Vertex centre{5, 6, 7}, major{30, 40, 0}, minor{-40 * ratio, 30 * ratio, 0};
    const auto at = [&](double t) {
      return Vertex{centre.x + std::cos(t) * major.x + std::sin(t) * minor.x,
                    centre.y + std::cos(t) * major.y + std::sin(t) * minor.y, 7};
    };
    VertexChain part, whole;
    AppendEllipse(part, centre, major, minor, 5, 3, kClassic);
    AppendEllipse(whole, centre, major, minor, 0, 2 * kPi, kClassic);
    EXPECT_LT(Distance(part.front(), at(5)), 1e-12);
    EXPECT_LT(Distance(part.back(), at(8)), 1e-12);
    EXPECT_EQ(whole.front(), whole.back());
    EXPECT_LE(Departure(whole, at, 0, 2 * kPi), std::fmax(1, ratio) * 50 / 1000) << ratio;
    EXPECT_LE(std::fmax(GreatestTurn(part), GreatestTurn(whole)), 10) << ratio;
    EXPECT_LE(whole.size(), 300U) << ratio;
  }
  VertexChain flat;
  AppendEllipse(flat, {}, {3, 0, 0}, {0, 0, 0}, 0, 2 * kPi, kClassic);
  EXPECT_EQ(flat.front(), flat.back());
}

SplineCurve QuarterCircle() {
  SplineCurve curve;
  curve.degree = 2;
  curve.knots = {0, 0, 0, 1, 1, 1};
  curve.weights = {1, std::sqrt(0.5), 1};
  curve.control = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  return curve;
}

TEST(VertexChainsTest, ARationalSplineIsTheCircleItDescribes) {
  VertexChain chain;
  EXPECT_TRUE(AppendSpline(chain, QuarterCircle(), kClassic));
  EXPECT_EQ(chain.front(), (Vertex{1, 0, 0}));
  EXPECT_EQ(chain.back(), (Vertex{0, 1, 0}));
  for (const Vertex& v : chain) EXPECT_NEAR(std::hypot(v.x, v.y), 1, 1e-12);
  EXPECT_LE(GreatestTurn(chain), 10);

  SplineCurve closed = QuarterCircle();
  closed.closed = true;
  chain.clear();
  AppendSpline(chain, closed, kClassic);
  EXPECT_EQ(chain.back(), chain.front());
  EXPECT_EQ(chain[chain.size() - 2], (Vertex{0, 1, 0})) << "an open curve that is called closed is joined";
}

Vertex OnBezier(VertexChain p, double t) {
  for (std::size_t n = p.size() - 1; n > 0; --n) {
    for (std::size_t i = 0; i < n; ++i) {
      p[i] = {p[i].x + t * (p[i + 1].x - p[i].x), p[i].y + t * (p[i + 1].y - p[i].y),
              p[i].z + t * (p[i + 1].z - p[i].z)};
    }
  }
  return p[0];
}

TEST(VertexChainsTest, SplinesOfEveryDegreeAgreeWithTheirBezierForm) {
  for (int degree = 1; degree <= SplineCurve::kGreatestDegree; ++degree) {
    SplineCurve curve;
    curve.degree = degree;
    for (int i = 0; i <= degree; ++i) {
      curve.control.push_back({i * 10.0, std::cos(i * 1.3) * 20, i % 3 * 1.0});
      curve.knots.insert(curve.knots.begin(), 2);
      curve.knots.push_back(5);
    }
    const auto bezier = [&](double t) { return OnBezier(curve.control, t); };
    VertexChain chain;
    ASSERT_TRUE(AppendSpline(chain, curve, kClassic));
    EXPECT_LE(Departure(chain, bezier, 0, 1), degree * 10.0 / 1000) << degree;
    EXPECT_EQ(chain.front(), curve.control.front());
    EXPECT_LT(Distance(chain.back(), curve.control.back()), 1e-9);
  }
}

TEST(VertexChainsTest, FitPointsArePassedThrough) {
  SplineCurve curve;
  curve.fit = {{0, 0, 0}, {1, 2, 0}, {1, 2, 0}, {5, 3, 1}, {9, -4, 2}};
  const auto passesThrough = [](const VertexChain& chain, const Vertex& p) { return DistanceFrom(chain, p) < 1e-12; };
  VertexChain chain;
  EXPECT_TRUE(AppendSpline(chain, curve, kClassic));
  for (const Vertex& p : curve.fit) EXPECT_TRUE(passesThrough(chain, p));
  EXPECT_EQ(chain.back(), curve.fit.back());

  curve.startTangent = {0, -3, 0};
  curve.endTangent = {0, 1, 0};
  chain.clear();
  AppendSpline(chain, curve, kClassic);
  EXPECT_LT(chain[1].y, 0) << "leaves along its tangent";
  EXPECT_NEAR(std::fabs(chain[1].x / chain[1].y), 0, 0.2);

  // Evenly spaced points of a circle, closed: the curve is as good as the circle.
  curve.Clear();
  curve.closed = true;
  for (int i = 0; i < 24; ++i) curve.fit.push_back({std::cos(i * kPi / 12), std::sin(i * kPi / 12), 0});
  chain.clear();
  AppendSpline(chain, curve, kClassic);
  EXPECT_EQ(chain.front(), chain.back());
  for (const Vertex& v : chain) EXPECT_NEAR(std::hypot(v.x, v.y), 1, 1e-4) << "also where it closes";
}

TEST(VertexChainsTest, WhatIsNoSplineBecomesItsPoints) {
  struct Case {
    std::function<void(SplineCurve&)> spoil;
    std::string reason;
  };
  for (const Case& c : std::vector<Case>{
           {[](SplineCurve& s) { s.knots.pop_back(); }, "5 knots do not go with 3 control points of degree 2"},
           {[](SplineCurve& s) { s.knots[3] = -1; }, "its knots do not ascend"},
           {[](SplineCurve& s) { s.knots[1] = kNaN; }, "its knots do not ascend"},
           {[](SplineCurve& s) { s.knots.assign(6, 1); }, "its knots are all the same"},
           {[](SplineCurve& s) { s.weights[1] = 0; }, "its weights do not go with its control points"},
           {[](SplineCurve& s) { s.degree = 100; }, "its degree 100 is not between 1 and 25"},
           {[](SplineCurve& s) { s.degree = 0; }, "its degree 0 is not between 1 and 25"}}) {
    SplineCurve curve = QuarterCircle();
    c.spoil(curve);
    VertexChain chain;
    EXPECT_EQ(WhyNoSpline(curve), c.reason);
    AppendSpline(chain, curve, kClassic);
    EXPECT_EQ(chain, curve.control);
    curve.fit = {{0, 0, 0}, {4, 4, 0}};
    chain.clear();
    AppendSpline(chain, curve, kClassic);
    EXPECT_EQ(chain, curve.fit) << "points on the curve say more than its control points";
  }
}

// The greatest distance of a circle, or of a part of it, from chords between its points.
double CircleDeparture(const VertexChain& chain, const Vertex& centre, double radius) {
  double greatest = 0;
  for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
    EXPECT_NEAR(std::hypot(chain[i].x - centre.x, chain[i].y - centre.y), radius, 1e-9 * radius);
    greatest = std::fmax(greatest, radius - DistanceFromSegment(chain, i, centre));
  }
  return greatest;
}

class ToleranceTest : public testing::TestWithParam<double> {
 protected:
  const double radius = GetParam();
  VertexChain chain;

  // Draws by the default and by a given tolerance, and holds each against how far the chain departs.
  void Expect(const char* what, const std::function<bool(const CurveTolerance&)>& draw,
              const std::function<double()>& departure, bool isRound = true) {
    for (const double given : {0.0, 0.001}) {
      chain.clear();
      EXPECT_TRUE(draw(given > 0 ? CurveTolerance::Within(given) : CurveTolerance::Standard())) << what;
      const double most = given > 0 ? given : std::fmin(0.01, isRound ? 1e-4 * radius : 1), off = departure();
      EXPECT_LE(off, most * (1 + 1e-6)) << what;
      EXPECT_TRUE(off > most / 8 || (given == 0 && !isRound)) << what << " takes more vertices than need be";
    }
  }
};

TEST_P(ToleranceTest, HoldsForEveryCurve) {
  using Given = const CurveTolerance&;
  const Vertex centre{3, 4, 0}, top{3, 4 + radius, 0};
  const auto onCircle = [&] { return CircleDeparture(chain, centre, radius); };
  const auto circle = [&](Given t) { return AppendCircle(chain, centre, radius, t); };
  const auto arc = [&](Given t) { return AppendArc(chain, centre, radius, 10, 60, t); };
  const auto bulge = [&](Given t) {
    chain.assign(1, {3 + radius, 4, 0});
    return AppendBulge(chain, chain[0], top, std::tan(kPi / 8), t);
  };
  Expect("circle", circle, onCircle);
  Expect("arc", arc, onCircle);
  Expect("bulge", bulge, onCircle);
  for (const double ratio : {1.0, 0.3, 0.001}) {
    const Vertex major{radius * 0.6, radius * 0.8, 0}, minor{-0.8 * radius * ratio, 0.6 * radius * ratio, 0};
    const auto at = [&](double a) {
      return Vertex{3 + std::cos(a) * major.x + std::sin(a) * minor.x,
                    4 + std::cos(a) * major.y + std::sin(a) * minor.y};
    };
    const auto ellipse = [&](Given t) { return AppendEllipse(chain, centre, major, minor, 1, 5, t); };
    const auto departure = [&] { return Departure(chain, at, 1, 6); };
    Expect("ellipse", ellipse, departure, ratio == 1);
  }
  SplineCurve curve = QuarterCircle();
  for (Vertex& v : curve.control) v = {3 + v.x * radius, 4 + v.y * radius, 0};
  const auto spline = [&](Given t) { return AppendSpline(chain, curve, t); };
  Expect("rational spline", spline, onCircle);
  curve.Clear();
  curve.knots = {0, 0, 0, 0, 1, 1, 1, 1};
  curve.control = {{0, 0, 0}, {radius, radius, 0}, {0, radius, radius}, {radius, 0, 0}};
  const auto onBezier = [&](double t) { return OnBezier(curve.control, t); };
  const auto departure = [&] { return Departure(chain, onBezier, 0, 1); };
  Expect("spline", spline, departure, false);
  curve.fit.swap(curve.control);
  VertexChain fine;
  ASSERT_TRUE(AppendSpline(fine, curve, CurveTolerance::Within(1e-4)));
  const auto onFine = [&](double i) { return fine[static_cast<std::size_t>(i)]; };
  const auto fromFine = [&] { return Departure(chain, onFine, 0, static_cast<double>(fine.size() - 1)); };
  Expect("fitted spline", spline, fromFine, false);
}

INSTANTIATE_TEST_SUITE_P(Radii, ToleranceTest, testing::Values(10, 100, 1000, 10000, 100000));

TEST(VertexChainsTest, AToleranceHasItsBounds) {
  VertexChain chain;
  SplineCurve huge = QuarterCircle();
  for (Vertex& v : huge.control) v = {v.x * 1e30, v.y * 1e30, 0};
  const auto circle = [&](double radius, const CurveTolerance& tolerance) {
    chain.clear();
    const bool enough = AppendCircle(chain, {}, radius, tolerance);
    return Row(enough, chain.size());
  };
  const CurveTolerance fine = CurveTolerance::Within(1e-12);
  EXPECT_EQ(circle(50, CurveTolerance::Within(1e6)), "1 9") << "eight, and the first again";
  EXPECT_EQ(circle(10, CurveTolerance::Within(1).Scaled(-100)), circle(1000, CurveTolerance::Within(1)));
  EXPECT_EQ(circle(1e30, fine), Row(0, kMostVerticesOfCurve + 1));
  EXPECT_FALSE(AppendEllipse(chain, {}, {1e30, 0, 0}, {0, 9, 0}, 0, 7, fine));
  EXPECT_FALSE(AppendSpline(chain, huge, fine));
  EXPECT_LE(chain.size(), 3 * kMostVerticesOfCurve + 10);
  chain.assign(kMostVerticesOfChain, {});
  EXPECT_FALSE(AppendBulge(chain, {}, {9, 0, 0}, 1, fine));
  EXPECT_EQ(chain.size(), kMostVerticesOfChain + 36) << "a half circle by the classic rule";
}

TEST(VertexChainsTest, ExtentsHoldArcs) {
  for (const double bulge : {1.0, -0.4, 3.0, -1e-7, 0.02}) {
    for (int turn = 0; turn < 24; ++turn) {
      const double direction = turn * kPi / 12 + 0.1;
      VertexChain ends{{7, -5, 1}, {7 + std::cos(direction), -5 + std::sin(direction), 2}}, drawn(1, ends[0]);
      AppendBulge(drawn, ends[0], ends[1], bulge, CurveTolerance::Within(1e-9));
      tEntity entity = Element(kPolyline, ends);
      Extents expected, found;
      for (const Vertex& v : drawn) expected.Add(v.x, v.y, v.z);
      entity.Bulges = {bulge, 5};
      found.Add(entity);
      EXPECT_NEAR(std::hypot(found.minX - expected.minX, found.maxX - expected.maxX), 0, 2e-9);
      EXPECT_NEAR(std::hypot(found.minY - expected.minY, found.maxY - expected.maxY), 0, 2e-9);
      EXPECT_EQ(found.maxZ - found.minZ, 1);
    }
  }
}

}  // namespace
}  // namespace tesselink
