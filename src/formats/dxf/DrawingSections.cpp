// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingSections.h"

#include <algorithm>

namespace tesselink {
namespace {

constexpr std::string_view kBehindHeader =
    "0 ENDSEC"
    "|0 SECTION|2 CLASSES|0 ENDSEC"
    "|0 SECTION|2 TABLES";

constexpr std::string_view kView = "|2 *Active|70 0|10 0|20 0|11 1|21 1";
constexpr std::string_view kViewFromAbove = "13 0|23 0|14 1|24 1|15 0|25 0|16 0|26 0|36 1|17 0|27 0|37 0";
constexpr std::string_view kViewModes =
    "42 50|43 0|44 0|50 0|51 0|71 0|72 1000|73 1|74 3|75 0|76 0|77 0|78 0|281 0|65 1"
    "|110 0|120 0|130 0|111 1|121 0|131 0|112 0|122 1|132 0|79 0|146 0";

constexpr std::string_view kTablesBehindLayers =
    "0 TABLE|2 STYLE|5 3|330 0|100 AcDbSymbolTable|70 1"
    "|0 STYLE|5 11|330 3|100 AcDbSymbolTableRecord|100 AcDbTextStyleTableRecord"
    "|2 Standard|70 0|40 0|41 1|50 0|71 0|42 1|3 txt|4 "
    "|0 ENDTAB"
    "|0 TABLE|2 VIEW|5 6|330 0|100 AcDbSymbolTable|70 0|0 ENDTAB"
    "|0 TABLE|2 UCS|5 7|330 0|100 AcDbSymbolTable|70 0|0 ENDTAB"
    "|0 TABLE|2 APPID|5 9|330 0|100 AcDbSymbolTable|70 2"
    "|0 APPID|5 12|330 9|100 AcDbSymbolTableRecord|100 AcDbRegAppTableRecord|2 ACAD|70 0"
    "|0 APPID|5 13|330 9|100 AcDbSymbolTableRecord|100 AcDbRegAppTableRecord|2 TESSELINK|70 0"
    "|0 ENDTAB"
    "|0 TABLE|2 DIMSTYLE|5 A|330 0|100 AcDbSymbolTable|70 1|100 AcDbDimStyleTable|71 1|340 27"
    "|0 DIMSTYLE|105 27|330 A|100 AcDbSymbolTableRecord|100 AcDbDimStyleTableRecord|2 Standard|70 0|340 11"
    "|0 ENDTAB"
    "|0 TABLE|2 BLOCK_RECORD|5 1|330 0|100 AcDbSymbolTable|70 2"
    "|0 BLOCK_RECORD|5 1F|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Model_Space|340 22|70 0|280 "
    "1|281 0"
    "|0 BLOCK_RECORD|5 1B|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Paper_Space|340 1E|70 0|280 "
    "1|281 0"
    "|0 ENDTAB"
    "|0 ENDSEC";

constexpr std::string_view kBlocks =
    "0 SECTION|2 BLOCKS"
    "|0 BLOCK|5 20|330 1F|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 *Model_Space|70 0|10 0|20 0|30 0|3 *Model_Space|1 "
    "|0 ENDBLK|5 21|330 1F|100 AcDbEntity|8 0|100 AcDbBlockEnd"
    "|0 BLOCK|5 1C|330 1B|100 AcDbEntity|67 1|8 0|100 AcDbBlockBegin|2 *Paper_Space|70 0|10 0|20 0|30 0|3 "
    "*Paper_Space|1 "
    "|0 ENDBLK|5 1D|330 1B|100 AcDbEntity|67 1|8 0|100 AcDbBlockEnd"
    "|0 ENDSEC"
    "|0 SECTION|2 ENTITIES";

constexpr std::string_view kDictionaries =
    "0 ENDSEC"
    "|0 SECTION|2 OBJECTS"
    "|0 DICTIONARY|5 C|330 0|100 AcDbDictionary|281 1|3 ACAD_GROUP|350 D|3 ACAD_LAYOUT|350 1A|3 ACAD_PLOTSTYLENAME|350 "
    "E"
    "|0 DICTIONARY|5 D|330 C|100 AcDbDictionary|281 1"
    "|0 DICTIONARY|5 1A|330 C|100 AcDbDictionary|281 1|3 Layout1|350 1E|3 Model|350 22"
    "|0 ACDBDICTIONARYWDFLT|5 E|102 {ACAD_REACTORS|330 C|102 }|330 C|100 AcDbDictionary|281 1|3 Normal|350 F"
    "|100 AcDbDictionaryWithDefault|340 F"
    "|0 ACDBPLACEHOLDER|5 F|102 {ACAD_REACTORS|330 E|102 }|330 E";

// A layout is a plot of its space, and the space.
constexpr std::string_view kPlot = "4 |6 |40 0|41 0|42 0|43 0|44 0|45 0|46 0|47 0|48 0|49 0|140 0|141 0|142 1|143 1";
constexpr std::string_view kPlotModes = "72 0|73 0|74 5|7 |75 16|147 1|148 0|149 0|100 AcDbLayout";
constexpr std::string_view kLimits =
    "10 0|20 0|11 420|21 297|12 0|22 0|32 0|14 1E+20|24 1E+20|34 1E+20|15 -1E+20|25 -1E+20|35 -1E+20|146 0"
    "|13 0|23 0|33 0|16 1|26 0|36 0|17 0|27 1|37 0|76 0";

void WriteLayout(GroupWriter& groups, const std::string& head, int plotFlags, const std::string& name,
                 std::string_view order, std::string_view space) {
  groups.Groups("0 LAYOUT|" + head + "|330 1A|102 }|330 1A|100 AcDbPlotSettings|1 |2 none_device");
  groups.Groups(kPlot).Integer(70, plotFlags).Groups(kPlotModes);
  groups.Group(1, name).Integer(70, 1).Group(71, order).Groups(kLimits).Group(330, space);
}

}  // namespace

void WriteTablesBegin(FileWriter& file, const Extents& extents) {
  GroupWriter groups(file);
  const bool isEmpty = extents.minX > extents.maxX;
  const double width = isEmpty ? 0 : extents.maxX - extents.minX, height = isEmpty ? 0 : extents.maxY - extents.minY;
  constexpr double kAspect = 1.5, kMargin = 1.05;
  const double shown = std::max(height, width / kAspect) * kMargin;
  groups.Groups(kBehindHeader);
  BeginTable(groups, "VPORT", 0x8, 1);
  BeginRow(groups, "VPORT", 0x29, 0x8, "AcDbViewportTableRecord");
  groups.Groups(kView.substr(1));
  groups.Number(12, isEmpty ? 0 : extents.minX + width / 2).Number(22, isEmpty ? 0 : extents.minY + height / 2);
  groups.Groups(kViewFromAbove).Number(40, shown > 0 ? shown : 1).Number(41, kAspect).Groups(kViewModes);
  groups.Groups("0 ENDTAB");
}

void WriteTablesEnd(FileWriter& file) { GroupWriter(file).Groups(kTablesBehindLayers).Groups(kBlocks); }

void WriteObjects(FileWriter& file) {
  constexpr int kModel = 1024 + 128 + 32 + 16 + 8 + 4, kPaper = 128 + 32 + 16;
  GroupWriter groups(file);
  groups.Groups(kDictionaries);
  WriteLayout(groups, "5 1E|102 {ACAD_REACTORS", kPaper, "Layout1", "1", "1B");
  WriteLayout(groups, "5 22|102 {ACAD_REACTORS", kModel, "Model", "0", "1F");
  groups.Groups("0 ENDSEC|0 EOF");
}

void BeginTable(GroupWriter& groups, const std::string& name, Handle table, std::int64_t rows) {
  groups.Group(0, "TABLE").Group(2, name).Object(5, table).Groups("330 0|100 AcDbSymbolTable").Integer(70, rows);
}

void BeginRow(GroupWriter& groups, const std::string& name, Handle row, Handle table, const std::string& subclass) {
  groups.Group(0, name).Object(5, row).Object(330, table).Group(100, "AcDbSymbolTableRecord").Group(100, subclass);
}

}  // namespace tesselink
