// SPDX-License-Identifier: MIT
// What every drawing of release 2007 consists of, whatever it shows.
#pragma once

#include <cstdint>
#include <string>

#include "core/element/Extents.h"
#include "formats/dxf/GroupWriter.h"

namespace tesselink {

/// The objects that others refer to, and the first handle that none of them has.
namespace objects {
inline constexpr Handle kLayers = 0x2, kLineTypes = 0x5, kPlotStyle = 0xF, kModelSpace = 0x1F, kFirstFree = 0x100;
}  // namespace objects

/// CLASSES, and TABLES with the view that shows the whole drawing; the tables of line types and layers follow.
void WriteTablesBegin(FileWriter& file, const Extents& extents);
/// The rest of TABLES behind layers, BLOCKS, and the beginning of ENTITIES.
void WriteTablesEnd(FileWriter& file);
/// The end of ENTITIES, OBJECTS, and the end of the file.
void WriteObjects(FileWriter& file);
/// The beginning of a table of so many rows, and of a row of it.
void BeginTable(GroupWriter& groups, const std::string& name, Handle table, std::int64_t rows);
void BeginRow(GroupWriter& groups, const std::string& name, Handle row, Handle table, const std::string& subclass);

}  // namespace tesselink
