// GeoJSON: geometries and properties.
#include <gtest/gtest.h>

#include "core/run/AttributeTable.h"
#include "formats/geojson/GeoJSONOutFilter.h"
#include "support/Support.h"

namespace tesselink {
namespace {

struct Field {
  std::string name;
  char type;
  int length, decimals;
};

// An input with a table, whose rows are given.
class Source final : public InputFilter, public AttributeTable {
 public:
  Source(const FilterContext& context, std::vector<Field> fields, std::vector<std::vector<std::string>> rows)
      : InputFilter(context), fields_(std::move(fields)), rows_(std::move(rows)) {
    Layered = false;
  }
  ElementForm form;

  int FileNumber() const override { return 0; }
  std::int64_t Loc() const override { return 0; }
  double Progress() const override { return 0; }
  bool Eof() const override { return true; }
  AttributeTable* Attributes() override { return this; }
  ElementForm Form() const override { return form; }
  int NumFields() const override { return static_cast<int>(fields_.size()) - 1; }
  std::int64_t NumRecs() const override { return std::ssize(rows_); }
  std::string GetFieldName(int field) const override { return At(field).name; }
  char FieldType(int field) const override { return At(field).type; }
  int FieldLength(int field) const override { return At(field).length; }
  int FieldDecimals(int field) const override { return At(field).decimals; }
  int GetFieldNum(std::string_view) const override { return -1; }
  std::string_view GetFieldData(int field, std::int64_t record) override {
    return rows_.at(static_cast<std::size_t>(record)).at(static_cast<std::size_t>(field));
  }

 private:
  void Open(const std::string&) override {}
  bool Next(tEntity&) override { return false; }
  const Field& At(int field) const { return fields_.at(static_cast<std::size_t>(field)); }
  std::vector<Field> fields_;
  std::vector<std::vector<std::string>> rows_;
};

// Squares of a size about a centre, clockwise or the other way, as one element.
struct Square {
  double x, y, half;
  bool isClockwise;
};

tEntity Area(const std::vector<Square>& squares) {
  tEntity area = Element(kPolyline, {});
  tEntity::Index i = 0;
  for (const auto& [x, y, half, isClockwise] : squares) {
    if (i > 0) area.Parts.push_back(i);
    const double turn = isClockwise ? half : -half;
    for (const auto& [dx, dy] : {std::pair{-half, -half}, {-turn, turn}, {half, half}, {turn, -turn}, {-half, -half}}) {
      area.x(i, x + dx);
      area.Y(i++, y + dy);
    }
  }
  area.IsArea = true;
  return area;
}

tEntity OfRecord(tEntity entity, std::int64_t record) {
  entity.Record = record;
  return entity;
}

class GeoJSONTest : public testing::Test {
 protected:
  Rig rig;
  GeoJSONTest() { rig.context.options.dialect = Dialect::Standard; }

