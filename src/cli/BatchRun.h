// SPDX-License-Identifier: MIT
// The conversions of a batch, each a process of its own, so that none harms another.
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <vector>

#include "cli/BatchAccount.h"
#include "cli/BatchPlan.h"
#include "cli/BatchProgress.h"
#include "cli/BatchReport.h"
#include "core/io/ChildProcess.h"

namespace tesselink {

class BatchRun {
 public:
  /// Without a report, null.
  BatchRun(const BatchCommand& command, const BatchPlan& plan, BatchReport* report, BatchAccount& account);

  /// Converts these inputs; ends early when the person interrupts it. Throws Error where the report cannot be written:
  /// then no process runs any more.
  void Run(const std::vector<std::size_t>& inputs, BatchProgress& progress);

 private:
  using Clock = std::chrono::steady_clock;
  struct Job {
    std::size_t input;
    Json conversion;  // what the report says of it
    ChildProcess process;
    Clock::time_point began, until;  // when it is to be asked to end, or killed
    bool isAsked = false, isLate = false;
  };

  void StartNext();
  bool Start(std::size_t input);
  void Fail(std::size_t input, const std::string& reason);
  void Wait() const;
  void EndLate();
  void AskAll();
  void CollectEnded();
  void TellOf(const Job& job);
  bool IsCancelled(const Job& job) const;
  BatchResult ResultOf(const Job& job) const;
  std::string ReasonOf(const Job& job, const Json& summary) const;
  std::string ReasonOfSignal(int signal) const;
  bool MayReplace(std::size_t input) const;

  const BatchCommand& command_;
  const BatchPlan& plan_;
  BatchReport* report_;
  BatchAccount& account_;
  const std::string program_;
  const std::size_t mostJobs_;
  std::vector<std::size_t> waiting_;  // the next one last
  std::list<Job> jobs_;
  bool isStopping_ = false;
};

/// What of a conversion's files and options decides whether it must be done again, for the report.
Json ConversionJson(const BatchCommand& command, const BatchPlan& plan, std::size_t input);
/// The command by which an input is converted, without the program's name.
std::vector<std::string> ConversionArguments(const BatchCommand& command, const BatchPlan& plan, std::size_t input,
                                             bool overwrite);
/// Makes a folder and those above it; false with errno where one is missing and cannot be made.
bool MakeFolders(const std::string& path);

}  // namespace tesselink
