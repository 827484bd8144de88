// SPDX-License-Identifier: MIT
#include "formats/shape/ESRIInFilt.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/run/ConversionRun.h"
#include "formats/Formats.h"
#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

const std::string kTriangle = ChainContent(3, {0}, {{0, 0}, {4, 0}, {4, 8}});

class ESRIInFiltTest : public testing::Test {
 protected:
  Rig rig;
  ESRIInFilt reader{rig.context};

  std::string Put(const ShapeFile& file, const std::string& stem = "s") {
    rig.folder.Put(stem + ".shx", file.shx);
    return rig.folder.Put(stem + ".shp", file.shp);
  }
  std::vector<tEntity> ReadPlain(const ShapeFile& file) {
    reader.Layered = false;
    reader.filename(Put(file));
    return rig.ReadAll(reader);
  }
};

TEST_F(ESRIInFiltTest, EveryTypeThatIsRead) {
  const auto elements = ReadPlain(ShapeFile({
      PointContent(1, 2), std::string(4, '\0'), ChainContent(5, {0, 3}, {{0, 0}, {1, 0}, {1, 1}, {5, 5}, {6, 6}}),
      MultiPointContent({{7, 8}, {9, 10}}), ChainContent(13, {0}, {{1, 1}, {2, 2}}, {0.1, 1e300}),
      ChainContent(15, {0}, {{3, 3}, {4, 4}}),  // without its z values
  }));
  EXPECT_EQ(reader.NumPoints(), 6);
  std::vector<std::string> rows;
  for (const tEntity& e : elements)
    rows.push_back(Row(e.bType, e.Layer, e.Closed, e.Record, XY(e), SingleText(e.Z(0)), SingleText(e.Z(1))));
  // Neither is a polygon's ring closed, nor is a z there that is too large.
  EXPECT_EQ(rows, (std::vector<std::string>{"0 0 0 1 1,2 0 0", "2 0 0 3 0,0 1,0 1,1 0 0", "2 0 0 3 5,5 6,6 0 0",
                                            "0 0 0 4 7,8 9,10 0 0", "2 0 0 5 1,1 2,2 0.1 0", "2 0 0 6 3,3 4,4 0 0"}));
  EXPECT_NE(rig.WarningOf("wild z"), nullptr);
  EXPECT_NE(rig.WarningOf("no z values"), nullptr);
  EXPECT_TRUE(reader.Eof());
}

TEST_F(ESRIInFiltTest, LargePartsComeWhole) {
  Points points;
  std::vector<double> z;
  for (int i = 0; i < 30000; ++i) {
    points.emplace_back(i + 0.25, -i);
    z.push_back(i);
  }
  const auto elements = ReadPlain(ShapeFile({ChainContent(13, {0, 29990}, points, z)}));
  ASSERT_EQ(elements.size(), 2U);
  ASSERT_EQ(elements[0].PointCount(), 29989);
  for (tEntity::Index i = 0; i < 29990; ++i) {
    ASSERT_EQ(elements[0].x(i), static_cast<double>(i) + 0.25);
    ASSERT_EQ(elements[0].Z(i), static_cast<float>(i));
  }
  EXPECT_EQ(elements[1].Y(9), -29999);
}

TEST_F(ESRIInFiltTest, UnhandledTypesAreToldRecordByRecord) {
  std::vector<std::string> contents;
  for (const std::int32_t type : {11, 18, 21, 23, 25, 28, 31, 11, 77, 2})
    contents.push_back(Little(type) + std::string(60, '\1'));
  contents.push_back(PointContent(1, 2));
  EXPECT_EQ(ReadPlain(ShapeFile(contents)).size(), 1U);
  std::vector<std::string> told;
  for (const Message& message : rig.person.messages) told.push_back(message.text.substr(20));
  EXPECT_EQ(told, (std::vector<std::string>{"PointZ", "MultiPointZ", "PointM", "PolylineM", "PolygonM", "MultiPointM",
                                            "MultiPatch", "PointZ"}));
  EXPECT_EQ(rig.report.UndeliveredTypes().at("PointZ"), 2);
  EXPECT_EQ(rig.report.UndeliveredTypes().at("77"), 1) << "no message, but counted";
}

