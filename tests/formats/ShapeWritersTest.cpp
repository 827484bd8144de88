// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

#include "formats/shape/DBFOutFilter.h"
#include "formats/shape/ESRIInFilt.h"
#include "formats/shape/ESRIOutFilt.h"
#include "formats/shape/ShapeFiles.h"
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
  EXPECT_TRUE(Holds(ErrorOf([&] { table.AddRecord("sixsix"); }), "is longer than the field NAME of 5"));
  table.filename(folder.Path("u.dbf"));
  table.Release();
  EXPECT_EQ(Folder::Get(folder.Path("u.dbf")).size(), 30U) << "a table without fields is a header";
}

class ESRIOutFiltTest : public testing::Test {
 protected:
  Rig rig;
  ESRIOutFilt writer{rig.context};
  const std::string path = rig.folder.Path("out.shp");

  ESRIOutFiltTest() { writer.filename(path); }

  WriteResult Write(tEntity entity) {
    entity.Layer = "ROAD";
    return writer.WriteEntity(entity);
  }
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
  EXPECT_EQ(rig.person.choiceQuestions["shape-type"], 1);
  EXPECT_EQ(ReadBack(), "1,2 3,4.5 ROAD; 0,0 4,0 4,3 0,0 ; ");
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
  for (const char* kind : {"heights", "cut values", "bars"}) {
    ASSERT_NE(rig.WarningOf(kind), nullptr) << kind;
    EXPECT_TRUE(rig.WarningOf(kind)->text.ends_with(": 1")) << kind;
  }
}

TEST(ShapeFiles, TheSizeLimitIsRefusedBeforeItIsCrossed) {
  const Folder folder;
  for (const bool heights : {false, true}) {
    ShapeFiles files(heights, 100 + 3 * (heights ? 44 : 28));
    std::vector<std::string> created;
    files.Create(folder.Path("a.shp"), folder.Path("a.shx"), created);
    files.Hold(ShapeKind::PointsOrText);
    const tEntity points = Element(kPoint, {{1, 1, 0}, {9, 9, 9}});
    for (int i = 0; i < 3; ++i) files.AddPoint(points, 0);
    EXPECT_THROW(files.AddPoint(points, 1), FileFull) << "with heights, three flat points leave no room for them";
    files.WriteHeaders();
    files.Close();
    EXPECT_EQ(Folder::Get(created[0]).size(), 100U + 3 * 28);
    EXPECT_EQ(Folder::Get(created[0]).substr(32, 4), Little(std::int32_t{1}));
    EXPECT_EQ(Folder::Get(created[1]).size(), 100U + 3 * 8);
  }
}

TEST(ShapeFiles, ACopyThatIsNotWhatWasWrittenIsAnError) {
  const Folder folder;
  const std::string path = folder.Path("a.shp");
  const ShapeFile shorter({std::string(8, '\0'), std::string(8, '\0')});
  for (const std::string& bytes : {std::string(), std::string(104, '\0'), std::string(5000, '\0'), shorter.shp,
                                   ShapeFile({ChainContent(3, {0}, {{1, 1}, {2, 2}})}).shp.substr(0, 150)}) {
    ShapeFiles files(true);
    std::vector<std::string> created;
    files.Create(path, folder.Path("a.shx"), created);
    const auto add = [&files](double z) {
      const ShapePart part{0, 2};
      files.AddShape(Element(kLine, {{1, 1, 0}, {2, 2, z}}), {&part, 1});
    };
    add(0);
    add(0);
    // The file that is read again is another one.
    std::filesystem::remove(path);
    folder.Put("a.shp", bytes);
    EXPECT_TRUE(Holds(ErrorOf([&] { add(5); }), path + ": its copy in the temporary folder"));
  }
}

TEST(DBFOutFilter, StandardByteForByte) {
  const Folder folder;
  const std::string path = folder.Path("t.dbf");
  DBFOutFilter table(Dialect::Standard);
  table.filename(path);
  table.AddField("NAME", 4, "C");
  table.AddField("TENLETTERS", 5, "N", 2);
  table.AddRecord("abcd|1.25");
  table.AddRecord("");
  table.Release();
  const auto nul = [](std::size_t count) { return std::string(count, '\0'); };
  EXPECT_EQ(Folder::Get(path).substr(4), "\x02" + nul(3) + "\x61" + nul(1) + "\x0A" + nul(1) + nul(20) +  //
                                             "NAME" + nul(7) + "C" + nul(4) + "\x04" + nul(15) +          //
                                             "TENLETTERS" + nul(1) + "N" + nul(4) + "\x05\x02" + nul(14) + "\r" +
                                             " abcd 1.25" + std::string(10, ' ') + "\x1A");
  EXPECT_EQ(Folder::Get(path)[0], 3);
  table.filename(path);
  for (int i = 0; i < 257; ++i) table.AddField("F" + std::to_string(i), i < 256 ? 255 : 254, "C");
  EXPECT_TRUE(Holds(ErrorOf([&] { table.AddField("ONEMORE", 1, "C"); }), "has no room"));
}

