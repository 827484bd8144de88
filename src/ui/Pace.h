// SPDX-License-Identifier: MIT
// When it is time again for something that a busy loop is to do now and then.
#pragma once

#include <algorithm>
#include <chrono>

namespace tesselink {

/// How long the window works at a stretch before it looks at its events again.
inline constexpr std::chrono::milliseconds kSlice{12};

/// Asked at every turn of a loop, says yes once in a span of time. The clock is not read at every question where the
/// questions come fast: for small elements that would cost as much as the work.
class Pace {
 public:
  using Clock = std::chrono::steady_clock;

  explicit Pace(Clock::duration span, Clock::time_point (*now)() = Clock::now) : span_(span), now_(now) {}

  bool Due() { return ++asked_ >= stride_ && Look(); }
  /// Begins a new span.
  void Restart() { next_ = now_() + span_; }

 private:
  static constexpr int kLongestStride = 16;

  bool Look() {
    const Clock::time_point now = now_();
    stride_ = now - looked_ > span_ / 4 ? 1 : std::min(stride_ * 2, kLongestStride);
    looked_ = now;
    asked_ = 0;
    return now >= next_;
  }

  Clock::duration span_;
  Clock::time_point (*now_)();
  Clock::time_point looked_{}, next_{};
  int asked_ = 0;
  int stride_ = 1;
};

}  // namespace tesselink
