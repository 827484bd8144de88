// SPDX-License-Identifier: MIT
// What blocks draw; where their elements lie is compared with another program in tests/interop.
#include "formats/dxf/BlockExpansion.h"

#include <cmath>

#include "core/io/Errors.h"
#include "support/Drawings.h"

namespace tesselink {
namespace {

class BlockExpansionTest : public DrawingTest {
 protected:
  BlockExpansionTest() { rig.context.options.dialect = Dialect::Standard; }
  static Groups Block(const std::string& name, const Groups& entities, const std::string& flags = "0") {
    return Groups{{0, "BLOCK"}, {2, name}, {70, flags}, {10, "0"}} + entities + "0 ENDBLK|8 0"_g;
  }
  static Groups Insert(const std::string& name, const Groups& more = {}) {
    return Groups{{0, "INSERT"}, {2, name}, {10, "100"}, {20, "0"}} + more;
  }
  std::vector<tEntity> Drawn(const Groups& blocks, const Groups& entities) {
    return ReadGroups(Section("BLOCKS", blocks) + Section("ENTITIES", entities) + kEnd);
  }
};

TEST_F(BlockExpansionTest, WhatABlockLeavesOpenIsItsInserts) {
  const Groups tables = Section("TABLES", "0 LAYER|2 A|62 1|6 DASHED|0 LAYER|2 B|62 5|0 LAYER|2 0|62 7"_g);
  const Groups blocks =
      Section("BLOCKS", Block("IN", "0 POINT|8 0|10 1|0 POINT|8 B|10 2|62 0|6 BYBLOCK|0 POINT|8 B|10 3"_g) +
                            Block("OUT", Insert("IN", "8 0|62 0|6 BYBLOCK"_g)));
  const auto looks = [&](const Groups& insert) {
    std::string all;
    for (const tEntity& e : ReadGroups(tables + blocks + Section("ENTITIES", insert) + kEnd)) {
      all += e.Layer + std::to_string(e.Colour) + (e.ColourFrom == StyleSource::Layer ? "L" : "") + e.LineStyle + " ";
    }
    return all;
  };
  EXPECT_EQ(looks(Insert("OUT", "8 A"_g)), "A1LDASHED B1DASHED B5L ");
  EXPECT_EQ(looks(Insert("OUT", "8 A|62 3|6 DOTTED"_g)), "A1LDASHED B3DOTTED B5L ");
  rig.context.options.dialect = Dialect::Classic;
  rig.context.options.own.Set("blocks", "expand");
  EXPECT_EQ(looks(Insert("OUT", "8 A"_g)), "A1 B1 B5 ") << "by layer, classic elements have none";
}

TEST_F(BlockExpansionTest, WhatCannotBeDrawnIsTold) {
  const Groups point = "0 POINT|10 1"_g;
  const Groups blocks = Block("LOOP", point + Insert("MID")) + Block("MID", Insert("loop") + point) +
                        Block("FAR", point, "4") + Block("EMPTY", "0 ATTDEF|70 0"_g) +
                        Block("WALL", "0 REGION|10 1|0 REGION|10 1|0 POINT|0 LINE|10 1|11 x|0 ATTDEF|10 1|1 c|70 2"_g);
  const auto e = Drawn(
      blocks, Insert("LOOP") + Insert("FAR") + Insert("EMPTY") + Insert("GONE") + Insert("WALL") + Insert("WALL"));
  ASSERT_EQ(e.size(), 4U);
  EXPECT_EQ(e[0].x(0), 101);
  EXPECT_EQ(e[1].x(0), 201);
  EXPECT_EQ(e[2].Text, "c");
  for (const char* kind : {"circular blocks", "external blocks", "empty blocks", "missing blocks", "block names"}) {
    EXPECT_NE(rig.WarningOf(kind), nullptr) << kind;
  }
  EXPECT_EQ(rig.report.UndeliveredTypes().at("REGION"), 4) << "once for each time that it would have been drawn";
  ASSERT_NE(rig.WarningOf("damaged POINT"), nullptr);
  EXPECT_EQ(rig.WarningOf("damaged POINT")->count, 1) << "what is wrong in a block is told once";
}

TEST_F(BlockExpansionTest, AttributesOfAnArrayStandAtEachPlace) {
  const Groups array = "70 2|71 2|44 10|45 100|0 ATTRIB|10 5|1 a|0 ATTRIB|10 6|1 b|0 SEQEND|0 POINT|10 9"_g;
  const auto places = [](const std::vector<tEntity>& elements, std::size_t begin) {
    std::string all;
    for (std::size_t i = begin; i < elements.size(); ++i) {
      all += std::to_string(std::lround(elements[i].x(0))) + "," + std::to_string(std::lround(elements[i].Y(0))) + " ";
    }
    return all;
  };
  const Groups dot = Block("DOT", "0 POINT|10 1"_g);
  EXPECT_EQ(places(Drawn(dot, Insert("DOT") + array), 0),
            "101,0 111,0 101,100 111,100 5,0 15,0 5,100 15,100 6,0 16,0 6,100 16,100 9,0 ");
  // In a block, wherever a piece of it ends.
  for (const int before : {509, 510, 511, 512}) {
    Groups points;
    for (int i = 0; i < before; ++i) points = std::move(points) + "0 POINT|10 0"_g;
    const auto e = Drawn(dot + Block("OUT", points + Insert("DOT") + array), Insert("OUT", "50 90|41 2|42 2"_g));
    EXPECT_EQ(places(e, static_cast<std::size_t>(before)),
              "100,202 100,222 -100,202 -100,222 100,10 100,30 -100,10 -100,30 100,12 100,32 -100,12 -100,32 100,18 ")
        << before;
  }
}

TEST_F(BlockExpansionTest, WhatIsHiddenIsMarked) {
  const Groups dots = Block("DOT", "0 POINT|10 1|60 1|0 POINT|10 2"_g);
  std::string hidden;
  for (const tEntity& e :
       Drawn(dots, Insert("DOT") + Insert("DOT", "60 1|0 ATTRIB|10 5|1 a|70 1"_g) + "0 POINT|60 1|10 1"_g)) {
    hidden += (e.Lost & kLostHiding) != 0 ? "h" : "-";
  }
  EXPECT_EQ(hidden, "h-hhhh");
}

TEST_F(BlockExpansionTest, ALargeBlockComesInPieces) {
  Groups points;
  for (int i = 0; i < 2000; ++i) points = std::move(points) + Groups{{0, "POINT"}, {10, std::to_string(i)}};
  const auto e =
      Drawn(Block("OUT", "0 POINT|10 -1"_g + Insert("BIG") + Insert("BIG") + "0 POINT|10 -2"_g) + Block("BIG", points),
            Insert("OUT", "70 2|44 5000"_g) + "0 POINT|10 7"_g);
  ASSERT_EQ(e.size(), 8005U);
  for (const int from : {0, 4002}) {
    EXPECT_EQ(e[static_cast<std::size_t>(from)].x(0), from == 0 ? 99 : 5099);
    for (int i = 0; i < 4000; ++i) {
      ASSERT_EQ(e[static_cast<std::size_t>(from + 1 + i)].x(0), (from == 0 ? 200 : 5200) + i % 2000);
    }
  }
  EXPECT_EQ(e[8004].x(0), 7);
}

TEST_F(BlockExpansionTest, TheLimitEndsWhatNobodyCouldStore) {
  Groups blocks = Block("N0", "0 REGION|10 1"_g);
  for (int i = 1; i < 40; ++i) {
    blocks = blocks + Block("N" + std::to_string(i), Insert("N" + std::to_string(i - 1), "70 100|71 100"_g));
  }
  rig.context.options.own.Set("limit", "5000");
  const std::string error = ErrorOf([&] { Drawn(blocks, "0 POINT|10 1"_g + Insert("N39")); });
  EXPECT_NE(error.find("more than the 5000 entities"), std::string::npos) << error;
}

TEST_F(BlockExpansionTest, BlocksBehindTheEntitiesAndTheirOwnInDimensions) {
  const Groups tables = Section("TABLES", "0 LAYER|2 A"_g);
  const Groups entities = Section("ENTITIES", Insert("B") + "0 DIMENSION|2 *D1|12 5|22 6"_g +
                                                  "0 ACAD_TABLE|2 B|10 10|20 0|100 AcDbTable|10 3|11 0|21 2|2 cell"_g);
  const Groups blocks = Section("BLOCKS", Block("B", "0 POINT|10 1|20 0"_g) + Block("*D1", "0 POINT|10 2|20 0"_g));
  const auto e = ReadGroups(tables + entities + blocks + kEnd);
  ASSERT_EQ(e.size(), 3U);
  EXPECT_EQ(e[0].x(0), 101);
  EXPECT_EQ(e[1].Y(0), 6);
  EXPECT_EQ(e[2].Y(0), 1) << "turned to its direction";
  rig.context.options.dialect = Dialect::Classic;
  EXPECT_EQ(ReadGroups(tables + blocks + entities + kEnd).size(), 1U);
  EXPECT_EQ(rig.report.UndeliveredTypes().at("DIMENSION"), 1);
  rig.context.options.own.Set("blocks", "both");
  EXPECT_EQ(ReadGroups(tables + blocks + entities + kEnd).size(), 4U);
}

}  // namespace
}  // namespace tesselink
