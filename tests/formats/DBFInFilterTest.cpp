#include "formats/shape/DBFInFilter.h"

#include <gtest/gtest.h>

#include "core/run/Report.h"
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
  // Numbers stay text, a text is cut at a NUL, and nothing lies beyond the last record, not even the end byte.
  const std::tuple<int, std::int64_t, std::string_view> values[] = {
      {0, 0, "AB"}, {1, 0, "12.50"}, {0, 1, "A"}, {0, 2, ""}, {1, 2, "7"}, {0, 3, ""}, {1, 40, ""}, {-1, 0, ""}};
  for (const auto& [field, record, value] : values) EXPECT_EQ(table.GetFieldData(field, record), value) << record;
  EXPECT_NE(ErrorOf([&] { table.GetFieldData(2, 0); }), "");
  EXPECT_NE(ErrorOf([&] { table.GetFieldName(-1); }), "");
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

TEST_F(DBFInFilterTest, DescriptorsThatTheFileDoesNotHoldAreNuls) {
  std::string bytes = Table({{"NAME", 3}}, {{"abc"}, {"d"}});
  bytes[8] = '\xFF';
  bytes[9] = '\xFF';  // the longest header that 16 bits can tell
  Open(bytes.substr(0, 32 + 17));
  EXPECT_EQ(Row(table.NumFields(), table.GetFieldName(0), table.FieldLength(0), table.FieldDecimals(0)),
            "2046 NAME 3 0")
      << "as far as the file goes";
  EXPECT_EQ(Row(table.GetFieldName(2046), table.FieldLength(2046)), " 0");
  EXPECT_EQ(table.FieldType(2046), '\0');
  EXPECT_EQ(table.GetFieldData(0, 0), "");
  EXPECT_EQ(table.NumRecs(), 0);
}

TEST_F(DBFInFilterTest, ProgressIsThatOfTheLastRead) {
  // 32 + 32 + 1 + 3 * 12 + 1 bytes
  Open(Table({{"NAME", 11}}, {{"abc"}, {"d"}, {"e"}}));
  EXPECT_EQ(table.Progress(), 63) << "behind the descriptors";
  table.GetFieldData(0, 1);
  EXPECT_EQ(table.Progress(), 87);
  table.GetFieldData(0, 500);
  EXPECT_EQ(table.Progress(), 100);
  Open(Table({{"NAME", 11}, {"OTHER", 11}}, {}));
  EXPECT_EQ(table.Progress(), 98) << "of the table that is open";
}

class StandardTableTest : public DBFInFilterTest {
 protected:
  StandardTableTest() : standard(Dialect::Standard) {}
  DBFInFilter standard;
  void Open(const std::string& bytes) { standard.filename(folder.Put("t.dbf", bytes)); }
};

TEST_F(StandardTableTest, TheHeaderAndTheTerminatorCount) {
  std::string bytes = Table({{"NAME", 5}, {"ELEVENCHARS", 4, 'N'}}, {{" ab", " 7"}, {"cd", "8"}, {"ef", "9"}});
  bytes[4] = 2;
  bytes[8] = static_cast<char>(33 + 64 + 64);  // room for two more fields behind the terminator
  bytes.insert(33 + 64, 64, '\0');
  bytes[33 + 128] = '*';
  Open(bytes);
  EXPECT_EQ(Row(standard.NumFields(), standard.NumRecs(), standard.GetFieldName(1)), "1 2 ELEVENCHARS")
      << "not by the file's size";
  EXPECT_EQ(standard.GetFieldData(0, 0), " ab") << "an indent belongs to a text";
  EXPECT_EQ(standard.GetFieldData(1, 0), "7");
  EXPECT_EQ(standard.GetFieldData(0, 2), "") << "beyond the last record";
  EXPECT_EQ(standard.GetFieldData(0, -1), "");
  EXPECT_EQ(Row(standard.IsDeleted(0), standard.IsDeleted(1), standard.IsDeleted(-1)), "1 0 0");
  const std::string error = ErrorOf([&] { standard.GetFieldNum("NOSUCH"); });
  EXPECT_TRUE(Holds(error, "has no field \"NOSUCH\"; its fields are NAME, ELEVENCHARS")) << error;
  EXPECT_EQ(standard.GetFieldNum(""), -1);
  bytes[4] = bytes[5] = 100;
  Open(bytes);
  EXPECT_EQ(standard.NumRecs(), 3) << "no more than there are";
  bytes[10] = 1;
  Open(bytes);
  EXPECT_EQ(standard.NumFields(), 0) << "the second field lies behind the record";
  bytes[10] = 3;
  Open(bytes);
  EXPECT_EQ(standard.GetFieldData(0, 0), " a") << "the rest belongs to the next row";
  EXPECT_TRUE(Holds(ErrorOf([&] { Open(bytes.substr(0, 40)); }), "ends within its field descriptors"));
}

