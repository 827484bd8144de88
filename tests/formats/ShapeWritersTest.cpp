#include <gtest/gtest.h>

#include "formats/shape/DBFOutFilter.h"
#include "formats/shape/ESRIInFilt.h"
#include "formats/shape/ESRIOutFilt.h"
#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(DBFOutFilter, ByteForByte) {
  const Folder folder;
  const std::string path = folder.Put("t.dbf", std::string(5000, 'x'));
  DBFOutFilter table;
  table.filename(path);
  table.AddField("NAME", 6, "Character");
  table.AddField("TENLETTERS", 3, "N");
  table.AddRecord("abcd|1");
  table.AddField("LATE", 3, "N");  // without effect
  table.AddRecord("sixsix|123|more");
  table.AddRecord("");
  table.Release();
  const std::string bytes = Folder::Get(path);
  const std::time_t now = std::time(nullptr);
  const std::tm today = *std::localtime(&now);
  const std::string date{static_cast<char>(today.tm_year), static_cast<char>(today.tm_mon + 1),
                         static_cast<char>(today.tm_mday)};
  const auto nul = [](std::size_t count) { return std::string(count, '\0'); };
  const std::string expected =
      nul(1) + date + "\x03" + nul(3) + "\x60" + nul(1) + "\x09" + nul(1) + nul(17) + "\x57" + nul(2) +  //
      "NAME" + nul(6) + " C" + nul(4) + "\x06" + nul(15) +                                               //
      "TENLETTERS N" + nul(4) + "\x03" + nul(15) +                                                       //
      nul(1) + "abcd" + nul(2) + "1 " +   // the space before the next record is this one's last byte
      nul(1) + "sixsi" + nul(1) + "1 " +  // values that fill their field lose their last character
      nul(9);
  EXPECT_EQ(bytes, expected);
  EXPECT_EQ(bytes.find('\r'), std::string::npos) << "no terminator";
}

TEST(DBFOutFilter, RefusesWhatDoesNotFit) {
  const Folder folder;
  DBFOutFilter table;
  table.filename(folder.Path("t.dbf"));
  EXPECT_NE(ErrorOf([&] { table.AddField("ELEVENCHARS", 5, "C"); }), "");
  table.AddField("NAME", 5, "C");
  EXPECT_NE(ErrorOf([&] { table.AddRecord("sixsix"); }).find("is longer than the field NAME of 5"), std::string::npos);
  table.filename(folder.Path("u.dbf"));
  table.Release();
  EXPECT_EQ(Folder::Get(folder.Path("u.dbf")).size(), 30U) << "a table without fields is a header";
  DBFOutFilter full;
  EXPECT_NE(ErrorOf([&] {
              full.filename("/dev/full");
              full.Release();
            }).find("No space left"),
            std::string::npos);
}

class ESRIOutFiltTest : public testing::Test {
 protected:
  Rig rig;
  ESRIOutFilt writer{rig.context};
  const std::string path = rig.folder.Path("out.shp");

  ESRIOutFiltTest() { writer.filename(path); }

  static tEntity Element(std::int16_t kind, const Points& vertices) {
    tEntity entity;
    entity.bType = kind;
    entity.Layer = "ROAD";
    tEntity::Index i = 0;
    for (const auto& [x, y] : vertices) {
      entity.x(i, x);
      entity.Y(i++, y);
    }
    return entity;
  }
  WriteResult Write(tEntity entity) { return writer.WriteEntity(entity); }
  // What the files hold, read by the reader; every row's layer stands one shape behind.
  std::string ReadBack() {
    writer.Release();
    ESRIInFilt reader(rig.context);
    rig.person.layerField = "Desc";
    reader.filename(path);
    std::string text;
    for (const tEntity& element : rig.ReadAll(reader)) text += XY(element) + " " + element.Layer + "; ";
    return text;
  }
};

TEST_F(ESRIOutFiltTest, Polylines) {
  tEntity closed = Element(kPolyline, {{0, 0}, {4, 0}, {4, 3}});
  closed.Closed = true;
  EXPECT_EQ(Write(Element(kLine, {{1, 2}, {3, 4.5}})), WriteResult::Written);
  EXPECT_EQ(Write(Element(kPoint, {{9, 9}})), WriteResult::Skipped);
  EXPECT_EQ(Write(Element(kText, {{9, 9}})), WriteResult::Skipped);
  EXPECT_EQ(Write(closed), WriteResult::Written);
  EXPECT_EQ(rig.person.shapeQuestions, 1);
  EXPECT_EQ(ReadBack(), "1,2 3,4.5 ROAD; 0,0 4,0 4,3 0,0 ; ");
  const std::string shp = Folder::Get(path), shx = Folder::Get(rig.folder.Path("out.shx"));
  EXPECT_EQ(shp.substr(24, 4), Big(static_cast<std::int32_t>(shp.size() / 2)));
  EXPECT_EQ(shx.substr(24, 4), Big(static_cast<std::int32_t>(shx.size() / 2)));
  EXPECT_EQ(shp.substr(36, 32), Little(0.0) + Little(0.0) + Little(4.0) + Little(4.5));
  EXPECT_EQ(shp.substr(108 + 4, 32), Little(1.0) + Little(2.0) + Little(3.0) + Little(4.5));
}

