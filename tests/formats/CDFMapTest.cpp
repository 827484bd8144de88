// SPDX-License-Identifier: MIT
// Lookup files of another package: where they are found, what their records hold, and what an entity code stands for.
#include "formats/cdf/CDFMap.h"

#include <gtest/gtest.h>

#include "formats/cdf/CodeTables.h"
#include "formats/grid/LNGSLMap.h"
#include "support/Lookups.h"
#include "support/Support.h"

namespace tesselink {
namespace {

// A list of so many entity types tells which of several files was opened.
std::string Types(int count) {
  std::string records;
  for (int i = 1; i <= count; ++i) records += TypeRecord("CU0000" + std::to_string(i), "Type " + std::to_string(i));
  return records;
}

class LookupFileTest : public testing::Test {
 protected:
  Rig rig;
  std::string registered;
  std::vector<std::string> keys;

  // The number of entity types in the file that is found.
  int Found() {
    CDFMap map(rig.context, [this](const std::string& key) {
      keys.push_back(key);
      return registered;
    });
    map.Create();
    return map.Count();
  }
  std::string InFolder(const std::string& name, int types) {
    std::filesystem::create_directory(rig.folder.Path(name));
    return rig.folder.Put(name + "/$CDF.MAP", Types(types));
  }
  std::string Remembered() { return rig.settings.Get("CDFMAP", "Locations", "$CDF.MAP", ""); }
};

TEST_F(LookupFileTest, TheOrderOfThePlaces) {
  rig.context.options.programFolder = rig.folder.Path("program");
  const std::string inProgram = InFolder("program", 1);
  EXPECT_EQ(Found(), 1);
  EXPECT_EQ(Remembered(), inProgram);
  rig.settings.Set("CDFMAP", "Locations", "$CDF.MAP", InFolder("remembered", 2));
  EXPECT_EQ(Found(), 2);
  std::filesystem::current_path(rig.folder.Path(""));  // a registered path is cut after 50 characters
  InFolder("p", 3);
  registered = "  p/1234567890";
  registered += std::string("\0rest", 5);
  EXPECT_EQ(Found(), 3) << "blanks and what follows a NUL are no part of it, and the library's name is 10 characters";
  EXPECT_EQ(keys.back(), "TypeLib\\{4A7DDD20-9A54-11D0-8F33-0060973D1220}\\1.0\\0\\win32");
  for (const std::string& useless : {std::string("1234567890"), std::string("p"), "p/" + std::string(60, 'x')}) {
    registered = useless;
    EXPECT_EQ(Found(), 2) << useless;
  }
  rig.context.options.own.Set("cdf-map", InFolder("given", 4));
  EXPECT_EQ(Found(), 4);
  EXPECT_EQ(Remembered(), rig.folder.Path("remembered/$CDF.MAP"));
  EXPECT_TRUE(rig.person.textQuestions.empty());
}

TEST_F(LookupFileTest, IsAskedForUntilItExists) {
  rig.settings.Set("CDFMAP", "Locations", "$CDF.MAP", rig.folder.Path("gone/$CDF.MAP"));
  rig.context.options.programFolder = rig.folder.Path("nowhere");
  std::filesystem::create_directories(rig.folder.Path("folder/$CDF.MAP"));
  const std::string there = InFolder("there", 5);
  rig.person.textAnswers = {"", rig.folder.Path("gone/$cdf.map"), rig.folder.Path("folder"), rig.folder.Path("there")};
  EXPECT_EQ(Found(), 5);
  ASSERT_EQ(rig.person.textQuestions.size(), 4U);
  EXPECT_EQ(rig.person.textQuestions[0].title, "Error Finding $CDF.MAP");
  EXPECT_EQ(rig.person.textQuestions[0].prompt,
            "Could Not locate $CDF.MAP\r\n\r\nPlease type it's location in the box below");
  const std::string remembered = rig.folder.Path("gone/$CDF.MAP"), none = ": does not exist";
  const std::string reasons[] = {remembered + none + "\n" + rig.folder.Path("nowhere/$CDF.MAP") + none,
                                 "Nothing was named; the conversion cannot go on without $CDF.MAP",
                                 rig.folder.Path("gone/$cdf.map") + none};
  for (std::size_t i : {0U, 1U, 2U}) EXPECT_EQ(rig.person.textQuestions[i].reasons, reasons[i]);
  EXPECT_EQ(Remembered(), there);
  const std::string other = rig.folder.Put("other$cdf.map", Types(6));
  rig.settings.Set("CDFMAP", "Locations", "$CDF.MAP", "");
  rig.person.textAnswers = {other};
  EXPECT_EQ(Found(), 6) << "a path that ends with the name, in any letter case, is taken as it stands";
  rig.context.options.own.Set("cdf-map", rig.folder.Path("folder/$CDF.MAP"));
  EXPECT_TRUE(Holds(ErrorOf([&] { Found(); }), "folder/$CDF.MAP: is a folder"));
}

TEST_F(LookupFileTest, OddSizesAreRounded) {
  const std::pair<std::size_t, int> sizes[] = {{0, 0},   {33, 0},       {34, 1},      {100, 1},
                                               {101, 2}, {134 + 33, 2}, {134 + 34, 3}};
  for (const auto& [size, count] : sizes) {
    rig.context.options.own.Set("cdf-map", rig.folder.Put("map", Types(3).substr(0, size)));
    EXPECT_EQ(Found(), count) << size;
  }
  CDFMap map(rig.context);
  map.Create();
  EXPECT_EQ(map.Code(3) + "," + map.Description(3), "CU00003,Type 3") << "34 bytes of a record hold its code";
  EXPECT_EQ(map.Code(4) + map.Description(0), "");
  rig.context.options.own.Set("cdf-map", rig.folder.Put("large", std::string(std::size_t{67} * 40000, '\0')));
  EXPECT_EQ(Found(), 32767);
  CDFMap closed(rig.context);
  EXPECT_EQ(closed.Count(), 0);
  EXPECT_EQ(closed.Code(1) + closed.Description(1), "");
  EXPECT_EQ(closed.SearchDesc(""), 0);
}

class CDFMapTest : public testing::Test {
 protected:
  CDFMapTest() {
    rig.context.options.own.Set(
        "cdf-map", rig.folder.Put("map", TypeRecord("0900000", "Unassociated") + TypeRecord("CU00001", "Creeks") +
                                             TypeRecord("CU00002", "creeks") + TypeRecord("AB", "Short") +
                                             TypeRecord("C#[1]*?", "Odd")));
    map = std::make_unique<CDFMap>(rig.context);
    map->Create();
  }
  Rig rig;
  std::unique_ptr<CDFMap> map;
};

TEST_F(CDFMapTest, DescriptionsAndCodes) {
  EXPECT_EQ(Row(map->Count(), map->Code(2), map->Description(2), map->Code(4)), "5 CU00001 Creeks AB");
  EXPECT_EQ(map->SearchDesc("creeks"), 3);
  EXPECT_EQ(map->SearchDesc("Creeks "), 0);
  EXPECT_EQ(map->SearchDesc("creeks"), 3);
  const std::tuple<const char*, int, const char*> searches[] = {
      {" CU ", 2, "CU*"},        {"CU00002", 3, "CU00002"},   {"AB", 4, "AB*"},
      {"cu", 0, "cu*"},          {"CU0000?", 2, "CU0000?"},   {"CU0000#", 2, "CU0000#"},
      {"##00000", 1, "##00000"}, {"[A-B]*", 4, "[A-B]**"},    {"[!0C]*     ", 4, "[!0C]**"},
      {"*2*", 3, "*2**"},        {"C[#][[]*", 5, "C[#][[]*"}, {"", 1, "*"},
  };
  for (const auto& [pattern, number, afterwards] : searches) {
    std::string text = pattern;
    EXPECT_EQ(map->SearchCode(text), number) << pattern;
    EXPECT_EQ(text, afterwards);
    EXPECT_EQ(map->SearchCode(text), number) << "again";
  }
}

TEST_F(CDFMapTest, PatternsThatTryEverythingEnd) {
  EXPECT_FALSE(FitsPattern(std::string(3000, 'a'), "*a*a*a*a*a*a*a*a*a*b"));
  EXPECT_TRUE(FitsPattern("abc", "**"));
  EXPECT_FALSE(FitsPattern("a", "[b"));
  EXPECT_TRUE(FitsPattern("[", "["));
  EXPECT_TRUE(FitsPattern("C", "[A-C]")) << "the end of a range is within it";
  EXPECT_FALSE(FitsPattern("", "?"));
}

TEST(LNGSLMapTest, DescriptionsAndColours) {
  Rig rig;
  rig.context.options.own.Set(
      "lngsl", rig.folder.Put("colours", ColourRecord("Creeks", 5, -2) + ColourRecord("Creeks", 6, 7) +
                                             ColourRecord(std::string(40, 'x'), 256, 8) + std::string(63, 'y')));
  LNGSLMap map(rig.context);
  EXPECT_EQ(map.Count(), 0);
  map.Create();
  EXPECT_EQ(map.Count(), 4) << "3.5 records";
  EXPECT_EQ(Row(map.SearchDesc("Creeks"), map.LineColour(1), map.TextColour(1)), "1 5 -2");
  EXPECT_EQ(Row(map.SearchDesc(std::string(40, 'x')), map.LineColour(3), map.SearchDesc("creeks")), "3 256 0");
  rig.context.options.own = {};
  rig.context.options.programFolder = rig.folder.Path("");
  EXPECT_TRUE(Holds(ErrorOf([&] { LNGSLMap(rig.context).Create(); }), "Error Finding $LNGSL.DAT"));
  rig.settings.Set("LNGSL", "Locations", "$LNGSL.DAT", rig.folder.Path("colours"));
  LNGSLMap remembered(rig.context);
  remembered.Create();
  EXPECT_EQ(remembered.Count(), 4);
}

TEST(CodeTablesTest, MissingListsAreOneWarningEach) {
  Rig rig;
  CodeTables tables(rig.context);
  tEntity entity;
  for (const char* code : {"CU00001", "CU00001", "0900000", ""}) {
    entity.CDFCode = code;
    tables.Fill(entity, false);
    EXPECT_EQ(entity.Layer, "Unassociated");
  }
  ASSERT_EQ(rig.report.Warnings().size(), 2U);
  for (const Warning& warning : rig.report.Warnings()) EXPECT_EQ(warning.count, 1) << warning.kind;
}

TEST(CodeTablesTest, AnElementWithACodeGetsItsLayerAndColours) {
  Rig rig;
  rig.context.options.own.Set("cdf-map",
                              rig.folder.Put("map", TypeRecord("CU00001", "Creeks") + TypeRecord("RD", "Roads") +
                                                        TypeRecord("FO", "For\xEAts")));
  rig.context.options.own.Set("lngsl", rig.folder.Put("colours", ColourRecord("Creeks", 1, 300)));
  rig.folder.Put("ACADTBL.TBL", std::string(6, '\0') + "\x01\x02\x03");
  rig.context.options.programFolder = rig.folder.Path("");
  const LayerFiller fill = FillerFromCodeTables();
  const auto filled = [&](const char* code, std::int16_t kind, bool utf8 = false) {
    tEntity entity;
    entity.CDFCode = code;
    entity.bType = kind;
    entity.Colour = entity.RGB = 9;
    fill(entity, rig.context, {.isUtf8 = utf8});
    return entity.Layer + " " + std::to_string(entity.Colour) + " " + std::to_string(entity.RGB);
  };
  EXPECT_EQ(filled("CU00001", kPolyline), "Creeks 1 66051");
  EXPECT_EQ(filled("CU00001", kText), "Creeks 300 0") << "no number of the colour table";
  EXPECT_EQ(filled("RD", kPolyline), "Roads 9 9");
  EXPECT_EQ(filled("XX", kPolyline), "Unassociated 9 9");
  EXPECT_EQ(filled("FO", kPolyline), "For\xEAts 9 9") << "as the element's other texts: bytes of its file";
  EXPECT_EQ(filled("FO", kPolyline, true), "For\u00EAts 9 9");
  EXPECT_TRUE(rig.report.Warnings().empty());
}

}  // namespace
}  // namespace tesselink
