#include "formats/shape/DBFInFilter.h"

#include <gtest/gtest.h>

#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class DBFInFilterTest : public testing::Test {
 protected:
  Folder folder;
  DBFInFilter table;
  void Open(const std::string& bytes) { table.filename(folder.Put("t.dbf", bytes)); }
};

TEST_F(DBFInFilterTest, FieldsAndValues) {
  Open(Table({{"NAME", 8}, {"DEPTH", 5}}, {{"AB", "12.50"}, {std::string("A\0B", 3), ""}, {"", " 7"}}));
  EXPECT_EQ(table.NumFields(), 1) << "the highest index";
  EXPECT_EQ(table.NumRecs(), 3) << "the end byte is absorbed";
  EXPECT_EQ(table.GetFieldName(1), "DEPTH");
  EXPECT_EQ(table.GetFieldNum(" depth "), 1);
  EXPECT_EQ(table.GetFieldNum(""), -1);
  EXPECT_EQ(table.GetFieldNum("NOSUCH"), 0) << "an unknown name is the first field";
  EXPECT_EQ(table.GetFieldData(0, 0), "AB");
  EXPECT_EQ(table.GetFieldData(1, 0), "12.50") << "numbers stay text";
  EXPECT_EQ(table.GetFieldData(0, 1), "A") << "cut at the NUL";
  EXPECT_EQ(table.GetFieldData(0, 2), "");
  EXPECT_EQ(table.GetFieldData(1, 2), "7");
  EXPECT_EQ(table.GetFieldData(0, 3), "") << "beyond the last record, but for the end byte";
  EXPECT_EQ(table.GetFieldData(1, 40), "");
  EXPECT_EQ(table.GetFieldData(-1, 0), "");
  EXPECT_NE(ErrorOf([&] { table.GetFieldData(2, 0); }), "");
  EXPECT_NE(ErrorOf([&] { table.GetFieldName(-1); }), "");
}

TEST_F(DBFInFilterTest, DeletedRecordsAreReturned) {
  std::string bytes = Table({{"N", 3}}, {{"a"}, {"b"}});
  bytes[32 + 32 + 1] = '*';
  Open(bytes);
  EXPECT_EQ(table.GetFieldData(0, 0), "a");
  EXPECT_EQ(table.NumRecs(), 2);
}

TEST_F(DBFInFilterTest, AMissingFileChangesNothing) {
  EXPECT_EQ(table.Progress(), 0);
  EXPECT_NE(ErrorOf([&] { table.GetFieldData(0, 0); }), "");
  Open(Table({{"N", 3}}, {{"a"}}));
  table.filename(folder.Path("none.dbf"));
  EXPECT_EQ(table.GetFieldData(0, 0), "a");
  EXPECT_EQ(table.filename(), folder.Path("t.dbf"));
  Open(Table({{"M", 2}, {"O", 2}}, {{"c", "d"}}));
  EXPECT_EQ(table.NumFields(), 1) << "another file takes its place";
  EXPECT_EQ(table.GetFieldData(1, 0), "d");
}

TEST_F(DBFInFilterTest, BrokenHeaders) {
  std::string bytes = Table({{"ELEVENCHARS", 3}}, {{"a"}});
  Open(bytes);
  EXPECT_NE(ErrorOf([&] { table.GetFieldName(0); }).find("fills all 11 bytes"), std::string::npos);
  bytes[10] = bytes[11] = 0;
  Open(bytes);
  EXPECT_NE(ErrorOf([&] { table.NumRecs(); }).find("record length of 0"), std::string::npos);
  EXPECT_NE(ErrorOf([&] { Open("short"); }).find("5 bytes"), std::string::npos);
  EXPECT_NE(ErrorOf([&] { Open(bytes.substr(0, 40)); }).find("ends within its field descriptors"), std::string::npos);
  bytes = Table({{"N", 3}}, {});
  bytes[8] = 2;  // a header length below any header
  Open(bytes);
  EXPECT_EQ(table.NumFields(), -1);
}

}  // namespace
}  // namespace tesselink
