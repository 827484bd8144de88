// SPDX-License-Identifier: MIT
#include "core/io/OutputPlace.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <set>

#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "support/Disturbance.h"
#include "support/Support.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

void Put(const std::string& folder, const Contents& files) {
  for (const auto& [name, content] : files) std::ofstream(std::filesystem::path(folder) / name) << content;
}

void Write(const OutputPlace& place, const std::string& name, const std::string& content) {
  FileWriter file(FolderOf(place.Path()) + name);
  file.Write(content);
  file.Close();
}

constexpr uid_t kNobody = 65534;

struct Scenario {
  std::string name;
  Contents before, made;  // what lies at the target, and what the writer makes
  Contents after;         // what lies there in the end
  std::string keep = {};  // a suffix, instead of delivering
  bool discard = false;
  bool closed = false;  // the folder takes no other file
  OutputOptions options{true, false, {"shx", "dbf", "prj", "cpg"}};
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) { return out << scenario.name; }

std::vector<Scenario> Scenarios() {
  const Contents single{{"out.dxf", "new"}};
  const Contents three{{"out.shp", "new shp"}, {"out.shx", "new shx"}, {"out.dbf", "new dbf"}};
  Contents five = three, old = {{"out.shp", "old"}, {"out.shx", "old shx"}, {"out.dbf", "old dbf"}};
  five["out.cpg"] = "UTF-8";
  five["out.prj"] = "a system";
  const Contents some{{"out.shp", "old"}, {"out.prj", "old prj"}};
  const Contents capital{{"out.shp", "old"}, {"out.SHX", "old shx"}, {"out.shx.bak", "mine"}};
  Contents onSome = three;
  onSome["out.prj"] = "old prj";
  return {
      {"SingleNew", {}, single, single},
      {"SingleReplacing",
       {{"out.dxf", "old"}, {"plan.dxf", "mine"}},
       single,
       {{"out.dxf", "new"}, {"plan.dxf", "mine"}}},
      {"SingleNewWithoutPermission", {}, single, single, "", false, false, {}},
      {"SetNew", {}, three, three},
      {"SetNewWithoutPermission", {}, three, three, "", false, false, {false, false, {"shx", "dbf"}}},
      {"SetReplacing", old, three, three},
      {"SetReplacingAndSynced", old, three, three, "", false, false, {true, true, {"shx", "dbf"}}},
      {"SetOfFiveReplacingAFew", some, five, five},
      {"SetThatLeavesOne", some, three, onSome},
      {"SetWithACompanionInCapitals",
       capital,
       three,
       {{"out.shp", "new shp"}, {"out.SHX", "new shx"}, {"out.dbf", "new dbf"}, {"out.shx.bak", "mine"}}},
      {"SetsOfParts",
       {{"out-lines.shp", "old"}, {"out-lines.dbf", "old dbf"}, {"out-texts.shp", "older"}, {"out.shp", "mine"}},
       {{"out-points.shp", "new"}, {"out-points.dbf", "new dbf"}, {"out-lines.shp", "lines"}, {"out-lines.dbf", "dbf"}},
       {{"out-points.shp", "new"},
        {"out-points.dbf", "new dbf"},
        {"out-lines.shp", "lines"},
        {"out-lines.dbf", "dbf"},
        {"out-texts.shp", "older"},
        {"out.shp", "mine"}},
       "",
       false,
       false,
       {true, false, {"dbf"}, false, {"-points", "-lines", "-texts"}}},
      {"Discarded", old, three, old, "", true},
      {"KeptBeside",
       {{"out.dxf", "old"}, {"out.incomplete.dxf", "older"}},
       single,
       {{"out.dxf", "old"}, {"out.incomplete.dxf", "new"}},
       "incomplete"},
      {"SingleInPlace", {{"out.dxf", "old and long"}}, single, single, "", false, true},
      {"SetInPlace", old, three, three, "", false, true},
  };
}

