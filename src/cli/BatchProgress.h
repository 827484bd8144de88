// SPDX-License-Identifier: MIT
// How far a batch has got, on standard error.
#pragma once

#include <chrono>

#include "cli/Arguments.h"
#include "cli/BatchAccount.h"

namespace tesselink {

/// A bar on a terminal; else a line now and then, so that a log shows that something is going on.
class BatchProgress {
 public:
  using Clock = std::chrono::steady_clock;

  explicit BatchProgress(const ConvertCommand& wishes);
  ~BatchProgress() { Erase(); }
  BatchProgress(const BatchProgress&) = delete;
  BatchProgress& operator=(const BatchProgress&) = delete;

  void Show(const BatchAccount& account);
  /// Before anything else is printed.
  void Erase();
  std::chrono::milliseconds Elapsed() const;

 private:
  bool isBar_, isShown_, isDrawn_ = false;
  Clock::time_point began_ = Clock::now(), next_;
};

}  // namespace tesselink
