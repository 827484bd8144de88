// SPDX-License-Identifier: MIT
// Whole conversions while the system fails: whatever call it is, inputs stay as they are, the output is the old one or
// the new one, and a run that says that it is done has made the output that it makes otherwise.
#include <gtest/gtest.h>

#include "core/io/OutputPlace.h"
#include "core/run/ConversionRun.h"
#include "formats/Formats.h"
#include "formats/cdf/CodeTables.h"
#include "support/Disturbance.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

struct Scenario {
  std::string name;
  std::vector<std::string> inputs;  // examples; for files that are not there their text
  std::string output;
  Dialect dialect = Dialect::Standard;
  bool matched = false;   // layers get codes
  bool repaired = false;  // the line ends of the input
  std::string from = {};  // a key; empty: by the extension
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) { return out << scenario.name; }

std::vector<Scenario> Scenarios() {
  return {
      {"ShapesToShapes", {"wells.shp"}, "out.shp"},
      {"ShapesToADrawing", {"quarter-section.shp"}, "out.dxf", Dialect::Classic},
      {"ShapesToASurvey", {"sections.shp"}, "out.asc"},
      {"PointsToCDF", {"wells.shp"}, "out.cdf"},
      {"SeveralShapefiles", {"wells.shp", "sections.shp"}, "out.dxf", Dialect::Standard, false, false, "multishp"},
      {"ShapesToFeatures", {"sections.shp"}, "out.geojson"},
      {"SectionsToTheDigitizer", {"sections.shp"}, "out.grd"},
      {"ADrawingToCDF", {"all-entities.dxf"}, "out.cdf", Dialect::Standard, true},
      {"ADrawingToShapes", {"all-entities.dxf"}, "out.shp", Dialect::Classic},
      {"ASurveyToADrawing", {"quarter-section.asc"}, "out.dxf"},
      {"CDFToASurvey", {"quarter-section.cdf"}, "out.asc"},
      {"ARepairedSurvey", {"bare.asc"}, "out.dxf", Dialect::Classic, false, true},
  };
}

class FaultyRuns : public testing::TestWithParam<Scenario> {
 protected:
  FaultyRuns() {
    for (const std::string& path : {drawings_, inputs_, temporary_}) fs::create_directory(path);
    setenv("TMPDIR", temporary_.c_str(), 1);
    for (const auto& file : fs::directory_iterator(TESSELINK_SOURCE "/examples")) {
      const std::string name = file.path().filename();
      for (const std::string& input : GetParam().inputs) {
        if (name.starts_with(input.substr(0, input.size() - 3))) fs::copy(file.path(), inputs_);
      }
    }
    WriteBareSurvey();
    given_ = All(inputs_);
    Begin({});
    Run();
    made_ = All(drawings_);
    read_ = All(inputs_);  // as they are after a repair
    old_ = made_;
    for (auto& [name, content] : old_) content = "old " + name;
  }
  void WriteBareSurvey() const {
    if (!GetParam().repaired) return;
    std::ofstream(inputs_ + "/bare.asc") << "METAFILE,A LONG NAME,M,1,0,0\nLINE, , , , ,RED\nXY,1,2\nXY,3,4\nLINE\n";
  }
  void Begin(const Contents& before) {
    for (const std::string& path : {drawings_, temporary_}) {
      fs::remove_all(path);
      fs::create_directory(path);
    }
    for (const auto& [name, content] : before) std::ofstream(drawings_ + "/" + name) << content;
    WriteBareSurvey();
  }

  void Run() {
    const Scenario& scenario = GetParam();
    ScriptedInteraction person;
    person.answer = Answer::Yes;
    person.tableFields = {inputs_ + "/sections.dbf", {"TWP", "RGE", "SEC"}};
    if (scenario.matched) person.codes.emplace(8, "CU00001");
    MemorySettings settings;
    ConversionRequest request;
    for (const std::string& input : scenario.inputs) request.inputs.push_back(inputs_ + "/" + input);
    request.OutFile = drawings_ + "/" + scenario.output;
    request.InFormat = EntryOf(AllFormats().Inputs(), scenario.from, scenario.inputs[0]);
    request.OutFormat = EntryOf(AllFormats().Outputs(), "", scenario.output);
    request.useAttributes = false;
    request.overwrite = true;
    request.options.dialect = scenario.dialect;
    request.options.programFolder = TESSELINK_DATA_FOLDER;
    request.options.moduleFolder = TESSELINK_DATA_FOLDER;
    request.options.systems.allowBallpark = true;
    summary_ = ConversionRun(AllFormats(), person, settings, FillerFromCodeTables()).Run(request);
    told_ = summary_.error + summary_.reason;
    warned_ = "\n";
    for (const Message& message : person.messages) told_ += message.text + "\n";
    for (const Warning& warning : summary_.report.Warnings()) warned_ += warning.kind + ": " + warning.text + "\n";
  }
  template <typename Rows>
  static std::string EntryOf(const Rows& rows, const std::string& key, const std::string& path) {
    for (const auto& row : rows) {
      if (key.empty() ? path.ends_with(row.Extension()) : row.key == key) return row.entry;
    }
    return {};
  }

