// SPDX-License-Identifier: MIT
// Calls to the system that fail, are cut short, or are the last that a program makes; and what is left on the disk.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "core/io/System.h"
#include "support/Support.h"

namespace tesselink {

using Contents = std::map<std::string, std::string>;  ///< of files, by name

/// Every file of a folder; those in folders within it by their path.
inline Contents All(const std::string& folder) {
  Contents files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_directory()) files[entry.path().lexically_relative(folder)] = Folder::Get(entry.path());
  }
  return files;
}

/// What happens to the n-th call to the system.
struct Disturbance {
  enum class Kind { Fails, FailsForGood, IsCutShort, Kills } kind = Kind::Fails;
  int error = 0;
  int at = 0;
  int calls = 0;
};
inline Disturbance disturbance;

inline sys::Fault Disturb(sys::Call) {
  const bool isHere = disturbance.calls++ == disturbance.at;
  const bool isBehind = disturbance.calls > disturbance.at;
  switch (disturbance.kind) {
    case Disturbance::Kind::Fails:
      return {isHere ? disturbance.error : 0};
    case Disturbance::Kind::FailsForGood:
      return {isBehind ? disturbance.error : 0};
    case Disturbance::Kind::IsCutShort:
      return {0, 3};
    case Disturbance::Kind::Kills:
      if (isHere) _exit(9);
  }
  return {};
}

/// A disturbance that ends with the object.
class Disturbed {
 public:
  Disturbed(Disturbance::Kind kind, int error, int at) {
    disturbance = {kind, error, at, 0};
    sys::faultHook = Disturb;
  }
  ~Disturbed() { sys::faultHook = nullptr; }
};

/// Thousands of small files take their time on a disk.
struct InMemory {
  InMemory() {
    if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
  }
  ~InMemory() { unsetenv("TMPDIR"); }
};

/// Whether an action in a process of its own comes to the call at which it is killed.
inline bool IsKilled(int at, const std::function<void()>& action) {
  const pid_t child = fork();
  if (child == 0) {
    const Disturbed disturbed(Disturbance::Kind::Kills, 0, at);
    action();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WEXITSTATUS(status) == 9;
}

}  // namespace tesselink
