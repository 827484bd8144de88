// SPDX-License-Identifier: MIT
// Drawings that come back from tables.
#include <gtest/gtest.h>

#include "formats/shape/DBFInFilter.h"
#include "formats/shape/DrawingColumns.h"
#include "formats/shape/ESRIInFilt.h"
#include "formats/shape/ESRIOutFilt.h"
#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

// A table as the writer makes it of a drawing, and one with a field more.
class DrawingTableTest : public testing::Test {
 protected:
  Rig rig;
  // Only the drawing that is read tells what columns it needs.
  class Drawing final : public InputFilter {
   public:
    using InputFilter::InputFilter;
    ElementForm Form() const override { return {.isDrawing = true, .lineTypes = true, .blocks = true}; }
    int FileNumber() const override { return 0; }
    std::int64_t Loc() const override { return 0; }
    double Progress() const override { return 0; }
    bool Eof() const override { return true; }

   private:
    void Open(const std::string&) override {}
    bool Next(tEntity&) override { return false; }
  };

  DrawingTableTest() { rig.context.options.dialect = Dialect::Standard; }

  std::string Write(const std::vector<tEntity>& elements) {
    ESRIOutFilt writer(rig.context);
    writer.filename(rig.folder.Path("d.shp"));
    Drawing drawing(rig.context);
    writer.SourceOpened(drawing);
    for (tEntity element : elements) writer.WriteEntity(element);
    writer.Release();
    return rig.folder.Path("d.shp");
  }
  std::vector<tEntity> Read(const std::string& path, bool withFields = false) {
    ESRIInFilt reader(rig.context);
    reader.Layered = withFields;
    reader.filename(path);
    others = reader.Attributes() == nullptr ? "none" : FieldNames(*reader.Attributes());
    return rig.ReadAll(reader);
  }
  std::string others;
};

TEST_F(DrawingTableTest, TextsAndPointsComeBackAsTheyWere) {
  std::vector<tEntity> elements;
  for (const int placement : {0, 2, 16, 33, 50}) {
    tEntity text = Element(kText, {{1, 2}}, "NAMES");
    text.Text = " 14-C";
    text.TextAng = -12.1;
    text.TextSize = 0.1;
    text.TextJust = static_cast<std::int16_t>(placement);
    text.Colour = 18;
    text.IsBlack = true;
    text.LineStyle = "DASHED";
    text.Handle = 0xFEDCBA9876543210;
    elements.push_back(text);
  }
  tEntity well = Element(kPoint, {{3, 4}}, "WELLS");
  well.Text = well.Block = "DRY HOLE";
  well.TextAng = 30;
  well.Colour = 256;
  well.RGB = 0x0102FF;
  well.CDFCode = "WE00001";
  elements.push_back(well);
  const auto found = Read(Write(elements));
  ASSERT_EQ(found.size(), elements.size());
  const auto all = [](const tEntity& e) {
    return Row(e.bType, XY(e), e.Layer, e.Text, e.TextAng, e.TextSize, e.TextJust, e.Colour, e.RGB, e.IsBlack,
               e.LineStyle, e.CDFCode, e.Block, e.Handle, e.TextUnits);
  };
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(all(found[i]), all(elements[i]));
  EXPECT_EQ(others, "none") << "the elements say it all";
  EXPECT_TRUE(rig.report.Warnings().empty());

  rig.person.layerField = "Desc";
  const auto asked = Read(rig.folder.Path("d.shp"), true);
  EXPECT_EQ(Row(asked.at(0).bType, asked.at(0).Layer, asked.at(0).Text), "0 NAMES ") << "somebody wants fields";
  rig.person.layerField.clear();
  EXPECT_EQ(Read(rig.folder.Path("d.shp"), true).at(0).bType, kText) << "asked, and wanted none";
}

TEST_F(DrawingTableTest, IsKnownByItsColumnsAlone) {
  std::vector<TableField> fields;
  for (const ColumnForm& form : kDrawingColumns) fields.push_back({std::string(form.name), form.length, form.type});
  const auto read = [&](const std::vector<TableField>& columns) {
    const ShapeFile file({PointContent(1, 2)}, 1);
    std::vector<std::string> row(columns.size(), "L");
    for (std::size_t i = 0; i < row.size(); ++i)
      row[i] = columns[i].type == 'N' ? "7" : columns[i].name == "TextJust" ? "CC" : "x";
    rig.folder.Put("e.shx", file.shx);
    rig.folder.Put("e.dbf", Table(columns, {row}));
    const tEntity found = Read(rig.folder.Put("e.shp", file.shp)).at(0);
    return Row(found.bType, found.Layer, others);
  };
  EXPECT_EQ(read(fields), "3 x none");
  for (const std::size_t missing : {0U, 4U, 8U, 11U}) {
    auto some = fields;
    some.erase(some.begin() + static_cast<std::ptrdiff_t>(missing));
    EXPECT_TRUE(read(some).starts_with("0 0 ")) << "without " << fields[missing].name;
    some = fields;
    some[missing].type = 'D';
    EXPECT_TRUE(read(some).starts_with("0 0 ")) << fields[missing].name << " of another type";
  }
  fields.insert(fields.begin() + 2, {"OWNER", 5});
  fields.erase(fields.begin() + 6);  // LineType, which not every drawing has
  EXPECT_EQ(read(fields), "3 x OWNER");
  ESRIOutFilt writer(rig.context);
  writer.filename(rig.folder.Path("f.shp"));
  ESRIInFilt reader(rig.context);
  reader.Layered = false;
  reader.filename(rig.folder.Path("e.shp"));
  writer.SourceOpened(reader);
  for (tEntity& entity : rig.ReadAll(reader)) writer.WriteEntity(entity);
  writer.Release();
  DBFInFilter copy(Dialect::Standard);
  copy.filename(rig.folder.Path("f.dbf"));
  EXPECT_EQ(
      FieldNames(copy),
      "OWNER, Desc, Code, ColorNum, ColorName, TrueColor, BlockName, Handle, Text, TextAngle, TextSize, TextJust");
  EXPECT_EQ(copy.GetFieldData(0, 0), "x") << "a text of a drawing has its own row";
}

}  // namespace
}  // namespace tesselink
