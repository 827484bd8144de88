// SPDX-License-Identifier: MIT
// The lists of entity types and of their colours that come with the program.
#include <gtest/gtest.h>

#include <optional>
#include <set>

#include "formats/cdf/CDFMap.h"
#include "formats/grid/LNGSLMap.h"
#include "support/Support.h"

namespace tesselink {
namespace {

struct EntityTypesTest : testing::Test, Rig {
  EntityTypesTest() {
    context.options.programFolder = TESSELINK_DATA_FOLDER;
    types.emplace(context);
    types->Create();
    colours.emplace(context);
    colours->Create();
  }
  std::string CodeOf(const std::string& description) { return types->Code(types->SearchDesc(description)); }

  std::optional<CDFMap> types;
  std::optional<LNGSLMap> colours;
};

TEST_F(EntityTypesTest, BothListsHoldTheSameTypesEachOnceAndColoured) {
  ASSERT_GT(types->Count(), 80);
  ASSERT_EQ(types->Count(), colours->Count());
  std::set<std::string> codes;
  for (int number = 1; number <= types->Count(); ++number) {
    const std::string code = types->Code(number), description = types->Description(number);
    EXPECT_EQ(code.size(), 7U) << description;
    EXPECT_TRUE(codes.insert(code).second) << code << " twice";
    EXPECT_EQ(types->SearchDesc(description), number) << description;
    ASSERT_EQ(colours->SearchDesc(description), number) << description;
    for (const int colour : {colours->LineColour(number), colours->TextColour(number)}) {
      EXPECT_TRUE(colour >= 1 && colour <= 255) << description << ": " << colour;
    }
  }
}

TEST_F(EntityTypesTest, NamesAndCodesThatOtherPartsRelyOn) {
  EXPECT_EQ(CodeOf("Unassociated"), "0900000");
  for (int feet = 100; feet <= 3000; feet += 100) {
    EXPECT_NE(types->SearchDesc("Contour " + std::to_string(feet) + " Ft."), 0) << feet;
  }
  EXPECT_EQ(colours->LineColour(colours->SearchDesc("River")), 5) << "water is blue";
}

}  // namespace
}  // namespace tesselink
