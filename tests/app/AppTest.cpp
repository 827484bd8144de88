// SPDX-License-Identifier: MIT
// What both faces share: the account of a run, the files that a run replaces.
#include <gtest/gtest.h>

#include "app/SummaryText.h"
#include "core/run/WrittenFiles.h"
#include "formats/Formats.h"
#include "support/Support.h"

namespace tesselink {
namespace {

TEST(SummaryText, AccountsForEverything) {
  RunSummary summary;
  summary.outcome = RunOutcome::Done;
  for (int i = 0; i < 3; ++i) summary.read.Add(kPoint);
  summary.read.Add(kArc);
  summary.written.Add(kPoint);
  summary.converted.Add(kPoint);
  summary.skipped.Add(kArc);
  summary.skippedHint = "that writes it";
  summary.clipped.Add(kText);
  summary.report.Undelivered("PointZ");
  for (int i = 0; i < 3; ++i) summary.report.Warn(WarningKind::Heights, "a.shp, record 1: odd");
  summary.report.Warn(WarningKind::Curves, "a.shp: 7");
  summary.report.Warn(WarningKind::RingsTurned, "a.shp: turned");
  summary.outputs = {"out.dxf"};
  using Lines = std::vector<std::string>;
  const RunAccount account = AccountOf(summary);
  EXPECT_EQ(account.ending, "2 elements written");
  EXPECT_EQ(account.gone,
            (Lines{"not written: 1 arc; that writes it", "not read, and so not converted: 1 of type PointZ",
                   "a.shp, record 1: odd (and 2 more of this kind)"}));
  EXPECT_EQ(account.changed, Lines{"a.shp: 7"});
  EXPECT_EQ(account.remarks, Lines{"a.shp: turned"});
  EXPECT_EQ(account.counts, (Lines{"Read: 3 points, 1 arc", "Written: 1 point", "Written as another kind: 1 point",
                                   "Left out by clip: 1 text"}));
  EXPECT_EQ(account.files, Lines{"out.dxf"});
  EXPECT_EQ(AccountOf(RunSummary()).ending, "no elements written");
  summary.outcome = RunOutcome::Failed;
  summary.oldKept = true;
  EXPECT_EQ(AccountOf(summary).ending,
            "the output is as it was before; what was converted lies beside it, with 2 elements");
}

class Elsewhere : public Wording {
  std::string Text(const char* context, const char* text) const override {
    if (std::string_view(text) == "%1 (and %2 more of this kind)") return "%2 more: %1 100 %";
    return std::string_view(context) == "Warnings" ? "What it means." : text;
  }
  std::string Number(std::int64_t number) const override { return "#" + std::to_string(number); }
};

TEST(SummaryText, FollowsTheLanguageOfAFace) {
  RunSummary summary;
  summary.outcome = RunOutcome::Failed;
  summary.written.Add(kPoint);
  for (int i = 0; i < 3; ++i) summary.report.Warn(WarningKind::Heights, "%2.shp: odd");
  const RunAccount account = AccountOf(summary, Elsewhere());
  EXPECT_EQ(account.gone, std::vector<std::string>{"What it means.\n#2 more: %2.shp: odd 100 %"});
  EXPECT_EQ(account.counts, std::vector<std::string>{"Read: no elements"}) << "nothing is written without an output";
}

TEST(SummaryText, TellsTheTimeThatRemainsOnceItCan) {
  using std::chrono::milliseconds;
  EXPECT_EQ(RemainingText(milliseconds(999), 50), "");
  EXPECT_EQ(RemainingText(milliseconds(5000), 0), "");
  EXPECT_EQ(RemainingText(milliseconds(5000), 100), "");
  EXPECT_EQ(RemainingText(milliseconds(500'000'000), 0.01), "");
  EXPECT_EQ(RemainingText(milliseconds(5000), 25), "about 15 s remaining");
  EXPECT_EQ(RemainingText(milliseconds(60000), 40), "about 1 min 30 s remaining");
  EXPECT_EQ(RemainingText(milliseconds(60000), 1), "about 1 h 39 min remaining");
}

TEST(WrittenFiles, AreTheOutputAndWhatLiesBesideIt) {
  const Folder folder;
  const OutputFormat& shapefile = AllFormats().Output("ESRI Shapefile (*.shp)");
  const std::string output = folder.Path("plat.shp");
  EXPECT_TRUE(ReplacedFiles(output, shapefile, {}).empty());
  const std::string index = folder.Put("plat.Shx", ""), table = folder.Put("plat.dbf", "");
  EXPECT_EQ(ReplacedFiles(output, shapefile, {}), (std::vector<std::string>{index, table}));
  EXPECT_TRUE(ReplacedFiles(output, AllFormats().Output("AutoCAD DXF File (*.dxf)"), {}).empty());
  EXPECT_EQ(ReplacedFiles(folder.Path(""), shapefile, {}), std::vector<std::string>{folder.Path("")});
  EXPECT_TRUE(ReplacedFiles("/dev/null", AllFormats().Output("AutoCAD DXF File (*.dxf)"), {}).empty());
}

}  // namespace
}  // namespace tesselink
