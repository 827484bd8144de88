// SPDX-License-Identifier: MIT
#include "formats/dxf/DXFOutFilter.h"

#include <gtest/gtest.h>

#include <random>

#include "core/element/ColourNames.h"
#include "formats/dxf/DXFInFilter.h"
#include "formats/dxf/DrawingEncoding.h"
#include "formats/dxf/DrawingText.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class DXFOutFilterTest : public testing::Test {
 protected:
  Rig rig;
  DXFOutFilter writer;
  const std::string path = rig.folder.Path("out.dxf");

  explicit DXFOutFilterTest(Dialect dialect = Dialect::Classic) : writer(ContextIn(dialect)) { writer.filename(path); }
  const FilterContext& ContextIn(Dialect dialect) {
    rig.context.options = {.programFolder = TESSELINK_DATA_FOLDER, .dialect = dialect};
    return rig.context;
  }

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
  static tEntity Element(std::int16_t kind, const VertexChain& vertices) {
    return tesselink::Element(kind, vertices, "L");
  }
  WriteResult Write(tEntity entity) { return writer.WriteEntity(entity); }
};

TEST_F(DXFOutFilterTest, KindsWithoutAFormCountForLayersAndExtents) {
  EXPECT_EQ(Write(Element(kArc, {{5, 6, 7}})), WriteResult::Skipped);
  tEntity other = Element(kPoint, {{0, 0, 0}, {1, 2, 3}});
  other.Layer = "l";
  EXPECT_EQ(Write(other), WriteResult::Written);
  writer.Release();
  const std::string text = Piped();
  EXPECT_TRUE(Holds(text, "$EXTMIN| 10|1| 20|2| 30|3|  9|$EXTMAX| 10|5| 20|6| 30|7|"));
  EXPECT_TRUE(Holds(text, " 70|2|  0|LAYER|  2|L| 70|64| 62|1|  6|CONTINUOUS|  0|LAYER|  2|l| 70|64| 62|2|"));
  EXPECT_TRUE(rig.WarningOf("vertices at the origin")->text.ends_with("left out: 1"));
}

class StandardDXFOutFilterTest : public DXFOutFilterTest {
 protected:
  StandardDXFOutFilterTest() : DXFOutFilterTest(Dialect::Standard) {}

  std::string EntitiesOf(const tEntity& entity, WriteResult expected = WriteResult::Written) {
    writer.filename(path);
    EXPECT_EQ(Write(entity), expected);
    return Entities();
  }
  std::vector<tEntity> ReadBack() {
    writer.Release();
    DXFInFilter reader(rig.context);
    reader.filename(path);
    return rig.ReadAll(reader);
  }
};

TEST_F(StandardDXFOutFilterTest, ChainsSayWhatTheyAre) {
  const std::string head = "  0|POLYLINE|  8|L|  6|CONTINUOUS| 62|0| 66|1| 10|0| 20|0| 30|";
  const std::string vertex = "  0|VERTEX|  8|L| 10|";
  tEntity chain = Element(kPolyline, {{0, 0, 5}, {4, 0, 5}, {4, 3, 5}, {0, 0, 5}});
  const std::string open = vertex + "0| 20|0| 30|5|" + vertex + "4| 20|0| 30|5|" + vertex + "4| 20|3| 30|5|";
  EXPECT_EQ(EntitiesOf(chain), head + "5| 70|0|" + open + vertex + "0| 20|0| 30|5|  0|SEQEND|");
  chain.Closed = true;
  EXPECT_EQ(EntitiesOf(chain), head + "5| 70|1|" + open + "  0|SEQEND|") << "the closing vertex is left to the flag";
  const std::string space = " 70|32|";
  EXPECT_EQ(EntitiesOf(Element(kPolyline, {{0, 0, 0}, {1, 1, 2}})),
            head + "0| 70|8|" + vertex + "0| 20|0| 30|0|" + space + vertex + "1| 20|1| 30|2|" + space + "  0|SEQEND|");
}

