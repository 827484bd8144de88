// SPDX-License-Identifier: MIT
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
  EXPECT_EQ(Row(table.Colour(0), table.Colour(1), table.Colour(-1)), Row(0x0080FF, 0x010203, 0xAABBCC))
      << "bytes 3 to 5, the first one highest";
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
  EXPECT_TRUE(Holds(ErrorOf([&] { table.Colour(7); }), "ACADTBL.TBL: could not be opened"));
  folder.Put("ACADTBL.TBL", std::string(8, 'x'));
  EXPECT_TRUE(Holds(ErrorOf([&] { table.Colour(1); }), "no colour of number 1")) << "a record cut short";
  EXPECT_TRUE(Holds(ErrorOf([&] { table.Colour(10922); }), "Overflow")) << "3 n + 4 beyond 16 bits";
  EXPECT_EQ(ErrorOf([&] { table.Colour(10921); }).find("Overflow"), std::string::npos);
  folder.Put("ACADTBL.TBL", std::string(9, '\1'));
  table.Create();
  EXPECT_EQ(table.Colour(1), 0x010101) << "Create opens the table anew";
}

TEST(cColourTab, TheNearestNumber) {
  cColourTab colours(TESSELINK_DATA_FOLDER);
  EXPECT_EQ(Row(colours.Nearest(0x0000FE), colours.Nearest(0xFF0000), colours.Nearest(0xFFFFFF)), "1 5 7");
  for (std::int32_t number = 1; number < 256; ++number) {
    EXPECT_EQ(colours.Colour(colours.Nearest(colours.Colour(number))), colours.Colour(number));
  }
}

}  // namespace
}  // namespace tesselink