TEST_F(ESRIInFiltTest, LayerAndLabelComeFromTheRowBehindTheShapesOwn) {
  const std::string path =
      Put(ShapeFile({kTriangle, PointContent(1, 2), ChainContent(3, {0, 2}, {{0, 0}, {2, 0}, {8, 8}, {9, 9}})}));
  rig.folder.Put("s.dbf", Table({{"LAYER", 6}, {"NAME", 4}}, {{"ROAD", "one"}, {"CREEK", "two"}, {"ROAD", "3"}}));
  rig.person.layerField = "layer";
  rig.person.textField = "NAME";
  reader.filename(path);
  EXPECT_EQ(reader.Layers(), (std::vector<std::string>{"ROAD", "CREEK"}));
  reader.AssignCodes(reader.Layers(), {"RD00001", "CR00001"});
  const auto elements = rig.ReadAll(reader);
  std::vector<std::string> rows;
  for (const tEntity& e : elements)
    rows.push_back(Row(e.Record, e.bType, e.Layer, e.CDFCode, XY(e), e.Text, e.TextSize, e.TextUnits, e.TextJust));
  // Each part, then one label a record at its centre; the last shape reads past the last row.
  EXPECT_EQ(rows, (std::vector<std::string>{"1 2 CREEK CR00001 0,0 4,0 4,8  0  0",
                                            "1 3 CREEK CR00001 2,4 two 1000 M 33", "2 0 ROAD RD00001 1,2  0  0",
                                            "2 3 ROAD RD00001 1,2 3 1000 M 33", "3 2  0900000 0,0 2,0  0  0",
                                            "3 2  0900000 8,8 9,9  0  0", "3 3  0900000 4.5,4.5  1000 M 33"}));
}

TEST_F(ESRIInFiltTest, BrokenRecordsAreSkippedWithAWarningAndTheRestIsRead) {
  ShapeFile file({kTriangle, ChainContent(3, {0, 9}, {{1, 1}, {2, 2}}),
                  ChainContent(3, {2, 0}, {{1, 1}, {2, 2}, {3, 3}}), kTriangle, kTriangle, kTriangle, kTriangle,
                  PointContent(std::nan(""), 1), PointContent(5, 6)});
  const auto setIndex = [&file](std::size_t record, std::int32_t word, std::int32_t length) {
    file.shx.replace(100 + 8 * record, 8, Big(word) + Big(length));
  };
  setIndex(3, 1000000, 4);  // outside the file
  setIndex(4, -5, 4);
  const std::size_t fifth = file.shp.size() - std::size_t{2} * (8 + 20) - 2 * (8 + kTriangle.size());
  file.shp.replace(fifth + 48, 4, Little(std::int32_t{2000000000}));  // points that cannot be there
  const std::size_t sixth = fifth + 8 + kTriangle.size();
  file.shp.replace(sixth + 4, 4, Big(0));
  setIndex(6, static_cast<std::int32_t>(sixth / 2), 0);  // no length in either place
  file.shx += "abcd";                                    // half an entry: rounds to none
  const auto elements = ReadPlain(file);
  std::string read;
  for (const tEntity& element : elements) read += XY(element) + " | ";
  EXPECT_EQ(read, "0,0 4,0 4,8 | 5,6 | ");
  for (const char* kind : {"part indices", "index outside", "record counts", "record length", "not finite"}) {
    ASSERT_NE(rig.WarningOf(kind), nullptr) << kind;
    EXPECT_TRUE(Holds(rig.WarningOf(kind)->text, "s.shp, record "));
  }
  EXPECT_EQ(rig.WarningOf("index outside")->count, 2);
  EXPECT_TRUE(ReadPlain(ShapeFile(std::vector<std::string>{})).empty());
  EXPECT_TRUE(Holds(ErrorOf([&] { reader.filename(rig.folder.Put("s.shp", "x")); }), "header of 100"));
  EXPECT_TRUE(
      Holds(ErrorOf([&] { reader.filename(rig.folder.Put("s.shp", std::string(200, 'x'))); }), "is not a shapefile"));
}

TEST_F(ESRIInFiltTest, WhereTheTwoLengthsOfARecordDiffer) {
  ShapeFile file({kTriangle, kTriangle, PointContent(5, 6)});
  const auto words = static_cast<std::int32_t>(kTriangle.size() / 2);
  const std::size_t second = 100 + 8 + kTriangle.size();
  file.shx.replace(100 + 4, 4, Big(words - 20));              // too short in the index: the record's own counts
  file.shp.replace(second + 4, 4, Big(words + 1000));         // too long in the record: the index counts
  file.shx.replace(100 + 20, 4, Big(0));                      // none in the index: the record's own again
  file.shp.replace(second + 48, 4, Little(std::int32_t{4}));  // and a point more than there is room for
  const auto elements = ReadPlain(file);
  ASSERT_EQ(elements.size(), 2U);
  EXPECT_EQ(XY(elements[0]), "0,0 4,0 4,8");
  EXPECT_EQ(XY(elements[1]), "5,6") << "nothing is read out of the neighbour";
  EXPECT_NE(rig.WarningOf("index length"), nullptr);
  EXPECT_NE(rig.WarningOf("record counts"), nullptr);
}

