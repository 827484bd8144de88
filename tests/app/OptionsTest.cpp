// SPDX-License-Identifier: MIT
// What both faces share of a conversion's options: which there are, the command line that says them, and what the
// dialects do.
#include <gtest/gtest.h>

#include <set>

#include "app/ConversionOptions.h"
#include "app/DialectGain.h"
#include "app/DialectText.h"
#include "app/ShellText.h"
#include "cli/Arguments.h"
#include "core/io/Files.h"
#include "formats/Formats.h"
#include "picture/PreviewReading.h"
#include "support/Support.h"

namespace tesselink {
namespace {

using Names = std::set<std::string>;

template <typename Rows>
const auto& RowOf(const Rows& rows, const std::string& key) {
  return *std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.key == key; });
}
const InputFormat& Input(const std::string& key) { return RowOf(AllFormats().Inputs(), key); }
const OutputFormat& Output(const std::string& key) { return RowOf(AllFormats().Outputs(), key); }

Names OptionNames(const std::string& from, const std::string& to) {
  Names names;
  for (const ConversionOption& option : OptionsOf(Input(from), Output(to))) names.insert(option.row.name);
  return names;
}

std::string Example(const std::string& name) { return std::string(TESSELINK_SOURCE "/examples/") + name; }

// Everything that the command line has for a conversion can be said in the window too, but for these.
TEST(ConversionOptions, AreThoseOfTheCommandLine) {
  const Names elsewhere{"dialect", "from",          "to",   "overwrite", "progress",     "no-progress", "quiet",
                        "json",    "show-settings", "help", "batch",     "batch-memory", "nothing-left"};
  std::vector<CommandOption> command;
  ParseArguments({"convert", "a.shp", "b.dxf"}, &command);
  Names known, offered;
  for (const CommandOption& option : command) known.insert(option.name);
  for (const InputFormat& input : AllFormats().Inputs()) {
    for (const OutputFormat& output : AllFormats().Outputs()) offered.merge(OptionNames(input.key, output.key));
  }
  for (const std::string& name : known) EXPECT_TRUE(offered.contains(name) || elsewhere.contains(name)) << name;
  for (const std::string& name : offered) EXPECT_TRUE(known.contains(name)) << name;
}

TEST(ConversionOptions, DependOnThePairAndOnEachOther) {
  const Names plat = OptionNames("asc", "cdf"), wells = OptionNames("shp", "dxf"), sections = OptionNames("shp", "grd");
  for (const char* name : {"line-ends", "tolerance", "points", "layer-codes"}) EXPECT_TRUE(plat.contains(name)) << name;
  for (const char* name : {"layer-field", "blocks", "shape-type", "units"}) EXPECT_FALSE(plat.contains(name)) << name;
  for (const char* name : {"layer-field", "text-height", "encoding", "release"})
    EXPECT_TRUE(wells.contains(name)) << name;
  for (const char* name : {"tolerance", "line-ends"}) EXPECT_FALSE(wells.contains(name)) << name;
  EXPECT_TRUE(sections.contains("township"));
  EXPECT_FALSE(sections.contains("layer-field"));

  OptionValues values;
  for (const char* name : {"build-areas", "snap", "encoding", "text-height"}) values.Set(name, "1");
  const auto counting = [&](Dialect dialect) {
    Names names;
    const OptionValues counts =
        ValuesThatCount(OptionsOf(Input("shp"), Output("dxf")), {Output("dxf"), dialect, values});
    for (const auto& [name, value] : counts.All()) {
      names.insert(name);
    }
    return names;
  };
  EXPECT_EQ(counting(Dialect::Classic), Names());
  EXPECT_EQ(counting(Dialect::Standard), Names{"encoding"});
  values.Set("release", "2007");
  EXPECT_EQ(counting(Dialect::Standard), (Names{"build-areas", "encoding", "release", "snap"}));
}

TEST(ShellText, ComesThroughAShellAsItIs) {
  const Folder folder;
  for (const std::string& text : {std::string("plain.dxf"), std::string(), std::string("it's $HOME `id` \\ \"x\"\n*?"),
                                  std::string("caf\xc3\xa9 ~"), std::string("caf\xe9 %d 'x'\\")}) {
    const std::string quoted = ShellQuotedAsUtf8(text), out = folder.Path("out");
    ASSERT_EQ(std::system(("printf %s " + quoted + " > " + ShellQuoted(out)).c_str()), 0);
    EXPECT_EQ(Folder::Get(out), text);
    EXPECT_EQ(quoted.find('\xe9'), std::string::npos);
  }
}

