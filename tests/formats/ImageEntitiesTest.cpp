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

}  // namespace
}  // namespace tesselink
