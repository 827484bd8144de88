// SPDX-License-Identifier: MIT
// What every reader and every writer owes its caller, whatever its format: the order of calls, and files that cannot be
// opened or made.
#include <gtest/gtest.h>

#include <set>

#include "formats/Formats.h"
#include "formats/dxf/DXFOutFilter.h"
#include "formats/shape/DBFOutFilter.h"
#include "formats/shape/ESRIOutFilt.h"
#include "support/Support.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

std::set<std::string> FilesBelow(const std::string& folder) {
  std::set<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) files.insert(entry.path().string());
  return files;
}

// The first example that an extension has.
std::string Example(const std::string& extension) {
  for (const std::string& file : FilesBelow(TESSELINK_SOURCE "/examples")) {
    if (file.ends_with(extension)) return file;
  }
  return {};
}

class ContractsTest : public testing::TestWithParam<Dialect> {
 protected:
  ContractsTest() {
    rig.context.options.dialect = GetParam();
    rig.context.options.programFolder = rig.context.options.moduleFolder = TESSELINK_DATA_FOLDER;
  }
  // Paths below the folder at which no file can be opened or made.
  std::vector<std::string> BadPaths(const std::string& extension) {
    fs::create_directories(rig.folder.Path("folder" + extension));
    return {rig.folder.Path("folder" + extension), rig.folder.Path("absent/a" + extension),
            rig.folder.Path(std::string(300, 'n') + extension), rig.folder.Put("file", "") + "/a" + extension};
  }
  bool NobodyWasAsked() const {
    const ScriptedInteraction& p = rig.person;
    return p.messages.empty() && p.calls.empty() && p.textQuestions.empty() && p.choiceQuestions.empty() &&
           p.fieldQuestions == 0;
  }
  Rig rig;
};

TEST_P(ContractsTest, WritersWithoutAFile) {
  for (const OutputFormat& format : AllFormats().Outputs()) {
    SCOPED_TRACE(format.entry);
    const auto writer = format.create(rig.context);
    tEntity entity;
    entity.bType = kPolyline;
    entity.x(1, 5);
    entity.Y(1, 5);
    const auto refused = [&] {
      const std::string words = WordsOf([&] { writer->WriteEntity(entity); });
      const char* const source = format.className == "CDFOutFilter" ? "GetNextEntity" : "WriteEntity";
      EXPECT_EQ(words, std::string("File Name not yet entered (") + source + ")");
    };
    refused();
    const std::string good = rig.folder.Path("good" + format.Extension());
    for (const std::string& bad : BadPaths(format.Extension())) {
      writer->filename(good);
      const auto before = FilesBelow(rig.folder.Path(""));
      EXPECT_TRUE(WordsOf([&] { writer->filename(bad); }).starts_with(bad)) << "told at once, by name";
      EXPECT_EQ(writer->filename(), "");
      refused();
      auto after = FilesBelow(rig.folder.Path(""));
      after.insert(good);  // which releasing it may have made
      EXPECT_TRUE(std::includes(after.begin(), after.end(), before.begin(), before.end()));
      for (const std::string& file : after) EXPECT_TRUE(before.contains(file) || file == good) << file;
    }
    rig.person = {};
    writer->filename(good);
    EXPECT_TRUE(NobodyWasAsked());
    writer->Release();
    EXPECT_TRUE(fs::exists(good));
    refused();
  }
}

TEST_P(ContractsTest, WhatIsThereIsKeptUntilSomethingTakesItsPlace) {
  const std::string old = rig.folder.Put("old.dxf", "old");
  DXFOutFilter drawing(rig.context);
  drawing.filename(old);
  EXPECT_EQ(Folder::Get(old), "old");
  drawing.Abandon();
  EXPECT_EQ(Folder::Get(old), "old");
}

TEST_P(ContractsTest, OtherMembersOfWritersWithoutAFile) {
  DBFOutFilter table(GetParam());
  DXFOutFilter drawing(rig.context);
  ESRIOutFilt shapes(rig.context);
  const std::vector<std::pair<std::string, std::function<void()>>> calls{
      {"AddField", [&] { table.AddField("NAME", 5, "C"); }},
      {"AddRecord", [&] { table.AddRecord("a"); }},
      {"WriteHead", [&] { drawing.WriteHead(); }},
      {"Merge", [&] { drawing.Merge(rig.folder.Put("a", "a"), rig.folder.Put("b", "b")); }},
      {"WriteHead", [&] { shapes.WriteHead(); }},
  };
  const auto refused = [&] {
    for (const auto& [member, call] : calls) EXPECT_EQ(WordsOf(call), "File Name not yet entered (" + member + ")");
  };
  const auto open = [&](const std::string& folder) {
    const auto table_ = WordsOf([&] { table.filename(rig.folder.Path(folder + "t.dbf")); });
    const auto drawing_ = WordsOf([&] { drawing.filename(rig.folder.Path(folder + "d.dxf")); });
    return table_ + drawing_ + WordsOf([&] { shapes.filename(rig.folder.Path(folder + "s.shp")); });
  };
  refused();
  EXPECT_EQ(open(""), "no errorno errorno error");
  EXPECT_EQ(open("absent/").find("no error"), std::string::npos);
  refused();
  open("");
  table.Release();
  drawing.Release();
  shapes.Release();
  refused();
}

TEST_P(ContractsTest, ReadersWithoutAFile) {
  for (const InputFormat& format : AllFormats().Inputs()) {
    SCOPED_TRACE(format.entry);
    const auto reader = format.create(rig.context);
    reader->Layered = false;
    tEntity entity;
    const auto expectClosed = [&] {
      EXPECT_EQ(reader->FileNumber(), 0);
      EXPECT_TRUE(reader->Eof());
      EXPECT_FALSE(reader->Stalled());
      EXPECT_EQ(reader->Progress(), 0);
      EXPECT_EQ(reader->Loc(), 0);
      EXPECT_TRUE(reader->Layers().empty());
      EXPECT_FALSE(reader->GetNextEntity(entity));
    };
    expectClosed();
    const std::string example = Example(format.Extension());
    ASSERT_NE(example, "");
    std::vector<std::string> bad = BadPaths(format.Extension());
    bad.push_back(rig.folder.Put("binary" + format.Extension(), std::string(200, '\1')));
    for (const std::string& path : bad) {
      const bool opened = WordsOf([&] { reader->filename(example); }) == "no error";
      if (opened) reader->GetNextEntity(entity);
      if (!opened) expectClosed();
      const int number = reader->FileNumber();
      if (WordsOf([&] { reader->filename(path); }) != "no error") {
        expectClosed();
      } else if (reader->filename() == example) {
        EXPECT_EQ(reader->FileNumber(), number) << "a reader that passes over " << path << " goes on with what it has";
      } else {
        EXPECT_EQ(reader->filename(), path);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Dialects, ContractsTest, testing::Values(Dialect::Classic, Dialect::Standard),
                         [](const auto& dialect) {
                           return dialect.param == Dialect::Classic ? "Classic" : "Standard";
                         });

}  // namespace
}  // namespace tesselink
