// SPDX-License-Identifier: MIT
// The Geographix CDF reader and writer, alone and against each other.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/io/Text.h"
#include "formats/cdf/CDFInFilter.h"
#include "formats/cdf/CDFOutFilter.h"
#include "support/Lookups.h"
#include "support/Support.h"

namespace tesselink {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// A pen letter, y and x in their columns.
std::string Group(char pen, const std::string& y, const std::string& x) {
  return pen + std::string(15 - y.size(), ' ') + y + std::string(15 - x.size(), ' ') + x;
}

std::string Shown(const std::vector<tEntity>& elements) {
  std::string text;
  for (const tEntity& e : elements) {
    text += (text.empty() ? "" : " | ") + e.CDFCode + (e.Closed ? "+" : "-") + " " + e.Text +
            (e.bType == kText ? "@" : "") + XY(e);
  }
  return text;
}

class CDFInFilterTest : public testing::Test {
 protected:
  CDFInFilterTest() {
    rig.context.options.own.Set(
        "cdf-map", rig.folder.Put("$CDF.MAP", TypeRecord("CU00001", "Creeks") + TypeRecord("RD", "Roads")));
    rig.context.options.own.Set("lngsl", rig.folder.Put("$LNGSL.DAT", ColourRecord("Creeks", 5, 300)));
    rig.person.answer = Answer::No;  // a file whose first line is long is read as it stands
    reader = std::make_unique<CDFInFilter>(rig.context);
  }

  std::vector<tEntity> Read(const std::string& lines) {
    std::string text;
    for (const char c : lines) text += c == '\n' ? "\r\n" : std::string(1, c);
    reader->filename(rig.folder.Put("a.cdf", text));
    return rig.ReadAll(*reader);
  }