  // What is written for an element, from a mark in it on.
  std::string Feature(tEntity entity, InputFilter* source = nullptr, const std::string& from = "\"coordinates\":") {
    GeoJSONOutFilter writer(rig.context, GeoJSONLayout::Lines);
    writer.filename(rig.folder.Path("a.geojsonl"));
    if (source != nullptr) writer.SourceOpened(*source);
    if (writer.WriteEntity(entity) == WriteResult::Skipped) return "skipped";
    writer.Release();
    const std::string text = Folder::Get(rig.folder.Path("a.geojsonl"));
    return text.substr(text.find(from) + from.size());
  }
};

TEST_F(GeoJSONTest, Geometries) {
  tEntity closed = Element(kPolyline, {{0, 0}, {4, 0}, {4, 3}});
  closed.Closed = true;
  tEntity parts = Element(kPolyline, {{0, 0}, {1, 1}, {5, 5}, {6, 1e-9}, {7, 1e20}});
  parts.Parts = {2, 4};
  tEntity label = Element(kText, {{0.1, -0.0}});
  tEntity wild = Element(kLine, {{0, 0}, {1, std::numeric_limits<double>::infinity()}});
  EXPECT_EQ(Feature(closed), "[[0,0],[4,0],[4,3],[0,0]]}}\n");
  EXPECT_EQ(Feature(Element(kPolyline, {{1, 2, 0}, {123456789.123, 100000, 0.5}})),
            "[[1,2,0],[123456789.123,100000,0.5]]}}\n");
  EXPECT_EQ(Feature(parts), "[[[0,0],[1,1]],[[5,5],[6,1e-09]],[[7,1e+20],[7,1e+20]]]}}\n");
  EXPECT_EQ(Feature(Element(kPoint, {{1, 2}, {3, 4}})), "[[1,2],[3,4]]}}\n");
  EXPECT_EQ(Feature(label), "[0.1,0]}}\n");
  EXPECT_EQ(Feature(wild), "skipped");
  EXPECT_EQ(Feature(OfRecord(tEntity(), 1), nullptr, "\"geometry\":"), "null}\n");
}

TEST_F(GeoJSONTest, RingsAreNestedAndTurned) {
  const std::string kOuter = "[[-9,-9],[9,-9],[9,9],[-9,9],[-9,-9]]", kHole = "[[-5,-5],[-5,5],[5,5],[5,-5],[-5,-5]]",
                    kIsland = "[[-2,-2],[2,-2],[2,2],[-2,2],[-2,-2]]",
                    kAway = "[[19,19],[21,19],[21,21],[19,21],[19,19]]";
  const Square outer{0, 0, 9, true}, hole{0, 0, 5, false}, island{0, 0, 2, true}, away{20, 20, 1, true};
  const auto turned = [](Square square) {
    square.isClockwise = !square.isClockwise;
    return square;
  };
  EXPECT_EQ(Feature(Area({outer})), "[" + kOuter + "]}}\n");
  EXPECT_EQ(Feature(Area({hole, away, island, outer})),
            "[[" + kAway + "],[" + kIsland + "],[" + kOuter + "," + kHole + "]]}}\n");
  EXPECT_EQ(Feature(Area({turned(outer), turned(hole)})), "[" + kOuter + "," + kHole + "]}}\n")
      << "all rings run the other way";
  EXPECT_EQ(Feature(Area({outer, turned(away)})), "[[" + kOuter + "],[" + kAway + "]]}}\n") << "a hole in nothing";
  tEntity flat = Element(kPolyline, {{1, 1}, {2, 2}});
  flat.IsArea = true;
  EXPECT_EQ(Feature(flat), "[[[1,1],[2,2],[1,1],[1,1]]]}}\n");
}

TEST_F(GeoJSONTest, WhatTheDrawingSays) {
  tEntity text = Element(kText, {{1, 2}}, "C\xF4te");
  text.Text = "a\"\\\n\xE2\x82\xAC";
  text.TextAng = 30;
  text.TextSize = 2.5;
  text.TextJust = 33;
  text.RGB = 0x0A00FF;
  text.Colour = 1;
  EXPECT_EQ(Feature(text, nullptr, "properties"),
            "\":{\"layer\":\"C\xC3\xB4te\",\"colour\":\"#ff000a\",\"colourNumber\":1,\"text\":"
            "\"a\\\"\\\\\\u000a\xE2\x82\xAC\","
            "\"textAngle\":30,\"textHeight\":2.5,\"textPlacement\":\"centre middle\"},"
            "\"geometry\":{\"type\":\"Point\",\"coordinates\":[1,2]}}\n");
}

TEST_F(GeoJSONTest, AttributesByTheirTypes) {
  Source source(rig.context,
                {{"NAME", 'C', 9, 0},
                 {"name", 'C', 9, 0},
                 {"N", 'N', 5, 0},
                 {"BIG", 'N', 18, 0},
                 {"R", 'F', 9, 2},
                 {"DAY", 'D', 8, 0},
                 {"YES", 'L', 1, 0}},
                {{"\xC3\xA9", "", "007", "123456789012345678", ".50", "20040131", "T"},
                 {"", "", "", "", "", "00000000", "?"},
                 {"x", "y", "1.5", "**", "1e999", "20041331", "z"}});
  const auto row = [&](std::int64_t record) {
    std::string feature = Feature(OfRecord(Element(kPoint, {{1, 2}}), record), &source, "properties");
    return feature.substr(0, feature.find('}'));
  };
  EXPECT_EQ(row(1),
            "\":{\"NAME\":\"\xC3\xA9\",\"name_1\":\"\",\"N\":7,\"BIG\":123456789012345678,\"R\":0.5,"
            "\"DAY\":\"2004-01-31\",\"YES\":true");
  EXPECT_EQ(row(2), "\":{\"NAME\":\"\",\"name_1\":\"\",\"N\":null,\"BIG\":null,\"R\":null,\"DAY\":null,\"YES\":null");
  EXPECT_EQ(rig.WarningOf("cut values"), nullptr);
  EXPECT_EQ(row(3), "\":{\"NAME\":\"x\",\"name_1\":\"y\",\"N\":1.5,\"BIG\":null,\"R\":null,\"DAY\":null,\"YES\":null");
  ASSERT_NE(rig.WarningOf("cut values"), nullptr);
  EXPECT_TRUE(rig.WarningOf("cut values")->text.ends_with(": 3"));
  source.Layered = true;
  EXPECT_TRUE(Holds(Feature(OfRecord(Element(kPoint, {{1, 2}}, "ROAD"), 1), &source, ""), "\"layer\":\"ROAD\""));
  rig.context.options.attributes = false;
  EXPECT_FALSE(Holds(Feature(OfRecord(Element(kPoint, {{1, 2}}), 1), &source, ""), "NAME"));
}

}  // namespace
}  // namespace tesselink