TEST_F(StandardDXFOutFilterTest, ArcsAndWhatIsOnlyAPlace) {
  tEntity arc = Element(kArc, {{1, 2, 0}});
  arc.Rad = 3;
  arc.AngStart = 350;
  arc.AngEnd = 370;
  const std::string head = "  0|ARC|  8|L|  6|CONTINUOUS| 62|0| 10|1| 20|2| 30|0| 40|3| 50|";
  EXPECT_EQ(EntitiesOf(arc), head + "350| 51|10|");
  arc.AngEnd = 710;
  EXPECT_EQ(EntitiesOf(arc), head + "350| 51|710|") << "a whole turn stays one";
  const std::string point = "  0|POINT|  8|L|  6|CONTINUOUS| 62|0| 10|1| 20|2| 30|0|";
  arc.Rad = 0;
  EXPECT_EQ(EntitiesOf(arc, WriteResult::Converted), point);
  EXPECT_EQ(EntitiesOf(Element(kCircle, {{1, 2, 0}}), WriteResult::Converted), point);
  EXPECT_EQ(EntitiesOf(Element(kPolyline, {{1, 2, 0}}), WriteResult::Converted), point);
  EXPECT_EQ(EntitiesOf(Element(kLine, {{1, 2, 0}}), WriteResult::Converted), point);
  EXPECT_EQ(EntitiesOf(Element(kPoint, {{0, 0, 0}, {1, 0, 0}})),
            "  0|POINT|  8|L|  6|CONTINUOUS| 62|0| 10|0| 20|0| 30|0|"
            "  0|POINT|  8|L|  6|CONTINUOUS| 62|0| 10|1| 20|0| 30|0|");
  EXPECT_EQ(rig.WarningOf("vertices at the origin"), nullptr);
}

TEST_F(StandardDXFOutFilterTest, TheTablesHoldWhatTheElementsName) {
  tEntity element = Element(kPoint, {{1, 2, 3}});
  const auto write = [&](const std::string& layer, const std::string& lineType, std::int32_t colour) {
    element.Layer = layer;
    element.LineStyle = lineType;
    element.Colour = colour;
    Write(element);
  };
  write("Gas", "", 0);
  write("Gas", "Continuous", 256);
  write("Gas", "dash.dot", 70000);
  write("Gas", "ByBlock", 5);
  write("Gas", "DASH.DOT", 6);
  write("", "", 0);
  const std::string entities = Entities(), text = Piped();
  EXPECT_TRUE(Holds(text, "AC1009|  9|$DWGCODEPAGE|  3|ANSI_1252|"));
  const std::string solid = "| 70|64|  3|Solid Line| 72|65| 73|0| 40|0|  0|";
  EXPECT_TRUE(Holds(text, "LTYPE| 70|2|  0|LTYPE|  2|CONTINUOUS" + solid + "LTYPE|  2|dash_dot" + solid + "ENDTAB"));
  EXPECT_TRUE(Holds(text,
                    "LAYER| 70|2|  0|LAYER|  2|0| 70|64| 62|7|  6|CONTINUOUS|"
                    "  0|LAYER|  2|Gas| 70|64| 62|5|  6|CONTINUOUS|  0|ENDTAB|"))
      << "layer 0, and the first colour of the other one";
  EXPECT_TRUE(Holds(text, "STYLE|  2|STANDARD|"));
  for (const char* expected : {"  6|CONTINUOUS| 62|0|", "  6|CONTINUOUS| 62|256|", "  6|dash_dot| 62|256|",
                               "  6|ByBlock| 62|5|", "  6|dash_dot| 62|6|", "  8|0|  6|CONTINUOUS| 62|0|"}) {
    EXPECT_TRUE(Holds(entities, expected)) << expected;
  }
  EXPECT_EQ(rig.WarningOf("colour numbers")->count, 1);
}

TEST_F(StandardDXFOutFilterTest, WhatIsByLayerStaysSo) {
  const std::string input = rig.folder.Put(
      "in.dxf",
      "0\nSECTION\n2\nTABLES\n0\nLTYPE\n2\nFence\n3\n- -\n49\n2\n49\n-0.5\n0\nLAYER\n2\nA\n62\n3\n6\nFENCE\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\nA\n62\n5\n10\n1\n0\nPOINT\n8\nA\n10\n2\n0\nENDSEC\n0\nEOF\n");
  DXFInFilter reader(rig.context);
  reader.filename(input);
  writer.SourceOpened(reader);
  tEntity element;
  for (int i = 0; i < 2 && reader.GetNextEntity(element); ++i) Write(element);
  element.Colour = 4;  // as by layer in another input
  element.RGB = 0xFFFF00;
  Write(element);
  element.Layer = "BLACK";
  element.Colour = element.RGB = 0;
  element.IsBlack = true;
  Write(element);
  const std::string entities = Entities(), text = Piped();
  for (const char* expected : {"|  6|BYLAYER| 62|5|", "|  6|BYLAYER| 62|256|", "|  6|BYLAYER| 62|4|"}) {
    EXPECT_TRUE(Holds(entities, expected)) << expected;
  }
  EXPECT_TRUE(Holds(text, "LAYER|  2|A| 70|64| 62|3|  6|FENCE|"));
  EXPECT_TRUE(Holds(text, "LTYPE|  2|FENCE| 70|64|  3|- -| 72|65| 73|2| 40|2.5| 49|2| 49|-0.5|"));
  EXPECT_EQ(ColourName(ReadBack().back().RGB), "BLACK");
}

