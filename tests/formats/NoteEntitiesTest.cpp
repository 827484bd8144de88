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
  for (const std::string type : {"LEADER", "MLINE"}) {
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
  const auto cut = Read(
      "0 MLINE|71 3|11 1|13 1|74 4|41 1|41 7|41 8|41 9|74 1|41 4|11 5|13 0|23 1|74 0|74 1|41 2|74 1|11 x"
      "|74 1|74 1|74 1"_g);
  ASSERT_EQ(cut.size(), 2U) << "lines that one vertex lacks are left out";
  EXPECT_EQ(XY(cut[0]) + " / " + XY(cut[1]), "2,0 5,0 2,0 / 5,0 5,2 5,0");
  EXPECT_TRUE(cut[0].Closed);
}

}  // namespace
}  // namespace tesselink