  Rig rig;
  std::unique_ptr<CDFInFilter> reader;
};

TEST_F(CDFInFilterTest, WhereElementsBeginAndEnd) {
  const std::string u = "C" + Group('U', "2", "1"), d = "C" + Group('D', "4.5", "-3"), end = "C" + Group('D', "6", "5");
  const std::string pair = "C" + Group('U', "2", "1") + Group('D', "4", "3");
  const std::string text = "D8              7              M10   0  HLB1  A";
  const std::pair<std::string, std::string> cases[] = {
      {"B12345671\n" + u + "\n" + d + "\n" + end + "\n", "1234567+ 1,2 -3,4.5 5,6"},
      {"B1234567\n" + pair + Group('D', "6", "5") + "\n" + d + "\n", "1234567- 1,2 3,4 5,6 -3,4.5"},
      {"B12345671\n" + pair + Group('U', "6", "5") + "\n" + d, "1234567+ 1,2 3,4 | 1234567+ 5,6 -3,4.5"},
      {"B12345671\n" + pair + "D 6  \n" + d + "\n" + pair + "U 6",
       "1234567+ 1,2 3,4 -3,4.5 | 1234567+ 1,2 3,4 | 1234567+ 0,6"},
      {"B12345671\n" + u + "\n" + u + "\nB765432\n" + d, "1234567+ 1,2 | 1234567+ 1,2 | 765432- -3,4.5"},
      {"B12345670\n" + u + "\n" + text + "\n" + text + "\n" + d + "\n",
       "1234567- 1,2 | 1234567- A@7,8 | 1234567- A@7,8 | 1234567- -3,4.5"},
      {"B12345670\n" + u + "\n\n* a note\n" + d + "\n", "1234567- 1,2 -3,4.5"},
      {"B12345671\nB7654321x\n" + u + "\n\n", "7654321- 1,2"},
      {d + "\n", "- -3,4.5"},
      {"B12345670\nC    " + pair.substr(1) + "    \n", "1234567- 1,2 3,4"},
      {"B12345670\nCU 2\nCU       2 .5     \nC" + Group('U', "6", "5" + std::string(10, ' ')) +
           Group('D', "8", "7   ") + "\n",
       "1234567- 0,2 | 1234567- 0,2.5 | 1234567- 5,6"},
      {"B12345670\n" + u + "  00010\nC\nC   \n" + d, "1234567- 1,2 -3,4.5"},
      {"B1234567", ""},
      {"", ""},
  };
  for (const Dialect dialect : {Dialect::Classic, Dialect::Standard}) {
    rig.context.options.dialect = dialect;
    reader = std::make_unique<CDFInFilter>(rig.context);
    for (const auto& [lines, elements] : cases) EXPECT_EQ(Shown(Read(lines)), elements) << lines;
  }
}

TEST_F(CDFInFilterTest, PointsBesideTheDrawing) {
  const auto line = [](std::string name, const std::string& x, const std::string& y) {
    name.resize(40, ' ');
    return name + x + std::string(13 - x.size(), ' ') + y + "\r\n";
  };
  rig.folder.Put("a.PTS", line("DXF Point (Well (1)) 1", "2.5", "-3") + "no point\r\n\r\n" +
                              line("Tower 7", "1E3", "nan") + line("Tower 7", "1E3", "4") +
                              line("DXF Point (" + std::string(40, 'x'), "0", "0"));
  EXPECT_EQ(Shown(Read("")), "");
  EXPECT_TRUE(Holds(rig.report.Of(WarningKind::PointFile)->text, "a.PTS"));
  rig.context.options.dialect = Dialect::Standard;
  reader = std::make_unique<CDFInFilter>(rig.context);
  const std::string expected =
      "0900000- Well (1)2.5,-3 | 0900000- Tower 71000,4 | 0900000- " + std::string(29, 'x') + "0,0";
  EXPECT_EQ(Shown(Read("")), expected);
  EXPECT_EQ(rig.report.Warnings().back().count, 2) << "the first at line 2";
  EXPECT_EQ(Shown(Read("B12345671\nC" + Group('U', "2", "1") + "\n")), "1234567+ 1,2 | " + expected);
}

TEST_F(CDFInFilterTest, TheColumnsOfATextAndItsJustification) {
  const auto text = Read("B0900000\nD-12345678901.5 1846000.125    F  2.5 45HRT99  two  words \n").at(0);
  // A half goes to the even neighbour.
  EXPECT_EQ(Row(XY(text), text.TextUnits, text.Text, text.TextSize, text.TextAng),
            "1846000.125,-12345678901.5 F two  words 2 45");
  const std::pair<const char*, int> codes[] = {{"LB", 16}, {"CB", 17}, {"RB", 18}, {"LC", 32}, {"CC", 33}, {"RC", 34},
                                               {"LT", 48}, {"CT", 49}, {"RT", 50}, {"  ", 16}, {"TR", 16}};
  for (const auto& [letters, code] : codes) {
    EXPECT_EQ(Read("B0900000\nD" + std::string(40, '1') + letters + "   x").at(0).TextJust, code) << letters;
  }
  const auto cutShort = Read("B0900000\nD5\n").at(0);
  EXPECT_EQ(Row(cutShort.Y(0), cutShort.TextJust), "5 16");
}

TEST_F(CDFInFilterTest, LayersAndColoursAreThoseOfTheCode) {
  rig.folder.Put("ACADTBL.TBL", std::string(18, '\0') + "\x01\x02\x03");
  rig.context.options.programFolder = rig.folder.Path("");
  reader = std::make_unique<CDFInFilter>(rig.context);
  const std::string chain = "C" + Group('U', "2", "1") + "\n", text = "D1" + std::string(45, ' ') + "A\n";
  const auto elements = Read("BCU000010\n" + chain + text + "BRD\n" + chain + "BRD123450\n" + chain + chain);
  std::string rows;
  for (const tEntity& e : elements) rows += Row(e.Layer, e.Colour, e.RGB) + "; ";
  // A short code finds the first one that begins with it.
  EXPECT_EQ(rows, "Creeks 5 66051; Creeks 300 0; Roads 0 0; Unassociated 0 0; Unassociated 0 0; ");
  EXPECT_EQ(Read(chain).at(0).Layer, "Unassociated") << "no code is no pattern that fits everything";
  EXPECT_TRUE(reader->Layers().empty());
}

TEST_F(CDFInFilterTest, TheCodesOfTheWholeFile) {
  EXPECT_TRUE(reader->GetLayerCodes().empty());
  const std::string chain = "C" + Group('U', "2", "1") + "\n";
  Read("B22222220\n" + chain + "B11111111\nB22222221\n" + chain + "BAB");
  EXPECT_EQ(reader->GetLayerCodes(), (std::vector<std::string>{"2222222", "1111111", "AB"}));
  EXPECT_EQ(rig.WarningOf("lone headers")->count, 2);
}

TEST_F(CDFInFilterTest, WhatIsOddIsToldWithFileAndLine) {
  const std::string u = "C" + Group('U', "2", "1");
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {"B12345670\nX\nY\n" + u, "other lines", "a.cdf, line 2: a line that begins with none of B, C and D was skipped"},
      {"B12345670\nB12345670\n" + u, "lone headers", "a.cdf, line 1: a header without an element behind it"},
      {"B12345670\n" + u + " 12\n", "ends of lines", "a.cdf, line 2: what stands behind"},
      {"B12345670\nCU 12\n", "short groups", "a.cdf, line 2: a vertex has no x"},
      {"B12345670\nC" + Group('x', "2", "1"), "pen letters", "a.cdf, line 2: coordinates behind another letter"},
      {"B12345670\nC" + Group('U', "2", "0") + "\n\nC" + Group('D', "4", "3"), "out of step", "a.cdf, line 4: an x or"},
      {"first line\n" + u, "no code", "a.cdf, line 2: an element has no entity code"},
      {"first line\nlast line", "no records", "a.cdf: holds no line of a CDF drawing"},
  };
  for (const auto& [lines, kind, text] : cases) {
    rig.report = Report();
    Read(lines);
    ASSERT_NE(rig.WarningOf(kind), nullptr) << lines;
    EXPECT_TRUE(Holds(rig.WarningOf(kind)->text, text)) << rig.WarningOf(kind)->text;
  }
  EXPECT_TRUE(
      Holds(ErrorOf([&] { Read("B12345670\nC" + Group('U', "1e999", "1")); }), "a.cdf, line 2: the number \"1e999\""));
  rig.person.answer = Answer::Cancel;
  EXPECT_THROW(reader->filename(rig.folder.Put("unix.cdf", "B12345670\n" + u)), OperationCanceled);
}