class OutputPlaceFaults : public testing::TestWithParam<Scenario> {
 protected:
  void SetUp() override {
    fs::create_directory(temporary_);
    setenv("TMPDIR", temporary_.c_str(), 1);
    if (GetParam().closed && geteuid() == 0) {  // for whom no folder is closed
      for (const std::string& path : {scratch_.Path(""), temporary_})
        ASSERT_EQ(chown(path.c_str(), kNobody, kNobody), 0);
      ASSERT_EQ(seteuid(kNobody), 0);
    }
    Begin();
  }
  void TearDown() override {
    fs::permissions(folder_, fs::perms::owner_all);
    ASSERT_EQ(seteuid(getuid()), 0);
  }
  void Begin() {
    if (fs::exists(folder_)) fs::permissions(folder_, fs::perms::owner_all);
    fs::remove_all(folder_);
    fs::create_directory(folder_);
    Put(folder_, GetParam().before);
    if (GetParam().closed) fs::permissions(folder_, fs::perms::owner_read | fs::perms::owner_exec);
  }
  void Run() const {
    const Scenario& scenario = GetParam();
    OutputPlace place(target_, scenario.options);
    try {
      for (const auto& [name, content] : scenario.made) Write(place, name, content);
    } catch (const Error& error) {
      throw Error(place.Named(error.what()));
    }
    if (scenario.discard) return place.Discard();
    scenario.keep.empty() ? place.Deliver() : place.Keep(scenario.keep);
  }
  // The next run to the target ends without result.
  void RunAgain() const { OutputPlace(target_, {true, false, GetParam().options.companions}); }
  bool IsBefore() const { return All(folder_) == GetParam().before && fs::is_empty(temporary_); }
  bool IsAfter() const { return All(folder_) == GetParam().after && fs::is_empty(temporary_); }
  // Whether the content of every old file is somewhere still, or its place is taken by the new one.
  void ExpectNothingLost() const {
    std::set<std::string> there;
    const Contents files = All(folder_);
    for (const auto& [name, content] : All(scratch_.Path(""))) there.insert(content);
    for (const auto& [name, content] : GetParam().before) {
      const auto after = GetParam().after.find(name);
      EXPECT_TRUE(there.contains(content) || (files.contains(name) && files.at(name) == after->second)) << name;
    }
  }

  InMemory inMemory_;
  Folder scratch_;
  const std::string folder_ = scratch_.Path("drawings"), temporary_ = scratch_.Path("temporary");
  const std::string target_ =
      folder_ + ((GetParam().made.contains("out.shp") || !GetParam().options.parts.empty()) ? "/out.shp" : "/out.dxf");
};

TEST_P(OutputPlaceFaults, TransfersThatAreCutShort) {
  const Disturbed disturbed(Disturbance::Kind::IsCutShort, 0, 0);
  Run();
  EXPECT_TRUE(IsAfter());
}

TEST_P(OutputPlaceFaults, EachCallThatFailsLeavesTheOldOrTheNew) {
  for (const int error : {EINTR, ENOSPC, EIO, EACCES, EMFILE, EXDEV}) {
    for (const auto kind : {Disturbance::Kind::Fails, Disturbance::Kind::FailsForGood}) {
      bool isReached = error != EINTR || kind == Disturbance::Kind::Fails;
      for (int at = 0; isReached; ++at) {
        SCOPED_TRACE("error " + std::to_string(error) + " at call " + std::to_string(at) + ", kind " +
                     std::to_string(static_cast<int>(kind)));
        Begin();
        std::string message;
        {
          const Disturbed disturbed(kind, error, at);
          message = ErrorOf([this] { Run(); });
          isReached = disturbance.calls > at;
        }
        EXPECT_TRUE(error != EINTR || All(folder_) == GetParam().after) << "an interruption changes nothing";
        if (!message.empty()) {
          EXPECT_TRUE(Holds(message, folder_ + "/out")) << message;
          EXPECT_EQ(message.find(".tesselink"), std::string::npos) << message;
        }
        ExpectNothingLost();
        RunAgain();
        EXPECT_TRUE(IsAfter() || (IsBefore() && (!message.empty() || GetParam().discard)))
            << message << "\n"
            << testing::PrintToString(All(folder_));
        if (HasFailure()) return;
      }
    }
  }
}

