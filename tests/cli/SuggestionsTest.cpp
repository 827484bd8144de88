// SPDX-License-Identifier: MIT
#include "cli/Suggestions.h"

#include <gtest/gtest.h>

namespace tesselink {
namespace {

TEST(Suggestions, DistanceCountsWhatFingersDo) {
  struct {
    std::string_view a, b;
    std::size_t distance;
  } const cases[] = {{"", "", 0},       {"", "dxf", 3},           {"dxf", "dxf", 0},  {"DXF", "dxf", 0},
                     {"dfx", "dxf", 1}, {"df", "dxf", 1},         {"dxxf", "dxf", 1}, {"dyf", "dxf", 1},
                     {"ca", "abc", 3},  {"kitten", "sitting", 3}, {"abcd", "badc", 2}};
  for (const auto& c : cases) {
    EXPECT_EQ(EditDistance(c.a, c.b), c.distance) << c.a << " " << c.b;
    EXPECT_EQ(EditDistance(c.b, c.a), c.distance) << c.b << " " << c.a;
  }
}

TEST(Suggestions, NearWordsAreNamedAndFarOnesAreNot) {
  const std::vector<std::string> options{"--to",          "--from",       "--layers",   "--layer-field",
                                         "--layer-codes", "--text-field", "--from-crs", "--colour-field",
                                         "--text-height", "--text-angle"};
  EXPECT_EQ(DidYouMean("--layer", options), "; did you mean --layers?");
  EXPECT_EQ(DidYouMean("--color-feild", options), "; did you mean --colour-field?");
  EXPECT_EQ(DidYouMean("--text", options), "; did you mean --text-field, --text-height or --text-angle?");
  EXPECT_EQ(DidYouMean("--codes", options), "; did you mean --layer-codes?");
  EXPECT_EQ(DidYouMean("--field", options), "; did you mean --layer-field, --text-field or --colour-field?");
  EXPECT_EQ(DidYouMean(".dfx", {".shp", ".dxf"}), "; did you mean .dxf?");
  EXPECT_EQ(DidYouMean("--form", options), "; did you mean --from?");
  EXPECT_EQ(DidYouMean(".dbf", {".shp", ".dxf"}), "");
  // Too short, too far, too many.
  for (const char* typed : {"-t", "--up", "--verbose", "", "-", "--x"})
    EXPECT_EQ(DidYouMean(typed, options), "") << typed;
  EXPECT_EQ(DidYouMean("lot", {"slot", "plot", "blot", "clot"}), "");
}

}  // namespace
}  // namespace tesselink