TEST_F(ESRIOutFiltTest, CurvesBecomeChainsThatCloseOnTheirFirstVertex) {
  tEntity circle = Element(kCircle, {{100, 50}});
  circle.Rad = 10;
  tEntity arc = Element(kArc, {{0, 0}});
  arc.Rad = 2;
  arc.AngStart = 270;
  arc.AngEnd = 90;
  EXPECT_EQ(Write(circle), WriteResult::Converted);
  EXPECT_EQ(Write(arc), WriteResult::Converted);
  writer.Release();
  ESRIInFilt reader(rig.context);
  reader.Layered = false;
  reader.filename(path);
  const auto elements = rig.ReadAll(reader);
  ASSERT_EQ(elements.size(), 2U);
  EXPECT_EQ(elements[0].x(0), 110);
  EXPECT_EQ(elements[0].x(elements[0].PointCount()), 110);
  EXPECT_EQ(elements[0].Y(elements[0].PointCount()), 50);
  EXPECT_NEAR(elements[1].x(elements[1].PointCount() / 2), 2, 0.01) << "the short way through 0 degrees";
  EXPECT_NEAR(elements[1].Y(elements[1].PointCount()), 2, 1e-9);
}

TEST_F(ESRIOutFiltTest, PointsAndTextsWithTheirValues) {
  tEntity text = Element(kText, {{5, 6}, {7, 8}});
  text.Text = "a|b" + std::string(200, 'c');
  text.TextAng = 12.5;
  text.Colour = 3;
  text.RGB = 0x0000FF;
  text.CDFCode = "CU00001";
  tEntity high = Element(kPoint, {{1, 1}, {2, 2}});
  high.Z(1, 9);
  Write(text);
  Write(high);
  EXPECT_EQ(Write(Element(kPolyline, {{1, 1}, {2, 2}})), WriteResult::Skipped);
  EXPECT_EQ(ReadBack(), "5,6 ROAD; 1,1 ROAD; 2,2 ; ") << "a point for each vertex";
  DBFInFilter table;
  table.filename(rig.folder.Path("out.dbf"));
  std::string row;
  for (int i = 0; i <= table.NumFields(); ++i)
    row += table.GetFieldName(i) + "=" + std::string(table.GetFieldData(i, 0)).substr(0, 7) + " ";
  EXPECT_EQ(row, "Desc=ROAD Code=CU00001 ColorNum=3 ColorName=RED Text=a bcccc TextAngle=12.5 TextSize=0 ");
  for (const char* kind : {"heights", "cut values", "bars"}) EXPECT_NE(rig.WarningOf(kind), nullptr) << kind;
}

TEST_F(ESRIOutFiltTest, NothingWrittenIsThreeWholeFiles) {
  EXPECT_EQ(ReadBack(), "");
  EXPECT_EQ(Folder::Get(path).size(), 100U);
  EXPECT_EQ(rig.person.shapeQuestions, 0);
}

TEST_F(ESRIOutFiltTest, TheSizeLimitIsRefusedBeforeItIsCrossed) {
  writer.sizeLimit = 100 + 3 * 28;
  for (int i = 1; i <= 3; ++i) Write(Element(kPoint, {{i + 0.0, 1}}));
  EXPECT_THROW(Write(Element(kPoint, {{4, 1}})), FileFull);
  EXPECT_EQ(ReadBack(), "1,1 ROAD; 2,1 ROAD; 3,1 ; ");
}

TEST_F(ESRIOutFiltTest, AFailureAtAnyOfTheThreeFilesLeavesNone) {
  namespace fs = std::filesystem;
  for (const char* extension : {"shp", "shx", "dbf"}) {
    for (const char* other : {"shp", "shx", "dbf"}) fs::remove(rig.folder.Path(std::string("full.") + other));
    fs::create_symlink("/dev/full", rig.folder.Path(std::string("full.") + extension));
    const std::string error = ErrorOf([&] {
      writer.filename(rig.folder.Path("full.shp"));
      for (int i = 1; i < 20000; ++i) Write(Element(kPoint, {{i + 0.0, 1}}));
      writer.Release();
    });
    writer.Abandon();
    EXPECT_NE(error.find(std::string("full.") + extension + ": could not be written: No space left"), std::string::npos)
        << error;
    for (const char* other : {"shp", "shx", "dbf"}) {
      if (std::string(other) == extension) continue;
      EXPECT_FALSE(fs::exists(rig.folder.Path(std::string("full.") + other))) << other;
    }
  }
}

}  // namespace
}  // namespace tesselink
