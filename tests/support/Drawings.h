// SPDX-License-Identifier: MIT
// Drawings as groups, and what the reader delivers of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "formats/dxf/DXFInFilter.h"
#include "support/Support.h"

namespace tesselink {

using Groups = std::vector<std::pair<int, std::string>>;

inline std::string Lines(const Groups& groups, const std::string& end = "\n") {
  std::string text;
  for (const auto& [code, value] : groups) text += " " + std::to_string(code) + end + value + end;
  return text;
}

inline Groups Section(const std::string& name, Groups groups) {
  groups.insert(groups.begin(), {{0, "SECTION"}, {2, name}});
  groups.push_back({0, "ENDSEC"});
  return groups;
}

inline Groups operator+(Groups a, const Groups& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

// "0 POINT|10 1" as groups.
inline Groups operator""_g(const char* text, std::size_t length) {
  Groups groups;
  for (std::string_view rest(text, length); !rest.empty();) {
    const std::string_view group = rest.substr(0, rest.find('|'));
    rest.remove_prefix(std::min(group.size() + 1, rest.size()));
    groups.emplace_back(std::stoi(std::string(group)), group.substr(group.find(' ') + 1));
  }
  return groups;
}

inline const Groups kEnd{{0, "EOF"}};

class DrawingTest : public testing::Test {
 protected:
  DrawingTest() { rig.context.options.programFolder = TESSELINK_DATA_FOLDER; }

  std::vector<tEntity> ReadBytes(const std::string& bytes) {
    reader = std::make_unique<DXFInFilter>(rig.context);
    reader->filename(rig.folder.Put("a.dxf", bytes));
    return rig.ReadAll(*reader, 10000);
  }
  std::vector<tEntity> ReadGroups(const Groups& groups) { return ReadBytes(Lines(groups)); }
  std::vector<tEntity> Read(const Groups& entities) { return ReadGroups(Section("ENTITIES", entities) + kEnd); }
  tEntity ReadOne(const Groups& entity) {
    const auto elements = Read(entity);
    EXPECT_EQ(elements.size(), 1U);
    return elements.empty() ? tEntity() : elements[0];
  }
  std::string WarningText(const std::string& kind) {
    const Warning* warning = rig.WarningOf(kind);
    return warning == nullptr ? "" : warning->text.substr(warning->text.find("a.dxf"));
  }
  std::string Failure(const std::string& bytes) {
    const std::string error = ErrorOf([&] { ReadBytes(bytes); });
    return error.substr(std::min(error.size(), error.find("a.dxf")));
  }

  Rig rig;
  std::unique_ptr<DXFInFilter> reader;
};

}  // namespace tesselink
