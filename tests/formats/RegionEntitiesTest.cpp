// SPDX-License-Identifier: MIT
// Regions by the records of their data, as two versions of the format write them.
#include "formats/dxf/RegionEntities.h"

#include <cmath>

#include "core/element/Rings.h"
#include "support/Drawings.h"

namespace tesselink {
namespace {

// A rectangle of 10 by 5 whose right side is half a circle, with a round hole.
const char* const kHeader[] = {"400 0 1 0", "4 test 4 ACIS 4 now", "1 1e-06 1e-10"};
const std::vector<std::string> kRecords{"body $-1 $-1 $-1 $26 #",
                                        "loop $-1 $2 $3 $-1 #",
                                        "loop $-1 $-1 $7 $-1 #",
                                        "coedge $-1 $4 $6 $-1 $8 forward $1 $-1 #",
                                        "coedge $-1 $5 $3 $-1 $9 reversed $1 $-1 #",
                                        "coedge $-1 $6 $4 $-1 $10 forward $1 $-1 #",
                                        "coedge $-1 $3 $5 $-1 $11 forward $1 $-1 #",
                                        "coedge $-1 $7 $7 $-1 $12 forward $2 $-1 #",
                                        "edge $-1 $13 $14 $3 $17 forward #",
                                        "edge $-1 $15 $14 $4 $18 reversed #",
                                        "edge $-1 $15 $16 $5 $17 forward #",
                                        "edge $-1 $16 $13 $6 $17 forward #",
                                        "edge $-1 $19 $19 $7 $20 forward #",
                                        "vertex $-1 $8 $21 #",
                                        "vertex $-1 $8 $22 #",
                                        "vertex $-1 $9 $23 #",
                                        "vertex $-1 $10 $24 #",
                                        "straight-curve $-1 0 0 0 1 0 0 I I #",
                                        "ellipse-curve $-1 10 2.5 0 0 0 1 0 -2.5 0 1 I I #",
                                        "vertex $-1 $12 $25 #",
                                        "ellipse-curve $-1 5 2.5 0 0 0 1 1 0 0 1 I I #",
                                        "point $-1 0 0 0 #",
                                        "point $-1 10 0 0 #",
                                        "point $-1 10 5 0 #",
                                        "point $-1 0 5 0 #",
                                        "point $-1 6 2.5 0 #",
                                        "transform $-1 1 0 0 0 1 0 0 0 1 100 0 7 2 no_rotate no_reflect no_shear #"};

Groups RegionOf(const std::vector<std::string>& records) {
  std::vector<std::string> lines(std::begin(kHeader), std::end(kHeader));
  lines.insert(lines.end(), records.begin(), records.end());
  Groups groups = "0 REGION|8 Lease|70 1"_g;
  for (const std::string& line : lines) {
    std::string enciphered;
    for (const char c : line) {
      if (c != ' ') enciphered += static_cast<char>(159 - c);
      if (c == ' ' || c == 'A') enciphered += ' ';
    }
    const std::size_t half = enciphered.size() / 2;
    groups.push_back({1, enciphered.substr(0, half)});
    groups.push_back({3, enciphered.substr(half)});
  }
  return groups;
}

class RegionTest : public DrawingTest {
 protected:
  RegionTest() { rig.context.options.dialect = Dialect::Standard; }
  // Of all rings together; below 0, since outer ones run clockwise.
  static double AreaOf(const tEntity& e) {
    double area = 0;
    for (std::size_t part = 0; part < e.PartCount(); ++part) {
      VertexChain ring;
      for (tEntity::Index i = e.PartBegin(part); i < e.PartEnd(part); ++i)
        ring.push_back({e.x(i), e.Y(i), e.Height(i)});
      area += DoubledArea(ring) / 2;
    }
    return area;
  }
};

constexpr double kPi = 3.14159265358979, kSize = 50 + kPi * 2.5 * 2.5 / 2 - kPi;

TEST_F(RegionTest, StraightAndRoundEdgesOfTwoRings) {
  const tEntity region = ReadOne(RegionOf(kRecords));
  EXPECT_TRUE(region.IsArea && region.Closed);
  ASSERT_EQ(region.PartCount(), 2U);
  EXPECT_NEAR(AreaOf(region), -4 * kSize, 4 * 0.02) << "twice as large by its transform";
  Extents extents;
  extents.Add(region);
  EXPECT_NEAR(extents.maxX, 125, 0.01);
  EXPECT_EQ(Row(extents.minX, extents.minY, extents.maxY, extents.minZ), Row(100, 0, 10, 7));
}

TEST_F(RegionTest, LaterVersionsHaveMoreNumbers) {
  std::vector<std::string> records = kRecords;
  for (std::string& record : records) {
    const std::size_t at = record.find("$-1");
    record.replace(at, 3, "$-1 -1 $-1");
    if (record.starts_with("edge")) record.insert(record.size() - 1, "@7 unknown ");
  }
  records[0].insert(5, "@9 # $4 $5 # ");
  EXPECT_NEAR(AreaOf(ReadOne(RegionOf(records))), -4 * kSize, 4 * 0.02);
}

TEST_F(RegionTest, InBlocks) {
  for (const Groups& insert : {"41 -2|42 2|43 2|50 30"_g, "41 2|42 2|43 2|230 -1"_g, "41 2|42 -2|43 2"_g}) {
    const Groups block = "0 BLOCK|2 B|10 1|20 0"_g + RegionOf(kRecords) + "0 ENDBLK"_g;
    const auto found =
        ReadGroups(Section("BLOCKS", block) + Section("ENTITIES", "0 INSERT|2 B|10 5|20 6"_g + insert) + kEnd);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NEAR(AreaOf(found[0]), -16 * kSize, 16 * 0.02);
  }
}

TEST_F(RegionTest, WhatIsNotThereOrDamagedIsToldOrCounted) {
  EXPECT_TRUE(Read("0 REGION|70 1"_g).empty());
  EXPECT_EQ(rig.report.UndeliveredTypes().count("REGION"), 1U);
  const auto with = [](std::size_t number, const std::string& record) {
    std::vector<std::string> records = kRecords;
    records[number] = record;
    return RegionOf(records);
  };
  for (const Groups& damaged :
       {with(18, "intcurve-curve $-1 forward { exactcur nubs 3 } #"), with(3, "coedge $-1 $99 $-7 $3 #"),
        with(22, "point $-1 1 2 #"), with(24, "point $-1 nan 5 0 #"),
        with(18, "ellipse-curve $-1 0 0 0 0 0 0 0 0 0 1 #"), with(4, "coedge $-1 $4 $4 $-1 $9 forward #"),
        RegionOf({"loop", "@99999999999 #", "$ # # $-1 #"}), RegionOf({})}) {
    EXPECT_LE(Read(damaged).size(), 1U);
  }
  EXPECT_GE(rig.WarningOf("damaged REGION")->count, 5);
  rig.context.options.dialect = Dialect::Classic;
  EXPECT_TRUE(Read(RegionOf(kRecords)).empty());
}

}  // namespace
}  // namespace tesselink
