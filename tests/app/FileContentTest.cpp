// SPDX-License-Identifier: MIT
// What files are by their first bytes, whatever their names say.
#include "app/FileContent.h"

#include <gtest/gtest.h>

namespace tesselink {
namespace {

using namespace std::literals;

TEST(FileContent, IsToldByTheFirstBytes) {
  const std::string table = "\x03\x7c\x05\x01\x0d\0\0\0\x81\0\x3d\0"s + std::string(40, '\0');
  const std::pair<std::string_view, FileContent> cases[] = {
      {"", FileContent::Nothing},
      {"\r\n  0\r\nSECTION\r\n", FileContent::Drawing},
      {"999\nmade by hand\n0\nSECTION\n", FileContent::Drawing},
      {"\xef\xbb\xbf  0\nSECTION\n", FileContent::Drawing},
      {"AutoCAD Binary DXF\r\n\x1a\0"sv, FileContent::Drawing},
      {"0\n17\n", FileContent::Text},
      {"AC1032\0\0\0\0\0"sv, FileContent::Dwg},
      {"AC1032 is a release", FileContent::Text},
      {"PK\x03\x04\x14", FileContent::Zip},
      {"B01006001\r\nCU      462108.64", FileContent::Cdf},
      {"Before everything\r\n", FileContent::Text},
      {"a remark\r\n polygon , , , , ,BLACK\r\n", FileContent::Landmark},
      {"x,y\r\n1,2\r\n", FileContent::Text},
      {table, FileContent::Table},
      {"\x01\0\0\0\0\0"sv, FileContent::Unknown},
      {"\n{\"type\":\"FeatureCollection\"}", FileContent::GeoJson},
  };
  for (const auto& [bytes, content] : cases) EXPECT_EQ(ContentOf(bytes), content) << bytes;
}

// Each input format's own example, and what no format reads.
TEST(FileContent, TellsTheFormatsOfTheExamples) {
  const std::pair<const char*, std::string_view> cases[] = {
      {"wells.shp", "shp"},
      {"all-entities.dxf", "dxf"},
      {"quarter-section.asc", "asc"},
      {"quarter-section.cdf", "cdf"},
      {"overlay.mol", ""},
      {"wells.dbf", ""},
      {"README.md", ""},
      {"no-such-file", ""},
  };
  for (const auto& [name, key] : cases) {
    EXPECT_EQ(InputKeyOf(ContentOfFile(TESSELINK_SOURCE "/examples/" + std::string(name))), key) << name;
  }
}

}  // namespace
}  // namespace tesselink
