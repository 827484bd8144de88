// SPDX-License-Identifier: MIT
#include "cli/BatchProgress.h"

#include <cstdio>

#include "app/SummaryText.h"
#include "cli/Console.h"
#include "cli/ProgressBar.h"

namespace tesselink {
namespace {

constexpr std::chrono::milliseconds kBetweenBars{200}, kBetweenLines{60'000};

}  // namespace

BatchProgress::BatchProgress(const ConvertCommand& wishes)
    : isBar_(StandardErrorObeysCodes()),
      isShown_(wishes.progress == ProgressChoice::Always ||
               (wishes.progress == ProgressChoice::WhenTerminal && !wishes.reading.quiet)),
      next_(began_ + (isBar_ ? kBetweenBars : kBetweenLines)) {}

std::chrono::milliseconds BatchProgress::Elapsed() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - began_);
}

void BatchProgress::Show(const BatchAccount& account) {
  const auto now = Clock::now();
  if (!isShown_ || now < next_) return;
  next_ = now + (isBar_ ? kBetweenBars : kBetweenLines);
  const std::size_t all = account.Files() - account.PassedOver(), ended = account.Ended();
  const double share = all == 0 ? 1 : static_cast<double>(ended) / static_cast<double>(all);
  ProgressFacts facts{std::to_string(ended) + " of " + std::to_string(all) + " files",
                      RateText(static_cast<std::int64_t>(ended), Elapsed()), RemainingText(Elapsed(), share * 100)};
  if (account.Failed() > 0) facts.count += ", " + std::to_string(account.Failed()) + " failed";
  if (!isBar_) {
    std::fprintf(stderr, "%s%s\n", facts.count.c_str(),
                 facts.remaining.empty() ? "" : (", " + facts.remaining).c_str());
    return;
  }
  const std::string bar = BarText(share * 100, facts, TerminalColumns());
  std::fprintf(stderr, "\r%s\x1b[K", bar.c_str());
  std::fflush(stderr);
  isDrawn_ = true;
}

void BatchProgress::Erase() {
  if (isDrawn_) std::fputs("\r\x1b[K", stderr);
  isDrawn_ = false;
}

}  // namespace tesselink
