// SPDX-License-Identifier: MIT
// What fields of attribute tables make of labels and colours.
#include <gtest/gtest.h>

#include <cmath>

#include "core/run/LabelFields.h"
#include "formats/shape/DBFInFilter.h"
#include "formats/shape/FieldColours.h"
#include "formats/shape/LabelHeight.h"
#include "support/Shapes.h"
#include "support/Support.h"

namespace tesselink {
namespace {

class LabelsTest : public testing::Test {
 protected:
  Rig rig;
  DBFInFilter table{Dialect::Standard};

  LabelsTest() {
    table.filename(rig.folder.Put(
        "t.dbf",
        Table({{"NAME", 6}, {"DEPTH", 6, 'N'}, {"H", 5}, {"100", 3}, {"a{b", 2}},
              {{"  Oil", " 8412", "2.5", "7", "x"}, {"", "", "", "", ""}, {"Gas", "12.50", "high", "-1", "y"}})));
  }
  // The labels of all rows, as text, height and angle; what cannot be is told.
  std::string Labels(const std::string& text, const LabelLook& look = {}) {
    return WordsOrLabels([&] {
      FieldSelection chosen;
      chosen.Create(table);
      chosen.Continue();
      chosen.Choose(text);
      chosen.Choose(look);
      LabelFields labels(chosen, table, "t.dbf", rig.report);
      std::string all;
      tEntity label;
      for (std::int64_t row = 0; row < 3; ++row) {
        if (labels.Fill(row, label)) all += label.Text + "," + Row(label.TextSize, label.TextAng) + ";";
      }
      return all;
    });
  }
  static std::string WordsOrLabels(const std::function<std::string()>& labels) {
    std::string all;
    const std::string error = ErrorOf([&] { all = labels(); });
    return error.empty() ? all : error;
  }
};

TEST_F(LabelsTest, TemplatesOfFields) {
  EXPECT_EQ(Labels("NAME"), "  Oil,1000 0;,1000 0;Gas,1000 0;") << "a field's values as they are";
  EXPECT_EQ(Labels("{name} ({ Depth } ft)"), "Oil (8412 ft),1000 0;Gas (12.50 ft),1000 0;");
  EXPECT_EQ(Labels("{{{NAME}}}"), "{Oil},1000 0;{Gas},1000 0;");
  EXPECT_EQ(Labels("{{}}"), "{},1000 0;{},1000 0;{},1000 0;") << "nothing in it is blank";
  EXPECT_EQ(Labels("a{b"), "x,1000 0;,1000 0;y,1000 0;") << "a field's name is no template";
  EXPECT_EQ(Labels("{DEEP}"), "t.dbf: there is no field \"DEEP\"; the fields are NAME, DEPTH, H, 100, a{b");
  for (const char* text : {"{NAME", "NAME}", "{{NAME}", "{"}) EXPECT_TRUE(Holds(Labels(text), "a lone brace")) << text;
}

TEST_F(LabelsTest, HeightsAndAngles) {
  EXPECT_EQ(Labels("{NAME}", {"100", "-45.5"}), "Oil,100 -45.5;Gas,100 -45.5;") << "a number is no field";
  EXPECT_EQ(Labels("{NAME}", {"{100}", "depth"}), "Oil,7 8412;Gas,1000 12.5;") << "in braces it is";
  EXPECT_EQ(Labels("NAME", {"H", ""}), "  Oil,2.5 0;,1000 0;Gas,1000 0;");
  const Warning* told = rig.WarningOf("label numbers");
  ASSERT_NE(told, nullptr);
  EXPECT_EQ(Row(told->count, told->text), "3 t.dbf, row 3: \"-1\" in 100 is no height of a label; 1000 was taken");
  EXPECT_TRUE(Holds(Labels("NAME", {"0"}), "above 0"));
  EXPECT_TRUE(Holds(Labels("NAME", {"tall"}), "no field \"tall\""));
}

TEST_F(LabelsTest, ColoursOfAField) {
  FieldColours colours(TESSELINK_DATA_FOLDER, rig.report);
  const std::string none = "0 0 0; ";
  std::string found;
  for (const char* value : {" 1 ", "255.0", "orange", "#FF8000", "0, 0,255", "BLACK", "", "0", "256", "2.5", "#ff80",
                            "#ff80 0", "1,2,256", "1,2,3,4", "mauve"}) {
    tEntity entity;
    colours.Give(value, entity, "t.dbf", 0);
    found += Row(entity.Colour, entity.RGB, entity.IsBlack) + "; ";
  }
  // By number as the table of colours has them; the others get the number that comes nearest. Black is one of them.
  EXPECT_EQ(found, "1 255 0; 255 16777215 0; 40 42495 0; 30 33023 0; 5 16711680 0; 18 0 1; " + none + none + none +
                       none + none + none + none + none + none);
  EXPECT_EQ(rig.WarningOf("colour values")->count, 8);
}

TEST_F(LabelsTest, AHeightByTheSizeOfTheDrawing) {
  const auto prj = [&](const std::string& text) { return rig.folder.Put("t.prj", text); };
  EXPECT_EQ(HeightOfLabels({0, 0, 5281.374, 100}, "").height, 52.8);
  EXPECT_EQ(HeightOfLabels({-104.5, 40, -104, 40.1}, "").height, 0.0001) << "degrees by their range";
  EXPECT_EQ(HeightOfLabels({1, 1, 6, 3}, prj("PROJCS[\"x\",GEOGCS[\"NAD27\"]]")).height, 0.05);
  EXPECT_EQ(HeightOfLabels({200, 10, 300, 30}, prj("GeogCS[\"NAD27\"]")).height, 0.02);
  EXPECT_EQ(HeightOfLabels({1000, 10, 6000, 30}, prj("GeogCS[\"NAD27\"]")).height, 50) << "whatever it says";
  for (const double odd : {0.0, -5.0, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(HeightOfLabels({500, 500, 500 + odd, 500 + odd}, "").height, 10) << odd;
  }
}

}  // namespace
}  // namespace tesselink