TEST_P(OutputPlaceFaults, KilledAtEachCallTheNextRunFindsTheOldOrTheNew) {
  for (int at = 0;; ++at) {
    SCOPED_TRACE("killed at call " + std::to_string(at));
    Begin();
    const bool isReached = IsKilled(at, [this] { Run(); });
    ExpectNothingLost();
    if (at % 2 == 0) {
      IsKilled(at * 7 % 41, [this] { RunAgain(); });
    } else {
      const Disturbed disturbed(Disturbance::Kind::FailsForGood, EIO, at * 7 % 41);
      EXPECT_EQ(ErrorOf([this] { RunAgain(); }).find(".tesselink"), std::string::npos);
    }
    ExpectNothingLost();
    RunAgain();
    EXPECT_TRUE(IsAfter() || IsBefore()) << testing::PrintToString(All(scratch_.Path("")));
    if (HasFailure()) return;
    if (isReached) continue;
    EXPECT_GT(at, 10);
    return;
  }
}

INSTANTIATE_TEST_SUITE_P(All, OutputPlaceFaults, testing::ValuesIn(Scenarios()),
                         [](const auto& scenario) { return scenario.param.name; });

TEST(OutputPlace, TakesOnRightsAndFollowsALink) {
  const Folder folder;
  const std::string real = folder.Put("real.dxf", "old"), link = folder.Path("link.dxf");
  fs::permissions(real, fs::perms::owner_all | fs::perms::group_read);
  fs::create_symlink("real.dxf", link);
  fs::create_hard_link(real, folder.Path("other.dxf"));
  OutputPlace place(link, {true});
  EXPECT_TRUE(place.Replaces());
  EXPECT_EQ(place.Notes(), std::vector{link + ": has other names (hard links); those keep the old content"});
  EXPECT_EQ(place.Named("not " + place.Path() + "x"), "not " + link + "x");
  Write(place, "real.dxf", "new");
  EXPECT_EQ(place.Deliver().files, std::vector{link});
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(fs::status(real).permissions(), fs::perms::owner_all | fs::perms::group_read);
  EXPECT_EQ(All(folder.Path("")), (Contents{{"real.dxf", "new"}, {"link.dxf", "new"}, {"other.dxf", "old"}}));
}

TEST(OutputPlace, WritesDevicesAndPipesDirectly) {
  const Folder folder;
  fs::create_symlink("/dev/full", folder.Path("full.dxf"));
  fs::create_symlink("/dev/full", folder.Path("out.pts"));
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  for (const std::string& path :
       {std::string("/dev/stdout"), std::string("/dev/null"), folder.Path("full.dxf"), folder.Path("pipe")}) {
    OutputPlace place(path, {true});
    EXPECT_TRUE(place.IsDirect()) << path;
    EXPECT_EQ(place.Path(), path);
    EXPECT_EQ(place.Deliver().files, std::vector{path});
  }
  OutputPlace set(folder.Path("out.cdf"), {true, false, {"pts"}});
  Write(set, "out.cdf", "new");
  Write(set, "out.pts", "points");
  EXPECT_TRUE(Holds(ErrorOf([&] { set.Deliver(); }), "/out.pts: could not be written: No space left"));
  EXPECT_FALSE(fs::exists(folder.Path("out.cdf")));
}

TEST(OutputPlace, RefusesBeforeAnythingIsWrittenAndWhatAppearsMeanwhile) {
  const Folder folder;
  folder.Put("there.shx", "mine");
  fs::create_directory(folder.Path("table.dbf"));
  const auto refusal = [&](const std::string& name, const OutputOptions& options) {
    return ErrorOf([&] { OutputPlace(folder.Path(name), options); });
  };
  EXPECT_TRUE(Holds(refusal("", {}), "Is a directory"));
  EXPECT_TRUE(Holds(refusal("table.shp", {true, false, {"dbf"}}), "table.dbf: could not be created: Is a directory"));
  EXPECT_TRUE(Holds(refusal("there.shp", {false, false, {"shx"}}), "there.shx: could not be created: File exists"));
  EXPECT_TRUE(Holds(refusal("nowhere/x.dxf", {}), "nowhere/ is no folder that exists"));

  OutputPlace place(folder.Path("out.shp"), {false, false, {"shx"}});
  Write(place, "out.shp", "new");
  Write(place, "out.shx", "new");
  folder.Put("out.shx", "somebody's");
  EXPECT_TRUE(Holds(ErrorOf([&] { place.Deliver(); }), "out.shx: could not be created: File exists"));
  EXPECT_EQ(place.Keep("incomplete").files,
            (std::vector{folder.Path("out.incomplete.shp"), folder.Path("out.incomplete.shx")}));
  EXPECT_EQ(All(folder.Path("")), (Contents{{"there.shx", "mine"},
                                            {"out.shx", "somebody's"},
                                            {"out.incomplete.shp", "new"},
                                            {"out.incomplete.shx", "new"}}));
}

