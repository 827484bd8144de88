#include "formats/dxf/cColourTab.h"

#include <gtest/gtest.h>

#include <array>

#include "support/Support.h"

namespace tesselink {
namespace {

class cColourTabTest : public testing::Test {
 protected:
  Folder folder;
  std::string FolderPath() { return folder.Path(""); }
};

TEST_F(cColourTabTest, RecordsAreCombinedByTheByteOrder) {
  folder.Put("ACADTBL.TBL", std::string("\xAA\xBB\xCC\x00\x80\xFF\x01\x02\x03", 9));
  cColourTab table(FolderPath());
  EXPECT_EQ(table.Colour(0), 0x0080FF) << "bytes 3 to 5, the first one highest";
  EXPECT_EQ(table.Colour(1), 0x010203);
  EXPECT_EQ(table.Colour(-1), 0xAABBCC);
  table.ByteOrd("intel");
  EXPECT_EQ(table.Colour(0), 16744448);
  table.ByteOrd("Motorola");
  EXPECT_EQ(table.Colour(0), 33023);
  table.ByteOrd("i");
  for (const char* wrong : {"", "x", "1", " M"}) {
    EXPECT_EQ(ErrorOf([&] { table.ByteOrd(wrong); }), "Byte order must be Intel or Motorola");
  }
  EXPECT_EQ(table.Colour(0), 16744448) << "a wrong order changes nothing";
}

TEST_F(cColourTabTest, WhatIsNotThereIsAnError) {
  cColourTab table(FolderPath());
  EXPECT_NE(ErrorOf([&] { table.Colour(7); }).find("ACADTBL.TBL: could not be opened"), std::string::npos);
  folder.Put("ACADTBL.TBL", std::string(8, 'x'));
  EXPECT_NE(ErrorOf([&] { table.Colour(1); }).find("no colour of number 1"), std::string::npos) << "a record cut short";
  EXPECT_NE(ErrorOf([&] { table.Colour(10922); }).find("Overflow"), std::string::npos) << "3 n + 4 beyond 16 bits";
  EXPECT_EQ(ErrorOf([&] { table.Colour(10921); }).find("Overflow"), std::string::npos);
  folder.Put("ACADTBL.TBL", std::string(9, '\1'));
  table.Create();
  EXPECT_EQ(table.Colour(1), 0x010101) << "Create opens the table anew";
}

// The table that comes with the program against the rule of the colour numbers, computed here in whole numbers of 1/80.
TEST(ColourTableFileTest, HoldsTheColoursOfTheRuleWithRedInTheLowByte) {
  cColourTab table(TESSELINK_DATA_FOLDER);
  const auto rgb = [](int r, int g, int b) { return r | g << 8 | b << 16; };
  constexpr std::array<std::array<int, 3>, 10> kNamed{{{255, 255, 255},
                                                       {255, 0, 0},
                                                       {255, 255, 0},
                                                       {0, 255, 0},
                                                       {0, 255, 255},
                                                       {0, 0, 255},
                                                       {255, 0, 255},
                                                       {255, 255, 255},
                                                       {128, 128, 128},
                                                       {192, 192, 192}}};
  for (int i = 0; i < 10; ++i) {
    const auto& [r, g, b] = kNamed[static_cast<std::size_t>(i)];
    EXPECT_EQ(table.Colour(i), rgb(r, g, b)) << i;
  }
  constexpr std::array kGreys{84, 118, 152, 186, 220, 255};
  for (int i = 250; i < 256; ++i) {
    const int grey = kGreys[static_cast<std::size_t>(i - 250)];
    EXPECT_EQ(table.Colour(i), rgb(grey, grey, grey)) << i;
  }
  constexpr std::array kValues{80, 52, 40, 24, 12};  // in 1/80 of 255
  for (int i = 10; i < 250; ++i) {
    const int hue = i / 10 - 1, sextant = hue / 4, step = hue % 4;
    const int v = 255 * 8 * kValues[static_cast<std::size_t>(i % 10 / 2)];  // in 1/640
    const int lo = i % 2 == 0 ? 0 : v / 2;
    const int up = lo + (v - lo) / 4 * step, dn = lo + (v - lo) / 4 * (4 - step);
    const int parts[6][3] = {{v, up, lo}, {dn, v, lo}, {lo, v, up}, {lo, dn, v}, {up, lo, v}, {v, lo, dn}};
    const auto& part = parts[sextant];
    EXPECT_EQ(table.Colour(i), rgb(part[0] / 640, part[1] / 640, part[2] / 640)) << i;
  }
}

TEST(cColourTab, TheNearestNumber) {
  cColourTab colours(TESSELINK_DATA_FOLDER);
  EXPECT_EQ(colours.Nearest(0x0000FE), 1);
  EXPECT_EQ(colours.Nearest(0xFF0000), 5);
  EXPECT_EQ(colours.Nearest(0xFFFFFF), 7);
  for (std::int32_t number = 1; number < 256; ++number) {
    EXPECT_EQ(colours.Colour(colours.Nearest(colours.Colour(number))), colours.Colour(number));
  }
}

}  // namespace
}  // namespace tesselink