class StandardOutputTest : public testing::Test {
 protected:
  Rig rig;
  const std::string path = rig.folder.Path("out.shp");
  std::optional<ESRIOutFilt> writer;

  StandardOutputTest() {
    rig.context.options.dialect = Dialect::Standard;
    writer.emplace(rig.context);
    writer->filename(path);
  }
  static tEntity Element(std::int16_t kind, const VertexChain& vertices) {
    tEntity entity = tesselink::Element(kind, vertices);
    entity.CountOrigin(true);
    return entity;
  }
  // An input of points, one for each row of its table.
  std::string Put(const std::string& stem, const std::vector<TableField>& fields,
                  const std::vector<std::vector<std::string>>& rows, const std::string& projection) {
    const ShapeFile file(std::vector<std::string>(rows.size(), PointContent(1, 2)));
    rig.folder.Put(stem + ".shx", file.shx);
    rig.folder.Put(stem + ".dbf", Table(fields, rows));
    if (!projection.empty()) rig.folder.Put(stem + ".prj", projection);
    return rig.folder.Put(stem + ".shp", file.shp);
  }
  void Carry(const std::string& input, bool withLayers = false) {
    ESRIInFilt reader(rig.context);
    reader.Layered = withLayers;
    reader.filename(input);
    writer->SourceOpened(reader);
    for (tEntity& entity : rig.ReadAll(reader)) writer->WriteEntity(entity);
  }
  std::string ReadTable() const {
    DBFInFilter table(Dialect::Standard);
    table.filename(rig.folder.Path("out.dbf"));
    std::string text;
    for (int i = 0; i <= table.NumFields(); ++i)
      text += table.GetFieldName(i) + table.FieldType(i) + std::to_string(table.FieldLength(i)) + " ";
    for (std::int64_t row = 0; row < table.NumRecs(); ++row) {
      text += "|";
      for (int i = 0; i <= table.NumFields(); ++i) text += std::string(table.GetFieldData(i, row)) + ",";
    }
    return text;
  }
  std::vector<tEntity> Elements() {
    ESRIInFilt reader(rig.context);
    reader.Layered = false;
    reader.filename(path);
    return rig.ReadAll(reader);
  }
  std::string ReadBack() {
    std::string text;
    for (const tEntity& element : Elements()) {
      text += XY(element) + " z";
      for (tEntity::Index i = 0; i <= element.PointCount(); ++i) text += " " + SingleText(element.Z(i));
      text += "; ";
    }
    return text;
  }
};

TEST_F(StandardOutputTest, TheFirstHeightLiftsTheWholeFile) {
  const auto flat = Element(kLine, {{1, 1, 0}, {2, 2, 0}}), high = Element(kLine, {{0, 0, 0}, {3, 4, -5}});
  tEntity ring = Element(kPolyline, {{0, 0, 1}, {4, 0, 2}, {4, 3, 3}});
  ring.Closed = true;
  for (tEntity entity : {flat, flat, high, flat, ring}) EXPECT_EQ(writer->WriteEntity(entity), WriteResult::Written);
  tEntity single = Element(kPolyline, {{1, 1, 1}});
  EXPECT_EQ(writer->WriteEntity(single), WriteResult::Skipped) << "no chain";
  writer->Release();
  EXPECT_EQ(ReadBack(), "1,1 2,2 z 0 0; 1,1 2,2 z 0 0; 0,0 3,4 z 0 -5; 1,1 2,2 z 0 0; 0,0 4,0 4,3 0,0 z 1 2 3 1; ");
  const std::string shp = Folder::Get(path), shx = Folder::Get(rig.folder.Path("out.shx"));
  EXPECT_EQ(shp[32], 13);
  EXPECT_EQ(shp.substr(68, 16), Little(-5.0) + Little(3.0));
  EXPECT_EQ(shp.substr(352, 32), Little(0.0) + Little(0.0) + Little(3.0) + Little(4.0))
      << "the box of the first high one";
  EXPECT_EQ(shp.substr(428, 16), Little(-5.0) + Little(0.0)) << "and its least and greatest z";
  EXPECT_EQ(shp.substr(24, 4), Big(static_cast<std::int32_t>(shp.size() / 2)));
  EXPECT_EQ(shx.size(), 100U + 5 * 8);
  EXPECT_EQ(shx[32], 13);
  EXPECT_EQ(rig.WarningOf("heights"), nullptr);
}

