// SPDX-License-Identifier: MIT
// Images, shapes and solids; what they look like is compared with another program in tests/interop.
#include "formats/dxf/ImageEntities.h"

#include <cmath>

#include "support/Drawings.h"

namespace tesselink {
namespace {

class ImageTest : public DrawingTest {
 protected:
  ImageTest() { rig.context.options.dialect = Dialect::Standard; }
  // As an insert of a block draws them.
  std::vector<tEntity> InBlock(const Groups& entities, const Groups& insert) {
    const Groups block = "0 BLOCK|2 B|10 1|20 0"_g + entities + "0 ENDBLK"_g;
    return ReadGroups(Section("BLOCKS", block) + Section("ENTITIES", "0 INSERT|2 B"_g + insert) + kEnd);
  }
  static inline const Groups kImage = "0 IMAGE|10 0|20 0|11 1|21 0|12 0|22 1|13 8|23 6"_g;
};

// Rounded places of the vertices, as "0,1 2,3".
std::string Places(const tEntity& element) {
  std::string places;
  for (tEntity::Index i = 0; i <= element.PointCount(); ++i) {
    places += std::to_string(std::lround(element.x(i))) + "," + std::to_string(std::lround(element.Y(i))) + " ";
  }
  return places;
}

TEST_F(ImageTest, ShapesAndOldLinesAreTurnedWithTheirBlock) {
  const Groups shape = "0 SHAPE|10 3|20 0|40 2|50 30|2 OAK"_g, line = "0 3DLINE|10 1|20 0|11 5|21 0"_g;
  struct {
    Groups insert;
    const char *at, *line;
    double angle, size;
  } const cases[] = {{"10 0|20 0"_g, "2,0 ", "0,0 4,0 ", 30, 2},
                     {"10 0|20 0|50 90|41 2|42 2"_g, "0,4 ", "0,0 0,8 ", 120, 4},
                     {"10 0|20 0|41 -1"_g, "-2,0 ", "0,0 -4,0 ", 150, 2},
                     {"10 0|20 0|230 -1"_g, "-2,0 ", "0,0 -4,0 ", 150, 2}};
  for (const auto& c : cases) {
    const auto found = InBlock(shape + line, c.insert);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(Places(found[0]) + Places(found[1]), std::string(c.at) + c.line);
    EXPECT_EQ(found[0].Text, "OAK");
    EXPECT_NEAR(std::remainder(found[0].TextAng - c.angle, 360), 0, 1e-9);
    EXPECT_NEAR(found[0].TextSize, c.size, 1e-9);
  }
  EXPECT_NEAR(ReadOne(shape + "230 -1"_g).TextAng, 150, 1e-9);
}

TEST_F(ImageTest, AClipHoldsWhileItIsOn) {
  const Groups clip = "71 2|91 3|14 -0.5|24 -0.5|14 7.5|24 -0.5|14 7.5|24 2.5"_g;
  EXPECT_EQ(Places(ReadOne(kImage)), "0,6 8,6 8,0 0,0 0,6 ");
  EXPECT_EQ(Places(ReadOne(kImage + clip)), "0,6 8,6 8,3 0,6 ");
  EXPECT_EQ(Places(ReadOne(kImage + "280 0"_g + clip)), "0,6 8,6 8,0 0,0 0,6 ");
  EXPECT_EQ(ReadOne(kImage).Lost, kLostPicture);
  rig.context.options.dialect = Dialect::Classic;
  EXPECT_TRUE(Read(kImage).empty());
  EXPECT_FALSE(ReadOne("0 SOLID|10 0|20 0|11 1|21 0|12 0|22 1"_g).IsArea);
}

TEST_F(ImageTest, DamagedOnesAreLeftOutOrNoArea) {
  EXPECT_TRUE(Read("0 IMAGE|10 0|20 0|11 1|21 0|13 8|23 6"_g + kImage + "14 1|24 1"_g + "0 SHAPE|2 A"_g).empty());
  EXPECT_NE(rig.WarningOf("damaged IMAGE"), nullptr);
  EXPECT_FALSE(ReadOne("0 SOLID|10 0|20 0|11 1|21 0|12 0|22 1|13 x|23 0"_g).IsArea) << "a corner is missing";
  EXPECT_FALSE(ReadOne("0 WIPEOUT|24 5|10 0|20 0|11 1e308|21 0|12 0|22 1e308|13 1e308|23 1e308"_g).IsArea);
}

TEST_F(ImageTest, WhatElementsLookLikeIsNotedInBothDialects) {
  const Groups styles = Section("TABLES",
                                "0 TABLE|2 STYLE|0 STYLE|2 Standard|41 1|50 0|3 TXT.SHX|0 STYLE|2 Wide|41 2|50 15"
                                "|3 arial.ttf|0 ENDTAB|0 TABLE|2 LAYER|0 LAYER|2 Thick|370 50|0 ENDTAB"_g);
  const std::pair<Groups, std::uint32_t> cases[] = {
      {"0 LINE|10 1|20 1|11 2|21 2|39 0|370 -1"_g, 0},
      {"0 LINE|10 1|20 1|11 2|21 2|39 -4|370 25"_g, kLostThickness | kLostWeight},
      {"0 LINE|8 thick|10 1|20 1|11 2|21 2"_g, kLostWeight},
      {"0 LINE|8 Thick|10 1|20 1|11 2|21 2|370 0"_g, 0},
      {"0 LWPOLYLINE|43 0|10 1|20 1|40 0|41 0|10 2|20 2"_g, 0},
      {"0 LWPOLYLINE|10 1|20 1|40 0|41 0.5|10 2|20 2"_g, kLostWidth},
      {"0 POLYLINE|40 2|0 VERTEX|10 1|20 1"_g, kLostWidth},
      {"0 POLYLINE|0 VERTEX|10 1|20 1|0 VERTEX|10 2|20 1|41 3"_g, kLostWidth},
      {"0 TEXT|10 1|20 1|40 2|1 \\A a|41 1|51 0|73 1"_g, 0},
      {"0 TEXT|10 1|20 1|40 2|1 %%Ua|41 0.8|51 10|7 WIDE|73 1"_g,
       kLostFont | kLostSlant | kLostLetterWidth | kLostFormats},
      {"0 TEXT|10 1|20 1|40 2|1 a|72 5|71 2|73 1"_g, kLostSlant | kLostLetterWidth},
      {"0 MTEXT|10 1|20 1|40 2|1 a\\P\\\\b|41 0"_g, 0},
      {"0 MTEXT|10 1|20 1|40 2|1 {\\fArial;a}|7 wide"_g, kLostFont | kLostSlant | kLostLetterWidth | kLostFormats}};
  for (const Dialect dialect : {Dialect::Standard, Dialect::Classic}) {
    rig.context.options.dialect = dialect;
    for (const auto& [entity, lost] : cases) {
      const auto found = ReadGroups(styles + Section("ENTITIES", entity) + kEnd);
      ASSERT_FALSE(found.empty());
      EXPECT_EQ(found[0].Lost, lost) << Lines(entity);
    }
  }
}

}  // namespace
}  // namespace tesselink
