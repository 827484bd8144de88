// SPDX-License-Identifier: MIT
// Attributes in drawings: extended data, and attributes of inserted blocks. That tables come back whole, tests/interop
// shows.
#include "formats/dxf/DXFOutFilter.h"
#include "support/Drawings.h"

namespace tesselink {
namespace {

class DrawingRecordsTest : public DrawingTest {
 protected:
  DrawingRecordsTest() { rig.context.options.dialect = Dialect::Standard; }

  static Groups Schema(const std::vector<std::string>& texts) {
    Groups groups = "0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|2 0|70 0|62 7|6 CONTINUOUS|1001 TESSELINK|1070 1"_g;
    for (const std::string& text : texts) groups.push_back({1000, text});
    return groups + "0 ENDTAB|0 ENDSEC"_g;
  }
  static Groups Of(int table, int record, int part, const std::vector<std::string>& texts) {
    Groups groups{{1001, "TESSELINK"},
                  {1070, std::to_string(table)},
                  {1071, std::to_string(record)},
                  {1070, std::to_string(part)}};
    for (const std::string& text : texts) groups.push_back({1000, text});
    return groups;
  }
  static Groups Ring(const std::string& x) {
    return Groups{{0, "LWPOLYLINE"}, {70, "1"}} + Groups{{10, x}, {20, "0"}, {10, x}, {20, "3"}, {10, "9"}, {20, "0"}};
  }
  static Groups Text(const std::string& text) {
    return Groups{{0, "TEXT"}, {10, "1"}, {20, "1"}, {40, "1"}, {1, text}};
  }