TEST_F(StandardOutputTest, PointsGainHeights) {
  tEntity flat = Element(kPoint, {{0, 0, 0}}), high = Element(kPoint, {{1, 1, 9}});
  for (tEntity entity : {flat, high, flat}) writer->WriteEntity(entity);
  writer->Release();
  EXPECT_EQ(ReadBack(), "0,0 z 0; 1,1 z 9; 0,0 z 0; ");
  EXPECT_EQ(Folder::Get(path)[32], 11);
  EXPECT_EQ(Folder::Get(path).substr(136, 8), Little(-1e39)) << "no measure";
}

// A ring that lacks its closing vertex, and a hole in it.
tEntity Lease(double x) {
  tEntity lease = tesselink::Element(
      kPolyline,
      {{x, 0, 0}, {x, 9, 0}, {x + 9, 9, 0}, {x + 9, 0, 0}, {x + 2, 2, 0}, {x + 4, 2, 0}, {x + 2, 4, 0}, {x + 2, 2, 0}});
  lease.Parts = {4};
  lease.IsArea = lease.Closed = true;
  return lease;
}

TEST_F(StandardOutputTest, RingsRunTheRightWay) {
  rig.person.choices["shape-type"] = 2;
  tEntity turned = Element(kPolyline, {{0, 0, 0}, {9, 0, 0}, {9, 9, 0}, {2, 2, 0}, {2, 4, 0}, {4, 2, 0}, {2, 2, 0}});
  turned.Parts = {3};
  turned.IsArea = true;
  tEntity fence = Element(kPolyline, {{5, 5, 0}, {8, 5, 0}, {8, 7, 0}});
  EXPECT_EQ(writer->WriteEntity(fence), WriteResult::Skipped) << "surrounds nothing";
  fence.Closed = true;
  tEntity sliver = Element(kPolyline, {{1, 1, 0}, {2, 2, 0}, {1, 1, 0}}), lease = Lease(0);
  for (tEntity* entity : {&lease, &turned, &fence}) EXPECT_EQ(writer->WriteEntity(*entity), WriteResult::Written);
  EXPECT_EQ(writer->WriteEntity(sliver), WriteResult::Skipped);
  writer->Release();
  const auto elements = Elements();
  ASSERT_EQ(elements.size(), 3U);
  EXPECT_EQ(Row(XY(elements[0]), elements[0].Parts.at(0)), "0,0 0,9 9,9 9,0 0,0 2,2 4,2 2,4 2,2 5");
  EXPECT_EQ(Row(XY(elements[1]), elements[1].Parts.at(0)), "0,0 9,9 9,0 0,0 2,2 4,2 2,4 2,2 4")
      << "from where it began";
  EXPECT_EQ(XY(elements[2]), "5,5 8,7 8,5 5,5");
  EXPECT_TRUE(rig.WarningOf("rings turned")->text.ends_with(": 1"));
}

TEST_F(StandardOutputTest, MeasuresAndNullShapesGoThroughEveryType) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  tEntity null = Element(kPolyline, {}), measured = Lease(1), high = Lease(2);
  null.Record = 7;
  measured.Measures = {1, 2, none, 4, 5, 6, 7, 8};
  high.Height(3, 30);
  for (tEntity entity : {Lease(0), null, measured, Lease(0), high}) writer->WriteEntity(entity);
  writer->Release();
  const std::string shp = Folder::Get(path);
  EXPECT_EQ(shp[32], 15) << "PolygonM, then PolygonZ with the m values of before";
  EXPECT_EQ(shp.substr(68, 32), Little(0.0) + Little(30.0) + Little(1.0) + Little(8.0));
  std::string found;
  for (const tEntity& element : Elements()) {
    found += Row(element.IsNull(), element.Parts.size(), element.HasHeight(), element.Measures.size()) + "; ";
    if (element.Measures.empty()) continue;
    EXPECT_TRUE(std::isnan(element.Measures[2]));
    EXPECT_EQ(element.Measures[4], 1) << "the closing vertex has the first one's";
    EXPECT_EQ(element.Measures[8], 8);
  }
  EXPECT_EQ(found, "0 1 0 0; 1 0 0 0; 0 1 0 9; 0 1 0 0; 0 1 1 0; ");
}