TEST_F(ESRIInFiltTest, AFileThatBecomesShorterIsAnError) {
  Points points;
  for (int i = 0; i < 20000; ++i) points.emplace_back(i, i);
  reader.Layered = false;
  const std::string path = Put(ShapeFile({ChainContent(3, {0, 10}, points)}));
  reader.filename(path);
  tEntity entity;
  ASSERT_TRUE(reader.GetNextEntity(entity));
  std::filesystem::resize_file(path, 200);
  EXPECT_TRUE(Holds(ErrorOf([&] { reader.GetNextEntity(entity); }), "became shorter"));
}

TEST_F(ESRIInFiltTest, FieldsAreOfferedAsStoredOrForSeveralFilesPrepared) {
  const ShapeFile shape({PointContent(1, 1), PointContent(2, 2)});
  for (const char* name : {"a", "b"}) {
    const std::string stem(name);
    rig.folder.Put(stem + ".shp", shape.shp);
    rig.folder.Put(stem + ".shx", shape.shx);
  }
  rig.folder.Put("a.dbf",
                 Table({{"x", 2}, {" Name ", 6}, {"NAME", 6}, {"X", 2}}, {{"", "", "", ""}, {"", "one", "no", ""}}));
  rig.folder.Put("b.dbf", Table({{" Name ", 6}, {"x", 2}}, {{"", ""}, {"two", "no"}}));
  ConversionRequest request;
  request.inputs = {rig.folder.Path("a.shp"), rig.folder.Path("b.shp")};
  request.OutFile = rig.folder.Path("out.asc");
  request.InFormat = "ESRI Shapefile (*.shp)";
  request.OutFormat = "Landmark ASCII File (*.asc)";
  rig.person.layerField = "NAME";
  const auto run = [&] { return ConversionRun(AllFormats(), rig.person, rig.settings).Run(request).layers; };
  using Names = std::vector<std::string>;
  EXPECT_EQ(run(), (Names{"one", ""}));
  EXPECT_EQ(rig.person.fieldsOffered, (Names{"x", " Name ", "NAME", "X"}));
  request.overwrite = true;
  request.InFormat = "Multiple Shapefile Input (*.shp)";
  EXPECT_EQ(run(), (Names{"one", "", "two"})) << "the field is kept by its name, not by its place";
  EXPECT_EQ(rig.person.fieldsOffered, (Names{"X", "NAME"}));
  EXPECT_EQ(rig.person.fieldQuestions, 2);
}

TEST_F(ESRIInFiltTest, ARecordByItsNumber) {
  reader.Layered = false;
  reader.filename(Put(ShapeFile({PointContent(1, 1), kTriangle, PointContent(3, 3)})));
  tEntity entity;
  ASSERT_TRUE(reader.GetNextEntity(entity, 3));
  EXPECT_EQ(XY(entity), "3,3");
  EXPECT_TRUE(reader.Eof());
  ASSERT_TRUE(reader.GetNextEntity(entity, 1));
  EXPECT_EQ(XY(entity), "1,1");
  ASSERT_TRUE(reader.GetNextEntity(entity));
  EXPECT_EQ(XY(entity), "0,0 4,0 4,8");
  EXPECT_FALSE(reader.GetNextEntity(entity, 4));
}

class StandardShapesTest : public testing::Test {
 protected:
  Rig rig;
  StandardShapesTest() { rig.context.options.dialect = Dialect::Standard; }

  std::vector<tEntity> Read(const ShapeFile& file, bool withAttributes = false) {
    rig.folder.Put("s.shx", file.shx);
    ESRIInFilt reader(rig.context);
    reader.Layered = withAttributes;
    reader.filename(rig.folder.Put("s.shp", file.shp));
    return rig.ReadAll(reader);
  }
  static std::string Values(const std::vector<double>& values) {
    std::string bytes;
    for (const double value : values) bytes += Little(value);
    return bytes;
  }
};

