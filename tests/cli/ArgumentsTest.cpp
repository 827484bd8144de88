#include "cli/Arguments.h"

#include <gtest/gtest.h>

namespace tesselink {
namespace {

TEST(Arguments, ConvertTakesTheLastFileAsItsOutput) {
  const Command command = ParseArguments({"convert", "a.shp", "-O", "b.shp", "--layer-field", "LAYER", "out.dxf",
                                          "--json", "--line-ends", "copy=fixed.asc", "--no-progress", "--to", "dxf"});
  const auto* convert = std::get_if<ConvertCommand>(&command);
  ASSERT_NE(convert, nullptr);
  EXPECT_EQ(convert->inputs, (std::vector<std::string>{"a.shp", "b.shp"}));
  EXPECT_EQ(convert->output, "out.dxf");
  EXPECT_EQ(convert->reading.layerField, "LAYER");
  EXPECT_EQ(convert->reading.lineEnds, LineEndsChoice::Copy);
  EXPECT_EQ(convert->reading.lineEndsCopy, "fixed.asc");
  EXPECT_EQ(convert->progress, ProgressChoice::Never);
  EXPECT_EQ(convert->to, "dxf");
  EXPECT_TRUE(convert->overwrite && convert->json && !convert->quiet);
}

TEST(Arguments, WhereTownshipsRangesAndSectionsAre) {
  const Command command = ParseArguments(
      {"convert", "--township", "T", "--range=R", "--section", "S", "--table", "t.dbf", "a.shp", "out.grd"});
  const auto* convert = std::get_if<ConvertCommand>(&command);
  ASSERT_NE(convert, nullptr);
  const OptionValues& own = convert->reading.own;
  EXPECT_EQ(own.Text("township") + own.Text("range") + own.Text("section") + own.Text("table"), "TRSt.dbf");
}

TEST(Arguments, ReadingOptionsServeEveryReadingCommand) {
  for (const char* name : {"info", "cat"}) {
    const Command command = ParseArguments({name, "--from", "shp", "--text-field", "T", "--line-ends", "replace", "a"});
    const ReadingOptions* reading = nullptr;
    if (const auto* info = std::get_if<InfoCommand>(&command)) reading = &info->reading;
    if (const auto* cat = std::get_if<CatCommand>(&command)) reading = &cat->reading;
    ASSERT_NE(reading, nullptr) << name;
    EXPECT_EQ(reading->from + reading->textField, "shpT");
    EXPECT_EQ(reading->lineEnds, LineEndsChoice::Replace);
  }
}

}  // namespace
}  // namespace tesselink
