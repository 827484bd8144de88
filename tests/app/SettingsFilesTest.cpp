// SPDX-License-Identifier: MIT
// What the program remembers for a person, in files that earlier versions wrote and read too.
#include "app/SettingsFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "support/Support.h"

namespace tesselink {
namespace {

using Pairs = std::map<std::string, std::string>;

// As versions up to 0.1.0 wrote them, and as a person or another program may have put them there.
TEST(SettingsFiles, ReadWhatEarlierVersionsSaved) {
  const Folder folder;
  folder.Put("Tesselink.ini",
             "[Other]\nROAD=x\n\n[XRef]\n100%2525%2520%255Bx%255D%253D%253B=\nROAD=RD00001\nStra%25DFe=%E4%20b\n"
             "a%252Fb%255Cc=1\nroad=~2\ntilde%7E=%7E\n"
             "Stra%DFe 2=\"a;b, \\\"c\\\" \\x41\\n\"\n%U03A9mega = %CE%A9\n\xCE\xA9=5 %\n");
  SettingsFiles settings(folder.Path("."));
  EXPECT_EQ(settings.All("Tesselink", "XRef"), (Pairs{{"100% [x]=;", ""},
                                                      {"ROAD", "RD00001"},
                                                      {"Stra\xDF"
                                                       "e",
                                                       "\xE4 b"},
                                                      {"a/b\\c", "1"},
                                                      {"road", "~2"},
                                                      {"tilde~", "~"},
                                                      {"Stra\xDF"
                                                       "e 2",
                                                       "a;b, \"c\" A\n"},
                                                      {"\xCE\xA9mega", "\xCE\xA9"},
                                                      {"\xCE\xA9", "5 %"}}));
  EXPECT_EQ(settings.Get("Tesselink", "XRef", "100% [x]=;", "?"), "") << "an empty value is not an absent one";
  EXPECT_EQ(settings.Get("CDFMAP", "Locations", "$CDF.MAP", "?"), "?");
}

TEST(SettingsFiles, KeepTheFileButForTheValueThatIsSet) {
  const Folder folder;
  const std::string file = folder.Put(
      "T.ini", "; mine\n\n[Unknown%20section]\n; a note\nkey = @Variant(\\0\\0)\n\n[XRef]\nStra%DFe=1\nB=2\n");
  SettingsFiles settings(folder.Path("."));
  settings.Set("T", "XRef",
               "Stra\xDF"
               "e",
               "= [");
  settings.Set("T", "New", "$CDF.MAP", "/maps/$CDF.MAP");
  EXPECT_EQ(
      Folder::Get(folder.Path("T.ini")),
      "; mine\n\n\n[Unknown%20section]\n\n; a note\nkey=@Variant(\\0\\0)\n\n\n[XRef]\nStra%DFe=%3D%20%5B\nB=2\n\n\n"
      "[New]\n%2524CDF.MAP=%2Fmaps%2F%24CDF.MAP\n");
  EXPECT_EQ(settings.Problem(), "");
}

TEST(SettingsFiles, OfManyWritersAtOnceLoseNothing) {
  const Folder folder;
  constexpr int kWriters = 4, kEach = 25;
  std::vector<std::thread> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.emplace_back([&folder, writer] {
      SettingsFiles settings(folder.Path("new/folder"));
      for (int i = 0; i < kEach; ++i) {
        settings.Set("T", "S", std::to_string(writer) + " " + std::to_string(i), "x");
        // Whoever reads meanwhile finds a whole file.
        EXPECT_GT(settings.All("T", "S").size(), static_cast<std::size_t>(i));
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(SettingsFiles(folder.Path("new/folder")).All("T", "S").size(), std::size_t{kWriters} * std::size_t{kEach});
}

TEST(SettingsFiles, AreLeftAloneWhereTheyCannotBeRead) {
  const Folder folder;
  std::filesystem::create_directory(folder.Path("T.ini"));
  SettingsFiles settings(folder.Path("."));
  settings.Set("T", "S", "a", "b");
  EXPECT_NE(settings.Problem().find("T.ini"), std::string::npos) << settings.Problem();
  EXPECT_EQ(settings.Get("T", "S", "a", "?"), "?");
  SettingsFiles nowhere("");
  nowhere.Set("T", "S", "a", "b");
  EXPECT_EQ(nowhere.Get("T", "S", "a", "?"), "?");
}

}  // namespace
}  // namespace tesselink