TEST_F(StandardTableTest, TextsBecomeUtf8) {
  struct {
    std::string cpg;
    int language;
    std::string bytes, text, unknown;
  } const cases[] = {
      {"", 0, "\xE4", "ä", ""},
      {"", 0x57, "\xC3\xA4", "ä", ""},
      {"", 3, "\xC3\xA4", "Ã¤", ""},
      {"", 2, "\x84", "ä", ""},
      {"", 1, "\x9B", "¢", ""},
      {"", 0x65, "\x80", "А", ""},
      {"UTF-8\r\n", 3, "\xC3\xA4", "ä", ""},
      {"utf-8", 0, "\xE4", "ä", ""},
      {"ANSI 1250", 0, "\xB9", "ą", ""},
      {"ISO-8859-1", 0, "\xC3\xA4", "Ã¤", ""},
      {"88592", 0, "\xB1", "ą", ""},
      {"LDID/201", 0, "\xE4", "д", ""},
      {"UTF-8", 0, "d\xC3\xA4\xE5\xAF", "dä\uFFFD", ""},
      {"LDID/77", 0, "\xC4\xE3", "你", ""},
      {"", 0x7B, "\x83\x5C\xB1", "ソｱ", ""},
      {"", 0x79, "\xB0\xA1", "가", ""},
      {"", 0x78, "\xA4\x40\xB3\x5C", "一許", ""},
      {"CP737", 0, "\x80", "Α", ""},
      {"ISO 8859-15", 0, "\xA4", "€", ""},
      {"KOI8-R", 0, "\xC1", "а", ""},
      {"3x\n", 3, "\xE4", "ä", "code page \"3x\""},
      {"CP37", 3, "\xE4", "ä", "code page \"CP37\""},
      {"", 0xF0, "\xE4", "ä", "language byte 240"},
  };
  for (const auto& expected : cases) {
    if (expected.cpg.empty()) {
      std::filesystem::remove(folder.Path("t.cpg"));
    } else {
      folder.Put("t.cpg", expected.cpg);
    }
    std::string bytes = Table({{"N" + expected.bytes, 5}}, {{expected.bytes}});
    bytes[29] = static_cast<char>(expected.language);
    Open(bytes);
    EXPECT_EQ(standard.GetFieldData(0, 0), expected.text) << expected.cpg << expected.language;
    EXPECT_EQ(standard.GetFieldName(0), "N" + expected.text);
    EXPECT_EQ(standard.UnknownEncoding(), expected.unknown);
  }
  folder.Put("t.cpg", "");
  Open(Table({{"N", 3}}, {{"a"}, {"\xE4\xE4\xE4"}}));
  EXPECT_EQ(standard.FieldWidth(0), 6) << "letters take more bytes than in the table";
}

TEST_F(StandardTableTest, PagesOfTwoBytesByAllTheirNames) {
  for (const char* name : {"936", "GBK", "CP936", "ANSI 936", "ansi_936", "windows-936", "GB2312", "MS936", "x-gbk"})
    EXPECT_EQ(CodePage::Named(name), std::string_view(name) == "x-gbk" ? nullptr : CodePage::Numbered(936)) << name;
  for (const char* name : {"Shift_JIS", "shift-jis", "SJIS", "932", "Windows-31J"})
    EXPECT_EQ(CodePage::Named(name), CodePage::Numbered(932)) << name;
  for (const char* name : {"EUC-KR", "UHC", "KSC5601", "949"})
    EXPECT_EQ(CodePage::Named(name), CodePage::Numbered(949));
  for (const char* name : {"", "-", "UTF-16", "1200", "CP-936x", "99999999999", "ISO-8859-12", "8859"})
    EXPECT_EQ(CodePage::Named(name), nullptr) << name;
  // What is no letter does not take the next one with it, and a letter that the field cut off is one.
  Report report;
  DBFInFilter chinese(Dialect::Standard, &report, CodePage::Named("Big5"));
  folder.Put("c.cpg", "UTF-8");
  chinese.filename(folder.Put("c.dbf", Table({{"\xA4\xA4", 5}}, {{"\xA4\x40 \xB3\x5C"}, {"\xFF\xA4\x40\xA4"}})));
  EXPECT_EQ(chinese.GetFieldName(0), "中");
  EXPECT_EQ(chinese.GetFieldData(0, 0), "一 許");
  EXPECT_EQ(report.Of(WarningKind::Bytes), nullptr);
  EXPECT_EQ(chinese.GetFieldData(0, 1), "\uFFFD一\uFFFD");
  chinese.GetFieldData(0, 1);
  EXPECT_EQ(report.Of(WarningKind::Bytes)->count, 1) << "told once";
}

}  // namespace
}  // namespace tesselink
