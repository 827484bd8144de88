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
  Reduction({}, losses).Reduce(area, [&](const tEntity& chain) { made.push_back(chain); });
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
  EXPECT_FALSE(Reduction(parts, losses).Fits(chain));
  Reduction(parts, losses).Reduce(chain, [&](const tEntity& drawn) {
    EXPECT_TRUE(drawn.Bulges.empty());
    ASSERT_EQ(drawn.Parts.size(), 1u);
    // The bulge behind the first ring's last vertex leads nowhere.
    EXPECT_EQ(drawn.Parts[0], 4);
    EXPECT_EQ(drawn.x(4), 2);
    EXPECT_GT(drawn.PointCount(), 30);
    double greatest = 0;
    for (tEntity::Index i = 4; i <= drawn.PointCount(); ++i) greatest = std::max(greatest, drawn.Y(i));
    EXPECT_GT(greatest, 4);
  });
}

}  // namespace
}  // namespace tesselink