TEST_F(StandardShapesTest, EveryType) {
  const std::string range(16, '\0');
  const auto multiPoint = [](std::int32_t type) {
    return Little(type) + MultiPointContent({{1, 2}, {3, 4}}).substr(4);
  };
  // A strip of four vertices and a ring.
  std::string patch =
      ChainContent(31, {0, 4}, {{0, 0}, {0, 1}, {2, 0}, {2, 1}, {5, 5}, {6, 5}, {6, 6}}, {1, 2, 3, 4, 5, 6, 7});
  patch.insert(44 + 8, Little(std::int32_t{0}) + Little(std::int32_t{2}));
  struct {
    std::string content, vertices, z;
    bool closed;
    std::vector<double> measures;
  } const cases[] = {
      {Little(std::int32_t{11}) + Values({1, 2, 3, 4}), "1,2", "3 ", false, {4}},
      {Little(std::int32_t{11}) + Values({1, 2, 3, -1e39}), "1,2", "3 ", false, {}},
      {Little(std::int32_t{11}) + Values({1, 2, 3}), "1,2", "3 ", false, {}},
      {Little(std::int32_t{21}) + Values({1, 2, 4}), "1,2", "0 ", false, {4}},
      {multiPoint(18) + range + Values({5, 6}) + range + Values({0, 7}), "1,2 3,4", "5 6 ", false, {0, 7}},
      {multiPoint(28) + range + Values({0, 0}), "1,2 3,4", "0 0 ", false, {0, 0}},
      {ChainContent(23, {0}, {{0, 0}, {2, 2}}) + range + Values({1, 2}), "0,0 2,2", "0 0 ", false, {1, 2}},
      {ChainContent(13, {0}, {{0, 0}, {2, 2}}, {8, 9}), "0,0 2,2", "8 9 ", false, {}},
      {ChainContent(5, {0}, {{0, 0}, {2, 2}, {3, 0}, {0, 0}}), "0,0 2,2 3,0 0,0", "0 0 0 0 ", true, {}},
      {ChainContent(25, {0}, {{1, 0}, {2, 2}, {3, 0}}) + range + Values({1, 2, 3}),
       "1,0 2,2 3,0",
       "0 0 0 ",
       true,
       {1, 2, 3}},
      {ChainContent(3, {0}, {{0, 0}, {2, 2}}), "0,0 2,2", "0 0 ", false, {}},
      {patch, "0,0 2,0 2,1 0,1 5,5 6,5 6,6", "1 3 4 2 5 6 7 ", true, {}},
  };
  for (const auto& expected : cases) {
    rig.report = {};
    const auto elements = Read(ShapeFile({expected.content}));
    ASSERT_FALSE(elements.empty());
    std::string z;
    for (tEntity::Index i = 0; i <= elements[0].PointCount(); ++i) z += SingleText(elements[0].Z(i)) + " ";
    EXPECT_EQ(XY(elements[0]), expected.vertices);
    EXPECT_EQ(z, expected.z) << expected.vertices;
    EXPECT_EQ(elements[0].Closed, expected.closed) << expected.vertices;
    EXPECT_EQ(elements[0].Measures, expected.measures) << expected.vertices;
  }
  EXPECT_NE(rig.WarningOf("triangles"), nullptr);
  EXPECT_TRUE(rig.person.messages.empty());
  const auto origin = Read(ShapeFile({PointContent(0, 0), Little(std::int32_t{99})}));
  ASSERT_EQ(origin.size(), 1U);
  EXPECT_EQ(origin[0].PointCount(), 0);
  EXPECT_EQ(rig.report.UndeliveredTypes().at("99"), 1);
}

