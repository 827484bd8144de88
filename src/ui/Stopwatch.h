// SPDX-License-Identifier: MIT
// How long something has taken, without the time that a person took to answer.
#pragma once

#include <chrono>

namespace tesselink {

class Stopwatch {
 public:
  using Clock = std::chrono::steady_clock;

  bool IsStarted() const { return isStarted_; }
  void Start() {
    isStarted_ = true;
    began_ = Clock::now();
    spent_ = {};
  }
  std::chrono::milliseconds Elapsed() const {
    const Clock::duration running = isStarted_ && pauses_ == 0 ? Clock::now() - began_ : Clock::duration();
    return std::chrono::duration_cast<std::chrono::milliseconds>(spent_ + running);
  }

  /// The watch stands still while one of these lives; on null it does nothing.
  class Pause {
   public:
    explicit Pause(Stopwatch* watch) : watch_(watch) {
      if (watch_ != nullptr && watch_->pauses_++ == 0) watch_->spent_ += Clock::now() - watch_->began_;
    }
    ~Pause() {
      if (watch_ != nullptr && --watch_->pauses_ == 0) watch_->began_ = Clock::now();
    }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    Stopwatch* watch_;
  };

 private:
  Clock::time_point began_ = Clock::now();
  Clock::duration spent_{};
  int pauses_ = 0;
  bool isStarted_ = false;
};

}  // namespace tesselink
