// SPDX-License-Identifier: MIT
// Layer names and entity types: what the matching dialog and the command line share.
#include "formats/cdf/LayerMatching.h"

#include <gtest/gtest.h>

#include "support/Lookups.h"
#include "support/Support.h"

namespace tesselink {
namespace {

using Texts = std::vector<std::string>;

class LayerMatchingTest : public testing::Test {
 protected:
  Rig rig;

  // A matching over the types, whose codes are numbered unless they are given.
  LayerMatching Over(const std::vector<std::pair<std::string, std::string>>& types) {
    rig.context.options.own.Set("cdf-map", rig.folder.Put("$CDF.MAP", EntityTypes(types)));
    return LayerMatching(rig.context);
  }
  LayerMatching OverNames(const Texts& names) {
    std::vector<std::pair<std::string, std::string>> types;
    for (const std::string& name : names) types.emplace_back(std::to_string(1000001 + types.size()), name);
    return Over(types);
  }
  static Texts Types(const LayerMatching& matching) {
    Texts types;
    for (const auto& row : matching.Rows()) types.push_back(row.type);
    return types;
  }
  Texts Guessed(const Texts& names, const Texts& layers) {
    LayerMatching matching = OverNames(names);
    matching.Create(layers);
    matching.SmartAssign();
    return Types(matching);
  }
};

TEST_F(LayerMatchingTest, RowsEndAtFiftyUnderTheMessageThatSaysMore) {
  LayerMatching matching = OverNames({"Road"});
  matching.Create(Texts(50, "L"));
  EXPECT_EQ(matching.Rows().size(), 50U);
  EXPECT_TRUE(rig.person.messages.empty());
  EXPECT_EQ(matching.Heading(), "DXF Layer Name");

  matching.Create(Texts(51, "L"), "Landmark ASCII File Layer");
  EXPECT_EQ(matching.Rows().size(), 50U);
  EXPECT_EQ(matching.HandBack().size(), 50U) << "layers beyond have no entry";
  ASSERT_EQ(rig.person.messages.size(), 1U);
  EXPECT_EQ(rig.person.messages[0].text,
            "More than 50 layers were found in the source file, only the first 150 will be assigned entity types");
  EXPECT_EQ(rig.person.messages[0].icon, MessageIcon::Information);
  EXPECT_EQ(matching.Heading(), "Landmark ASCII File Layer");

  matching.Create(Texts(51, "L"), "", "", false, LayerMatching::kNoLimit);
  EXPECT_EQ(matching.Rows().size(), 51U);
  EXPECT_EQ(rig.person.messages.size(), 1U) << "no message without a limit";
}

TEST_F(LayerMatchingTest, AssignTypesGoesByPosition) {
  LayerMatching matching = OverNames({"Road", "River", "Fence"});
  matching.Create({"a", "b", "c", "d"});
  matching.Choose(1, "typed by hand");
  matching.AssignTypes();
  EXPECT_EQ(Types(matching), (Texts{"Road", "typed by hand", "Fence", ""})) << "the fourth lies beyond the list";
  EXPECT_EQ(matching.HandBack(), (Texts{"1000001", "", "1000003", ""}));
}

TEST_F(LayerMatchingTest, ElevationsBecomeContours) {
  const std::vector<std::pair<std::string, std::string>> names{
      {"100 METRES ABOVE MEAN SEA LEVEL", "Contour 300 Ft."},
      {"152.4 METERS BELOW SEA LEVEL", "Contour 500 Ft."},
      {"15.24 metres below mean sea level", "Contour 0 Ft."},  // 49.999 ft
      {"-100 METERS BELOW MEAN SEA LEVEL", "Contour -300 Ft."},
      {"100 METERS ABOVE MEAN SEA LEVEL", "100 METERS ABOVE MEAN SEA LEVEL"},
      {"CA 100 METRES ABOVE MEAN SEA LEVEL", "CA 100 METRES ABOVE MEAN SEA LEVEL"},
      {"1e308 METERS BELOW SEA LEVEL", "1e308 METERS BELOW SEA LEVEL"},
  };
  for (const auto& [layer, name] : names) EXPECT_EQ(NameToMatch(layer), name);
  EXPECT_EQ(Guessed({"Contour 100 Ft.", "Contour 300 Ft.", "Contour 1300 Ft."}, {names[0].first}),
            Texts{"Contour 300 Ft."});
}

TEST_F(LayerMatchingTest, SmartAssignPrefersWholeNamesThenTheLongestBeginning) {
  const Texts types{"Road, paved", "Rail", "Pipeline", "Gravel road", "Railway", "River", "100 m line"};
  const std::vector<std::pair<std::string, std::string>> guesses{
      {"road", "Gravel road"},       // the last description that contains the whole name
      {"ROADS", "Road, paved"},      // the longest beginning; among equals the first
      {"Main railways", "Railway"},  // any word counts, the longer beginning wins
      {"my_river", ""},              // an underscore does not separate words, and no type begins with "m"
      {"ri ver", "River"},           // of "ri" and "v" the former
      {"100", "100 m line"},         // a number by its beginning only
      {"00", ""},                    // contained, but a number
      {"xyz", ""},
      {"", ""},  // the empty last entry contains the empty name
      {"  pipe", "Pipeline"},
  };
  for (const auto& [layer, type] : guesses) EXPECT_EQ(Guessed(types, {layer}), Texts{type}) << layer;

  LayerMatching matching = OverNames(types);
  matching.Create({"xyz", "road"});
  matching.Choose(0, "kept");
  matching.Choose(1, "replaced");
  matching.SmartAssign();
  EXPECT_EQ(Types(matching), (Texts{"kept", "Gravel road"}));
  EXPECT_EQ(Guessed({}, {"road"}), Texts{""}) << "an empty map matches nothing";
}

TEST_F(LayerMatchingTest, LettersBeyondAsciiCompareInCapitalsOfOneEncoding) {
  // The list is in Windows-1252, drawings give UTF-8, tables of the classic dialect their own bytes.
  const Texts types{"Rivi\xE8re", "\xC9tang", "Et", "\x8Cuvre \x9Cuvre", "\xFF\xD7\xF7"};
  const std::vector<std::pair<std::string, std::string>> guesses{
      {"Rivi\u00E8re", "Rivi\u00E8re"},
      {"RIVI\u00C8RE", "Rivi\u00E8re"},
      {"RIVI\xC8RE", "Rivi\u00E8re"},
      {"Riviere", "Rivi\u00E8re"},  // by its beginning
      {"\u00E9", "\u00C9tang"},
      {"\u00E9x etx", "Et"},  // 1 letter, though 2 bytes, and 2 letters
      {"\u0153UVRE", "\u0152uvre \u0153uvre"},
      {"\u0178\u00D7\u00F7", "\u00FF\u00D7\u00F7"},
      {"\u00F7", "\u00FF\u00D7\u00F7"},
      {"\u0420\u0435\u043A\u0430", ""},
      {"\u0113", ""},
  };
  for (const auto& [layer, type] : guesses) EXPECT_EQ(Guessed(types, {layer}), Texts{type}) << layer;
  LayerMatching matching = OverNames(types);
  matching.Create({guesses[1].first});
  EXPECT_EQ(matching.Types()[0], "Rivi\u00E8re");
  matching.SmartAssign();
  EXPECT_EQ(matching.HandBack()[0], "1000001");
}

TEST_F(LayerMatchingTest, PairsAreRememberedUnderTheirName) {
  const std::vector<std::pair<std::string, std::string>> types{
      {"0900000", "Unassociated"}, {"RD00001", "Road"}, {"RD00002", "Road"}, {"WL00001", "Well, gas"}, {"WL", "Well"}};
  LayerMatching matching = Over(types);
  matching.Create({"ROADS", "WELLS", "OTHER"}, "", "Tesselink", true);
  EXPECT_EQ(matching.UnReffed(), 3);
  matching.Choose(0, "Road");
  matching.Choose(1, "Well");
  EXPECT_EQ(matching.HandBack(), (Texts{"RD00001", "WL", ""})) << "the first entry of a description";
  EXPECT_EQ(rig.settings.Get("Tesselink", "XRef", "WELLS", ""), "WL");
  EXPECT_EQ(rig.settings.Get("Tesselink", "XRef", "OTHER", "?"), "");

  LayerMatching again = Over(types);
  again.Create({"OTHER", "ROADS", "NEW", "WELLS"}, "", "Tesselink", true);
  EXPECT_EQ(Types(again), (Texts{"", "Road", "", "Well"})) << "a layer remembered without a type stays without";
  EXPECT_EQ(again.UnReffed(), 2);

  EXPECT_EQ(again.HandBack(), (Texts{"", "RD00001", "", "WL"})) << "that code, and no longer one that begins with it";
  rig.settings.Set("Tesselink", "XRef", "WELLS", "WL0000?");
  again.Create({"WELLS"}, "", "Tesselink");
  EXPECT_EQ(Types(again), Texts{""}) << "a code is no pattern";

  LayerMatching nameless = Over(types);
  nameless.Create({"SECRET"});
  nameless.Choose(0, "Road");
  nameless.HandBack();
  EXPECT_EQ(rig.settings.All("Tesselink", "XRef").count("SECRET"), 0U);
  EXPECT_EQ(rig.settings.All("", "XRef").size(), 0U);
}

}  // namespace
}  // namespace tesselink
