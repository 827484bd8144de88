// SPDX-License-Identifier: MIT
#include "core/io/ChildProcess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "support/Disturbance.h"

namespace tesselink {
namespace {

ChildProcess Shell(const std::string& script) { return ChildProcess("/bin/sh", {"sh", "-c", script}); }

// True when it ends within a time that no machine exceeds.
bool Ends(ChildProcess& child) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!child.HasEnded()) {
    if (std::chrono::steady_clock::now() > until) return false;
    std::vector<const sys::Descriptor*> files;
    child.AddTo(files);
    sys::WaitForAny(files, 1000);
  }
  return true;
}

TEST(ChildProcess, TellsWhatAProgramSaysAndHowItEnds) {
  const sys::SignalsHeld held;
  ChildProcess told = Shell("read -r line && exit 9; echo out; echo err >&2; exit 3");
  ASSERT_TRUE(Ends(told));
  EXPECT_EQ(told.Output(), "out\n");
  EXPECT_EQ(told.Errors(), "err\n");
  EXPECT_EQ(told.HowEnded().exitCode, 3);

  ChildProcess crashed = Shell("kill -SEGV $$");
  ASSERT_TRUE(Ends(crashed));
  EXPECT_EQ(crashed.HowEnded().signal, SIGSEGV);
  EXPECT_EQ(sys::NameOf(SIGSEGV), "Segmentation fault (signal 11)");

  ChildProcess asked = Shell("trap 'echo tidied; exit 130' TERM; echo ready; while :; do sleep 0.01; done");
  while (asked.Output().empty()) ASSERT_FALSE(asked.HasEnded());
  asked.Stop(sys::StopSignal::Ask);
  ASSERT_TRUE(Ends(asked));
  EXPECT_EQ(asked.Output(), "ready\ntidied\n");
}

TEST(ChildProcess, KeepsABearableLengthOfWhatNeverEnds) {
  ChildProcess child = Shell("head -c 3000000 /dev/zero; head -c 300000 /dev/zero >&2; exit 0");
  ASSERT_TRUE(Ends(child));
  EXPECT_EQ(child.HowEnded().exitCode, 0);
  EXPECT_EQ(child.Output().size(), std::size_t{1} << 20);
  EXPECT_EQ(child.Errors().size(), std::size_t{1} << 16);
}

TEST(ChildProcess, EndsWithItsObject) {
  Folder folder;
  { const ChildProcess child = Shell("sleep 0.3; touch " + folder.Path("late")); }
  sys::WaitForAny({}, 500);
  EXPECT_TRUE(All(folder.Path("")).empty());
}

// Whichever call fails: no process is left, and the caller learns why, or all goes well.
TEST(ChildProcess, EveryCallMayFail) {
  int failures = 0;
  for (int at = 0; at < 12; ++at) {
    const Disturbed disturbed(Disturbance::Kind::Fails, EMFILE, at);
    try {
      ChildProcess child = Shell("exit 4");
      const bool hasEnded = Ends(child);
      EXPECT_TRUE(hasEnded);
    } catch (const ChildNotStarted& failure) {
      EXPECT_TRUE(failure.MayPass());
      ++failures;
    }
  }
  EXPECT_EQ(failures, 5);  // two pipes by two calls each, and the process
}

}  // namespace
}  // namespace tesselink
