// SPDX-License-Identifier: MIT
// The commands that make the tables of a GeoPackage, as version 1.3 of its standard has them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "formats/FeatureProperties.h"

namespace tesselink::gpkg {

inline constexpr std::string_view kIdColumn = "fid", kGeometryColumn = "geom";
inline constexpr int kUndefinedSystem = -1, kWgs84 = 4326, kFirstOwnSystem = 100'000;

/// A name or a text as it stands in a command.
std::string Name(std::string_view name);
std::string Text(std::string_view text);

/// What every GeoPackage has, the three coordinate systems that it must know included.
std::string CommandsForFile();
/// A table of features, and the index of where they lie, without what keeps it up to date.
std::string CommandsForTable(const std::string& table, std::string_view geometryType,
                             const std::vector<Property>& columns);
/// What keeps the index up to date when other programs change the table.
std::string CommandsForTriggers(const std::string& table);
/// The name of the table in which the index of another lies.
std::string IndexOf(const std::string& table);

}  // namespace tesselink::gpkg
