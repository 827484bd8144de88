// SPDX-License-Identifier: MIT
// A program that this one has started, and what it says.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/io/Processes.h"

namespace tesselink {

/// A running program whose standard output and errors are kept as far as they are of a bearable length; the rest is
/// read and forgotten. One that still runs when the object goes is killed.
class ChildProcess {
 public:
  static constexpr std::size_t kMostOutput = std::size_t{1} << 20;

  /// Starts it; the arguments begin with the program's name. Throws ChildNotStarted.
  ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
               std::size_t mostOutput = kMostOutput);
  ChildProcess(ChildProcess&& other) noexcept;
  ChildProcess& operator=(ChildProcess&&) = delete;
  ~ChildProcess();

  /// Takes what it has said since. True when it has ended, once and for all.
  bool HasEnded();
  /// What can be waited for until there is something to take.
  void AddTo(std::vector<const sys::Descriptor*>& files) const;
  /// Asks it to end, or ends it.
  void Stop(sys::StopSignal signal) const;

  const std::string& Output() const { return output_.text; }
  const std::string& Errors() const { return errors_.text; }
  /// Once it has ended.
  const sys::Ending& HowEnded() const { return ending_; }

 private:
  struct Stream {
    sys::Descriptor file;
    std::string text;
    void Take(std::size_t most);
  };

  std::size_t mostOutput_;
  Stream output_, errors_;
  int process_ = -1;  // once it has ended, none
  sys::Ending ending_;
};

/// No process could be made; another moment may have room for one.
struct ChildNotStarted {
  int reason;  ///< errno
  /// Whether processes, memory or open files have run out, which the end of another process can change.
  bool MayPass() const;
};

}  // namespace tesselink
