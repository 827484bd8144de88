// SPDX-License-Identifier: MIT
// The T/R Digitizer writer: its lines, and above all which row of which table a chain gets.
#include "formats/grid/TRDigOut.h"

#include <gtest/gtest.h>

#include "formats/Formats.h"
#include "formats/shape/ESRIInFilt.h"
#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class TRDigOutTest : public testing::Test, protected Rig {
 protected:
  TRDigOutTest() { person.tableFields = {folder.Path("grid.dbf"), {"TWP", "rge", " Sec "}}; }

  // A table whose townships are numbered with a prefix, as in N1, N2.
  std::string PutTable(const std::string& name, const std::string& prefix, int rows) const {
    std::vector<std::vector<std::string>> values;
    for (int i = 1; i <= rows; ++i) values.push_back({std::to_string(i), prefix + std::to_string(i), "68W"});
    return folder.Put(name, Table({{"SEC", 4}, {"TWP", 12}, {"RGE", 12}}, values));
  }
  // A shapefile with a Null shape in the middle and at the end; its third shape has two parts.
  std::string PutShapes(const std::string& name) const {
    const std::string line = ChainContent(3, {0}, {{1, 1}, {2, 2}}), null = Little(std::int32_t{0});
    const ShapeFile file({line, null, ChainContent(3, {0, 2}, {{3, 3}, {4, 4}, {5, 5}, {6, 6}}), null});
    folder.Put(name + ".shx", file.shx);
    return folder.Put(name + ".shp", file.shp);
  }
  static tEntity Chain(std::int64_t record = 0) {
    tEntity entity = Element(kPolyline, {{1, 2}});
    entity.Record = record;
    return entity;
  }
  std::string Written(std::vector<tEntity> elements) {
    TRDigOut writer(context);
    writer.filename(folder.Path("out.grd"));
    for (tEntity& element : elements) writer.WriteEntity(element);
    writer.Release();
    return Folder::Get(folder.Path("out.grd"));
  }
  // Townships of the chains in the output of a multiple-shapefile run, and its error.
  std::string Townships(const std::vector<std::string>& inputs) {
    ESRIInFilt reader(context);
    reader.Layered = false;
    TRDigOut writer(context);
    writer.filename(folder.Path("out.grd"));
    for (const std::string& input : inputs) {
      reader.filename(input);
      writer.SourceOpened(reader);
      for (tEntity& element : ReadAll(reader)) writer.WriteEntity(element);
    }
    writer.Release();
    const std::string bytes = Folder::Get(folder.Path("out.grd"));
    std::string townships;
    for (std::size_t at = bytes.find("SEC,"); at != std::string::npos; at = bytes.find("SEC,", at + 1)) {
      townships += bytes.substr(at + 4, bytes.find(',', at + 4) - at - 4) + " ";
    }
    return townships;
  }
};

TEST_F(TRDigOutTest, LinesByTheLetter) {
  PutTable("grid.dbf", "3N-", 4);
  tEntity closed = Element(kPolyline, {{0, 0}, {10.5, 0}, {10.5, -7.25}});
  closed.Closed = true;
  const tEntity text = Element(kText, {{1, 1}}), point = Element(kPoint, {{1, 1}});
  const tEntity high = Element(kLine, {{1846000.125, 464000.5}, {2, 3, 7}});
  EXPECT_EQ(Written({point, text, closed, point, high}),
            "SEC,3N-1,68W,1,4\r\n0,0\r\n10.5,0\r\n10.5,-7.25\r\n0,0\r\n"
            "SEC,3N-2,68W,2,2\r\n1846000.125,464000.5\r\n2,3\r\n")
      << "elements without a record take the rows in the chains' order";
  EXPECT_EQ(WarningOf("heights")->text, folder.Path("out.grd") + ": the format has no z; elements that lost theirs: 1");
  EXPECT_EQ(person.calls.size(), 1U) << "asked once";
  person.calls.clear();
  EXPECT_EQ(Written({point, text}), "");
  EXPECT_TRUE(person.calls.empty()) << "without a chain nobody is asked";
}

TEST_F(TRDigOutTest, AShapeTakesItsOwnRowAndItsPartsShareIt) {
  const std::string north = PutShapes("north"), south = PutShapes("south");
  const std::string table = PutTable("north.dbf", "N", 4);
  PutTable("south.dbf", "S", 4);
  PutTable("grid.dbf", "G", 12);
  EXPECT_EQ(Townships({north}), "G1 G3 G3 ");
  EXPECT_EQ(person.calls.back(), "grid fields, " + table);
  EXPECT_EQ(Townships({north, south, north}), "G1 G3 G3 G5 G7 G7 G9 G11 G11 ") << "Null shapes have rows too";
  person.tableFields.table = table;
  EXPECT_EQ(Townships({north, south}), "N1 N3 N3 S1 S3 S3 ") << "each file's own";
  person.tableFields.table = folder.Path("./north.dbf");
  EXPECT_EQ(Townships({north, south}), "N1 N3 N3 S1 S3 S3 ") << "spelt otherwise";
  std::filesystem::remove(folder.Path("south.dbf"));
  EXPECT_EQ(ErrorOf([&] {
              Townships({north, south});
            }),
            south + ": has no table beside it that tells townships, ranges and sections; name one");
}

TEST_F(TRDigOutTest, RowsThatAreNotThereAndValuesThatBreakALine) {
  PutTable("grid.dbf", "N", 2);
  EXPECT_EQ(Written({Chain(3), Chain(2), Chain(9)}), "SEC,,,,1\r\n1,2\r\nSEC,N2,68W,2,1\r\n1,2\r\nSEC,,,,1\r\n1,2\r\n");
  EXPECT_EQ(WarningOf("no row")->text,
            folder.Path("grid.dbf") + ": has 2 rows; for row 3 township, range and section were left empty");
  EXPECT_EQ(WarningOf("no row")->count, 2);

  std::string deleted = Table({{"SEC", 9}, {"TWP", 9}, {"RGE", 9}}, {{"1,\"2\"", "3\tN", "6\r\n8"}});
  deleted[33 + 3 * 32] = '*';
  folder.Put("grid.dbf", deleted);
  EXPECT_EQ(Written({Chain()}), "SEC,3 N,6  8,1  2 ,1\r\n1,2\r\n");
  EXPECT_EQ(WarningOf("characters")->count, 3);
}

}  // namespace
}  // namespace tesselink