class CDFOutFilterTest : public testing::Test {
 protected:
  Rig rig;
  std::unique_ptr<CDFOutFilter> writer = std::make_unique<CDFOutFilter>(rig.context);

  // The file's lines, joined with "|"; blanks at their ends show.
  std::string Written(std::vector<tEntity> elements, const std::string& name = "out.cdf") {
    writer->filename(rig.folder.Path(name));
    for (tEntity& element : elements) results.push_back(writer->WriteEntity(element));
    writer->Release();
    return Lines(name);
  }
  std::string Lines(const std::string& name) {
    std::string text = Folder::Get(rig.folder.Path(name));
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n"))
      text.replace(end, 2, "|");
    return text;
  }
  static tEntity Element(std::int16_t kind, const VertexChain& points, const std::string& code = "CU00001") {
    tEntity entity = tesselink::Element(kind, points);
    entity.CDFCode = code;
    return entity;
  }
  static tEntity Text(const std::string& text, double size = 0, double angle = 0) {
    tEntity entity = Element(kText, {{10.5, -20}});
    entity.Text = text;
    entity.TextSize = size;
    entity.TextAng = angle;
    return entity;
  }
  std::string Warned(const std::string& kind) { return rig.WarningOf(kind) ? rig.WarningOf(kind)->text : ""; }

  std::vector<WriteResult> results;
};

TEST_F(CDFOutFilterTest, LinesByTheLetter) {
  tEntity polygon = Element(kPolyline, {{1846000.125, 464000.5}, {-3, 0}, {0, 1e-7}});
  polygon.Closed = true;
  EXPECT_EQ(
      Written({polygon, Element(kLine, {{1, 2}, {3, 4}}, "")}),
      "BCU000011|CU       464000.5    1846000.125|CD              0             -3|CD          1E-07              0|"
      "B09000000|CU              2              1|CD              4              3|");
  polygon.CDFCode = "AB";
  EXPECT_EQ(Written({polygon, Element(kLine, {{1, 2}}, "123456789")}).substr(0, 4), "BAB|");
  EXPECT_TRUE(Holds(Warned("closed"), "not of 7 characters: 1"));
  EXPECT_TRUE(Holds(Lines("out.cdf"), "|B123456789|"));
}

