// SPDX-License-Identifier: MIT
#include "core/run/ConversionRun.h"

#include <gtest/gtest.h>

#include "support/Support.h"

namespace tesselink {
namespace {

// What the fakes do, and the order of the calls they saw.
struct Script {
  std::vector<std::string> calls;
  std::string failAt;  // a call at which an Error is thrown
  std::vector<tEntity> elements;
  std::vector<std::string> layers;

  void Call(const std::string& name) {
    calls.push_back(name);
    if (name == failAt) throw Error("boom at " + name);
  }
};

tEntity Element(std::int16_t kind, double x, const std::string& layer = "A") {
  return tesselink::Element(kind, {{x, 0}}, layer);
}

class FakeReader final : public InputFilter {
 public:
  FakeReader(const FilterContext& context, Script& script) : InputFilter(context), script_(script) {}
  int FileNumber() const override { return 0; }
  std::int64_t Loc() const override { return 0; }
  double Progress() const override { return 50; }
  bool Eof() const override { return next_ >= script_.elements.size(); }
  void SetDBFObj(FieldSelection&) override { script_.Call("SetDBFObj"); }

 private:
  void Open(const std::string& path) override {
    script_.Call("open " + path.substr(path.rfind('/') + 1) + (Layered ? "" : " unlayered"));
    filename_ = path;
    layers_ = script_.layers;
    next_ = 0;
  }
  bool Next(tEntity& entity) override {
    script_.Call("read " + std::to_string(next_));
    entity = script_.elements[next_++];
    if (!codes_.cLayerNames().empty()) entity.CDFCode = codes_.CodeOf(entity.Layer);
    return true;
  }
  Script& script_;
  std::size_t next_ = 0;
};

class FakeWriter final : public OutputFilter {
 public:
  FakeWriter(const FilterContext& context, Script& script) : OutputFilter(context), script_(script) {}
  ~FakeWriter() override { ReleaseQuietly(); }
  Holding Holds() const override { return {.curves = true}; }

 private:
  void Create(const std::string& path) override {
    script_.Call("create");
    std::ofstream(path) << "x";
  }
  WriteResult Write(tEntity& entity) override {
    script_.Call("write " + NumberText(entity.x(0)) + " " + entity.Layer + entity.CDFCode);
    return entity.bType == kArc      ? WriteResult::Skipped
           : entity.bType == kCircle ? WriteResult::Converted
                                     : WriteResult::Written;
  }
  void Complete() override { script_.Call("complete"); }
  void Drop() noexcept override { script_.calls.push_back("drop"); }
  Script& script_;
};

class ConversionRunTest : public testing::Test {
 protected:
  Script script;
  Rig rig;
  ConversionRequest request{.inputs = {rig.folder.Put("in.one", "x")},
                            .OutFile = rig.folder.Path("out.x"),
                            .InFormat = "Some Input File (*.one)",
                            .OutFormat = "Some Output (*.two)",
                            .overwrite = true};
  LayerFiller filler;

