// SPDX-License-Identifier: MIT
// The Landmark writer, and the overlay reader that shares its family's state.
#include <gtest/gtest.h>

#include <cmath>

#include "formats/landmark/AscOutFilter.h"
#include "formats/landmark/MolInFilter.h"
#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class AscOutFilterTest : public testing::Test {
 protected:
  Rig rig;

  std::string Written(std::vector<tEntity> elements, const FilterOptions& options = {}) {
    rig.context.options = options;
    AscOutFilter writer(rig.context);
    const std::string path = rig.folder.Path("COUNTYPLAT2.asc");
    writer.filename(path);
    for (tEntity& element : elements) {
      writer.WriteEntity(element);
      EXPECT_EQ(element.PointCount(), -1) << "its vertices are cleared";
    }
    writer.Release();
    return Folder::Get(path);
  }
};

TEST_F(AscOutFilterTest, RecordsByTheLetter) {
  tEntity line = Element(kLine, {{1846000.125, 464000.5}, {-3, 0}});
  line.RGB = 0x0000FF;
  tEntity text = Element(kText, {{10.5, 20}});
  text.Text = "O'Hara\t\"1\"\n";
  text.TextSize = 12.5;
  text.TextAng = 30.25;
  text.TextJust = 50;
  text.RGB = 0xFFFFFF;
  tEntity polygon = Element(kPolyline, {{1, 2}});
  polygon.Closed = true;
  EXPECT_EQ(Written({Element(kPoint, {{1, 1}}), line, text, polygon, Element(5, {{1, 1}})}),
            "METAFILE,COUNTYPL,M,1,0,0\r\n"
            "LINE, , , , ,RED\r\nXY, 1846000.125, 464000.5\r\nXY, -3, 0\r\n"
            "TEXT, 'O'Hara\t\"1\" ',10.5,20,12,,30.25,RT,,WHITE\r\n"
            "LINE, , , , ,BLACK\r\nXY, 1, 2\r\n");
  FilterOptions options;
  options.own.Set("units", "FT");
  options.own.Set("map-scale", "24000");
  EXPECT_EQ(Written({Element(kPoint, {{1, 1}})}, options), "METAFILE,COUNTYPL,FT,24000,0,0\r\n")
      << "the header is the first element's, whatever its kind";
  EXPECT_EQ(Written({}), "");
}

TEST_F(AscOutFilterTest, ACircleClosesAtThreeHundredAndSixtyRadians) {
  tEntity circle = Element(kCircle, {{1000, 200}});
  circle.Rad = 10;
  circle.Z(0, 7);
  std::string expected = "METAFILE,COUNTYPL,M,1,0,0\r\nLINE, , , , ,BLACK\r\n";
  int vertices = 0;
  for (double a = 0; a <= 360 * 3.14159265358979 / 180; a += 31.4159265358979 / 180, ++vertices) {
    expected += "XY, " + NumberText(1000 + 10 * std::cos(a)) + ", " + NumberText(200 + 10 * std::sin(a)) + "\r\n";
  }
  EXPECT_GE(vertices, 36);
  // cos 360 and sin 360, as radians.
  EXPECT_EQ(Written({circle}), expected + "XY, 997.163089085135, 209.589157234143\r\n");
  EXPECT_TRUE(rig.WarningOf("heights")->text.ends_with(": 1"));
}

TEST_F(AscOutFilterTest, AnArcRunsFromItsStartInStepsOfTenDegrees) {
  tEntity arc = Element(kArc, {{1000, 1000}});
  arc.Rad = 100;
  arc.AngStart = 90;
  arc.AngEnd = 125;
  const std::string written = Written({arc});
  EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 2 + 4 + 1);
  EXPECT_TRUE(Holds(written, "XY, 1000, 1100\r\n"));
  EXPECT_EQ(rig.WarningOf("geographic circles"), nullptr);
}

TEST_F(AscOutFilterTest, AGeographicCircleIsConvertedWithItsCentre) {
  tEntity circle = Element(kCircle, {{-105, 40}});  // on the central meridian of zone 13
  circle.Rad = 0.01F;
  const std::string written = Written({circle});
  // Northing of 40 degrees and a hundredth of a degree of the parallel there, each times 0.9996.
  const std::size_t first = written.find("XY, ") + 4;
  const double x = std::stod(written.substr(first)), y = std::stod(written.substr(written.find(", ", first) + 2));
  EXPECT_NEAR(x, 500000 + 853.597, 0.01);
  EXPECT_NEAR(y, 4427757.219, 0.01);
  EXPECT_NE(rig.WarningOf("geographic circles"), nullptr);
}

TEST_F(AscOutFilterTest, TheStandardDialectByTheLetter) {
  tEntity chain = Element(kPolyline, {{0, 0}, {4.5, 0}});
  tEntity polygon = chain;
  polygon.Closed = true;
  tEntity text = Element(kText, {{0, 20}});
  text.Text = "O'Hara, \"1\"";
  text.TextSize = 12;
  text.TextAng = 30.25;
  text.TextJust = 50;
  const FilterOptions options{.dialect = Dialect::Standard};
  EXPECT_EQ(Written({Element(kPoint, {{1, 1}}), chain, polygon, text, Element(kLine, {{0, 7}})}, options),
            "METAFILE,COUNTYPL,M,1,0,0\r\n"
            "LINE, , , , ,BLACK\r\nXY,0,0\r\nXY,4.5,0\r\n"
            "POLYGON, , , , ,BLACK\r\nXY,0,0\r\nXY,4.5,0\r\n"
            "TEXT, 'O'Hara, \"1\"',0,20,12,,30.25,TR,,BLACK\r\n"
            "LINE, , , , ,BLACK\r\nXY,0,7\r\n");
  EXPECT_TRUE(rig.report.Warnings().empty());
}

TEST(MolInFilter, DeliversNothingAndNeverEnds) {
  Rig rig;
  MolInFilter reader(rig.context);
  std::string overlay(100, '\0');
  overlay.replace(12, 4, Little(std::int32_t{0x00120002}));
  overlay[26] = 12;
  reader.filename(rig.folder.Put("a.mol", overlay));
  EXPECT_TRUE(reader.Layers().empty()) << "a colour number is no name";
  tEntity entity;
  entity.Layer = "RED";
  entity.Text = "kept";
  reader.AssignCodes({"RED"}, {"CU00001"});
  EXPECT_FALSE(reader.GetNextEntity(entity));
  EXPECT_EQ(entity.CDFCode + entity.Layer + entity.Text, "CU00001REDkept");
  EXPECT_FALSE(reader.Eof());
  EXPECT_TRUE(reader.Stalled());
  for (const std::size_t length : {std::size_t{0}, std::size_t{3}, std::size_t{20}}) {
    reader.filename(rig.folder.Put("b.mol", overlay.substr(12, length)));
    EXPECT_EQ(reader.Eof(), length == 0);
  }
}

}  // namespace
}  // namespace tesselink
