// SPDX-License-Identifier: MIT
#include "formats/landmark/AscInFilter.h"

#include <gtest/gtest.h>

#include "support/Support.h"

namespace tesselink {
namespace {

class AscInFilterTest : public testing::Test {
 protected:
  Rig rig;
  AscInFilter reader;

  explicit AscInFilterTest(Dialect dialect = Dialect::Classic) : reader(ContextIn(dialect)) {}
  const FilterContext& ContextIn(Dialect dialect) {
    rig.context.options.dialect = dialect;
    return rig.context;
  }

  // Lines end with CR LF, and the first one within 20 bytes.
  std::vector<tEntity> Read(const std::string& lines, int most = 100) {
    std::string text = "METAFILE,\r\n";
    for (const char c : lines) text += c == '\n' ? "\r\n" : std::string(1, c);
    reader.filename(rig.folder.Put("a.asc", text));
    return rig.ReadAll(reader, most);
  }
  static std::vector<std::string> Told(const std::vector<tEntity>& elements) {
    std::vector<std::string> rows;
    for (const tEntity& e : elements)
      rows.push_back(Row(e.bType, e.Text, e.TextSize, e.TextAng, e.TextJust, e.Layer, e.Closed, XY(e)));
    return rows;
  }
  std::string Failure(const std::string& lines) {
    const std::string error = ErrorOf([&] { Read(lines); });
    return error.substr(std::min(error.size(), error.find("a.asc")));
  }
};

TEST_F(AscInFilterTest, TheFourRecords) {
  const auto elements = Read(
      "TEXT, 'Well ''1' ,10.5,-20,12.5,,45, TR ,,Red \n"
      " line ,,, RED \nXY,1,2\nxy,3,4\n"
      "POLYGON,BLUE\nVECTOR,1,2,3,4\nVECTOR,5,6,7,8\n"
      "note\n"
      "VECTOR,1,2,3,x4, GREEN\n");
  // A half goes to the even neighbour, later VECTOR lines overwrite, and their last field is not trimmed.
  EXPECT_EQ(Told(elements), (std::vector<std::string>{"3 Well ''1 12 45 50 Red 0 10.5,-20", "2  0 0 0 RED 0 1,2 3,4",
                                                      "2  0 0 0 BLUE 1 5,6 7,8", "2  0 0 0  GREEN 0 1,2 3,0"}));
  EXPECT_FALSE(reader.Stalled()) << "the last line is delivered once";
  EXPECT_EQ(reader.Layers(), (std::vector<std::string>{"RED", "BLUE", "GREEN"}));
}

TEST_F(AscInFilterTest, NothingLeaksFromTheElementBefore) {
  const auto elements = Read("TEXT,A,1,2,3,,30,TR,,RED\nTEXT,B,1,2,3,,RED\nPOLYGON,\nXY,1,1\nLINE,\nXY,2,2\nend\n");
  // Seven fields: the layer is field 6.
  EXPECT_EQ(Told(elements), (std::vector<std::string>{"3 A 3 30 50 RED 0 1,2", "3 B 3 0 0 RED 0 1,2", "2  0 0 0  1 1,1",
                                                      "2  0 0 0  0 2,2"}));
  EXPECT_EQ(Read("TEXT,C,1,2,3,,60,RED\n").at(0).TextAng, 60) << "eight fields: the last but one";
}

TEST_F(AscInFilterTest, WhichPointLinesGoOnAndWhichEndTheRecord) {
  const std::pair<const char*, const char*> cases[] = {
      {"XY 10.5, 20.25", "1,1 0,20.25"},     // blanks: the keyword is "XY"; the rewritten line's field 1 is " 10.5"
      {"XY, 10.5, 20.25", "1,1"},            // the first blank-separated word is "XY,"
      {"XY, 10.5,20.25", "1,1 10.5,20.25"},  // two blank-separated words only: the comma fields decide
      {"XY,10.5,20.25", "1,1 10.5,20.25"},
      {"xy,1 0.5,20.25x", "1,1 10.5,20.25"},
      {"XY,1e2,-.5,more", "1,1 100,-0.5"},
      {"XYZ,1,2", "1,1"},
      {"XY10,20", "1,1"},
      {"LINE,RED", "1,1"},
  };
  for (const auto& [line, vertices] : cases) {
    const auto elements = Read("LINE,RED\nXY,1,1\n" + std::string(line) + "\nend\nend\n");
    ASSERT_FALSE(elements.empty()) << line;
    EXPECT_EQ(XY(elements[0]), std::string_view(line).starts_with("XY 10.5") ? "1,1 10.5,20.25" : vertices) << line;
  }
}

TEST_F(AscInFilterTest, AOneLineVectorIsDeliveredAgainAndAgain) {
  const auto elements = Read("VECTOR,1,2,3,4,RED\nLINE,RED\nXY,1,1\n", 5);
  ASSERT_EQ(elements.size(), 5U);
  for (const tEntity& element : elements) EXPECT_EQ(XY(element), "1,2 3,4");
  EXPECT_TRUE(reader.Stalled());
  EXPECT_TRUE(Holds(reader.Where(), "a.asc, line 2"));
  // A glued keyword ends a record, and the rewritten line begins the next one.
  const auto glued = Read("LINE,RED\nXY,1,1\nVECTOR 5,6,7,8,RED\nend\n", 3);
  ASSERT_EQ(glued.size(), 3U);
  EXPECT_EQ(XY(glued[0]), "1,1");
  EXPECT_EQ(XY(glued[1]), "5,6 7,8");
  EXPECT_TRUE(reader.Stalled());
}

TEST_F(AscInFilterTest, TheEndOfTheFileEndsTheRun) {
  EXPECT_EQ(Read("LINE,RED\nXY,1,1\nTEXT,A,1,2,3,,RED").size(), 1U) << "a pending last line is not delivered";
  EXPECT_EQ(Read("TEXT,A,1,2,3,,RED").size(), 1U) << "a last line without an end is";
  EXPECT_EQ(Read("LINE,RED").size(), 1U);
  EXPECT_EQ(Read("LINE,RED\nXY,0,5\nXY,7,8\n").at(0).XCount(), 0) << "a first x of 0 is overwritten";
  EXPECT_TRUE(Read("").empty());
}

TEST_F(AscInFilterTest, ErrorsNameFileAndLine) {
  EXPECT_EQ(Failure("TEXT,A,east,2,3,,RED\n"), "a.asc, line 2: field 3 of a TEXT record: \"east\" is not a number");
  EXPECT_EQ(Failure("x\nTEXT,A,1,2\n"), "a.asc, line 3: \"TEXT\" has 4 fields where at least 5 are needed");
  EXPECT_EQ(Failure("VECTOR,1,2\n"), "a.asc, line 2: \"VECTOR\" has 3 fields where at least 5 are needed");
  EXPECT_EQ(Failure("LINE,RED\nXY,1e999,2\n"), "a.asc, line 3: the number \"1e999\" is too large");
  EXPECT_EQ(Failure("LINE,RED\nXY,1\n"), "a.asc, line 3: \"XY\" has 2 fields where at least 3 are needed");
}

TEST_F(AscInFilterTest, LayersAreMatchedByTheLetter) {
  EXPECT_EQ(Read("LINE,Red\nXY,1,1\nend\n").at(0).CDFCode, "0900000");
  reader.AssignCodes({"RED"}, {"CU00001"});
  const auto elements = Read("LINE,Red\nXY,1,1\nLINE,RED\nXY,1,1\nLINE,TEAL\nLINE,DarkBlue\nLINE,DARKGREEN\nend\n");
  EXPECT_EQ(elements.at(0).CDFCode, "0900000");
  EXPECT_EQ(elements.at(1).CDFCode, "CU00001");
  EXPECT_EQ(reader.Layers(), (std::vector<std::string>{"RED", "DARKBLUE", "DARKGREEN"}))
      << "TEAL is none of the twenty names";
  reader.Layered = false;
  EXPECT_TRUE(reader.Layers().empty());
}

class StandardAscInFilterTest : public AscInFilterTest {
 protected:
  StandardAscInFilterTest() : AscInFilterTest(Dialect::Standard) {}
};

TEST_F(StandardAscInFilterTest, WhatEndsAKeywordDoesNotMatter) {
  for (const char* line :
       {"XY,10.5,20.25", "XY, 10.5, 20.25", "XY 10.5, 20.25", " xy , 10.5,20.25 ", "Xy  10.5,20.25"}) {
    EXPECT_EQ(XY(Read("LINE,RED\nXY,1,1\n" + std::string(line) + "\nend\n").at(0)), "1,1 10.5,20.25") << line;
  }
  for (const char* line : {"XYZ,1,2", "XY10,20", "end", ""}) {
    EXPECT_EQ(XY(Read("LINE,RED\nXY,1,1\n" + std::string(line) + "\nXY,3,4\n").at(0)), "1,1") << line;
  }
  EXPECT_EQ(Failure("LINE,RED\n XY 1\n"), "a.asc, line 3: \"XY\" has 2 fields where at least 3 are needed");
}

TEST_F(StandardAscInFilterTest, EveryRecordIsDeliveredOnce) {
  const auto elements = Read(
      "VECTOR,1,2,3,4, RED \nLINE,RED\nXY,1,1\nVECTOR 5,6,7,8,BLUE\nPOLYGON,RED\nVECTOR,1,2,3,4\nvector 3,4,5,6\n"
      "VECTOR,9,9,0,0,\nLINE,RED\nXY,2,2\nTEXT,A,1,2,3,,RED");
  EXPECT_EQ(Told(elements), (std::vector<std::string>{"2  0 0 0 RED 0 1,2 3,4", "2  0 0 0 RED 0 1,1",
                                                      "2  0 0 0 BLUE 0 5,6 7,8", "2  0 0 0 RED 1 1,2 3,4 5,6 9,9 0,0",
                                                      "2  0 0 0 RED 0 2,2", "3 A 3 0 0 RED 0 1,2"}))
      << "also a record that begins on the last line";
  EXPECT_FALSE(reader.Stalled());
  EXPECT_NE(rig.WarningOf("gaps"), nullptr);
  EXPECT_EQ(Read("LINE,RED\nXY,1,1\nend").size(), 1U);
}

TEST_F(StandardAscInFilterTest, ZerosKeepTheirPlaceAndCommasTheirText) {
  EXPECT_EQ(XY(Read("LINE,RED\nXY,0,5\nXY,7,0\nXY,8,9\n").at(0)), "0,5 7,0 8,9");
  EXPECT_EQ(XY(Read("LINE,RED\nXY,0,0\nXY,0,0\nXY, 1, 0\n").at(0)), "0,0 0,0 1,0");
  EXPECT_EQ(rig.WarningOf("out of step"), nullptr);
  const std::pair<const char*, const char*> texts[] = {{"'WELL 1, PLUGGED'", "WELL 1, PLUGGED"},
                                                       {" 'a','b' ,' ", "a','b' ,"},
                                                       {"O'Hara", "O'Hara"},
                                                       {"'", ""},
                                                       {"''", ""}};
  for (const auto& [field, text] : texts) {
    const tEntity entity = Read("TEXT," + std::string(field) + ",10,20,12,,45,TR,,RED\n").at(0);
    EXPECT_EQ(entity.Text, text);
    EXPECT_EQ(XY(entity) + entity.Layer, "10,20RED") << field;
    EXPECT_EQ(entity.TextJust, 50);
  }
}

}  // namespace
}  // namespace tesselink