  RunSummary Run() {
    const auto reader = [this](const FilterContext& c) { return std::make_unique<FakeReader>(c, script); };
    const auto writer = [this](const FilterContext& c) { return std::make_unique<FakeWriter>(c, script); };
    const FormatTable table(
        {{{.entry = "Some Input File (*.one)", .key = "one", .fallBack = true, .companions = {{"TAB"}}}, reader},
         {{.entry = "Several Files (*.one)", .key = "several", .severalFiles = true, .hasAttributes = true}, reader}},
        {{{.entry = "Some Output (*.two)", .key = "two", .fallBack = true}, writer},
         {{.entry = "Without Layers (*.nol)", .key = "nol", .ignoresLayers = true}, writer}});
    return ConversionRun(table, rig.person, rig.settings, filler).Run(request);
  }
  using Calls = std::vector<std::string>;
};

TEST_F(ConversionRunTest, RefusesWhatCannotBeConverted) {
  const auto refused = [this](const std::string& infile, const std::string& outfile) {
    request.inputs = {infile};
    request.OutFile = outfile;
    rig.person.messages.clear();
    EXPECT_EQ(Run().outcome, RunOutcome::Refused);
    EXPECT_TRUE(script.calls.empty()) << "nothing is created";
    EXPECT_EQ(rig.person.messages.at(0).title, "Error");
    EXPECT_EQ(rig.person.messages.at(0).icon, MessageIcon::Critical);
    return rig.person.messages.at(0).text;
  };
  const std::string infile = request.inputs[0];
  EXPECT_EQ(refused("", "out"), "You must specify a valid input file");
  EXPECT_EQ(refused(rig.folder.Path("none"), "out"), "You must specify a valid input file");
  EXPECT_EQ(refused(rig.folder.Path(""), "out"), "You must specify a valid input file");
  EXPECT_EQ(refused(infile, ""), "You must select an output file");
  EXPECT_EQ(refused(infile, infile), "Input and Output files can not be the same");
  EXPECT_EQ(refused(infile, rig.folder.Path("./in.one")), "Input and Output files can not be the same");
  const std::string table = rig.folder.Put("in.tab", "x");
  EXPECT_EQ(refused(infile, table), "Input and Output files can not be the same")
      << "nor a file that is read beside it";
  EXPECT_EQ(rig.person.calls.back(), "ended") << "the window is restored";
}

TEST_F(ConversionRunTest, PumpsEveryElementThatHasAVertex) {
  script.elements = {Element(kPoint, 1), Element(kPoint, 0), Element(kArc, 2, "B"), Element(kCircle, 3)};
  const RunSummary summary = Run();
  EXPECT_EQ(script.calls, (Calls{"create", "open in.one", "read 0", "write 1 A", "read 1", "read 2", "write 2 B",
                                 "read 3", "write 3 A", "complete"}));
  EXPECT_EQ(summary.outcome, RunOutcome::Done);
  EXPECT_EQ(Row(summary.read.Total(), summary.written.Of("point"), summary.converted.Of("circle"),
                summary.skipped.Of("point"), summary.skipped.Of("arc")),
            "4 1 1 1 1");
  EXPECT_EQ(summary.layers, (Calls{"A", "B"}));
  EXPECT_EQ(summary.outputs, Calls{request.OutFile});
  EXPECT_EQ(summary.extents.maxX, 3);
  EXPECT_EQ(rig.person.beeps, 3);
  EXPECT_EQ(rig.person.calls, (Calls{"started", "ended"}));
}

TEST_F(ConversionRunTest, MatchesLayersOnceAndFillsMissingOnes) {
  script.layers = {"A", "B"};
  rig.person.codes = Calls{"CU00001", "CU00002"};
  script.elements = {Element(kPoint, 1, "B"), Element(kPoint, 2, ""), Element(kPoint, 3, "C")};
  filler = [](tEntity& entity, const FilterContext&, const TextEncoding&) { entity.Layer = "filled "; };
  Run();
  EXPECT_EQ(rig.person.calls[1], "match Some Input File Layer for Tesselink");
  EXPECT_EQ(rig.person.layersOffered, script.layers);
  EXPECT_EQ(script.calls, (Calls{"create", "open in.one", "read 0", "write 1 BCU00002", "read 1",
                                 "write 2 filled 0900000", "read 2", "write 3 C0900000", "complete"}));

  script.calls.clear();
  request.OutFormat = "Without Layers (*.nol)";
  rig.person.calls.clear();
  Run();
  EXPECT_EQ(script.calls[1], "open in.one unlayered");
  EXPECT_EQ(rig.person.calls, (Calls{"started", "ended"})) << "no layers reported, none matched";
}

TEST_F(ConversionRunTest, SeveralFilesFromTheFirstEntryBehindTheFolder) {
  request.InFormat = "Several Files (*.one)";
  request.inputs = {rig.folder.Path("1.one"), rig.folder.Path("2.one"), rig.folder.Path("3.one")};
  for (const char* name : {"1.one", "2.one", "3.one"}) rig.folder.Put(name, "x");
  script.elements = {Element(kPoint, 1)};
  script.layers = {"A"};
  EXPECT_EQ(Run().read.Total(), 3);
  EXPECT_EQ(script.calls, (Calls{"create", "open 1.one unlayered", "SetDBFObj", "read 0", "write 1 A",
                                 "open 2.one unlayered", "SetDBFObj", "read 0", "write 1 A", "open 3.one unlayered",
                                 "SetDBFObj", "read 0", "write 1 A", "complete"}));
  request.useAttributes = false;
  request.inputs.push_back(rig.folder.Path("gone.one"));
  script.calls.clear();
  const RunSummary summary = Run();
  EXPECT_EQ(summary.outcome, RunOutcome::Failed);
  EXPECT_TRUE(Holds(summary.error, "gone.one: does not exist"));
  EXPECT_EQ(std::count(script.calls.begin(), script.calls.end(), "SetDBFObj"), 0);
  request.OutFile = rig.folder.Path("2.one");
  EXPECT_EQ(Run().outcome, RunOutcome::Refused) << "the output is one of the inputs";
}

TEST_F(ConversionRunTest, AFailureAtEachStageIsToldAndLeavesNothingHalf) {
  script.elements = {Element(kPoint, 1), Element(kPoint, 2)};
  const auto failing = [this](const std::string& at) {
    script.failAt = at;
    script.calls.clear();
    rig.person.messages.clear();
    const RunSummary summary = Run();
    EXPECT_EQ(summary.outcome, RunOutcome::Failed) << at;
    EXPECT_EQ(summary.error, "boom at " + at);
    EXPECT_EQ(rig.person.messages.size(), 1U) << at;
    EXPECT_EQ(rig.person.calls.back(), "ended");
    return script.calls.back() + (summary.outputs.empty() ? "" : ", output kept");
  };
  EXPECT_EQ(failing("create"), "create");
  EXPECT_EQ(failing("open in.one"), "drop");
  EXPECT_EQ(failing("read 1"), "complete, output kept") << "what was read before the error stays";
  EXPECT_EQ(failing("write 2 A"), "drop") << "a writer that failed has no whole file to leave";
  EXPECT_EQ(failing("complete"), "drop");
  rig.folder.Put("out.x", "old");
  for (const char* stage : {"create", "open in.one", "read 1", "write 2 A", "complete"}) {
    failing(stage);
    EXPECT_EQ(Folder::Get(request.OutFile), "old") << stage;
  }
  EXPECT_EQ(Folder::Get(rig.folder.Path("out.incomplete.x")), "x") << "what was converted lies beside the old output";
}

TEST_F(ConversionRunTest, AConfirmedCancelKeepsWhatWasWritten) {
  script.elements = {Element(kPoint, 1), Element(kPoint, 2), Element(kPoint, 3)};
  rig.person.cancelAfter = 2;
  const RunSummary summary = Run();
  EXPECT_EQ(summary.outcome, RunOutcome::Cancelled);
  EXPECT_EQ(Row(summary.written.Total(), script.calls.back(), rig.person.held, rig.person.beeps), "2 complete 1 0");
  EXPECT_TRUE(rig.person.messages.empty()) << "a cancel is no error";
}

}  // namespace
}  // namespace tesselink
