// SPDX-License-Identifier: MIT
// What becomes of elements that hold more than their writer does.
#include "core/run/Reduction.h"

#include <gtest/gtest.h>

#include "core/run/Losses.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

tEntity TwoRings() {
  tEntity entity;
  entity.bType = kPolyline;
  entity.Layer = "LEASE";
  entity.Record = 7;
  const double xs[] = {0, 0, 9, 0, 2, 4, 2, 2}, ys[] = {0, 9, 9, 0, 2, 2, 4, 2};
  for (int i = 0; i < 8; ++i) {
    entity.x(i, xs[i]);
    entity.Y(i, ys[i]);
    entity.Height(i, 4401.123456789);
  }
  entity.Parts = {4};
  entity.IsArea = true;
  entity.Measures.assign(8, 1.5);
  return entity;
}

TEST(Reduction, AnAreaBecomesAClosedChainForEachRing) {
  Losses losses;
  tEntity area = TwoRings();
  std::vector<tEntity> made;
  Reduction({}, losses, CurveTolerance::Classic()).Reduce(area, [&](const tEntity& chain) {
    made.push_back(chain);
    return true;
  });
  ASSERT_EQ(made.size(), 2u);
  for (const tEntity& chain : made) {
    EXPECT_TRUE(chain.Closed && chain.IsPlain());
    EXPECT_EQ(chain.PointCount(), 3);
    EXPECT_EQ(chain.Layer, "LEASE");
    EXPECT_EQ(chain.Record, 7);
    EXPECT_EQ(chain.Height(3), 4401.123456789);
  }
  EXPECT_EQ(made[1].x(0), 2);
  Report report;
  losses.Tell(report, "out.asc");
  for (const WarningKind kind : {WarningKind::Areas, WarningKind::PartsSplit, WarningKind::Measures}) {
    EXPECT_NE(report.Of(kind), nullptr) << EntryOf(kind).name;
  }
}

TEST(Reduction, BulgesAreDrawnPartByPart) {
  Losses losses;
  tEntity chain = TwoRings();
  chain.IsArea = false;
  chain.Measures.clear();
  chain.Bulges = {0, 0, 0, 1, 0, 1};
  const Holding parts{.parts = true};
  EXPECT_FALSE(Reduction(parts, losses, CurveTolerance::Classic()).Fits(chain));
  Reduction(parts, losses, CurveTolerance::Classic()).Reduce(chain, [&](const tEntity& drawn) {
    EXPECT_TRUE(drawn.Bulges.empty());
    EXPECT_EQ(drawn.Parts.size(), 1u);
    // The bulge behind the first ring's last vertex leads nowhere.
    EXPECT_EQ(drawn.Parts[0], 4);
    EXPECT_EQ(drawn.x(4), 2);
    EXPECT_GT(drawn.PointCount(), 30);
    double greatest = 0;
    for (tEntity::Index i = 4; i <= drawn.PointCount(); ++i) greatest = std::max(greatest, drawn.Y(i));
    EXPECT_GT(greatest, 4);
    return true;
  });
}

TEST(Reduction, CurvesBecomeChainsAsFarAsTheyAreNotHeld) {
  Losses losses;
  tEntity circle;
  circle.bType = kCircle;
  circle.x(0, 5);
  circle.Height(0, 4401.123456789);
  circle.Curve({100, 0, 0});
  EXPECT_TRUE(Reduction({.curves = true}, losses, CurveTolerance::Standard()).Fits(circle));
  Reduction reduction({.bulges = true}, losses, CurveTolerance::Within(1e-6));
  EXPECT_FALSE(reduction.Fits(circle));
  reduction.Reduce(circle, [](const tEntity& chain) {
    EXPECT_TRUE(chain.bType == kPolyline && chain.Closed && chain.x(chain.PointCount()) == 105);
    return false;
  });
  tEntity chain = TwoRings();
  chain.Parts.clear();
  chain.IsArea = false;
  chain.Measures.clear();
  chain.Bulges = {1e-300, 1};
  EXPECT_TRUE(reduction.Fits(chain));
  chain.Height(7, 1);
  EXPECT_FALSE(reduction.Fits(chain)) << "a bulge is an arc of a level chain";
  chain.x(2, 1e30);
  reduction.Reduce(chain, [](const tEntity& drawn) { return drawn.IsPlain(); });
  Report report;
  losses.Tell(report, "out.asc");
  EXPECT_TRUE(report.Of(WarningKind::Curves)->text.ends_with(": 1")) << "of what was written alone";
  EXPECT_TRUE(report.Of(WarningKind::CoarseCurves)->text.ends_with(": 1"));
}

}  // namespace
}  // namespace tesselink
