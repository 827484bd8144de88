// SPDX-License-Identifier: MIT
#include "cli/ProgressBar.h"

#include <gtest/gtest.h>

namespace tesselink {
namespace {

using std::chrono::milliseconds;

TEST(ProgressBar, FitsIntoEveryTerminal) {
  const ProgressFacts facts{"1200 elements", "600/s", "about 12 s remaining"};
  EXPECT_EQ(BarText(45, facts, 100),
            "[##################......................]  45%  1200 elements, 600/s, about 12 s remaining");
  EXPECT_EQ(BarText(45, facts, 60), "[####......]  45%  1200 elements, about 12 s remaining");
  EXPECT_EQ(BarText(45, facts, 50), "[#########...........]  45%  about 12 s remaining");
  EXPECT_EQ(BarText(45, facts, 20), "[####......]  45%");
  EXPECT_EQ(BarText(45, facts, 12), " 45%");
  EXPECT_EQ(BarText(45, facts, 4), "");
  EXPECT_EQ(BarText(-3, {}, 20), "[..........]   0%");
  EXPECT_EQ(BarText(250, {}, 20), "[##########] 100%");
  for (std::size_t columns = 1; columns < 120; ++columns) EXPECT_LT(BarText(45, facts, columns).size(), columns);
}

TEST(ProgressBar, RatesAreShort) {
  EXPECT_EQ(RateText(1000, milliseconds(999)), "");
  EXPECT_EQ(RateText(0, milliseconds(2000)), "0/s");
  EXPECT_EQ(RateText(1999, milliseconds(2000)), "1.0k/s");
  EXPECT_EQ(RateText(1900, milliseconds(2000)), "950/s");
  EXPECT_EQ(RateText(25'000, milliseconds(2000)), "12.5k/s");
  EXPECT_EQ(RateText(199'960, milliseconds(1000)), "200k/s");
  EXPECT_EQ(RateText(999'960, milliseconds(1000)), "1.0M/s");
  EXPECT_EQ(RateText(1'250'000'000, milliseconds(1000)), "1250M/s");
}

}  // namespace
}  // namespace tesselink
