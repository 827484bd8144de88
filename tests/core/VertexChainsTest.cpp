#include "core/element/VertexChains.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace tesselink {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double Distance(const Vertex& a, const Vertex& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

double DistanceFrom(const VertexChain& chain, const Vertex& p) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
    const Vertex &a = chain[i], &b = chain[i + 1];
    const double dx = b.x - a.x, dy = b.y - a.y, dz = b.z - a.z, square = dx * dx + dy * dy + dz * dz;
    double t = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy + (p.z - a.z) * dz) / square : 0;
    t = std::fmin(std::fmax(t, 0), 1);
    least = std::fmin(least, Distance(p, {a.x + t * dx, a.y + t * dy, a.z + t * dz}));
  }
  return least;
}

// The greatest distance of a curve, sampled finely, from its chain.
double ChordError(const VertexChain& chain, const std::function<Vertex(double)>& curve, double from, double to) {
  double greatest = 0;
  for (int i = 0; i <= 5000; ++i) {
    greatest = std::fmax(greatest, DistanceFrom(chain, curve(from + (to - from) * i / 5000)));
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
    AppendArc(chain, centre, 50, 33, sweep);
    EXPECT_EQ(chain.front(), (Vertex{1, 2, 3})) << "what the chain held stays";
    chain.erase(chain.begin());
    const auto at = [&](double degrees) {
      return Vertex{centre.x + 50 * std::cos(degrees * kPi / 180), centre.y + 50 * std::sin(degrees * kPi / 180), 7};
    };
    EXPECT_LT(Distance(chain.front(), at(33)), 1e-8);
    EXPECT_LT(Distance(chain.back(), at(33 + sweep)), 1e-8);
    const double extent = std::fmin(50, 50 * std::fabs(sweep) * kPi / 180);
    EXPECT_LE(ChordError(chain, at, 33, 33 + sweep), extent / 1000) << sweep;
    EXPECT_LE(GreatestTurn(chain), 10) << sweep;
  }
  VertexChain circle;
  AppendCircle(circle, centre, 50);
  EXPECT_EQ(circle.front(), circle.back());
  EXPECT_EQ(circle.size(), 73U);
}

TEST(VertexChainsTest, ABulgeIsTheArcBetweenItsEndsOnItsSide) {
  const Vertex from{10, 10, 0}, to{14, 10, 8};
  for (const double bulge : {1.0, -1.0, 0.3, -3.0, 1e-7}) {
    VertexChain chain{from};
    AppendBulge(chain, from, to, bulge);
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
  AppendBulge(straight, from, to, 0);
  AppendBulge(straight, from, to, kNaN);
  AppendBulge(straight, from, from, 1);
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
    AppendEllipse(part, centre, major, minor, 5, 3);
    AppendEllipse(whole, centre, major, minor, 0, 2 * kPi);
    EXPECT_LT(Distance(part.front(), at(5)), 1e-12);
    EXPECT_LT(Distance(part.back(), at(8)), 1e-12);
    EXPECT_EQ(whole.front(), whole.back());
    EXPECT_LE(ChordError(whole, at, 0, 2 * kPi), std::fmax(1, ratio) * 50 / 1000) << ratio;
    EXPECT_LE(std::fmax(GreatestTurn(part), GreatestTurn(whole)), 10) << ratio;
    EXPECT_LE(whole.size(), 300U) << ratio;
  }
  VertexChain flat;
  AppendEllipse(flat, {}, {3, 0, 0}, {0, 0, 0}, 0, 2 * kPi);
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
  EXPECT_EQ(AppendSpline(chain, QuarterCircle()), "");
  EXPECT_EQ(chain.front(), (Vertex{1, 0, 0}));
  EXPECT_EQ(chain.back(), (Vertex{0, 1, 0}));
  for (const Vertex& v : chain) EXPECT_NEAR(std::hypot(v.x, v.y), 1, 1e-12);
  EXPECT_LE(ChordError(
                chain,
                [](double t) {
                  return Vertex{std::cos(t), std::sin(t), 0};
                },
                0, kPi / 2),
            1e-3);
  EXPECT_LE(GreatestTurn(chain), 10);

  SplineCurve closed = QuarterCircle();
  closed.closed = true;
  chain.clear();
  AppendSpline(chain, closed);
  EXPECT_EQ(chain.back(), chain.front());
  EXPECT_EQ(chain[chain.size() - 2], (Vertex{0, 1, 0})) << "an open curve that is called closed is joined";
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
    const auto bezier = [&](double t) {
      VertexChain p = curve.control;
      for (std::size_t n = p.size() - 1; n > 0; --n) {
        for (std::size_t i = 0; i < n; ++i) {
          p[i] = {p[i].x + t * (p[i + 1].x - p[i].x), p[i].y + t * (p[i + 1].y - p[i].y),
                  p[i].z + t * (p[i + 1].z - p[i].z)};
        }
      }
      return p[0];
    };
    VertexChain chain;
    ASSERT_EQ(AppendSpline(chain, curve), "");
    EXPECT_LE(ChordError(chain, bezier, 0, 1), degree * 10.0 / 1000) << degree;
    EXPECT_EQ(chain.front(), curve.control.front());
    EXPECT_LT(Distance(chain.back(), curve.control.back()), 1e-9);
  }
}

TEST(VertexChainsTest, FitPointsArePassedThrough) {
  SplineCurve curve;
  curve.fit = {{0, 0, 0}, {1, 2, 0}, {1, 2, 0}, {5, 3, 1}, {9, -4, 2}};
  const auto passesThrough = [](const VertexChain& chain, const Vertex& p) { return DistanceFrom(chain, p) < 1e-12; };
  VertexChain chain;
  EXPECT_EQ(AppendSpline(chain, curve), "");
  for (const Vertex& p : curve.fit) EXPECT_TRUE(passesThrough(chain, p));
  EXPECT_EQ(chain.back(), curve.fit.back());

  curve.startTangent = {0, -3, 0};
  curve.endTangent = {0, 1, 0};
  chain.clear();
  AppendSpline(chain, curve);
  EXPECT_LT(chain[1].y, 0) << "leaves along its tangent";
  EXPECT_NEAR(std::fabs(chain[1].x / chain[1].y), 0, 0.2);

  // Evenly spaced points of a circle, closed: the curve is as good as the circle.
  curve.Clear();
  curve.closed = true;
  for (int i = 0; i < 24; ++i) curve.fit.push_back({std::cos(i * kPi / 12), std::sin(i * kPi / 12), 0});
  chain.clear();
  AppendSpline(chain, curve);
  EXPECT_EQ(chain.front(), chain.back());
  for (const Vertex& v : chain) EXPECT_NEAR(std::hypot(v.x, v.y), 1, 1e-4) << "also where it closes";
  // Begun at another of its points it is the same curve.
  curve.fit = {{0, 0, 0}, {4, 0, 0}, {5, 3, 0}, {0, 2, 0}};
  chain.clear();
  AppendSpline(chain, curve);
  std::rotate(curve.fit.begin(), curve.fit.begin() + 1, curve.fit.end());
  VertexChain begunLater;
  AppendSpline(begunLater, curve);
  for (const Vertex& v : chain) EXPECT_TRUE(passesThrough(begunLater, v));
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
    EXPECT_EQ(AppendSpline(chain, curve), c.reason);
    EXPECT_EQ(chain, curve.control);
    curve.fit = {{0, 0, 0}, {4, 4, 0}};
    chain.clear();
    AppendSpline(chain, curve);
    EXPECT_EQ(chain, curve.fit) << "points on the curve say more than its control points";
  }
}

}  // namespace
}  // namespace tesselink