TEST(OutputPlace, LeavesWhatSomebodyElseHasPutThere) {
  const InMemory inMemory;
  const Folder folder;
  const OutputOptions options{true, false, {"shx"}};
  for (int at = 0; at < 80; ++at) {
    for (const char* name : {"out.shp", "out.shx"}) folder.Put(name, "old");
    IsKilled(at, [&] {
      OutputPlace place(folder.Path("out.shp"), options);
      for (const char* name : {"out.shp", "out.shx"}) Write(place, name, "new");
      place.Deliver();
    });
    fs::remove(folder.Path("out.shp"));
    folder.Put("out.shp", "somebody's");
    const OutputPlace recovering(folder.Path("out.shp"), options);
    EXPECT_EQ(Folder::Get(folder.Path("out.shp")), "somebody's") << at;
  }

  static std::string appearing;
  appearing = folder.Path("plan.dxf");
  OutputPlace place(appearing, {});
  Write(place, "plan.dxf", "new");
  sys::faultHook = [](sys::Call call) {
    if (call == sys::Call::Rename) std::ofstream(appearing) << "somebody's";
    return sys::Fault();
  };
  EXPECT_TRUE(Holds(ErrorOf([&] { place.Deliver(); }), "plan.dxf: could not be written: File exists"));
  sys::faultHook = nullptr;
  EXPECT_EQ(Folder::Get(appearing), "somebody's");
}

TEST(OutputPlace, TellsCompanionsThatTheNewOutputDoesNotHave) {
  const Folder folder;
  const std::string name = std::string(251, 'n');  // as long as names can be
  folder.Put(name + ".PRJ", "old");
  OutputPlace place(folder.Path(name + ".shp"), {true, false, {"prj", "cpg"}});
  Write(place, name + ".shp", "new");
  EXPECT_EQ(place.Deliver().untouched, std::vector{folder.Path(name + ".PRJ")});
}

TEST(OutputPlace, OfRunsAtOnceOneSetIsThereInTheEnd) {
  const InMemory inMemory;
  const Folder folder;
  const auto run = [&](const std::string& content) {
    OutputPlace place(folder.Path("out.shp"), {true, false, {"shx", "dbf"}});
    for (const char* name : {"out.shp", "out.shx", "out.dbf"}) Write(place, name, content);
    place.Deliver();
  };
  OutputPlace first(folder.Path("out.shp"), {true}), second(folder.Path("out.shp"), {true});
  for (OutputPlace* place : {&first, &second}) Write(*place, "out.shp", place == &first ? "first" : "second");
  for (OutputPlace* place : {&second, &first}) place->Deliver();
  EXPECT_EQ(All(folder.Path("")), (Contents{{"out.shp", "first"}}));
  for (int i = 0; i < 4; ++i) {
    if (fork() != 0) continue;
    for (int round = 0; round < 25; ++round) run(std::to_string(i));
    _exit(0);
  }
  for (int i = 0, status = 0; i < 4; ++i) {
    wait(&status);
    EXPECT_EQ(status, 0);
  }
  const std::string content = Folder::Get(folder.Path("out.shp"));
  EXPECT_FALSE(content.empty());
  EXPECT_EQ(All(folder.Path("")), (Contents{{"out.shp", content}, {"out.shx", content}, {"out.dbf", content}}));
}

}  // namespace
}  // namespace tesselink
