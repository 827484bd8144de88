// SPDX-License-Identifier: MIT
// Leaders, multilines and tolerances; what they look like is compared with another program in tests/interop.
#include "support/Drawings.h"

namespace tesselink {
namespace {

class NotesTest : public DrawingTest {
 protected:
  NotesTest() { rig.context.options.dialect = Dialect::Standard; }
};

TEST_F(NotesTest, TheClassicDialectCountsThem) {
  rig.context.options.dialect = Dialect::Classic;
  for (const std::string type : {"LEADER", "MULTILEADER", "MLINE", "TOLERANCE", "ATTDEF"}) {
    EXPECT_TRUE(Read(Groups{{0, type}} + "10 1|20 1|10 2|20 2|1 text|2 TAG"_g).empty());
    EXPECT_EQ(rig.report.UndeliveredTypes().at(type), 1);
  }
}

TEST_F(NotesTest, ALeaderGoesOnBelowItsTextAsItsStyleSays) {
  const Groups style =
      Section("TABLES", "0 TABLE|2 DIMSTYLE|0 DIMSTYLE|2 On|77 1|147 0.5|40 2|0 DIMSTYLE|2 In|0 ENDTAB"_g);
  const auto end = [&](const std::string& name, const Groups& more) {
    const auto leaders = ReadGroups(
        style + Section("ENTITIES", Groups{{0, "LEADER"}, {3, name}} + more + "10 0|20 0|10 5|20 1|41 10|74 0"_g) +
        kEnd);
    return leaders.empty() ? "" : XY(leaders[0]);
  };
  EXPECT_EQ(end("ON", "73 0|75 1"_g), "0,0 5,1 16,1");
  EXPECT_EQ(end("On", "73 1|75 1"_g), "0,0 5,1") << "not for a text";
  EXPECT_EQ(end("In", "73 0"_g), "0,0 5,1") << "the text stands in a gap of the line where the style says nothing";
  EXPECT_EQ(
      end("On", "73 0|211 0|221 1|1001 A|1000 X|1001 ACAD|1000 DSTYLE|1002 {|1070 40|1040 1|1070 77|1005 F|1002 }"_g),
      "0,0 5,1 5,11.5");
}

TEST_F(NotesTest, DefinitionsOfAttributesAreTheirTagsOutsideOfBlocks) {
  const Groups definition =
      "0 ATTDEF|10 1|20 2|40 3|1 value|72 1|11 5|21 6|100 AcDbAttributeDefinition|3 Which?|2 TAG"_g;
  const tEntity tag = ReadOne(definition + "70 1|71 4|72 0|11 0|21 0|101 Embedded Object|10 9"_g);
  EXPECT_EQ(tag.Text + " " + XY(tag) + " " + std::to_string(tag.TextJust), "TAG 5,6 1");
  EXPECT_EQ(tag.Lost, kLostHiding);
  const Groups block = Section("BLOCKS", "0 BLOCK|2 B|10 0"_g + definition + "70 2|0 ENDBLK"_g);
  const auto drawn = ReadGroups(block + Section("ENTITIES", "0 INSERT|2 B|10 0"_g) + kEnd);
  ASSERT_EQ(drawn.size(), 1U);
  EXPECT_EQ(drawn[0].Text, "value");
}

TEST_F(NotesTest, ATextWithoutALimitOfColumnsTakesAsManyAsItFills) {
  const Groups text = "0 MTEXT|10 0|20 0|40 3|71 2|1 a\\Pb\\P\\P\\Nc\\Pd\\Pe|101 Embedded Object|71 2|73 1|44 8|45 2"_g;
  const auto places = [&](const std::string& more) {
    std::string at;
    for (const tEntity& line : Read(text + Groups{{41, more}})) at += line.Text + " " + XY(line) + " ";
    return at;
  };
  EXPECT_EQ(places("8"), "a -10,0 b -10,-5 c 0,0 d 0,-5 e 10,0 ");
  EXPECT_EQ(places("0"), "a -5,0 b -5,-5 c 5,0 d 5,-5 e 5,-10 ") << "no height";
  EXPECT_EQ(places("1e-300"), "a -20,0 b -10,0 c 0,0 d 10,0 e 20,0 ") << "a column holds one line at least";
}

TEST_F(NotesTest, AMultileaderInABlockDrawsAllItsLinesAndThenItsOwnBlock) {
  const auto block = [](const std::string& name, const std::string& record, const Groups& entities) {
    return Groups{{0, "BLOCK"}, {102, "{X"}, {330, "7"}, {102, "}"}, {330, record}, {2, name}, {10, "0"}} + entities +
           Groups{{0, "ENDBLK"}};
  };
  constexpr int kLines = 1500;  // more than are held at once
  Groups note = "0 MULTILEADER|8 N|300 CONTEXT_DATA{|290 0|296 1|341 1F|15 1|25 0|35 0|46 0|302 LEADER{|10 9"_g;
  for (int i = 0; i < kLines; ++i)
    note = std::move(note) + Groups{{304, "LEADER_LINE{"}, {10, std::to_string(i)}, {305, "}"}};
  note = std::move(note) + "303 }|301 }|170 1|291 0|330 5|302 label|302 |0 POINT|10 3"_g;
  const Groups blocks =
      Section("BLOCKS", block("Outer", "2A", note) + block("Bubble", "1f", "0 CIRCLE|10 5|20 0|40 2"_g + note));
  const auto drawn = ReadGroups(blocks + Section("ENTITIES", "0 INSERT|2 Outer|10 100"_g) + kEnd);
  ASSERT_EQ(drawn.size(), 2U * kLines + 3) << "each line once, and a block that holds itself not again";
  EXPECT_EQ(XY(drawn[kLines - 1]), "1599,0 110,0");
  EXPECT_EQ(Row(drawn[kLines].bType, XY(drawn[kLines])), "4 106,0") << "the block lies at its place";
  EXPECT_EQ(XY(drawn[kLines + 1]) + " " + drawn[kLines + 1].Layer, "101,0 111,0 N");
  EXPECT_EQ(XY(drawn.back()), "103,0");
  EXPECT_NE(rig.WarningOf("circular blocks"), nullptr);
  EXPECT_EQ(rig.report.UndeliveredTypes().at("ATTRIB of a MULTILEADER"), 2);
}

TEST_F(NotesTest, MultileadersWithoutAllTheirParts) {
  const auto read = [&](const Groups& groups) {
    std::string found;
    for (const tEntity& e : Read("0 MULTILEADER|300 CONTEXT_DATA{"_g + groups)) found += e.Text + XY(e) + " / ";
    return found;
  };
  EXPECT_EQ(read("302 LEADER{|10 4|20 4|304 LEADER_LINE{|20 9|10 1|10 2|10 x"_g), "1,0 2,0 4,4 5,4 / ") << "no braces";
  EXPECT_EQ(read("302 LEADER{|304 LEADER_LINE{|305 }|271 1|303 }|302 LEADER{|303 }|290 1|304 a|12 x|13 y"_g), "");
  EXPECT_EQ(read("290 1|304 a\\Nb|12 1|22 5|41 3|171 9|13 0|23 2"_g), "a1,5 / b6,5 / ");
  EXPECT_EQ(rig.report.UndeliveredTypes().size(), 0U);
  EXPECT_EQ(read("296 1|341 FFFFFFFFFFFFFFFFFF|15 1|25 2"_g), "");
  EXPECT_NE(rig.WarningOf("missing blocks"), nullptr);
  EXPECT_EQ(read("40 1"_g), "");
  EXPECT_NE(rig.WarningOf("damaged MULTILEADER"), nullptr);
}

TEST_F(NotesTest, DamagedOnes) {
  for (const Groups& leader : {"0 LEADER|20 1|10 1"_g, "0 LEADER"_g, "0 LEADER|10 x|20 y|10 z|72 1"_g}) {
    EXPECT_TRUE(Read(leader).empty());
    EXPECT_NE(rig.WarningOf("damaged LEADER"), nullptr);
    rig.report = Report();
  }
  for (const Groups& lines : {"0 MLINE|11 1"_g, "0 MLINE|41 1|74 1000000000|11 1|11 2"_g,
                              "0 MLINE|72 9|73 9|11 1|74 2|41 1|11 2|75 1|42 3"_g}) {
    EXPECT_TRUE(Read(lines).empty());
    EXPECT_NE(rig.WarningOf("damaged MLINE"), nullptr);
    rig.report = Report();
  }
  for (const Groups& frame : {"0 TOLERANCE|1 A"_g, "0 TOLERANCE|10 1|1 %%v {}^J%%v"_g}) {
    EXPECT_TRUE(Read(frame).empty());
    EXPECT_NE(rig.WarningOf("damaged TOLERANCE"), nullptr);
    rig.report = Report();
  }
  EXPECT_EQ(ReadOne("0 TOLERANCE|10 1|1 {\\Fgdt;j|11 x|21 y"_g).Text, "\u2316");
  const auto cut = Read(
      "0 MLINE|71 3|11 1|13 1|74 4|41 1|41 7|41 8|41 9|74 1|41 4|11 5|13 0|23 1|74 0|74 1|41 2|74 1|11 x"
      "|74 1|74 1|74 1"_g);
  ASSERT_EQ(cut.size(), 2U) << "lines that one vertex lacks are left out";
  EXPECT_EQ(XY(cut[0]) + " / " + XY(cut[1]), "2,0 5,0 2,0 / 5,0 5,2 5,0");
  EXPECT_TRUE(cut[0].Closed);
}

}  // namespace
}  // namespace tesselink