  // What a writer of records would write: of each element kind, parts and values, as "polyline 2: 12|A".
  std::vector<std::string> Records(const Groups& drawing, bool whole = true) {
    static const char* const kKinds[] = {"point", "line", "polyline", "text"};
    reader = std::make_unique<DXFInFilter>(rig.context);
    reader->WholeRecords = whole;
    reader->filename(rig.folder.Put("a.dxf", Lines(drawing)));
    std::vector<std::string> records;
    Pump pump(Dialect::Standard);
    while (pump.Next(*reader)) {
      if (!pump.Delivered()) continue;
      const tEntity& e = pump.Element();
      records.push_back(std::string(kKinds[e.bType]) + " " + std::to_string(e.PartCount()) + ":");
      AttributeTable* table = reader->Attributes();
      for (int i = 0; table != nullptr && i <= table->NumFields(); ++i) {
        records.back() += " " + std::string(table->GetFieldData(i, e.Record - 1));
      }
    }
    return records;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(DrawingRecordsTest, WhatStandsForOneRecordIsOneElement) {
  const Groups drawing =
      Schema({"table areas plats.shp", "field N 4 0 NO"}) +
      Section("ENTITIES", Ring("1") + Of(1, 1, 0, {"ring", "NO=7"}) + Ring("2") + Of(1, 1, 1, {"ring", "NO=7"}) +
                              Text("Lot 7") + Of(1, 1, 0, {"label Lot 7", "NO=7"}) + Ring("1") +
                              Of(1, 2, 0, {"ring", "NO=8"}) + Text("moved") + Of(1, 2, 0, {"label Lot 8", "NO=8"}) +
                              Ring("4")) +
      kEnd;
  EXPECT_EQ(Records(drawing), (Texts{"polyline 2: 7", "polyline 1: 8", "text 1: ", "polyline 1: "}));
  EXPECT_EQ(WarningText("labels in records"), "a.dxf: 1 text only repeats what its record says, and was left out");
  EXPECT_EQ(reader->Form().shape, ElementForm::Shape::Areas);
  EXPECT_EQ(Records(drawing, false).size(), 6U) << "a drawing keeps each of them";
}

TEST_F(DrawingRecordsTest, CopiesAndWhatWasTakenApartStayElements) {
  const Groups first = Ring("1") + Of(1, 1, 0, {"ring", "NO=7"}), second = Ring("2") + Of(1, 1, 1, {"ring", "NO=7"});
  const Groups schema = Schema({"table areas plats.shp", "field N 4 0 NO"});
  const std::string one = "polyline 1: 7", two = "polyline 2: 7";
  for (const auto& [entities, records] : {std::pair(first + second + first, Texts{two, one}),
                                          {second + first, Texts{one, one}},
                                          {first + Ring("3") + second, Texts{one, "polyline 1: ", one}}}) {
    EXPECT_EQ(Records(schema + Section("ENTITIES", entities) + kEnd), records);
  }
}

TEST_F(DrawingRecordsTest, SeveralTablesAndValuesOfAnyKind) {
  const Groups point = "0 POINT|10 1|20 1"_g;
  const Groups drawing =
      Schema({"table points a.shp", "field C 9 0 NAME", "field N 4 0 A\\U+003DB", "table points b.shp",
              "field N 8 2 name", "field C 20 0 NAME", "nonsense", "field"}) +
      Section("ENTITIES", point + Of(1, 1, 0, {"point", "NAME=a^Jb\\U+005CU+0041", "=^ c", "A\\U+003DB=5", "OTHER=1"}) +
                              point + Of(2, 1, 0, {"point", "name=2.50", "NAME=x"}) + point +
                              Of(9, 1, 0, {"point", "NAME=y"}) + point + Of(1, 0, 0, {"point"}) + point +
                              Of(1, 4, 0, {"sphere"}) + point + Of(1, 4, 0, {})) +
      kEnd;
  EXPECT_EQ(Records(drawing), (Texts{"point 1: a\nb\\U+0041^c 5  ", "point 1: x  2.50 ",
                                     "point 1:    ", "point 1:    ", "point 1:    ", "point 1:    "}));
  EXPECT_EQ(reader->Attributes()->GetFieldName(1), "A=B");
  EXPECT_EQ(reader->Attributes()->FieldLength(0), 20) << "the longer of both";
}

TEST_F(DrawingRecordsTest, AttributesOfInsertsThatComeAsPoints) {
  const Groups blocks = Section("BLOCKS",
                                "0 BLOCK|2 WELL|10 0|20 0|0 CIRCLE|10 0|20 0|40 1|0 ATTDEF|1 x|2 NAME|70 0|0 ATTDEF|2 "
                                "DEPTH|70 1|0 ATTDEF|2 FIXED|70 2|0 ENDBLK"_g);
  const auto attribute = [](const char* tag, const char* value) {
    return Groups{{0, "ATTRIB"}, {10, "1"}, {20, "1"}, {40, "1"}, {1, value}, {2, tag}};
  };
  const Groups insert = "0 INSERT|66 1|2 WELL|10 5|20 5"_g, end = "0 SEQEND"_g;
  const Groups drawing = blocks +
                         Section("ENTITIES", insert + attribute("DEPTH", "12.5") + attribute("name", "A-1") + end +
                                                 insert + end + Text("other") + insert + attribute("LOST", "?") + end) +
                         kEnd;
  rig.context.options.own.Set("blocks", "points");
  EXPECT_EQ(Records(drawing), (Texts{"point 1: A-1 12.5", "point 1:  ", "text 1:  ", "point 1:  "}));
  EXPECT_EQ(WarningText("fields left out"), "a.dxf: attributes of inserts that no block defines were left out: LOST");
  EXPECT_EQ(Records(drawing, false).size(), 7U) << "as texts, where an element is no record";
  EXPECT_EQ(reader->Attributes(), nullptr);
}

TEST_F(DrawingRecordsTest, DataOfOtherApplicationsAreTold) {
  const Groups point = "0 POINT|10 1|20 1"_g;
  const auto elements =
      Read(point + "1001 SURVEYCAD|1000 a"_g + point + "1001 ACAD_DSTYLE|1070 1|1001 TESSELINK"_g + point);
  ASSERT_EQ(elements.size(), 3U);
  EXPECT_EQ(elements[0].Lost, kLostData);
  EXPECT_EQ(elements[1].Lost + elements[2].Lost, 0U);
  rig.context.options.dialect = Dialect::Classic;
  Records(Schema({"table points a.shp"}) + Section("ENTITIES", point) + kEnd, false);
  EXPECT_EQ(reader->Attributes(), nullptr);
  EXPECT_NE(reader->AttributesPath(), "") << "told, though not read";
}

// What goes beyond that is told, and the rest of the record stays readable.
TEST_F(DrawingRecordsTest, AnEntityHoldsSixteenKilobytes) {
  Texts schema{"table points a.shp"}, values{"point"};
  for (int i = 0; i < 90; ++i) {
    schema.push_back("field C 254 0 F" + std::to_string(i));
    values.push_back("F" + std::to_string(i) + "=" + std::string(240, 'x'));
  }
  Records(Schema(schema) + Section("ENTITIES", "0 POINT|10 1|20 1"_g + Of(1, 1, 0, values)) + kEnd, false);
  reader->filename(rig.folder.Path("a.dxf"));
  DXFOutFilter writer(rig.context);
  writer.filename(rig.folder.Path("b.dxf"));
  writer.SourceOpened(*reader);
  tEntity point;
  ASSERT_TRUE(reader->GetNextEntity(point));
  writer.WriteEntity(point);
  writer.Release();
  const std::string drawing = Folder::Get(rig.folder.Path("b.dxf"));
  const std::size_t record = drawing.rfind("1001\r\nTESSELINK");
  EXPECT_LT(drawing.size() - record, 16384U + 100 * 6) << "group codes and line ends are not counted";
  EXPECT_NE(drawing.find("F50=xxx"), std::string::npos);
  ASSERT_NE(rig.WarningOf("long records"), nullptr);
}

}  // namespace
}  // namespace tesselink