TEST_F(StandardDXFOutFilterTest, ALayerThatOneInputShowsIsShown) {
  const auto write = [&](const std::string& flags, const std::string& colour) {
    const std::string table = "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n0\nLAYER\n2\nA\n70\n" + flags + "\n62\n" +
                              colour + "\n0\nENDTAB\n0\nENDSEC\n";
    DXFInFilter reader(rig.context);
    reader.filename(rig.folder.Put("in.dxf", table + "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\nA\n10\n1\n0\nENDSEC\n"));
    writer.SourceOpened(reader);
    tEntity element;
    ASSERT_TRUE(reader.GetNextEntity(element));
    Write(element);
  };
  write("5", "-3");
  write("4", "-3");
  writer.Release();
  EXPECT_TRUE(Holds(Piped(), "LAYER|  2|A| 70|68| 62|-3|")) << "locked and off in both";
}

TEST_F(StandardDXFOutFilterTest, LayersStayDistinctAndComeBack) {
  const std::string cut(300, 'x');
  const std::pair<std::string, std::string> layers[] = {
      {"DRY HOLE", "DRY HOLE"},     {"Dry Hole", "Dry Hole_2"}, {"A/B", "A_B"},
      {"A_B_2", "A_B_2"},           {"A:B", "A_B_3"},           {" edge ", "_edge_"},
      {"$-_09", "$-_09"},           {"\xC3\x96l", "\xC3\x96l"}, {"\xC3\xB6L", "\xC3\xB6L_2"},
      {"W\xE4rme", "W\xC3\xA4rme"}, {cut, cut.substr(0, 240)},  {cut + "y", cut.substr(0, 240) + "_2"},
  };
  tEntity element = Element(kPoint, {{1, 2, 3}});
  for (const auto& [given, written] : layers) {
    element.Layer = given;
    Write(element);
  }
  const auto elements = ReadBack();
  ASSERT_EQ(elements.size(), std::size(layers));
  for (std::size_t i = 0; i < elements.size(); ++i) EXPECT_EQ(elements[i].Layer, layers[i].second);
  EXPECT_EQ(rig.WarningOf("names")->count, 7);
}

TEST_F(StandardDXFOutFilterTest, TextsComeBackAsTheyWere) {
  const std::string texts[] = {"plain \\ 1/4 \"x\"",
                               "100%% of 5%",
                               "%%d %%%d %%%%065 %%",
                               "a^J ^ b^\t",
                               "\\U+0041 \\u+00e9 \\M+1 \\P",
                               "Gr\u00F6\u00DFe \u00BD \u20AC",
                               "\xD0\x96\xD1\x83\xD0\xBA \xC2\x81",
                               "\xF0\x9F\x98\x80",
                               "\xEF\xBF\xBD"};
  const std::int16_t placements[] = {0, 1, 2, 16, 17, 18, 33, 48, 50};
  tEntity element = Element(kText, {{0, 2, 3}});
  element.TextSize = 2.5;
  for (std::size_t i = 0; i < std::size(texts); ++i) {
    element.Text = texts[i];
    element.TextJust = placements[i];
    Write(element);
  }
  element.Text = "Caf\xE9 \x81";
  element.TextJust = 0x43;
  Write(element);
  const auto elements = ReadBack();
  ASSERT_EQ(elements.size(), std::size(texts) + 1);
  for (std::size_t i = 0; i < std::size(texts); ++i) {
    EXPECT_EQ(elements[i].Text, texts[i]);
    EXPECT_EQ(elements[i].TextJust, placements[i]) << texts[i];
    EXPECT_EQ(XY(elements[i]), "0,2");
  }
  EXPECT_EQ(elements.back().Text, "Caf\xC3\xA9 \xC2\x81") << "bytes that are no UTF-8 are ANSI_1252";
  EXPECT_EQ(elements.back().TextJust, 0) << "placements that drawings do not have";
  const std::string bytes = Piped();
  EXPECT_TRUE(Holds(bytes, " 10|0| 20|2| 30|3| 40|2.5|  1|plain")) << "no alignment point at the left of the baseline";
  EXPECT_TRUE(Holds(bytes, " 10|0| 20|2| 30|3| 11|0| 21|2| 31|3| 40|2.5|  1|a^ J ^  b^ ^I| 50|0| 72|0| 73|1|"));
  EXPECT_TRUE(Holds(bytes,
                    "|Gr\xF6\xDF"
                    "e \xBD \x80|"));
  EXPECT_TRUE(Holds(bytes, "|\\U+D83D\\U+DE00|"));
}