  // Runs while a call fails, and looks at what is left. False when there is no such call.
  bool Survives(const Contents& before, Disturbance::Kind kind, int error, int at) {
    Begin(before);
    bool isReached = false;
    {
      const Disturbed disturbed(kind, error, at);
      Run();
      isReached = disturbance.calls > at;
    }
    ExpectInputsWhole();
    const Contents left = All(drawings_);
    isTold_ = Holds(warned_, "\nlist not read: ") || Holds(warned_, "\ncolour table: ");
    if (summary_.outcome == RunOutcome::Done) {
      EXPECT_TRUE(isTold_ || Visible(left) == made_) << "it says that it is done\n" << Names(left) << warned_;
    } else {
      EXPECT_NE(told_, "") << "it fails without a word";
      EXPECT_EQ(told_.find("/.tesselink-"), std::string::npos) << told_;
    }
    ExpectOldOrNew(before);
    return isReached;
  }
  // What differs from what the run makes otherwise.
  std::string Names(const Contents& files) const {
    std::string names;
    for (const auto& [name, content] : files) {
      const auto made = made_.find(name);
      names += name + (made == made_.end() ? " (unexpected)\n" : made->second == content ? "\n" : " (other)\n");
    }
    return names;
  }
  static Contents Visible(Contents files) {
    std::erase_if(files, [](const auto& file) { return file.first.starts_with(".tesselink-"); });
    return files;
  }
  void ExpectInputsWhole() const {
    const Contents now = Visible(All(inputs_));
    EXPECT_TRUE(now == given_ || now == read_) << "the inputs are not what they were";
  }
  // Behind the next run to the same target, whatever became of this one, there is nothing else.
  void ExpectOldOrNew(const Contents& before) {
    { const OutputPlace next(drawings_ + "/" + GetParam().output, {.overwrite = true, .companions = kCompanions}); }
    Contents now = All(drawings_);
    const bool failed =
        std::erase_if(now, [](const auto& file) { return file.first.find(".incomplete.") != std::string::npos; }) > 0;
    const bool isPart = before.empty() && summary_.outcome != RunOutcome::Done && !now.empty();
    EXPECT_TRUE(now == before || now == made_ || isPart || isTold_) << Names(now);
    EXPECT_TRUE(!failed || summary_.oldKept);
  }

  static inline const std::vector<std::string> kCompanions{"shx", "dbf", "cpg", "prj", "pts"};
  InMemory inMemory_;
  Folder scratch_;
  const std::string drawings_ = scratch_.Path("drawings"), inputs_ = scratch_.Path("inputs"),
                    temporary_ = scratch_.Path("temporary");
  Contents given_, read_, made_, old_;
  RunSummary summary_;
  std::string told_;  // of a failure
  std::string warned_;
  bool isTold_ = false;  // that a list or a table was not read, without which the output is another
};

TEST_P(FaultyRuns, EachCallThatFails) {
  for (const Contents& before : {old_, Contents()}) {
    for (const int error : {ENOSPC, EIO, EACCES, EMFILE, EXDEV, EINTR}) {
      if (before.empty() && error != ENOSPC) continue;
      for (const auto kind : {Disturbance::Kind::Fails, Disturbance::Kind::FailsForGood}) {
        if (kind == Disturbance::Kind::FailsForGood && error != ENOSPC && error != EIO) continue;
        for (int at = 0;; ++at) {
          SCOPED_TRACE("error " + std::to_string(error) + " at call " + std::to_string(at) + ", kind " +
                       std::to_string(static_cast<int>(kind)) + (before.empty() ? ", new" : ", replacing"));
          if (!Survives(before, kind, error, at) || HasFailure()) break;
        }
        if (HasFailure()) return;
      }
    }
  }
}

TEST_P(FaultyRuns, TransfersThatAreCutShort) {
  Survives(old_, Disturbance::Kind::IsCutShort, 0, 0);
  EXPECT_EQ(summary_.outcome, RunOutcome::Done) << told_;
}

TEST_P(FaultyRuns, KilledAtEachCall) {
  for (int at = 0;; ++at) {
    SCOPED_TRACE("killed at call " + std::to_string(at));
    Begin(old_);
    const bool isReached = IsKilled(at, [this] { Run(); });
    ExpectInputsWhole();
    Run();
    EXPECT_EQ(summary_.outcome, RunOutcome::Done) << told_;
    EXPECT_EQ(All(drawings_), made_);
    EXPECT_TRUE(fs::is_empty(temporary_));
    if (!isReached || HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(All, FaultyRuns, testing::ValuesIn(Scenarios()),
                         [](const auto& scenario) { return scenario.param.name; });

}  // namespace
}  // namespace tesselink
