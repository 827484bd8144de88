// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "core/element/ColourNames.h"
#include "core/element/Extents.h"
#include "core/element/Justification.h"
#include "core/io/NameNumbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/LayerCodes.h"
#include "core/run/LineEnds.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(TextTest, PatternsAreMatched) {
  for (const auto& [text, pattern, fits] : {std::tuple{"Wells", "wELLS", true},
                                            {"Wells", "w*", true},
                                            {"Wells", "*l?", true},
                                            {"Wells", "*l", false},
                                            {"", "**", true},
                                            {"", "?", false},
                                            {"a*b*c", "a*c*", true},
                                            {"\xC3\x96l", "?l", true},
                                            {"well[1]", "well[1]", true},
                                            {"aaaaaaaaaaaaaaaaaaaaaaaaaaaab", "*a*a*a*a*a*a*a*a*c", false}}) {
    EXPECT_EQ(MatchesPattern(text, pattern), fits) << text << " " << pattern;
  }
}

TEST(TextTest, OnlyTheBlanksAtTheEndGo) {
  for (std::size_t letters = 0; letters < 20; ++letters) {
    for (std::size_t blanks = 0; blanks < 20; ++blanks) {
      const std::string kept = letters < 2 ? std::string(letters, '!') : " " + std::string(letters - 2, '!') + '\xA0';
      EXPECT_EQ(WithoutBlanksBehind(kept + std::string(blanks, ' ')), kept) << letters << " " << blanks;
    }
  }
}

TEST(TextTest, OneLetterThatDiffersIsFoundWhereverItIs) {
  for (std::size_t size = 0; size <= 20; ++size) {
    const std::string text(size, 'a');
    EXPECT_TRUE(IsSame(text, std::string(size, 'a')));
    EXPECT_FALSE(IsSame(text, text + 'a'));
    for (std::size_t i = 0; i < size; ++i) {
      std::string other = text;
      other[i] = 'b';
      EXPECT_FALSE(IsSame(text, other)) << size << " letters, number " << i;
    }
  }
}

TEST(ExtentsTest, ReachEveryVertexOfAChainOfAnyLength) {
  for (tEntity::Index count = 2; count <= 10; ++count) {
    for (tEntity::Index furthest = 0; furthest < count; ++furthest) {
      tEntity chain;
      for (tEntity::Index i = 0; i < count; ++i) {
        chain.x(i, i == furthest ? -7 : 5);
        chain.Y(i, i == furthest ? 9 : 5);
      }
      Extents box;
      box.Add(chain);
      EXPECT_EQ(std::tuple(-7.0, 5.0, 5.0, 9.0), std::tuple(box.minX, box.maxX, box.minY, box.maxY)) << count;
    }
  }
}

TEST(NameNumbers, StayWhateverNamesComeBetween) {
  NameNumbers numbers;
  std::vector<std::string> names{"", "A", "AB", "ABC"};
  for (int i = 0; i < 5000; ++i) names.push_back("LAYER " + std::to_string(i) + " WELLS");  // most share places
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(numbers.Of(names[i]), i) << names[i];
  }
}

TEST(Justification, LettersOfTheTwoHalves) {
  const std::pair<int, const char*> cases[] = {{0, "LB"}, {16, "LB"}, {50, "RT"}, {33, "CC"},
                                               {3, "LB"}, {64, "LB"}, {48, "LT"}};
  for (const auto& [code, letters] : cases) EXPECT_EQ(JustificationLetters(code), letters) << code;
}

TEST(ColourNames, TheNearestNameAndOfEqualOnesTheFirst) {
  EXPECT_EQ(ColourName(0xFFFFFF), "WHITE");
  EXPECT_EQ(ColourName(0x0000FF), "RED") << "red lies in the low byte";
  EXPECT_EQ(ColourName(0xFF0000), "BLUE");
  EXPECT_EQ(ColourName(255 | 12 << 8 | 203 << 16), "PINK");
  EXPECT_EQ(ColourName(30 | 30 << 8 | 30 << 16), "BLACK") << "as far from DARKGRAY";
  std::string names;
  for (const NamedColour& colour : kColourNames) names += std::string(colour.name) + " ";
  EXPECT_EQ(names,
            "BLACK BLUE DARKGRAY GREEN LIGHTGREEN LIGHTBLUE MAROON PURPLE BROWN LIGHTGRAY RED PINK YELLOW ORANGE "
            "SALMON VIOLET LIGHTYELLOW WHITE ");
  EXPECT_EQ(ColourDistance(0x010203, 0x030201), 8);
}

