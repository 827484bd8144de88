// SPDX-License-Identifier: MIT
#include "formats/gpkg/GPKGSchema.h"

#include "core/io/Files.h"

namespace tesselink::gpkg {
namespace {

// The application is "GPKG".
constexpr const char* kFile = R"(
PRAGMA application_id = 1196444487;
PRAGMA user_version = 10300;
BEGIN;
CREATE TABLE gpkg_spatial_ref_sys (
  srs_name TEXT NOT NULL,
  srs_id INTEGER NOT NULL PRIMARY KEY,
  organization TEXT NOT NULL,
  organization_coordsys_id INTEGER NOT NULL,
  definition TEXT NOT NULL,
  description TEXT);
CREATE TABLE gpkg_contents (
  table_name TEXT NOT NULL PRIMARY KEY,
  data_type TEXT NOT NULL,
  identifier TEXT UNIQUE,
  description TEXT DEFAULT '',
  last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
  min_x DOUBLE,
  min_y DOUBLE,
  max_x DOUBLE,
  max_y DOUBLE,
  srs_id INTEGER,
  CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id));
CREATE TABLE gpkg_geometry_columns (
  table_name TEXT NOT NULL,
  column_name TEXT NOT NULL,
  geometry_type_name TEXT NOT NULL,
  srs_id INTEGER NOT NULL,
  z TINYINT NOT NULL,
  m TINYINT NOT NULL,
  CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
  CONSTRAINT uk_gc_table_name UNIQUE (table_name),
  CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
  CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id));
CREATE TABLE gpkg_extensions (
  table_name TEXT,
  column_name TEXT,
  extension_name TEXT NOT NULL,
  definition TEXT NOT NULL,
  scope TEXT NOT NULL,
  CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name));
INSERT INTO gpkg_spatial_ref_sys VALUES
  ('Undefined cartesian SRS', -1, 'NONE', -1, 'undefined', 'undefined cartesian coordinate reference system'),
  ('Undefined geographic SRS', 0, 'NONE', 0, 'undefined', 'undefined geographic coordinate reference system'),
  ('WGS 84 geodetic', 4326, 'EPSG', 4326,
   'GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],AUTHORITY["EPSG","4326"]]',
   'longitude/latitude coordinates in decimal degrees on the WGS 84 spheroid');
)";

// For a table <t> with its index <r>; the names of triggers begin with that of the index.
constexpr const char* kTriggers = R"(
CREATE TRIGGER "<n>_insert" AFTER INSERT ON <t>
WHEN (new.geom NOT NULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN
  INSERT OR REPLACE INTO <r> VALUES (<v>);
END;
CREATE TRIGGER "<n>_update1" AFTER UPDATE OF geom ON <t>
WHEN OLD.fid = NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN
  INSERT OR REPLACE INTO <r> VALUES (<v>);
END;
CREATE TRIGGER "<n>_update2" AFTER UPDATE OF geom ON <t>
WHEN OLD.fid = NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom)) BEGIN
  DELETE FROM <r> WHERE id = OLD.fid;
END;
CREATE TRIGGER "<n>_update3" AFTER UPDATE ON <t>
WHEN OLD.fid != NEW.fid AND (NEW.geom NOTNULL AND NOT ST_IsEmpty(NEW.geom)) BEGIN
  DELETE FROM <r> WHERE id = OLD.fid;
  INSERT OR REPLACE INTO <r> VALUES (<v>);
END;
CREATE TRIGGER "<n>_update4" AFTER UPDATE ON <t>
WHEN OLD.fid != NEW.fid AND (NEW.geom ISNULL OR ST_IsEmpty(NEW.geom)) BEGIN
  DELETE FROM <r> WHERE id IN (OLD.fid, NEW.fid);
END;
CREATE TRIGGER "<n>_delete" AFTER DELETE ON <t>
WHEN old.geom NOT NULL BEGIN
  DELETE FROM <r> WHERE id = OLD.fid;
END;
)";
constexpr const char* kBox = "NEW.fid, ST_MinX(NEW.geom), ST_MaxX(NEW.geom), ST_MinY(NEW.geom), ST_MaxY(NEW.geom)";

std::string Quoted(std::string_view text, char quote) {
  std::string quoted(1, quote);
  for (const char c : text) quoted.append(c == quote ? 2 : 1, c);
  return quoted += quote;
}

const char* TypeName(PropertyType type) {
  switch (type) {
    case PropertyType::Integer:
      return "INTEGER";
    case PropertyType::Real:
      return "REAL";
    case PropertyType::Boolean:
      return "BOOLEAN";
    case PropertyType::Date:
      return "DATE";
    case PropertyType::Text:
      break;
  }
  return "TEXT";
}

}  // namespace

std::string Name(std::string_view name) { return Quoted(name, '"'); }
std::string Text(std::string_view text) { return Quoted(text, '\''); }

std::string IndexOf(const std::string& table) { return "rtree_" + table + "_" + std::string(kGeometryColumn); }

std::string CommandsForFile() { return kFile; }

std::string CommandsForTable(const std::string& table, std::string_view geometryType,
                             const std::vector<Property>& columns) {
  std::string commands = "CREATE TABLE " + Name(table) + " (" + Name(kIdColumn) +
                         " INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, " + Name(kGeometryColumn) + " ";
  commands += geometryType;
  for (const Property& column : columns) commands += ", " + Name(column.name) + " " + TypeName(column.type);
  return commands + "); CREATE VIRTUAL TABLE " + Name(IndexOf(table)) + " USING rtree(id, minx, maxx, miny, maxy)";
}

std::string CommandsForTriggers(const std::string& table) {
  std::string commands = Replaced(kTriggers, "<v>", kBox);
  commands = Replaced(commands, "<t>", Name(table));
  commands = Replaced(commands, "<r>", Name(IndexOf(table)));
  return Replaced(commands, "<n>", IndexOf(table));
}

}  // namespace tesselink::gpkg