TEST_F(StandardOutputTest, OwnFieldsInFull) {
  tEntity text = Element(kText, {{5, 6, 0}});
  text.Layer = std::string(49, 'a') + "\xC3\xA4";  // half of the letter would fit
  text.Text = "N 45\xB0 E|";
  text.TextAng = 12.1;
  text.TextSize = 1234567890123;
  writer->WriteEntity(text);
  text.TextAng = 1e-30;
  text.TextSize = std::numeric_limits<double>::infinity();
  writer->WriteEntity(text);
  writer->Release();
  const std::string row = "|" + std::string(49, 'a') + ",,0,BLACK,,N 45° E|,";
  EXPECT_EQ(ReadTable(),
            "DescC50 CodeC10 ColorNumN12 ColorNameC15 TrueColorC7 TextC100 TextAngleN24 TextSizeN24 TextJustC2 " + row +
                "12.100000000000000,1234567890123.0000000000,L," + row + "1E-30,,L,");
  EXPECT_EQ(rig.WarningOf("cut values")->text.substr(rig.WarningOf("cut values")->text.size() - 3), ": 2");
  EXPECT_EQ(Folder::Get(rig.folder.Path("out.cpg")), "UTF-8");
  EXPECT_EQ(writer->Outputs().size(), 4U);
}

TEST_F(StandardOutputTest, AttributesOfSeveralInputs) {
  const std::string kFeet = "PROJCS[\"feet\"]";
  Carry(Put("a", {{"NAME", 4}, {"Depth", 6, 'N'}, {"MEMO", 10, 'M'}, {"NAME", 2}},
            {{"\xE4\xE4\xE4\xE4", " 12.50", "1", "x"}, {" b", "", "2", "y"}}, kFeet));
  Carry(Put("b", {{"DEPTH", 8, 'F'}, {"NAME", 9}, {"MORE", 3}, {"name", 4, 'N'}}, {{"1234567", "abcdefghi", "c", "5"}},
            kFeet + "\r\n"));
  rig.folder.Put("c.prj", kFeet);
  const ShapeFile bare({PointContent(3, 4)});
  rig.folder.Put("c.shx", bare.shx);
  Carry(rig.folder.Put("c.shp", bare.shp));
  Carry(Put("d", {{"DEPTH", 2}}, {{"12"}}, kFeet));
  writer->Release();
  EXPECT_EQ(ReadTable(), "NAMEC8 DepthN6 NAME_1C2 |ääää,12.50,x,| b,,y,|abcdefgh,,5,|,,,|,,,");
  EXPECT_EQ(rig.WarningOf("fields left out")->count, 3) << "MEMO, MORE, and a text where there are numbers";
  EXPECT_NE(rig.WarningOf("fields renamed"), nullptr);
  EXPECT_TRUE(rig.WarningOf("cut values")->text.ends_with(": 2"));
  EXPECT_EQ(Folder::Get(rig.folder.Path("out.prj")), kFeet);
  EXPECT_EQ(writer->Outputs().back(), rig.folder.Path("out.prj"));
}

TEST_F(StandardOutputTest, OwnFieldsBesideCarriedOnes) {
  rig.person.layerField = "Desc";
  rig.folder.Put("out.prj", "from before");
  Carry(Put("a", {{"Desc", 4}, {"COLORNAME", 5}}, {{"ROAD", "gold"}}, "A"), true);
  Carry(Put("b", {{"Desc", 4}}, {{"WELL"}}, "B"));
  writer->Release();
  EXPECT_EQ(ReadTable(),
            "DescC4 COLORNAMEC5 Desc_1C50 CodeC10 ColorNumN12 ColorNam_1C15 TrueColorC7 TextC100 TextAngleN24 "
            "TextSizeN24 TextJustC2 |ROAD,gold,ROAD,0900000,0,BLACK,,,0.000000000000000,0.000000000000000,,"
            "|WELL,,0,,0,BLACK,,,0.000000000000000,0.000000000000000,,");
  EXPECT_NE(rig.WarningOf("coordinate systems"), nullptr);
  EXPECT_EQ(Folder::Get(rig.folder.Path("out.prj")), "from before");
}

}  // namespace
}  // namespace tesselink
