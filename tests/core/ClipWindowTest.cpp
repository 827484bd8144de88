// SPDX-License-Identifier: MIT
// Which elements touch a window.
#include "core/run/ClipWindow.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/Support.h"

namespace tesselink {
namespace {

bool Touches(const tEntity& entity) {
  return ClipWindow({10, 10, 20, 20}, CurveTolerance::Within(1e-3)).Touches(entity);
}

tEntity Circle(double x, double y, double radius) {
  tEntity circle = Element(kCircle, {{x, y}});
  circle.Curve({radius, 0, 0});
  return circle;
}

TEST(ClipWindow, PlacesTouchWithinItAndOnItsEdge) {
  EXPECT_TRUE(Touches(Element(kPoint, {{20, 10}})));
  EXPECT_FALSE(Touches(Element(kPoint, {{20.001, 10}})));
  EXPECT_TRUE(Touches(Element(kPoint, {{0, 0}, {15, 15}}))) << "a group";
  EXPECT_FALSE(Touches(Element(kPoint, {{0, 0}, {30, 30}})));
  EXPECT_FALSE(Touches(Element(kText, {{9, 15}}))) << "wherever its letters reach";
  EXPECT_FALSE(Touches(Element(kPoint, {{std::numeric_limits<double>::quiet_NaN(), 15}})));
  EXPECT_FALSE(Touches(tEntity()));
}

TEST(ClipWindow, ChainsTouchBySegmentsWithoutAVertexInIt) {
  EXPECT_TRUE(Touches(Element(kLine, {{0, 0}, {30, 30}})));
  EXPECT_TRUE(Touches(Element(kLine, {{5, 15}, {15, 5}}))) << "its corner";
  EXPECT_FALSE(Touches(Element(kLine, {{5, 14.9}, {15, 4.9}}))) << "its box overlaps";
  EXPECT_TRUE(Touches(Element(kLine, {{20, 0}, {20, 30}})));
  tEntity open = Element(kPolyline, {{0, 0}, {0, 15}, {-5, 40}, {40, 40}});
  EXPECT_FALSE(Touches(open));
  open.Closed = true;
  EXPECT_TRUE(Touches(open)) << "by the side that closes it";
  tEntity parts = Element(kPolyline, {{0, 0}, {0, 15}, {40, 15}, {40, 40}});
  EXPECT_TRUE(Touches(parts));
  parts.Parts = {2};
  EXPECT_FALSE(Touches(parts)) << "nothing runs from part to part";
  parts.x(3, 0);
  parts.Y(3, 15);
  EXPECT_TRUE(Touches(parts)) << "by its second part alone";
}

TEST(ClipWindow, AreasTouchThatSurroundItButNotAroundAHole) {
  tEntity area = Element(kPolyline, {{0, 0}, {0, 40}, {40, 40}, {40, 0}, {0, 0}});
  EXPECT_FALSE(Touches(area));
  area.IsArea = true;
  EXPECT_TRUE(Touches(area));
  for (const Vertex& v : VertexChain{{5, 5}, {25, 5}, {25, 25}, {5, 25}, {5, 5}}) area.AddPoint(v.x, v.y, v.z);
  area.Parts = {5};
  EXPECT_FALSE(Touches(area));
}

TEST(ClipWindow, CurvesTouchWhereTheyAre) {
  EXPECT_FALSE(Touches(Circle(15, 15, 20))) << "around it";
  EXPECT_TRUE(Touches(Circle(15, 15, 7)));
  EXPECT_TRUE(Touches(Circle(0, 15, 10)));
  EXPECT_FALSE(Touches(Circle(8, 8, 2.8))) << "its box does";
  tEntity arc = Circle(0, 15, 12);
  arc.bType = kArc;
  arc.Curve({12, 90, 270});
  EXPECT_FALSE(Touches(arc));
  arc.Curve({12, 270, 90});
  EXPECT_TRUE(Touches(arc));
  tEntity bulged = Element(kPolyline, {{5, 5}, {5, 25}});
  EXPECT_FALSE(Touches(bulged));
  bulged.Bulges = {1};
  EXPECT_TRUE(Touches(bulged));
  bulged.Bulges = {-1};
  EXPECT_FALSE(Touches(bulged));
}

}  // namespace
}  // namespace tesselink