// One element a record, whatever is wrong with its parts.
TEST_F(StandardShapesTest, WholeShapes) {
  const std::string range(16, '\0');
  const Points square{{0, 0}, {0, 9}, {9, 9}, {0, 0}, {2, 2}, {4, 2}, {2, 4}, {2, 2}};
  Points wild = square;
  wild[1].first = std::nan("");
  const auto withMeasures = [&](const std::string& content) {
    return content + range + Values({10, 20, 30, 40, 50, -1e300, 70, std::nan("")});
  };
  const auto elements = Read(ShapeFile({
      ChainContent(5, {0, 4}, square),
      std::string(4, '\0'),
      withMeasures(ChainContent(15, {0, 4}, wild, {1, 2, 3, 4, 5, 6, 7, 8})),
      ChainContent(3, {1, 4}, square),
      ChainContent(3, {0, 4, 2}, square),
      ChainContent(5, {0, 0, 4, 4}, square),
      ChainContent(5, {}, {}),
      MultiPointContent({}),
      ChainContent(5, {0}, {{std::nan(""), 1}}),
      withMeasures(ChainContent(23, {0, 4}, square)),
  }));
  std::vector<std::string> rows;
  for (const tEntity& e : elements) {
    std::string row = Row(e.Record, e.bType, e.IsArea, e.IsNull() ? "null" : XY(e));
    for (const tEntity::Index part : e.Parts) row += " |" + std::to_string(part);
    rows.push_back(row);
  }
  const std::string ring = "0,0 0,9 9,9 0,0", hole = " 2,2 4,2 2,4 2,2";
  EXPECT_EQ(rows, (std::vector<std::string>{"1 2 1 " + ring + hole + " |4", "2 2 0 null",
                                            "3 2 1 0,0 9,9 0,0" + hole + " |3", "4 2 0 0,9 9,9 0,0" + hole + " |3",
                                            "5 2 0 " + ring, "6 2 1 " + ring + hole + " |4", "7 2 0 null", "8 0 0 null",
                                            "9 2 0 null", "10 2 0 " + ring + hole + " |4"}));
  ASSERT_EQ(elements[2].Measures.size(), 7U);
  EXPECT_EQ(elements[2].Measures[1], 30) << "m and z of a vertex left out go with it";
  EXPECT_EQ(elements[2].Height(3), 5);
  EXPECT_TRUE(std::isnan(elements[2].Measures[4]) && std::isnan(elements[2].Measures[6]));
  EXPECT_EQ(elements[9].Measures[6], 70);
  EXPECT_EQ(rig.WarningOf("part indices")->count, 1);
}

// Whatever is wrong with the index, the records are those of the file.
TEST_F(StandardShapesTest, AnIndexThatDoesNotFit) {
  const std::vector<std::string> contents{PointContent(1, 1), PointContent(2, 2), std::string(4, '\0'),
                                          PointContent(4, 4)};
  const ShapeFile whole(contents, 1);
  const auto entry = [&](std::size_t i) { return whole.shx.substr(100 + 8 * i, 8); };
  const std::string head = whole.shx.substr(0, 100);
  const std::string faulty[] = {head + entry(0) + entry(1),
                                whole.shx + entry(3),
                                head + entry(3) + entry(1) + entry(2) + entry(0),
                                head + std::string(32, '\0'),
                                head + entry(0) + entry(1) + Big(4000) + Big(10) + entry(3),
                                head + entry(0) + Big(200) + Big(10) + entry(2) + entry(3),
                                head + entry(0) + entry(1) + Big(78) + Big(7) + entry(3),
                                head,
                                "short"};
  for (const std::string& shx : faulty) {
    rig.report = {};
    ShapeFile file = whole;
    file.shx = shx;
    const auto elements = Read(file);
    ASSERT_EQ(elements.size(), 4U) << shx.substr(std::min<std::size_t>(shx.size(), 100));
    EXPECT_EQ(Row(XY(elements[1]), elements[2].IsNull(), XY(elements[3]), elements[3].Record), "2,2 1 4,4 4");
    ASSERT_EQ(rig.report.Warnings().size(), 1U);
    EXPECT_TRUE(Holds(rig.WarningOf("index")->text, "s.shx: does not fit the shapefile; it"));
    EXPECT_EQ(rig.WarningOf("index")->count, 1);
  }
  // A shape that was changed lies at the end; the index leads there by its number.
  ShapeFile changed = whole;
  changed.shp += Big(2) + whole.shp.substr(132, 24);
  changed.shp.replace(24, 4, Big(static_cast<std::int32_t>(changed.shp.size() / 2)));
  changed.shx.replace(108, 4, Big(static_cast<std::int32_t>(whole.shp.size() / 2)));
  rig.report = {};
  EXPECT_EQ(Read(changed).size(), 4U);
  EXPECT_EQ(rig.WarningOf("index"), nullptr);
  EXPECT_NE(rig.WarningOf("not in the index"), nullptr);
}