TEST_F(CDFOutFilterTest, TextsByTheLetter) {
  tEntity text = Text(" A\tB\n", 2.5, 30);
  text.TextJust = 50;
  text.TextUnits = "FT";
  EXPECT_EQ(Written({text, Text("   "), Text("")}), "BCU000010|D-20            10.5           F2    30 HRT5   A\tB " +
                                                        std::string(29, ' ') + "|BCU000010|BCU000010|");
  EXPECT_NE(Warned("control characters"), "");
  EXPECT_TRUE(Holds(Warned("sizes"), ": 1"));
  const std::string full(34, 'x');
  EXPECT_EQ(Written({Text(full)}).size(), 10 + 81U);
  EXPECT_EQ(Warned("cut texts"), "");
  EXPECT_EQ(Written({Text(full + "yz")}).substr(10 + 43), "36 " + full + "|") << "the length is that of the whole text";
  EXPECT_TRUE(
      Holds(Warned("cut texts"), "out.cdf: texts that the columns cut: 1, the first one in element 1 (text), \"xxx"));
}

TEST_F(CDFOutFilterTest, WhatTheColumnsCutIsCounted) {
  const std::tuple<double, std::string, const char*> coordinates[] = {
      {-12345678901.125, "-12345678901.12", "cut digits"},     {-105.123456789012, "-105.1234567890", "cut digits"},
      {0.000123456789012345, "0.0001234567890", "cut digits"}, {123456789012345, "123456789012345", ""},
      {-123456789012345, "-12345678901234", "cut numbers"},    {1.23456789012345e-5, "1.2345678901234", "cut numbers"},
      {kNoNumber, "            NAN", "cut numbers"},
  };
  for (const auto& [value, columns, kind] : coordinates) {
    rig.report = Report();
    EXPECT_EQ(Written({Element(kLine, {{1, value}})}).substr(12, 15), columns);
    EXPECT_EQ(rig.report.Warnings().empty() ? "" : rig.report.Warnings()[0].kind, kind) << columns;
  }
  EXPECT_TRUE(Holds(Warned("cut numbers"),
                    "1, the first one in element 1 (line): NAN was written as \"NAN\", which reads as 0"));
  rig.report = Report();
  const std::string line = Written({Text("A", 123456, 45), Text("B", 3, -135), Text("C", 3, -0.62)});
  EXPECT_EQ(line.substr(10 + 32, 8), "1234545 ");
  EXPECT_TRUE(Holds(Warned("cut numbers"), ": 3, the first one in element 1 (text): 123456 was written as \"12345\""));
}

TEST_F(CDFOutFilterTest, TheStandardDialectShortensNumbersInsteadOfCuttingThem) {
  rig.context.options.dialect = Dialect::Standard;
  writer = std::make_unique<CDFOutFilter>(rig.context);
  const std::pair<double, std::string> cases[] = {
      {1846215.12345678, "1846215.1234568"},     {-1846215.12345678, "-1846215.123457"},
      {123456789012345, "123456789012345"},      {-123456789012345.0, "-1.23456789E+14"},
      {6.12323399573677e-16, "0.0000000000000"}, {1e300, "1E+300"},
  };
  for (const auto& [value, columns] : cases) {
    const std::string line = Written({Element(kLine, {{1, value}})}).substr(12, 15);
    EXPECT_EQ(std::string(Trimmed(line)), columns);
    EXPECT_NEAR(LenientNumber(line), value, std::abs(value) * 1e-8 + 1e-12);
  }
  const std::string line = Written({Text("A", 123456, -135), Text("B", 3, -0.62), Text("C", 3, 12.5)});
  EXPECT_TRUE(Holds(line, "M1E+05225H")) << line;
  EXPECT_TRUE(Holds(line, "M3    359H")) << line;
  EXPECT_TRUE(Holds(line, "M3    12 H")) << line;

  tEntity ring = Element(kPolyline, {{0, 5}, {7, 0}, {7, 7}}, "");
  ring.Closed = true;
  EXPECT_EQ(Written({ring}).substr(0, 10), "B09000001|");
  CDFInFilter reader(rig.context);
  reader.filename(rig.folder.Path("out.cdf"));
  const auto elements = rig.ReadAll(reader);
  ASSERT_EQ(elements.size(), 1U);
  EXPECT_TRUE(elements[0].Closed);
  EXPECT_EQ(XY(elements[0]), "0,5 7,0 7,7") << "a first coordinate of 0 keeps its place";
}

