// SPDX-License-Identifier: MIT
#include "formats/dxf/DXFInFilter.h"

#include "support/Drawings.h"

namespace tesselink {
namespace {

using DXFInFilterTest = DrawingTest;

TEST_F(DXFInFilterTest, ThePlainKinds) {
  const auto elements = Read(
      "0 POINT|10 0|20 7|30 1.5|0 INSERT|2 WELL|10 1|20 2|50 30|0 LINE|11 3|21 4|10 -1e1|20 +2"
      "|0 CIRCLE|10 1|20 2|40 5|0 ARC|10 1|20 2|40 5|50 350|51 10"_g);
  std::vector<std::string> rows;
  for (const tEntity& e : elements)
    rows.push_back(Row(e.bType, e.Text, e.TextAng, XY(e), e.Z(0), e.Rad, e.AngStart, e.AngEnd));
  // Whatever the order of the groups; and the end of an arc lies behind its start.
  EXPECT_EQ(rows, (std::vector<std::string>{"0 NOSTATUS 0 0,7 1.5 0 0 0", "0 WELL 30 1,2 0 0 0 0",
                                            "1  0 -10,2 3,4 0 0 0 0", "4  0 1,2 0 5 0 0", "6  0 1,2 0 5 350 370"}));
  EXPECT_TRUE(rig.report.Warnings().empty());
}

TEST_F(DXFInFilterTest, LayersAndColours) {
  const Groups tables = Section("TABLES",
                                "0 TABLE|2 LAYER|70 9|0 LAYER|2 Wells|62 -3|70 1|0 LAYER|2 Roads|62 1|420 1122867"
                                "|0 LAYER|2 wells|62 5|0 ENDTAB"_g);
  const Groups entities = Section(
      "ENTITIES",
      "0 POINT|10 1|20 1|8 WELLS|0 POINT|10 1|20 1|8 wells|62 256|0 POINT|10 1|20 1|8 Roads|0 POINT|10 1|20 1|8 roads"
      "|62 2|0 POINT|10 1|20 1|62 1|420 255|6 DASHED|0 POINT|10 1|20 1|8 new|6 ByLayer|0 POINT|10 1|20 1|8 |62 0"_g);
  for (const bool tablesFirst : {true, false}) {
    const auto e = ReadGroups(tablesFirst ? tables + entities + kEnd : entities + tables + kEnd);
    EXPECT_EQ(reader->Layers(), (std::vector<std::string>{"Wells", "Roads", "wells"}));
    std::vector<std::string> rows;
    for (const tEntity& each : e) rows.push_back(Row(each.Layer, each.Colour, each.RGB, each.LineStyle, each.CDFCode));
    // That of a layer that is off and frozen; an exact match comes first, and blue lies in the high byte; the layer's
    // true colour 0x112233; a colour of its own; a true colour of its own.
    EXPECT_EQ(rows, (std::vector<std::string>{"Wells 3 65280  0900000", "wells 5 16711680  0900000",
                                              "Roads 1 3351057  0900000", "Roads 2 65535  0900000",
                                              "0 1 16711680 DASHED 0900000", "new 7 16777215  0900000",
                                              "0 0 16777215  0900000"}));
  }
  reader->AssignCodes({"Wells", "new"}, {"0123456"});
  reader->filename(rig.folder.Path("a.dxf"));
  const auto coded = rig.ReadAll(*reader);
  EXPECT_EQ(coded[0].CDFCode, "0123456");
  EXPECT_EQ(coded[1].CDFCode, "0900000");
}

TEST_F(DXFInFilterTest, AMissingColourTableIsToldOnce) {
  rig.context.options.programFolder = rig.folder.Path("");
  const auto e = Read("0 POINT|10 1|20 1|62 3|0 POINT|10 1|20 1|62 4"_g);
  EXPECT_EQ(Row(e.at(0).Colour, e.at(0).RGB), "3 0") << "no colour is invented";
  ASSERT_NE(rig.WarningOf("colour table"), nullptr);
  EXPECT_EQ(rig.WarningOf("colour table")->count, 1);
}

TEST_F(DXFInFilterTest, OldPolylines) {
  const auto vertex = [](const std::string& x, const std::string& y, const Groups& more = {}) {
    return Groups{{0, "VERTEX"}, {8, "0"}, {10, x}, {20, y}} + more;
  };
  const Groups seqEnd{{0, "SEQEND"}, {8, "0"}};
  // Starts at x = 0, does not say that vertices follow, and is cut short by the next entity.
  auto e = Read(Groups{{0, "POLYLINE"}, {30, "9"}} + vertex("0", "1") + vertex("0", "0", {{30, "4"}}) +
                vertex("3", "2") + Groups{{0, "POLYLINE"}, {66, "1"}, {70, "129"}, {10, "0"}, {20, "0"}, {30, "0"}} +
                vertex("1", "1") + vertex("2", "1", {{42, "1"}}) + vertex("2", "5", {{42, "1"}}) + seqEnd +
                Groups{{0, "POINT"}, {10, "8"}, {20, "8"}});
  ASSERT_EQ(e.size(), 3U);
  EXPECT_EQ(Row(XY(e[0]), e[0].Z(0), e[0].Z(1), e[0].Closed), "0,1 0,0 3,2 9 4 0") << "9 is the elevation";
  EXPECT_TRUE(e[1].Closed);
  EXPECT_EQ(e[1].x(e[1].PointCount()), 1) << "ends on its first vertex";
  EXPECT_GT(e[1].PointCount(), 60) << "a half circle between, and one back to the first";
  // The frame of a fitted curve is left out, unless there is nothing else.
  e = Read(Groups{{0, "POLYLINE"}, {70, "4"}} + vertex("0", "1", {{70, "16"}}) + vertex("1", "1", {{70, "8"}}) +
           vertex("2", "2", {{70, "9"}}) + seqEnd + Groups{{0, "POLYLINE"}, {70, "4"}} +
           vertex("5", "1", {{70, "16"}}) + seqEnd);
  ASSERT_EQ(e.size(), 2U);
  EXPECT_EQ(XY(e[0]), "1,1 2,2");
  EXPECT_EQ(XY(e[1]), "5,1");
  EXPECT_TRUE(rig.report.Warnings().empty());
}

TEST_F(DXFInFilterTest, MeshesAndFacesAreTheirWires) {
  Groups grid{{0, "POLYLINE"}, {70, "48"}, {71, "2"}, {72, "3"}};
  Groups faces{{0, "POLYLINE"}, {70, "64"}};
  for (int i = 1; i <= 7; ++i) {
    const Groups at{{0, "VERTEX"}, {10, std::to_string(i)}, {20, "1"}};
    grid = grid + at + Groups{{70, "64"}};
    faces = faces + at + Groups{{70, "192"}};
  }
  faces = faces + "0 VERTEX|70 128|71 1|72 -2|73 3|0 VERTEX|70 128|71 1|72 9|0 VERTEX|70 128|71 6|72 7"_g;
  const auto e = Read(grid + faces +
                      "0 3DFACE|10 1|20 1|11 2|21 1|12 2|22 2|13 2|23 2"
                      "|0 SOLID|10 1|20 1|11 2|21 1|12 1|22 2|13 2|23 2"_g);
  std::vector<std::string> chains;
  for (const tEntity& wire : e) chains.push_back(XY(wire));
  EXPECT_EQ(chains, (std::vector<std::string>{"1,1 2,1 3,1 1,1", "4,1 5,1 6,1 4,1", "1,1 4,1", "2,1 5,1", "3,1 6,1",
                                              "1,1 2,1 3,1 1,1", "6,1 7,1", "1,1 2,1 2,2 1,1", "1,1 2,1 2,2 1,2 1,1"}));
  EXPECT_TRUE(e[0].Closed);
  EXPECT_FALSE(e[2].Closed);
  EXPECT_EQ(WarningText("mesh size"),
            "a.dxf, line 6: POLYLINE: 1 vertices beyond the 2 by 3 of its mesh were left out");
  EXPECT_NE(rig.WarningOf("polyface faces"), nullptr);
}

TEST_F(DXFInFilterTest, LightweightPolylinesAndObjectCoordinates) {
  const Groups polyline = "0 LWPOLYLINE|90 9|70 1|38 5|43 2|10 1|20 1|91 7|10 4|20 1|10 4|20 3"_g;
  const auto seen = [&](const Groups& more) {
    auto e = ReadOne(polyline + more);
    return Row(XY(e), e.Z(2), e.Closed);
  };
  EXPECT_EQ(seen({}), "1,1 4,1 4,3 1,1 5 1");
  EXPECT_EQ(seen("210 0|220 0|230 -1"_g), "-1,1 -4,1 -4,3 -1,1 -5 1");
  EXPECT_EQ(seen("210 0|220 -2|230 0"_g), "1,-5 4,-5 4,-5 1,-5 3 1") << "an upright plane seen from the south";
  EXPECT_NEAR(ReadOne(polyline + "210 0.0157|220 0|230 1"_g).Y(1), 4, 1e-12) << "no axis near that of the world";
  EXPECT_NEAR(ReadOne(polyline + "210 0.0156|220 0|230 1"_g).Y(1), 1, 1e-12) << "one within 1/64 of it";
  auto e = Read(polyline + "0 LWPOLYLINE|10 1|20 2"_g).at(1);
  EXPECT_EQ(Row(XY(e), e.Z(0)), "1,2 0") << "one vertex is legal, and the elevation was the other one's";

  e = ReadOne("0 ARC|10 3|20 1|40 2|50 10|51 40|210 0|220 0|230 -1"_g);
  EXPECT_EQ(Row(e.bType, XY(e), e.AngStart, e.AngEnd), "6 -3,1 140 170");
  e = ReadOne("0 CIRCLE|10 3|20 1|40 2|210 1|220 0|230 1"_g);
  EXPECT_EQ(e.bType, kPolyline) << "a tilted circle is none on the map";
  EXPECT_TRUE(e.Closed);
}

TEST_F(DXFInFilterTest, BulgesOfTheStandardDialect) {
  rig.context.options.dialect = Dialect::Standard;
  const Groups lens = "0 LWPOLYLINE|70 1|10 1|20 1|42 1|10 4|20 1|42 -0.5"_g;
  const auto seen = [](const tEntity& e) { return Row(XY(e), testing::PrintToString(e.Bulges)); };
  EXPECT_EQ(seen(ReadOne(lens)), "1,1 4,1 1,1 { 1, -0.5 }");
  EXPECT_EQ(seen(ReadOne(lens + "210 0|220 0|230 -1"_g)), "-1,1 -4,1 -1,1 { -1, 0.5 }");
  EXPECT_EQ(seen(ReadOne("0 POLYLINE|70 2|0 VERTEX|10 1|20 2|42 0.5|0 VERTEX|10 3|20 2|70 1|0 VERTEX|10 4|20 2|42 9"
                         "|0 SEQEND"_g)),
            "1,2 3,2 4,2 { 0.5, 0 }")
      << "nothing follows the last vertex";
  EXPECT_EQ(seen(ReadOne("0 LWPOLYLINE|10 1|20 1|42 1|10 1E999|20 1|42 2|10 5|20 1|42 0.5|10 6|20 1"_g)),
            "1,1 5,1 6,1 { 0, 0.5 }");
  const tEntity tilted = ReadOne(lens + "210 0|220 -1|230 0"_g);
  EXPECT_TRUE(tilted.Bulges.empty());
  EXPECT_GT(tilted.PointCount(), 100);
  rig.context.options.tolerance = 1e-12;
  EXPECT_LT(ReadOne("0 ELLIPSE|10 0|20 0|11 1000000|21 0|40 0.5"_g).PointCount(), 100010);
  EXPECT_NE(rig.WarningOf("coarse curves"), nullptr);
}

TEST_F(DXFInFilterTest, SplinesThatSayThatTheyAreClosed) {
  const Groups straight = "71 1|40 0|40 0|40 1|40 2|40 2|10 0|20 0|10 4|20 0|10 4|20 4"_g;
  const auto e = Read("0 SPLINE|70 1"_g + straight + "0 SPLINE|70 8"_g + straight);
  ASSERT_EQ(e.size(), 2U);
  EXPECT_EQ(Row(XY(e[0]), e[0].Closed, XY(e[1]), e[1].Closed), "0,0 4,0 4,4 0,0 1 0,0 4,0 4,4 0");
}

TEST_F(DXFInFilterTest, InsertsWithAttributesAndArrays) {
  const auto e = Read(
      "0 INSERT|2 B|66 1|10 1|20 2|50 90|70 2|71 2|44 10|45 5"
      "|0 ATTRIB|1 17|2 NO|70 1|10 1|20 1|73 3|74 2|72 1|11 4|21 4|0 SEQEND"
      "|0 INSERT|2 C|10 1|20 2|70 32767|71 32767"_g);
  ASSERT_EQ(e.size(), 3U);
  EXPECT_EQ(XY(e[0]), "1,2 1,12 -4,2 -4,12");
  EXPECT_EQ(Row(e[1].bType, e[1].Text, XY(e[1]), e[1].TextJust), "3 17 4,4 33") << "group 74 places it vertically";
  EXPECT_EQ(XY(e[2]), "1,2");
  EXPECT_NE(rig.WarningOf("arrays"), nullptr);
}

TEST_F(DXFInFilterTest, InsertsOfBlocksThatDrawAreTold) {
  const auto block = [](const std::string& name, const Groups& entities, const std::string& flags = "0") {
    return Groups{{0, "BLOCK"}, {8, "0"}, {2, name}, {70, flags}, {10, "0"}} + entities +
           Groups{{0, "ENDBLK"}, {8, "0"}};
  };
  const auto insert = [](const std::string& name) { return Groups{{0, "INSERT"}, {2, name}, {10, "1"}, {20, "2"}}; };
  const Groups line{{0, "LINE"}, {10, "0"}, {11, "1"}}, tag{{0, "ATTDEF"}, {2, "TAG"}, {70, "1"}};
  const Groups blocks =
      Section("BLOCKS", block("*Model_Space", line) + block("$PAPER_SPACE", line) +
                            block("Deep", insert("ROUND") + insert("tree") + insert("TREE")) + block("Empty", tag) +
                            block("Tree", line + line + Groups{{0, "POLYLINE"}, {0, "VERTEX"}, {0, "SEQEND"}} + tag) +
                            block("Round", insert("Square")) + block("Square", insert("round") + insert("empty")) +
                            block("Far", line, "4") + block("Constant", {{0, "ATTDEF"}, {70, "2"}}));
  const auto told = [&](const std::string& name) {
    rig.report = Report();
    EXPECT_EQ(ReadGroups(blocks + Section("ENTITIES", insert("Empty") + insert(name) + insert(name)) + kEnd).size(),
              3U);
    const Warning* warning = rig.WarningOf("blocks not drawn");
    return warning == nullptr ? "" : warning->text;
  };
  const auto twice = [](const std::string& entities) {
    return ": 2 inserts of blocks came as points; the blocks draw " + entities + " entities that are not converted";
  };
  EXPECT_TRUE(Holds(told("TREE"), "a.dxf, line 2")) << told("TREE");
  EXPECT_TRUE(Holds(told("TREE"), twice("6")));
  EXPECT_TRUE(Holds(told("deep"), twice("12"))) << "the inner block comes later";
  EXPECT_TRUE(Holds(told("Constant"), twice("2")));
  for (const char* name : {"Round", "Square", "Far", "missing", "*MODEL_SPACE", "$paper_space"})
    EXPECT_EQ(told(name), "");
}

TEST_F(DXFInFilterTest, WhereATextStands) {
  struct Case {
    std::string horizontal, vertical;
    int justification;
    std::string at;
    double angle;
  };
  const Case cases[] = {{"1", "0", 17, "5,5", 30}, {"2", "3", 50, "5,5", 30},  {"0", "2", 32, "5,5", 30},
                        {"4", "0", 33, "5,5", 30}, {"3", "0", 16, "1,1", 45},  {"5", "0", 16, "1,1", 45},
                        {"0", "0", 16, "1,1", 30}, {"1", "32", 33, "5,5", 30}, {"2", "48", 50, "5,5", 30}};
  for (const Case& c : cases) {
    const auto e =
        ReadOne("0 TEXT|1 a|10 1|20 1|11 5|21 5|40 2.5|50 30"_g + Groups{{72, c.horizontal}, {73, c.vertical}});
    EXPECT_EQ(e.TextJust, c.justification) << c.horizontal << " " << c.vertical;
    EXPECT_EQ(XY(e), c.at) << c.horizontal << " " << c.vertical;
    EXPECT_DOUBLE_EQ(e.TextAng, c.angle) << c.horizontal;
    EXPECT_EQ(e.TextSize, 2.5);
  }
  EXPECT_EQ(ReadOne("0 TEXT|10 1|20 1|50 30|230 -1"_g).TextAng, 150);
  EXPECT_EQ(ReadOne({{0, "MTEXT"}, {10, "1"}, {20, "1"}, {71, "6"}, {11, "0"}, {21, "3"}}).TextJust, 34);
  EXPECT_EQ(ReadOne({{0, "MTEXT"}, {10, "1"}, {20, "1"}, {71, "7"}, {11, "0"}, {21, "3"}}).TextAng, 90);
  const auto turned = [&](const std::string& direction) {
    const auto e = ReadGroups(Section("HEADER", {{9, "$ANGBASE"}, {50, "20"}, {9, "$ANGDIR"}, {70, direction}}) +
                              Section("ENTITIES", {{0, "TEXT"}, {10, "1"}, {20, "1"}, {50, "30"}}) + kEnd);
    return e.at(0).TextAng;
  };
  EXPECT_EQ(turned("0"), 50);
  EXPECT_EQ(turned("1"), -10);
}

TEST_F(DXFInFilterTest, WhatATextSays) {
  const auto text = [&](const std::string& bytes, const Groups& header = {}, const std::string& type = "TEXT") {
    const auto e = ReadGroups(Section("HEADER", header) +
                              Section("ENTITIES", {{0, type}, {10, "1"}, {20, "1"}, {1, bytes}}) + kEnd);
    return e.at(0).Text;
  };
  const auto page = [](const std::string& name) { return Groups{{9, "$DWGCODEPAGE"}, {3, name}}; };
  const Groups newer{{9, "$ACADVER"}, {1, "AC1027"}};
  EXPECT_EQ(text(" two  blanks "), " two  blanks ");
  EXPECT_EQ(text("a%%dB%%P%%c%%uno%%U %%65%%065%%%x%"), "a\u00B0B\u00B1\u00D8no %%65A%x%");
  EXPECT_EQ(text("^J^ ^I^M\\U+000A\\U+00e9\\U+D83D\\U+DE00\\U+zz"), " ^\t \u00E9\U0001F600\\U+zz");
  EXPECT_EQ(text("a\x01\tz"), "a\x01\tz");
  EXPECT_EQ(text("\x80\xE4"), "\u20AC\u00E4") << "ANSI_1252 when none is named";
  EXPECT_EQ(text("\u00E4"), "\u00E4") << "but UTF-8 when it is valid";
  EXPECT_EQ(text("\xC3\xA4", page("ANSI_1252")), "\u00C3\u00A4");
  EXPECT_EQ(text("\xC6\xF3\xEA", page("ansi_1251")), "\u0416\u0443\u043A");
  EXPECT_EQ(text("\x84%%132", page("dos850")), "\u00E4\u00E4");
  EXPECT_EQ(text("\u0416\xC6", newer + page("ANSI_1251")), "\u0420\u2013\u0416") << "not UTF-8, whatever the release";
  EXPECT_EQ(text("\u0416", newer + page("ANSI_1251")), "\u0416");
  EXPECT_EQ(text("x", page("ANSI_932")), "x");
  EXPECT_TRUE(Holds(WarningText("code page"), "ANSI_932"));
  // The standard dialect knows every page, and what a person said of one counts.
  rig.context.options.dialect = Dialect::Standard;
  rig.report = {};
  EXPECT_EQ(text("\x83\x5C{\x94\x5C", page("ANSI_932")), "ソ{能") << "a second byte is no backslash";
  EXPECT_EQ(text("\\P\xC4\xE3\x81\x5C%%d%%200", page("ANSI_936"), "MTEXT"), "你乗\u00B0%%200");
  EXPECT_EQ(text("\u4F60", newer + page("ANSI_936")), "你");
  EXPECT_TRUE(rig.report.Warnings().empty());
  EXPECT_EQ(text("\xB0\xA1\xFF\xB0", page("KSC5601")), "가\uFFFD\uFFFD");
  EXPECT_TRUE(Holds(WarningText("bytes"), "U+FFFD"));
  rig.context.options.own.Set("encoding", "Big5");
  EXPECT_EQ(text("\xA4\x40\xB3\x5C", page("ANSI_1252")), "一許");
  rig.context.options = {};
  EXPECT_EQ(
      text("{\\fArial|b1;one}\\Ptwo\\~\\S1/2; \\S3^ 4;\\S5#6;\\H2.5x;\\Lx\\l \\\\ \\{y\\} C:\\Files %%d", {}, "MTEXT"),
      "one two 1/2 3 45/6x \\ {y} C:\\Files \u00B0");
  const auto chunks = Read(
      "0 MTEXT|10 1|20 1|40 2|3 first |3 second |1 last|101 Embedded Object|40 9|10 9|1 no"
      "|0 TEXT|10 1|20 1|40 2|102 {APP|40 9|102 }|1 t|1001 X|1040 9"_g);
  ASSERT_EQ(chunks.size(), 2U);
  EXPECT_EQ(Row(chunks[0].Text, chunks[0].TextSize, XY(chunks[0])), "first second last 2 1,1");
  EXPECT_EQ(chunks[1].TextSize, 2) << "what an application put in braces is not the text's";
}

TEST_F(DXFInFilterTest, OnlyModelSpaceAndWhatIsLeftOutIsTold) {
  const Groups drawing =
      Section("BLOCKS", "0 BLOCK|2 *Model_Space|0 LINE|10 1|11 2|0 ENDBLK"_g) +
      Section("ENTITIES",
              "0 HATCH|10 1|0 HATCH|0 TEXT|67 1|10 1|20 1|0 INSERT|67 1|2 B|10 1|20 2|0 ATTRIB|10 1|20 2|0 SEQEND"
              "|0 VIEWPORT|67 1|0 3DSOLID|0 POINT|60 1|10 3|20 2"_g) +
      kEnd;
  EXPECT_EQ(ReadGroups(drawing).size(), 1U) << "an invisible element is delivered";
  EXPECT_EQ(rig.report.UndeliveredTypes(),
            (std::map<std::string, std::int64_t, std::less<>>{{"3DSOLID", 1}, {"HATCH", 2}}));
  ASSERT_NE(rig.WarningOf("paper space"), nullptr);
  EXPECT_EQ(rig.WarningOf("paper space")->count, 3) << "the attribute is where its insert is";
  rig.context.options.own.Set("paper-space", "yes");
  EXPECT_EQ(ReadGroups(drawing).size(), 4U);
}

TEST_F(DXFInFilterTest, LineEndsCommentsAndCutDrawings) {
  const Groups drawing = Section("HEADER", {{9, "$ACADVER"}, {1, "AC1009"}}) +
                         Section("ENTITIES", "999 a comment|0 LINE|8  a|10 1|20 1|999 0|11 2|21 2"_g) + kEnd;
  for (const std::string end : {"\n", "\r\n", "\r", "\r\r\n"}) {
    const auto e = ReadBytes(Lines(drawing, end) + end + end);
    ASSERT_EQ(e.size(), 1U);
    EXPECT_EQ(e[0].Layer, " a") << "values keep their blanks";
    EXPECT_EQ(XY(e[0]), "1,1 2,2");
  }
  EXPECT_TRUE(rig.report.Warnings().empty());
  EXPECT_EQ(ReadBytes("\xEF\xBB\xBF" + Lines(drawing)).size(), 1U);
  // Cut anywhere, a drawing is read as far as it goes.
  const std::string text = Lines(drawing);
  const std::size_t begun = text.find("HEADER"), whole = text.find(" 11\n2") + 4;
  for (std::size_t length = 1; length < text.size(); ++length) {
    std::size_t elements = 0;
    const std::string error = ErrorOf([&] { elements = ReadBytes(text.substr(0, length)).size(); });
    EXPECT_EQ(error.empty(), length > begun) << length;
    EXPECT_EQ(elements, length > whole ? 1U : 0U) << length;
  }
  EXPECT_TRUE(Holds(WarningText("no end"), "ends without EOF"));
  EXPECT_EQ(Failure(""), "a.dxf: is no DXF drawing; it holds nothing");
  EXPECT_EQ(Failure("\nhello\n"), "a.dxf, line 2: is no DXF drawing; expected a group code, which is a whole number");
  EXPECT_EQ(Failure("12\nhello\n"), "a.dxf: is no DXF drawing; it has no section");
  EXPECT_EQ(Failure(std::string("AC1027\0\0\0\0", 10)), "a.dxf: is a DWG drawing; save it as DXF");
}

TEST_F(DXFInFilterTest, DamageCostsOnlyTheEntityThatHasIt) {
  const auto e = Read(
      "0 LINE|10 1|20 1|11 NaN|21 1|0 CIRCLE|10 1|20 2|40 1E+400|0 ELLIPSE|10 1|20 2|11 0|21 0|40 1"
      "|0 LWPOLYLINE|90 10000000|10 1|20 1|10 inf|20 1|10 3|20 3|30 1e39|0 VERTEX|10 1"
      "|0 POINT|0 POINT|10 4|20 0x4|0 POINT|10 6|20 6|30 1e39"_g);
  ASSERT_EQ(e.size(), 2U);
  EXPECT_EQ(Row(XY(e[0]), XY(e[1]), e[1].Z(0)), "1,1 3,3 6,6 0");
  EXPECT_EQ(WarningText("damaged LINE"), "a.dxf, line 6: LINE: has an end that is no number; it was skipped");
  EXPECT_EQ(WarningText("numbers"), "a.dxf, line 12: LINE: expected a number");
  EXPECT_NE(rig.WarningOf("damaged CIRCLE"), nullptr);
  EXPECT_EQ(WarningText("damaged ELLIPSE"), "a.dxf, line 24: ELLIPSE: has an axis without length; it was skipped");
  EXPECT_EQ(rig.WarningOf("damaged POINT")->count, 2);
  EXPECT_EQ(rig.report.UndeliveredTypes().count("VERTEX"), 1U) << "a vertex of no polyline";
  // A line that is no code is passed over, and what follows is read.
  const auto after = ReadBytes(Lines({{0, "SECTION"}, {2, "ENTITIES"}, {0, "POINT"}}) + "abc\n" +
                               Lines({{10, "1"}, {20, "1"}, {0, "ENDSEC"}, {0, "EOF"}}));
  EXPECT_EQ(after.size(), 1U);
  EXPECT_EQ(WarningText("group codes"), "a.dxf, line 7: expected a group code; the line was passed over");
}

// A binary drawing, group by group.
std::string Binary(const Groups& groups, bool wideCodes) {
  std::string bytes("AutoCAD Binary DXF\r\n\x1a\0", 22);
  const auto put = [&](auto value) { bytes.append(reinterpret_cast<const char*>(&value), sizeof value); };
  for (const auto& [code, value] : groups) {
    if (wideCodes) {
      put(static_cast<std::int16_t>(code));
    } else if (code > 254) {
      bytes += '\xFF';
      put(static_cast<std::int16_t>(code));
    } else {
      bytes += static_cast<char>(code);
    }
    if ((code >= 10 && code < 60) || (code >= 210 && code < 240) || code == 1040) {
      put(std::stod(value));
    } else if ((code >= 60 && code < 80) || code == 370 || code == 1070) {
      put(static_cast<std::int16_t>(std::stoi(value)));
    } else if ((code >= 90 && code < 100) || code == 420 || code == 1071) {
      put(static_cast<std::int32_t>(std::stoi(value)));
    } else if (code == 290) {
      bytes += '\1';
    } else if (code == 310 || code == 1004) {
      bytes += static_cast<char>(value.size()) + value;
    } else {
      bytes += value + '\0';
    }
  }
  return bytes;
}

TEST_F(DXFInFilterTest, BinaryDrawings) {
  const Groups entities =
      "0 LWPOLYLINE|5 1F|90 2|8 wells|290 |370 25|310 ab|10 1.5|20 2|10 3|20 -4.25|1001 APP|1004 xy|1040 1|1070 2|1071 "
      "3"
      "|0 TEXT|10 1|20 1|420 255"_g +
      Groups{{1, std::string(300, 'x')}};
  const Groups drawing =
      "999 a comment"_g + Section("TABLES", "0 LAYER|2 Wells|62 3"_g) + Section("ENTITIES", entities) + kEnd;
  for (const bool wide : {false, true}) {
    const auto e = ReadBytes(Binary(drawing, wide));
    ASSERT_EQ(e.size(), 2U);
    EXPECT_EQ(Row(XY(e[0]), e[0].Layer, e[0].Colour), "1.5,2 3,-4.25 Wells 3");
    EXPECT_EQ(Row(e[1].RGB, e[1].Text), "16711680 " + std::string(300, 'x'));
  }
  const Groups old = Section("ENTITIES", "0 LINE|10 1|20 2|11 3|21 4|1070 7"_g) + kEnd;
  const auto e = ReadBytes(Binary(old, false));
  ASSERT_EQ(e.size(), 1U);
  EXPECT_EQ(XY(e[0]), "1,2 3,4");
  EXPECT_TRUE(rig.report.Warnings().empty());
  const std::string whole = Binary(drawing, true);
  for (std::size_t length = 23; length < whole.size(); length += 3) {
    EXPECT_NO_THROW(ErrorOf([&] { ReadBytes(whole.substr(0, length)); })) << length;
  }
  ReadBytes(Binary(Section("ENTITIES", {{0, "LINE"}, {85, "1"}, {10, "1"}}), true));
  EXPECT_TRUE(Holds(WarningText("group codes"), "the group code 85 is none that a binary drawing holds"));
}

}  // namespace
}  // namespace tesselink
