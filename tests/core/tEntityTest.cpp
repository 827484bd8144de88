// SPDX-License-Identifier: MIT
#include "core/element/tEntity.h"

#include <gtest/gtest.h>

#include "core/element/EqnLine.h"
#include "support/Support.h"

namespace tesselink {
namespace {

tEntity Polygon(const VertexChain& vertices) { return Element(kPolyline, vertices); }

TEST(tEntity, CountsOfAClearedEntityAreMinusOne) {
  tEntity entity;
  entity.AddPoint(5, 6, 7);
  EXPECT_EQ(entity.PointCount(), 0);
  EXPECT_EQ(entity.x(0), 5);
  entity.Closed = true;
  entity.Layer = "ROAD";
  entity.Clear();
  for (const auto count : {entity.PointCount(), entity.XCount(), entity.YCount(), entity.ZCount()})
    EXPECT_EQ(count, -1);
  EXPECT_FALSE(entity.Closed);
  EXPECT_EQ(entity.Layer, "ROAD") << "texts stay";
  entity.Reset();
  EXPECT_EQ(entity.Layer, "");
}

TEST(tEntity, ASingleVertexAtTheOriginCountsOnRequest) {
  tEntity entity;
  entity.x(0, 0);
  entity.Y(0, 0);
  EXPECT_EQ(entity.PointCount(), -1);
  entity.CountOrigin(true);
  EXPECT_EQ(entity.PointCount(), 0);
  entity.Reset();
  EXPECT_EQ(entity.PointCount(), -1) << "none was stored";
  entity.AddPoint(0, 0, 0);
  EXPECT_EQ(entity.PointCount(), 0);
}

TEST(tEntity, AFirstCoordinateOfZeroLetsTheArraysFallOutOfStep) {
  tEntity entity;
  entity.AddPoint(0, 6, 1);
  entity.AddPoint(3, 4, 2);
  EXPECT_EQ(Row(entity.XCount(), entity.x(0)), "0 3");
  EXPECT_EQ(Row(entity.YCount(), entity.Y(0), entity.Y(1)), "1 6 4");
  EXPECT_EQ(Row(entity.ZCount(), entity.PointCount()), "1 0") << "the smaller of the bounds of x and y";
  // Stored by index, the same vertices are both there.
  const tEntity byIndex = Polygon({{0, 6}, {3, 4}});
  EXPECT_EQ(XY(byIndex), "0,6 3,4");
}

TEST(tEntity, IndicesOutsideTheArrays) {
  tEntity entity;
  EXPECT_EQ(entity.Z(4), 0);
  EXPECT_EQ(entity.State(), tEntity::ErrorState::SubscriptOutOfRange);
  EXPECT_EQ(entity.XCount(), -1);
  EXPECT_EQ(entity.State(), tEntity::ErrorState::None) << "the counts clear it";
  EXPECT_EQ(entity.x(-1), 0);
  EXPECT_EQ(entity.State(), tEntity::ErrorState::SubscriptOutOfRange);

  float value = 0.1F;
  const auto below = [&](auto index) {
    entity.Z(index, value *= 2);
    EXPECT_EQ(index, 0) << "the caller's variable";
    EXPECT_EQ(entity.Z(0), value);
    EXPECT_EQ(entity.ZCount(), 0);
  };
  below(-1);
  below(static_cast<short>(-1));
  below(-7L);
  below(static_cast<short>(-128));
  below(static_cast<std::size_t>(-1));
  const int fixed = -1;
  entity.Z(fixed, 5);
  entity.Z(1, 6);
  EXPECT_EQ(entity.Z(0) + entity.Z(1), 11);
  entity.x(3, 9);
  EXPECT_EQ(entity.XCount(), 3);
  EXPECT_EQ(entity.x(2), 0) << "grown elements are 0";
  entity.x(-2, 1);
  EXPECT_EQ(entity.State(), tEntity::ErrorState::SubscriptOutOfRange);
}

TEST(tEntity, RemoveLastVertexAndCentroid) {
  tEntity square = Polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  square.RemoveLastVertex();
  EXPECT_EQ(square.PointCount(), 2);
  square = Polygon({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
  square.ResetToCentroid();
  EXPECT_EQ(XY(square), "5,5");
  EXPECT_EQ(square.Z(0), 0);
  square.RemoveLastVertex();
  EXPECT_EQ(XY(square), "5,5") << "the last vertex is never removed";
  tEntity high;
  high.AddPoint(1, 2, 16777217.0);
  EXPECT_EQ(high.Z(0), 16777216.0F) << "z is of single precision";
}

TEST(tEntity, ClockwiseByTheCrossingsOfAProbe) {
  // First edge slanted or level: the result is the orientation, wherever the probe meets a vertex.
  EXPECT_FALSE(Polygon({{0, 0}, {10, 0}, {5, 10}}).Clockwise());
  EXPECT_TRUE(Polygon({{0, 10}, {10, 10}, {10, 0}, {0, 0}}).Clockwise());
  EXPECT_TRUE(Polygon({{10, 0}, {0, 0}, {0, 10}, {10, 10}}).Clockwise());
  EXPECT_FALSE(Polygon({{10, 10}, {0, 10}, {0, 0}, {10, 0}}).Clockwise());
  // A concave one, and survey coordinates.
  EXPECT_FALSE(Polygon({{0, 0}, {8, 1}, {9, 9}, {4, 3}, {1, 8}}).Clockwise());
  EXPECT_TRUE(Polygon({{500000, 4500010}, {500010, 4500011}, {500010, 4500000}, {500000, 4500000}}).Clockwise());
  // A vertical first edge is probed by a level line and not inverted.
  EXPECT_FALSE(Polygon({{0, 0}, {0, 10}, {10, 10}, {10, 0}}).Clockwise());
  EXPECT_TRUE(Polygon({{10, 0}, {10, 10}, {0, 10}, {0, 0}}).Clockwise());
}

TEST(EqnLine, SingleSettersRecomputeAndLineDoesNot) {
  EqnLine line;
  line.X1(0);
  line.Y1(1);
  line.X2(2);
  line.Y2(5);
  EXPECT_EQ(Row(line.Slope(), line.b()), "2 1");
  line.Line(0, 0, 1, 10);
  EXPECT_EQ(Row(line.m(), line.QueryYatX(2)), "2 20") << "the one is kept, the other computed afresh";
  line.Y1(0);
  EXPECT_EQ(line.A(), 10);
  line.Line(3, 0, 3, 9);
  line.X1(3);
  EXPECT_EQ(Row(line.Slope(), line.y0(), line.QueryYatX(3), line.QueryXatY(7)), "1e+99 -1e+99 0 3");
  line.Line(0, 4, 9, 4);
  EXPECT_NE(ErrorOf([&] { line.QueryXatY(4); }), "");
}

}  // namespace
}  // namespace tesselink