TEST_F(CDFOutFilterTest, CirclesAndArcsBecomeChains) {
  tEntity circle = Element(kCircle, {{100, 200}}), arc = Element(kArc, {{0, 0}});
  circle.Rad = arc.Rad = 10;
  circle.Z(0, 7);
  arc.AngStart = 270;
  arc.AngEnd = 0;
  const std::string lines = Written({circle, arc});
  EXPECT_EQ(results, (std::vector{WriteResult::Converted, WriteResult::Converted}));
  EXPECT_EQ(lines.find("|CU            200            110|"), 9U);
  const std::size_t second = lines.find("|B", 1);
  EXPECT_EQ(lines.substr(second - 31, 31), "D            200            110") << "closed on its first vertex";
  EXPECT_TRUE(Holds(lines, "|CD 200.8715574275 109.9619469809|")) << "as many decimals as the columns have";
  EXPECT_EQ(lines.substr(second + 13, 15), "            -10");
  EXPECT_EQ(lines.substr(second + 28, 15), "              0") << "not 1.8E-15, which the columns would cut to 1.8";
  EXPECT_EQ(lines.substr(lines.size() - 16), "             10|");
  EXPECT_EQ(Warned("cut digits") + Warned("cut numbers"), "");
  EXPECT_TRUE(Holds(Warned("heights"), ": 1"));
}

TEST_F(CDFOutFilterTest, PointsGoToASecondFile) {
  tEntity well = Element(kPoint, {{1849556.629, -6}, {7, 8}}), post = Element(kPoint, {{1, 2}});
  well.Text = "WELL";
  post.Layer = std::string(29, 'p');
  EXPECT_EQ(Written({well, Element(kLine, {{1, 2}}), post}, "v1.0").substr(0, 11), "BCU000010|C");
  EXPECT_EQ(Lines("v1.pts"),
            "DXF Point (WELL) 1                      1849556.62   -6|"
            "DXF Point (WELL) 2                      7            8|"
            "DXF Point (" +
                std::string(29, 'p') + "1            2|");
  EXPECT_EQ(writer->Outputs(), (std::vector{rig.folder.Path("v1.0"), rig.folder.Path("v1.pts")}));
  EXPECT_TRUE(Holds(Warned("cut digits of points"), "v1.pts: "));
  EXPECT_TRUE(Holds(Warned("cut texts of points"), "in element 3 (point)"));
  Written({post}, "plat");
  EXPECT_EQ(Lines("plat.pts").substr(40), "1            2|") << "numbers begin anew, and the name gets its extension";
  EXPECT_EQ(rig.person.choiceQuestions["points"], 1);
  EXPECT_TRUE(Holds(ErrorOf([&] { Written({post}, "out.pts"); }), "out.pts: the points need a file of this name"));
}

TEST_F(CDFOutFilterTest, APointBeyondItsColumnsIsSkipped) {
  rig.context.options.dialect = Dialect::Standard;
  writer = std::make_unique<CDFOutFilter>(rig.context);
  constexpr double kLargest = std::numeric_limits<double>::max();  // -1.8E+308 has room there and is no number
  Written({Element(kPoint, {{1, 2}}), Element(kPoint, {{-kLargest, 2}}), Element(kPoint, {{3, -kLargest}}),
           Element(kPoint, {{5, 6}})});
  EXPECT_EQ(results,
            (std::vector{WriteResult::Written, WriteResult::Skipped, WriteResult::Skipped, WriteResult::Written}));
}

TEST_F(CDFOutFilterTest, IgnoredPointsWriteNothing) {
  rig.person.choices["points"] = 1;
  EXPECT_EQ(Written({Element(kPoint, {{1, 2}}), Element(kPoint, {{1, 2}})}), "");
  EXPECT_EQ(results, (std::vector{WriteResult::Skipped, WriteResult::Skipped}));
  EXPECT_EQ(rig.person.choiceQuestions["points"], 1);
  EXPECT_EQ(writer->Outputs().size(), 1U);
}

TEST_F(CDFOutFilterTest, ErrorsAndWhatTheyLeaveBehind) {
  tEntity point = Element(kPoint, {{1, 2}}), odd = Element(5, {{1, 2}});
  writer->filename(rig.folder.Path("out.cdf"));
  writer->WriteEntity(point);
  EXPECT_EQ(WordsOf([&] { writer->WriteEntity(odd); }),
            "Unsuported bType value, please contact https://github.com/tesselink/tesselink/issues (WriteEntity)")
      << "a kind that no reader delivers";
  writer->Abandon();
  for (const char* name : {"out.cdf", "out.pts"}) EXPECT_FALSE(std::filesystem::exists(rig.folder.Path(name))) << name;
}

}  // namespace
}  // namespace tesselink