TEST_F(StandardDXFOutFilterTest, TheCodePageIsOneThatHoldsTheLetters) {
  struct Case {
    const char *layer, *text, *page, *bytes;
  };
  const Case cases[] = {
      {"A", "\xC3\xA9", "ANSI_1252", "  1|\xE9|"},
      {"\xD0\x96", "\xD1\x83^", "ANSI_1251", "  8|\xC6|"},
      {"A", "\xC4\x9B \xC3\x9F", "ANSI_1250", "  1|\xEC \xDF|"},
      {"\xE4\xB8\xAD", "\xE8\xA1\xA8", "ANSI_932", "  1|\x95\\|"},
      {"\xED\x95\x9C", "a", "ANSI_949", "  8|\xC7\xD1|"},
      {"\xD0\x96\xC3\xA9", "\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80", "ANSI_936",
       "  1|\xA8\xA6 \\U+20AC \\U+D83D\\U+DE00|"},
  };
  for (const auto& [layer, content, page, bytes] : cases) {
    writer.filename(path);
    tEntity text = Element(kText, {{1, 2, 3}});
    text.Layer = layer;
    text.Text = content;
    Write(text);
    writer.Release();
    EXPECT_TRUE(Holds(Piped(), std::string("$DWGCODEPAGE|  3|") + page + "|"));
    EXPECT_TRUE(Holds(Piped(), bytes)) << page;
  }
  EXPECT_EQ(rig.WarningOf("names"), nullptr);
  // Cyrillic and Thai letters have no page in common.
  writer.filename(path);
  tEntity point = Element(kPoint, {{1, 2, 3}});
  for (const char* layer : {"\xD0\x96", "\xE0\xB8\x81", "_"}) {
    point.Layer = point.LineStyle = layer;
    Write(point);
  }
  std::string names;
  for (const tEntity& element : ReadBack()) names += element.Layer + " " + element.LineStyle + "|";
  EXPECT_EQ(names, "\xD0\x96 \xD0\x96|__2 __2|_ _|");
  EXPECT_EQ(rig.WarningOf("names")->count, 2);
}

TEST_F(StandardDXFOutFilterTest, LinesOfAnyLengthAreEncodedWhenAnotherPageIsNeeded) {
  for (const std::size_t length : {65500U, 65530U, 131071U, 400000U}) {
    tEntity text = Element(kText, {{1, 2, 3}});
    text.Layer = length > 131071 ? "\xD0\x96" : "\xC3\xA9";
    text.Text = std::string(length, 'a') + "\xC3\xA9";
    Write(text);
  }
  const auto texts = ReadBack();
  ASSERT_EQ(texts.size(), 4u);
  for (const tEntity& text : texts) EXPECT_TRUE(text.Text.ends_with("a\xC3\xA9"));
  for (const std::size_t i : {0U, 3U}) EXPECT_EQ(texts[i].Layer, i == 3 ? "\xD0\x96" : "\xC3\xA9");
  EXPECT_EQ(texts[3].Text.size(), 400002u);
}

TEST(DrawingEncoding, EveryTextComesBack) {
  std::vector<std::string> pieces{"\xC3\xA9", "\xD0\x96", "\xF0\x9F\x98\x80"};
  for (const char letter : std::string("%%%^\\UuM+01dJ[ \t\x1F")) pieces.emplace_back(1, letter);
  DrawingText drawing;
  drawing.Release("AC1021");
  std::mt19937 dice(1);
  std::string text, bytes, decoded;
  for (int i = 0; i < 100000; ++i) {
    text.clear();
    for (auto length = dice() % 12; length-- > 0;) text += pieces[dice() % pieces.size()];
    EncodeText(text, bytes);
    drawing.DecodeText(bytes, decoded);
    ASSERT_EQ(decoded, text) << bytes;
  }
}

}  // namespace
}  // namespace tesselink
