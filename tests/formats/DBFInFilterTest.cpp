// SPDX-License-Identifier: MIT
#include "formats/shape/DBFInFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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

class OtherValuesTest : public testing::Test {
 protected:
  Folder folder;
  Report report;
  DBFInFilter table{Dialect::Standard, &report, nullptr};
  void Open(char version, std::string bytes) {
    bytes[0] = version;
    table.filename(folder.Put("t.dbf", bytes));
  }
  std::string Values() {
    std::string row;
    for (int i = 0; i <= table.NumFields(); ++i) row += std::string(table.GetFieldData(i, 0)) + "|";
    return row;
  }
};

TEST_F(OtherValuesTest, BinaryValues) {
  const auto time = [](std::int32_t day, std::int32_t ms) { return Little(day) + Little(ms); };
  const std::vector<TableField> fields{
      {"I", 4, 'I'}, {"B", 8, 'B'}, {"Y", 8, 'Y'}, {"T", 8, 'T'}, {"AT", 8, '@'},         {"O", 8, 'O'}, {"P", 4, '+'},
      {"G", 4, 'G'}, {"V", 6, 'V'}, {"W", 3, 'V'}, {"N", 4, 'I'}, {"_NullFlags", 1, '0'}, {"C", 2}};
  const auto row = [&](std::int32_t i, double d, std::int64_t y, const std::string& t) {
    return std::vector<std::string>{Little(i), Little(d),         Little(y), t,         t,
                                    Little(d), Little(i),         "gggg",    "abcde\2", "xyz",
                                    Little(i), std::string("\5"), "c"};
  };
  std::string bytes = Table(fields, {row(-2147483647 - 1, 0.1, -5, time(2453036, 37229999))});
  bytes[32 * 11 + 18] = 2;  // N may be null, and is
  Open(0x30, bytes);
  EXPECT_EQ(table.NumFields(), 11) << "the flags are none of the table's fields";
  const std::string when = "2004-01-31T10:20:30|";
  EXPECT_EQ(Values(), "-2147483648|0.1|-0.0005|" + when + when + "0.1|-2147483648||ab|xyz||c|");
  EXPECT_EQ(report.Warnings().size(), 1U);
  EXPECT_TRUE(Holds(report.Warnings()[0].text, "the field G (type G)"));
  bytes = Table(fields, {row(7, std::nan(""), std::numeric_limits<std::int64_t>::min(), time(-9, 1))});
  Open(0x30, bytes);
  EXPECT_EQ(Values(), "7||-922337203685477.5808||||7||ab|xyz|7|c|");
  Open(0x03, Table({{"B", 8, 'B'}, {"T", 8, 'T'}}, {{Little(1.0), time(0, 0)}}));
  EXPECT_EQ(Values(), "||") << "elsewhere B is a place in a memo file";
}

TEST_F(OtherValuesTest, Level7) {
  std::string bytes = Table({{"x", 5}}, {});
  std::string fields;
  for (const auto& [name, type, length] :
       {std::tuple{"a name of more than 11", 'C', 3}, {"n", '+', 4}, {"m", 'I', 4}}) {
    std::string field(name);
    field.resize(32, '\0');
    fields += field + type + static_cast<char>(length) + std::string(14, '\0');
  }
  bytes = bytes.substr(0, 32) + std::string(36, '\0') + fields + "\r" + " abc" + std::string("\x80\0\0\1", 4) +
          "\x7F\xFF\xFF\xFF";
  bytes.replace(4, 4, Little(std::uint32_t{1}));
  bytes.replace(8, 4, Little(static_cast<std::uint16_t>(69 + fields.size())) + Little(std::uint16_t{12}));
  Open(0x04, bytes);
  EXPECT_EQ(table.GetFieldName(0), "a name of more than 11");
  EXPECT_EQ(Values(), "abc|1|-1|");
}

TEST_F(OtherValuesTest, Memos) {
  const auto block = [](std::string text) {
    text.resize((text.size() / 512 + 1) * 512, '\0');
    return text;
  };
  const std::string head(512, '\0'), longText(100000, 'x');
  const auto rows = [](const std::string& place) { return Table({{"M", 10, 'M'}}, {{place}}); };
  const auto read = [&](char version, const std::string& place) {
    Open(version, rows(place));
    return Values();
  };
  EXPECT_EQ(read('\x83', "         1"), "|");
  EXPECT_TRUE(Holds(report.Of(WarningKind::Memos)->text, "row 1: the memo file"));
  folder.Put("t.DBT", head + block("d\xE4isy\x8D\n chain\r\nend\x1A\x1A") + longText);
  report = {};
  EXPECT_EQ(read('\x83', "         1") + read('\x83', "         "), "däisy chain\r\nend||");
  EXPECT_EQ(read('\x83', "         2"), longText + "|");
  EXPECT_TRUE(report.Warnings().empty());
  const auto four = [](std::int32_t length) { return std::string("\xFF\xFF\x08\0", 4) + Little(length); };
  folder.Put("t.DBT", head + block(four(13) + "daisy and") + block(four(2000000000)) + block(four(-3)));
  EXPECT_EQ(read('\x8B', "         1") + read('\x8B', "2") + read('\x8B', "3") + read('\x8B', "99"), "daisy||||");
  EXPECT_EQ(read('\x8B', "-1") + read('\x8B', "9999999999") + read('\x8B', "no"), "|||");
  EXPECT_EQ(report.Of(WarningKind::Memos)->count, 5);
  std::string foxPro =
      head + std::string(64, '\0') + Big(1) + Big(5) + "daisy" + std::string(51, '\0') + Big(0) + Big(5);
  foxPro[7] = 64;
  folder.Put("t.FPT", foxPro);
  const auto placed = [&](std::int32_t number) {
    Open(0x30, Table({{"M", 4, 'M'}}, {{Little(number)}}));
    return Values();
  };
  EXPECT_EQ(placed(9) + placed(10) + placed(-1) + placed(0), "daisy||||") << "a picture is no text";
  foxPro[7] = 0;
  folder.Put("t.FPT",
             foxPro + std::string(MemoFile::kLongest + 9, 'y').replace(0, 8, Big(1) + Big(MemoFile::kLongest + 1)));
  EXPECT_EQ(placed(static_cast<std::int32_t>(foxPro.size())).size(), MemoFile::kLongest + 1)
      << "cut, and the bar behind";
}

}  // namespace
}  // namespace tesselink
