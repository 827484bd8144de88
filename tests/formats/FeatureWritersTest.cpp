// SPDX-License-Identifier: MIT
// GeoJSON and GeoPackages: geometries, properties, and what a file says of them.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <csignal>

#include "core/run/AttributeTable.h"
#include "formats/geojson/GeoJSONOutFilter.h"
#include "formats/gpkg/GPKGOutFilter.h"
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

// The rows of a query, values apart by "|".
std::string Query(const std::string& path, const std::string& query) {
  sqlite3* database = nullptr;
  std::string rows;
  EXPECT_EQ(sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  const auto add = [](void* into, int count, char** values, char**) {
    std::string row;
    for (int i = 0; i < count; ++i) row += (i > 0 ? "|" : "") + std::string(values[i] != nullptr ? values[i] : "null");
    *static_cast<std::string*>(into) += row + "; ";
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(database, query.c_str(), add, &rows, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  sqlite3_close(database);
  return rows;
}

class GeoPackageTest : public testing::Test {
 protected:
  Rig rig;
  const std::string path = rig.folder.Path("a.gpkg");
  GeoPackageTest() {
    rig.context.options.dialect = Dialect::Standard;
    rig.context.options.moduleFolder = TESSELINK_DATA_FOLDER;
  }
};

TEST_F(GeoPackageTest, TablesOfEachKind) {
  Source source(rig.context, {{"FID", 'N', 5, 0}, {"a \"b\"", 'C', 9, 0}, {"D", 'D', 8, 0}, {"L", 'L', 1, 0}},
                {{"1.5", "one", "20040131", "F"}, {"2", "two", "", ""}});
  GPKGOutFilter writer(rig.context);
  writer.filename(path);
  writer.SourceOpened(source);
  tEntity group = OfRecord(Element(kPoint, {{1, 2}, {3, 4}}), 2);
  tEntity single = OfRecord(Element(kPoint, {{5, 6}}), 1);
  tEntity high = OfRecord(Element(kPolyline, {{0, 0, 0}, {10, 5, 7}}), 1);
  tEntity flat = OfRecord(Element(kPolyline, {{-1, 0}, {10, 5}}), 1);
  flat.Measures = {1, 2};
  tEntity none = OfRecord(tEntity(), 2);
  none.bType = kPolyline;
  tEntity area = Area({{0, 0, 9, true}, {0, 0, 5, false}});
  for (tEntity* entity : {&single, &group, &high, &flat, &none, &area}) {
    EXPECT_EQ(writer.WriteEntity(*entity), WriteResult::Written);
  }
  writer.Release();
  EXPECT_EQ(Query(path, "PRAGMA integrity_check; PRAGMA application_id; PRAGMA user_version"),
            "ok; 1196444487; 10300; ");
  EXPECT_EQ(Query(path,
                  "SELECT table_name, geometry_type_name, z, m, min_x, max_y FROM gpkg_geometry_columns "
                  "JOIN gpkg_contents USING (table_name)"),
            "points|POINT|0|0|1.0|6.0; lines|MULTILINESTRING|2|2|-1.0|5.0; areas|MULTIPOLYGON|0|0|-9.0|9.0; ");
  EXPECT_EQ(Query(path, "SELECT name, type FROM pragma_table_info('lines')"),
            "fid|INTEGER; geom|MULTILINESTRING; FID_1|INTEGER; a \"b\"|TEXT; D|DATE; L|BOOLEAN; ");
  EXPECT_EQ(Query(path, "SELECT fid, geom ISNULL, FID_1, \"a \"\"b\"\"\", D, L FROM lines"),
            "1|0|null|one|2004-01-31|0; 2|0|null|one|2004-01-31|0; 3|1|2|two|null|null; ");
  EXPECT_EQ(Query(path, "SELECT id, maxx, maxy FROM rtree_points_geom; SELECT count(*) FROM rtree_lines_geom"),
            "1|5.0|6.0; 2|1.0|2.0; 3|3.0|4.0; 2; ");
  EXPECT_EQ(Query(path, "SELECT hex(geom) FROM points WHERE fid = 1"),
            "47500001FFFFFFFF010100000000000000000014400000000000001840; ");
  ASSERT_NE(rig.WarningOf("groups of points"), nullptr);
}

TEST_F(GeoPackageTest, CoordinateSystems) {
  GPKGOutFilter writer(rig.context);
  writer.filename(path);
  CoordinateSystem unknown, coded, own, wgs84;
  coded.name = "NAD27";
  coded.epsg = 4267;
  coded.wkt = "GEOGCS";
  own.name = "Plant";
  own.esriWkt = "LOCAL'S";
  wgs84.name = "WGS";
  wgs84.isWgs84 = true;
  for (const CoordinateSystem& system : {unknown, coded, own, wgs84, coded}) {
    tEntity point = Element(kPoint, {{1, 2}});
    writer.SourceSystem(system);
    writer.WriteEntity(point);
  }
  writer.Release();
  EXPECT_EQ(Query(path,
                  "SELECT table_name, srs_id, organization, definition FROM gpkg_contents "
                  "JOIN gpkg_spatial_ref_sys USING (srs_id) WHERE srs_id != 4326"),
            "points|-1|NONE|undefined; points_2|4267|EPSG|GEOGCS; points_3|100001|NONE|LOCAL'S; ");
  EXPECT_EQ(
      Query(path, "SELECT count(*) FROM points_2; SELECT srs_id FROM gpkg_contents WHERE table_name = 'points_4'"),
      "2; 4326; ");
}

TEST_F(GeoPackageTest, AFileThatMayNotGrow) {
  const auto old = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit little{100'000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &little);
  GPKGOutFilter writer(rig.context);
  writer.filename(path);
  const std::string error = ErrorOf([&] {
    for (int i = 0; i < 100'000; ++i) {
      tEntity text = Element(kText, {{1, 2}}, std::string(1000, 'x'));
      writer.WriteEntity(text);
    }
    writer.Release();
  });
  writer.Abandon();
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, old);
  EXPECT_TRUE(error.starts_with(path + ": could not be written: ")) << error;
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
}  // namespace tesselink