RunSummary Converted(const std::string& input, const std::string& output, Dialect dialect) {
  ScriptedInteraction person;
  MemorySettings settings;
  ConversionRequest request;
  request.inputs = {input};
  request.OutFile = output;
  request.useAttributes = false;
  request.overwrite = true;
  for (const InputFormat& row : AllFormats().Inputs()) {
    if (request.InFormat.empty() && input.ends_with(row.Extension())) request.InFormat = row.entry;
  }
  for (const OutputFormat& row : AllFormats().Outputs()) {
    if (request.OutFormat.empty() && output.ends_with(row.Extension())) request.OutFormat = row.entry;
  }
  request.options.dialect = dialect;
  request.options.programFolder = TESSELINK_DATA_FOLDER;
  return ConversionRun(AllFormats(), person, settings).Run(request);
}

TEST(DialectGain, IsToldWhereAClassicRunGaveUpWhatStandardKeeps) {
  const Folder folder;
  const std::string line =
      folder.Put("line.dxf",
                 "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nLINE\r\n  8\r\n0\r\n 10\r\n1\r\n 20\r\n2\r\n"
                 " 11\r\n3\r\n 21\r\n4\r\n  0\r\nENDSEC\r\n  0\r\nEOF\r\n");
  const auto gains = [&](const std::string& input, const std::string& key) {
    const std::string output = folder.Path("out" + Output(key).Extension());
    const RunSummary summary = Converted(input, output, Dialect::Classic);
    EXPECT_EQ(summary.outcome, RunOutcome::Done) << summary.error;
    return StandardKeepsMore(summary, Output(key));
  };
  EXPECT_TRUE(gains(Example("quarter-section.asc"), "dxf"));
  EXPECT_TRUE(gains(Example("all-entities.dxf"), "cdf"));
  EXPECT_TRUE(gains(Example("wells.shp"), "dxf"));  // its attributes
  EXPECT_FALSE(gains(line, "dxf"));
  EXPECT_FALSE(gains(line, "cdf"));
  RunSummary refused;
  refused.report.Warn(WarningKind::ClassicDialect, "out.dxf");
  refused.outcome = RunOutcome::Refused;
  EXPECT_FALSE(StandardKeepsMore(refused, Output("dxf")));
}

// The facts are those of the preview's reading.
std::vector<std::string> Told(const std::string& from, const std::string& to, const std::string& path, Dialect dialect,
                              const OptionValues& values = {}) {
  MemorySettings settings;
  FilterOptions options;
  options.dialect = dialect;
  options.own = values;
  options.programFolder = TESSELINK_DATA_FOLDER;
  PreviewReading reading({Input(from), {path}, options}, settings);
  while (reading.Slice(std::chrono::milliseconds(100))) {
  }
  std::vector<std::string> told;
  for (const DialectSentence& sentence : DialectSentences(Input(from), Output(to), dialect, values, reading.Facts())) {
    told.push_back(std::to_string(sentence.count) + " " + sentence.Pattern() + " " + sentence.names);
  }
  return told;
}

TEST(DialectText, SpeaksOfTheDrawingAtHand) {
  using Lines = std::vector<std::string>;
  const std::string wells = Example("wells.shp"), plat = Example("quarter-section.asc"),
                    all = Example("all-entities.dxf");
  EXPECT_EQ(Told("shp", "dxf", wells, Dialect::Classic),
            (Lines{"1 shape 1 takes row 2's attributes ", "1 attributes beyond layer and text stay behind "}));
  EXPECT_EQ(Told("asc", "dxf", plat, Dialect::Classic), Lines{"4 other programs miss %1 closed chains "});
  EXPECT_EQ(Told("asc", "dxf", plat, Dialect::Standard), Lines{"4 %1 closed chains stay closed "});
  EXPECT_EQ(Told("shp", "geojson", Example("sections.shp"), Dialect::Classic),
            (Lines{"1 shape 1 takes row 2's attributes ", "4 %1 areas become lines "}));
  const Lines drawing = Told("dxf", "asc", all, Dialect::Classic);
  ASSERT_GE(drawing.size(), 2U);
  EXPECT_EQ(drawing[0], "1 %1 element is not read (%2) HATCH");
  EXPECT_EQ(drawing[1], "2 %1 blocks come as points ");
  OptionValues expanded;
  expanded.Set("blocks", "expand");
  for (const std::string& line : Told("dxf", "asc", all, Dialect::Classic, expanded)) {
    EXPECT_EQ(line.find("block"), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace tesselink
