// SPDX-License-Identifier: MIT
// Hatches and lines of text; what they look like is compared with another program in tests/interop.
#include "formats/dxf/HatchEntities.h"

#include "support/Drawings.h"

namespace tesselink {
namespace {

class HatchTest : public DrawingTest {
 protected:
  HatchTest() { rig.context.options.dialect = Dialect::Standard; }
  static Groups Square(const std::string& half) {
    const std::string less = "-" + half;
    Groups path = "92 2|72 0|73 1|93 4"_g;
    for (const auto& [x, y] : {std::pair(less, less), {half, less}, {half, half}, {less, half}}) {
      path = std::move(path) + Groups{{10, x}, {20, y}};
    }
    return path;
  }
  // Where each ring begins and whether it runs counter-clockwise, as "0- 5+".
  static std::string Rings(const tEntity& area) {
    std::string rings;
    for (std::size_t part = 0; part < area.PartCount(); ++part) {
      const tEntity::Index begin = area.PartBegin(part);
      double doubled = 0;
      for (tEntity::Index i = begin; i + 1 < area.PartEnd(part); ++i) {
        doubled += area.x(i) * area.Y(i + 1) - area.x(i + 1) * area.Y(i);
      }
      rings += std::to_string(begin) + (doubled > 0 ? "+ " : "- ");
    }
    return rings;
  }
  static inline const Groups kHead = "0 HATCH|8 A|10 0|20 0|30 7|210 0|220 0|230 1|2 SOLID|70 1|91 3"_g;
};

TEST_F(HatchTest, TheStyleSaysWhichRingsAreHoles) {
  const Groups paths = Square("1") + Square("9") + Square("4");
  for (const auto& [style, rings] : {std::pair("0", "0- 5- 10+ "), {"1", "0- 5+ "}, {"2", "0- "}}) {
    const tEntity area = ReadOne(kHead + paths + Groups{{75, style}, {98, "1"}, {10, "500"}, {20, "500"}});
    EXPECT_EQ(Rings(area), rings) << style;
    EXPECT_TRUE(area.IsArea);
    EXPECT_EQ(area.Height(0), 7);
    EXPECT_EQ(area.Lost, kLostPattern) << "the seed is none of its vertices";
  }
  EXPECT_EQ(Rings(ReadOne(kHead + paths)), "0- 5- 10+ ") << "without a style";
  rig.context.options.dialect = Dialect::Classic;
  EXPECT_TRUE(Read(kHead + paths).empty());
  EXPECT_EQ(rig.report.UndeliveredTypes().at("HATCH"), 1);
}

TEST_F(HatchTest, EdgesAreJoinedWhicheverWayTheyRun) {
  const Groups edges = "92 1|93 3|72 1|10 0|20 0|11 9|21 0|72 1|10 0|20 0|11 5|21 5|72 1|10 5|20 5|11 9|21 0"_g;
  const tEntity area = ReadOne(kHead + edges + "97 0|75 0"_g);
  EXPECT_EQ(Rings(area), "0- ");
  ASSERT_EQ(area.PointCount(), 3);
}

TEST_F(HatchTest, DamagedBoundaries) {
  EXPECT_TRUE(Read(kHead + "92 2|10 1|20 1|10 2|20 2|92 1|72 3|40 x|92 7|75 0"_g).empty());
  EXPECT_NE(rig.WarningOf("damaged HATCH"), nullptr);
  EXPECT_EQ(Read(kHead + "92 1|72 4|94 3|40 0|72 9|10 1|72 2|10 0|20 0|40 5|50 0|51 360|75 x"_g).size(), 1U);
  EXPECT_EQ(Rings(ReadOne(kHead + Square("5") + "92 2|10 x|20 1|10 nan|20 2|10 1|20 1"_g)), "0- ");
}

TEST_F(HatchTest, LinesOfTextStandInPlace) {
  const Groups text = "0 MTEXT|10 100|20 50|40 3|1 one\\P\\Ptwo^Jthree\\P"_g;
  const auto places = [](const std::vector<tEntity>& lines) {
    std::string all;
    for (const tEntity& e : lines)
      all += e.Text + " " + std::to_string(std::lround(e.x(0))) + "," + std::to_string(std::lround(e.Y(0))) + " ";
    return all;
  };
  EXPECT_EQ(places(Read(text)), "one 100,50 two 100,40 three 100,35 ");
  EXPECT_EQ(places(Read(text + "71 7"_g)), "one 100,70 two 100,60 three 100,55 ");
  EXPECT_EQ(places(Read(text + "71 4|44 2|50 90"_g)), "one 80,50 two 100,50 three 110,50 ");
  EXPECT_EQ(places(Read("0 MTEXT|10 1|20 2|40 3|1  \\P "_g)), " 1,2 ") << "a blank text is one";
  EXPECT_TRUE(Read("0 MTEXT|10 x|20 2|40 3|1 a\\Pb"_g).empty()) << "no line of it lies anywhere";
  EXPECT_EQ(Read(text + "41 2"_g).front().Lost, kLostBreaks);
}

}  // namespace
}  // namespace tesselink