TEST_F(StandardShapesTest, DamagedRecordsWithoutAnIndex) {
  const std::string triangle = kTriangle;
  const ShapeFile whole({triangle, triangle, PointContent(3, 3), triangle, triangle});
  const std::size_t size = 8 + triangle.size(), third = 100 + 2 * size;
  const auto read = [&](const std::string& shp) {
    std::string numbers;
    rig.report = {};
    ESRIInFilt reader(rig.context);
    reader.Layered = false;
    reader.filename(rig.folder.Put("alone.shp", shp));
    for (const tEntity& element : rig.ReadAll(reader)) numbers += std::to_string(element.Record);
    tEntity last;
    EXPECT_EQ(numbers.empty(), !reader.GetNextEntity(last, 1)) << "back to the first";
    return numbers;
  };
  const auto with = [&](std::size_t at, const std::string& bytes) {
    std::string shp = whole.shp;
    return shp.replace(at, bytes.size(), bytes);
  };
  EXPECT_EQ(read(whole.shp), "12345");
  EXPECT_TRUE(Holds(rig.WarningOf("index")->text, "alone.shp: its index (.shx) is missing"));
  // The length of the second: zero, below zero, beyond the file, over the third, and within its own points.
  for (const std::int32_t words : {0, -7, 2000000000, static_cast<std::int32_t>(triangle.size() / 2 + 14), 20})
    EXPECT_TRUE(Holds("1345 12345 145", read(with(100 + size + 4, Big(words))))) << words;
  EXPECT_NE(rig.WarningOf("record length"), nullptr);
  EXPECT_EQ(read(with(third, std::string(12, '\0'))), "1245");
  EXPECT_TRUE(Holds(rig.WarningOf("record length")->text, "record 3: its header"));
  EXPECT_EQ(read(with(100, std::string(whole.shp.size() - 100, '\0'))), "");
  EXPECT_NE(rig.WarningOf("no record"), nullptr);
  EXPECT_EQ(read(whole.shp.substr(0, whole.shp.size() - 9)), "1234");
  EXPECT_TRUE(Holds(rig.WarningOf("no record")->text, "behind record 4 were not read; no record could be found there"));
  // Numbers that count from another one do no harm, and the announced size holds where a record ends there.
  std::string zeroBased = ShapeFile({triangle, triangle, triangle}).shp;
  for (const std::size_t at : {std::size_t{100}, 100 + size, third}) --zeroBased[at + 3];
  EXPECT_EQ(read(zeroBased), "123");
  EXPECT_EQ(read(with(24, Big(static_cast<std::int32_t>(third / 2)))), "12");
  EXPECT_TRUE(Holds(rig.WarningOf("no record")->text, "the file's header says"));
  EXPECT_EQ(read(with(24, Big(50))), "12345");
  EXPECT_EQ(read(with(24, Big(static_cast<std::int32_t>(third / 2 - 4)))), "12345");
}

TEST_F(StandardShapesTest, AttributesOfTheOwnRow) {
  std::string table = Table({{"LAYER", 6}, {"NAME", 4}}, {{"ROAD", "one"}, {"CREEK", "two"}, {"W\xE4LD", "3"}});
  table[97 + 11] = '*';
  rig.folder.Put("s.dbf", table);
  const ShapeFile file({PointContent(0, 0), PointContent(1, 1), kTriangle, PointContent(9, 9)});
  rig.person.layerField = "layer";
  rig.person.textField = "NAME";
  std::string read;
  const auto note = [&](const std::vector<tEntity>& elements) {
    read.clear();
    for (const tEntity& element : elements)
      read += element.Layer + " " + element.Text + " " + std::to_string(element.Record) + "; ";
  };
  note(Read(file, true));
  EXPECT_EQ(read, "ROAD  1; ROAD one 1; WäLD  3; WäLD 3 3;   4;   4; ");
  EXPECT_EQ(rig.WarningOf("deleted")->count, 1);
  EXPECT_NE(rig.WarningOf("short table"), nullptr);
  rig.person.layerField = "";
  note(Read(file, true));
  EXPECT_TRUE(read.starts_with("0  1; 0 one 1; ")) << read << "no field for the layer";
  EXPECT_EQ(Read(file).size(), 3U) << "a deleted row counts where nobody asks for attributes, too";
  rig.person.layerField = "NOSUCH";
  EXPECT_TRUE(Holds(ErrorOf([&] { Read(file, true); }), "its fields are LAYER, NAME"));
  rig.folder.Put("s.dbf", "broken");
  EXPECT_EQ(Read(file).size(), 4U) << "a table that nobody asked for is no reason to stop";
  EXPECT_NE(rig.WarningOf("broken table"), nullptr);
}

}  // namespace
}  // namespace tesselink