TEST(Paths, SplitAtEitherSeparator) {
  EXPECT_EQ(FolderOf("C:\\maps\\a.dxf"), "C:\\maps\\");
  EXPECT_EQ(FolderOf("/maps/x\\a.dxf"), "/maps/x\\");
  EXPECT_EQ(FolderOf("a.dxf"), "");
  EXPECT_EQ(Row(StripExtension("a.b.shp"), StripExtension("a")), "a.b a");
  EXPECT_EQ(Row(ExtensionOf("/x.d/PLAT.DXF"), ExtensionOf("/x.d/plat")), ".dxf ");
}

TEST(Paths, FilesUnderTwoSpellings) {
  const Folder folder;
  const std::string file = folder.Put("a.shp", "x");
  std::filesystem::create_symlink(file, folder.Path("link.shp"));
  for (const char* name : {"./a.shp", "link.shp"}) EXPECT_TRUE(SameFile(file, folder.Path(name))) << name;
  EXPECT_FALSE(SameFile(file, folder.Path("none.shp")));
  EXPECT_FALSE(FileExists(folder.Path("")));
  EXPECT_EQ(PartnerFile(file, "SHX"), "");
  for (const char* name : {"a.Shx", "a.shx", "a.SHX"}) {
    folder.Put(name, "");
    EXPECT_EQ(PartnerFile(file, "SHX"), folder.Path(name));
  }
}

TEST(LayerCodes, TheFirstEqualNameDecides) {
  LayerCodes codes;
  EXPECT_EQ(codes.CodeOf("RED"), "0900000");
  codes.Assign({"RED", "BLUE", "RED", "GREEN"}, {"CU00001", "", "CU00002"});
  EXPECT_EQ(codes.CodeOf("RED"), "CU00001");
  EXPECT_EQ(codes.CodeOf("BLUE"), "") << "matched to nothing";
  EXPECT_EQ(codes.CodeOf("Red"), "0900000") << "letter case counts";
  EXPECT_EQ(codes.CodeOf("GREEN"), "0900000") << "no code at that position";
}

TEST(LineEndsTest, OnlyTheFirstTwentyBytesAreLookedAtAndAllAreKept) {
  Rig rig;
  const std::string paired = rig.folder.Put("paired.asc", "LINE,RED\r\nXY,1,2\n");
  EXPECT_EQ(CheckLineEnds(paired, rig.person), paired);
  EXPECT_TRUE(rig.person.messages.empty());
  rig.person.answer = Answer::Cancel;
  EXPECT_EQ(CheckLineEnds(rig.folder.Put("long.asc", "METAFILE,A LONG NAME,M,1,0,0\r\n"), rig.person),
            "Operation Canceled");
  ASSERT_EQ(rig.person.messages.size(), 1U);
  const Message& question = rig.person.messages[0];
  EXPECT_EQ(question.title, "Problem with Input");
  EXPECT_EQ(question.buttons, MessageButtons::YesNoCancel);
  EXPECT_TRUE(
      question.text.starts_with("This file appears to come from a UNIX\r\nbased system. It does not have both the\r\n"
                                "carriage return and line feed caracters \r\n"));
  EXPECT_TRUE(
      question.text.ends_with("\r\n\r\nYes    : Overwrite the original with the fixed version \r\n"
                              "No     : Create a fixed version in a new location\r\n"
                              "Cancel : Abort the conversion\r\n"));
  rig.person.answer = Answer::No;
  const std::string bare = rig.folder.Put("plat.asc", "LINE,RED\nXY,1,2");
  EXPECT_EQ(CheckLineEnds(bare, rig.person), bare) << "no name chosen: left alone";
  rig.person.saveName = rig.folder.Path("copy.asc");
  EXPECT_EQ(CheckLineEnds(bare, rig.person), rig.person.saveName);
  EXPECT_EQ(Folder::Get(rig.person.saveName), "LINE,RED\r\nXY,1,2") << "also what stands behind the last line end";
}

}  // namespace
}  // namespace tesselink
