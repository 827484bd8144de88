#include "formats/dxf/DXFOutFilter.h"

#include <gtest/gtest.h>

#include <array>

#include "support/Support.h"

namespace tesselink {
namespace {

class DXFOutFilterTest : public testing::Test {
 protected:
  Rig rig;
  DXFOutFilter writer{rig.context};
  const std::string path = rig.folder.Path("out.dxf");

  DXFOutFilterTest() { writer.filename(path); }

  // The entities section with "|" for line ends.
  std::string Entities() {
    writer.Release();
    const std::string text = Piped();
    const std::size_t begin = text.find("ENTITIES|") + 9;
    return text.substr(begin, text.rfind("  0|ENDSEC") - begin);
  }
  std::string Piped() const {
    std::string piped;
    for (const char c : Folder::Get(path)) piped += c == '\n' ? "|" : c == '\r' ? "" : std::string(1, c);
    return piped;
  }
  static tEntity Element(std::int16_t kind, const std::vector<std::array<double, 3>>& vertices) {
    tEntity entity;
    entity.bType = kind;
    entity.Layer = "L";
    tEntity::Index i = 0;
    for (const auto& [x, y, z] : vertices) {
      entity.x(i, x);
      entity.Y(i, y);
      entity.Z(i++, static_cast<float>(z));
    }
    return entity;
  }
  WriteResult Write(tEntity entity) { return writer.WriteEntity(entity); }
};

TEST_F(DXFOutFilterTest, AnEmptyDrawingIsWhole) {
  EXPECT_EQ(Entities(), "");
  EXPECT_EQ(
      Piped(),
      "  0|SECTION|  2|HEADER|  9|$ACADVER|  1|AC1009|  9|$INSBASE| 10|0| 20|0| 30|0|"
      "  9|$EXTMIN| 10|1E+20| 20|1E+20| 30|1E+20|  9|$EXTMAX| 10|-1E+20| 20|-1E+20| 30|-1E+20|  0|ENDSEC|"
      "  0|SECTION|  2|TABLES|  0|TABLE|  2|LTYPE| 70|1|  0|LTYPE|  2|CONTINUOUS| 70|64|  3|Solid Line| 72|65| 73|0|"
      " 40|0|  0|ENDTAB|  0|TABLE|  2|LAYER| 70|0|  0|ENDTAB|  0|TABLE|  2|STYLE| 70|0|  0|ENDTAB|  0|ENDSEC|"
      "  0|SECTION|  2|BLOCKS|  0|ENDSEC|  0|SECTION|  2|ENTITIES|  0|ENDSEC|  0|EOF|");
}

TEST_F(DXFOutFilterTest, EachKind) {
  Write(Element(kPoint, {{1, 2, 3}, {0, 0, 0}, {4.5, -5, 0.1}}));
  EXPECT_EQ(Entities(),
            "  0|POINT|  8|L|  6|CONTINUOUS| 62|0| 10|1| 20|2| 30|3|  0|POINT|  8|L|  6|CONTINUOUS| 62|0| 10|4.5| "
            "20|-5| 30|0.1|");
  writer.filename(path);
  tEntity line = Element(kLine, {{0, 0, 0}, {1, 1, 0}, {0, 0, 0}});
  line.LineStyle = "DASHED";
  line.Colour = 5;
  Write(line);
  EXPECT_EQ(Entities(), "  0|LINE|  8|L|  6|DASHED| 62|5| 10|1| 20|1| 30|0| 11|0| 21|0| 31|0|")
      << "a missing start is skipped, a missing end written";
  writer.filename(path);
  tEntity closed = Element(kPolyline, {{1, 1, 0}, {0, 0, 0}, {2, 2, 0}});
  closed.Closed = true;
  Write(closed);
  EXPECT_EQ(Entities(),
            "  0|POLYLINE|  8|L|  6|CONTINUOUS| 62|0|  0|VERTEX|  8|L| 10|1| 20|1| 30|0|"
            "  0|VERTEX|  8|L| 10|2| 20|2| 30|0|  0|SEQEND|");
  writer.filename(path);
  tEntity text = Element(kText, {{7, 8, 9}});
  text.Text = "N 1/4\r\ncor";
  text.TextSize = 12.5;
  text.TextAng = 30;
  text.TextJust = 50;
  Write(text);
  EXPECT_EQ(Entities(),
            "  0|TEXT|  8|L|  6|CONTINUOUS| 62|0| 10|7| 20|8| 30|9| 11|7| 21|8| 31|9| 40|12.5|  1|N 1/4  cor|"
            " 50|30| 72|2| 73|48|");
  EXPECT_NE(rig.WarningOf("control characters"), nullptr);
  writer.filename(path);
  tEntity circle = Element(kCircle, {{7, 8, 0}});
  circle.Rad = 2.5F;
  Write(circle);
  EXPECT_EQ(Entities(), "  0|CIRCLE| 62|0|  8|L| 10|7| 20|8| 30|0| 40|2.5|  6|CONTINUOUS|");
}

TEST_F(DXFOutFilterTest, KindsWithoutAFormCountForLayersAndExtents) {
  EXPECT_EQ(Write(Element(kArc, {{5, 6, 7}})), WriteResult::Skipped);
  tEntity other = Element(kPoint, {{0, 0, 0}, {1, 2, 3}});
  other.Layer = "l";
  EXPECT_EQ(Write(other), WriteResult::Written);
  writer.Release();
  const std::string text = Piped();
  EXPECT_NE(text.find("$EXTMIN| 10|1| 20|2| 30|3|  9|$EXTMAX| 10|5| 20|6| 30|7|"), std::string::npos);
  EXPECT_NE(text.find(" 70|2|  0|LAYER|  2|L| 70|64| 62|1|  6|CONTINUOUS|  0|LAYER|  2|l| 70|64| 62|2|"),
            std::string::npos);
  EXPECT_TRUE(rig.WarningOf("vertices at the origin")->text.ends_with("left out: 1"));
}

TEST_F(DXFOutFilterTest, NothingIsLeftBehindWhicheverWayItEnds) {
  namespace fs = std::filesystem;
  setenv("TMPDIR", rig.folder.Path("").c_str(), 1);
  const auto files = [this] {
    return std::distance(fs::directory_iterator(rig.folder.Path("")), fs::directory_iterator());
  };
  {
    DXFOutFilter second(rig.context);
    second.filename(rig.folder.Path("b.dxf"));
    EXPECT_EQ(files(), 2) << "two temporary files, and nothing at the output path";
    second.filename(rig.folder.Path("c.dxf"));
    EXPECT_EQ(files(), 3) << "the first output, and two temporary files";
    second.Abandon();
    EXPECT_EQ(files(), 1);
    EXPECT_NE(ErrorOf([&] { second.filename("/nosuch/d.dxf"); }).find("/nosuch/ is no folder that exists"),
              std::string::npos);
    second.filename("/dev/full");
    EXPECT_NE(ErrorOf([&] { second.Release(); }).find("No space left on device"), std::string::npos);
    EXPECT_TRUE(fs::exists("/dev/full"));
    second.filename(rig.folder.Path("e.dxf"));
  }
  EXPECT_EQ(files(), 2) << "b.dxf, and e.dxf by the destructor";
  unsetenv("TMPDIR");
}

}  // namespace
}  // namespace tesselink
