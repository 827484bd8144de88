// SPDX-License-Identifier: MIT
// What has come of the files of a batch, in figures that do not grow with their number.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "cli/Json.h"

namespace tesselink {

enum class BatchOutcome { Converted, Incomplete, Failed, Cancelled };

/// What has come of one file.
struct BatchResult {
  std::size_t number = 0;  ///< of the input, in the order of the batch
  std::string input;
  BatchOutcome outcome = BatchOutcome::Converted;
  std::string reason = {};  ///< why it was not converted whole
  Json summary = nullptr;   ///< as `convert --json` has it; null where there is none
};

class BatchAccount {
 public:
  explicit BatchAccount(std::size_t files) : files_(files) {}

  void Add(const BatchResult& result);
  /// Counts a file that an earlier run has converted.
  void PassOver() { ++passedOver_; }

  std::size_t Files() const { return files_; }
  std::size_t Failed() const { return failed_; }
  std::size_t PassedOver() const { return passedOver_; }
  /// Of which nothing more will come.
  std::size_t Ended() const { return converted_ + incomplete_ + failed_; }
  bool AllConverted() const { return converted_ + passedOver_ == files_; }

  /// On standard error: what failed and why, then what was lost, by kind with the first file of each. As much as a
  /// screen holds; the rest is counted, and stands in the report, if there is one.
  void PrintDetails(const std::string& report) const;
  /// As in "out: 97 of 100 drawings converted, 3 failed (12 s)".
  std::string Line(const std::string& into, std::chrono::milliseconds elapsed) const;
  Json AsJson(std::chrono::milliseconds elapsed) const;

 private:
  struct Loss {
    std::int64_t files = 0;
    std::size_t number = 0;  // of the first file, in the order of the batch; which ends first, is chance
    std::string input, text;
  };
  void AddReason(const BatchResult& result);
  void AddLosses(const BatchResult& result);
  void AddLoss(const std::string& kind, const BatchResult& result, const std::string& text);
  std::vector<std::pair<std::string, Loss>> LossesByFiles() const;

  std::size_t files_, converted_ = 0, incomplete_ = 0, failed_ = 0, passedOver_ = 0;
  std::map<std::size_t, std::string> reasons_;  // with the file; of the first, by their numbers
  std::map<std::string, Loss> losses_;
};

/// As in "12.4 s" and "3 min 5 s".
std::string TimeText(std::chrono::milliseconds time);

}  // namespace tesselink
