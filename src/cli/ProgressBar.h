// SPDX-License-Identifier: MIT
// How far a run has got, on standard error: a bar that stays on its line on a terminal, plain lines elsewhere.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tesselink {

/// What a bar tells beside its percentage.
struct ProgressFacts {
  std::string count, rate, remaining;  ///< as in "1200 elements", "60k/s", "about 12 s remaining"; empty: not known
};

/// The bar as it fits into so many columns. Where there is not room for all, the rate goes first, then the count, the
/// time that remains and at last the bar itself.
std::string BarText(double percent, const ProgressFacts& facts, std::size_t columns);

/// As in "850/s", "12.5k/s" or "1.2M/s"; empty in the first second, of which nobody can tell.
std::string RateText(std::int64_t count, std::chrono::milliseconds elapsed);

class ProgressBar {
 public:
  ProgressBar();

  void ShowScan(const std::string& text, double percent);
  void ShowElements(std::int64_t elements, double percent);
  /// Makes room for another line; the bar comes again with the next call.
  void Erase();
  /// What comes next is timed by itself.
  void End();

 private:
  using Clock = std::chrono::steady_clock;

  bool IsDue(double percent);
  void Draw(double percent, ProgressFacts facts);
  std::chrono::milliseconds Elapsed() const;

  const bool onTerminal_;
  std::optional<Clock::time_point> started_;
  Clock::time_point next_{};
  int nextTenth_ = 1;
  std::string drawn_;
};

}  // namespace tesselink
