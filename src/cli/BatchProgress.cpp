#include "cli/BatchProgress.h"

#include <algorithm>
#include <cstdio>

#include "app/SummaryText.h"
#include "cli/Console.h"

namespace tesselink {
namespace {

constexpr std::chrono::milliseconds kBetweenBars{200}, kBetweenLines{60'000};
constexpr std::size_t kWidth = 30;

}  // namespace

BatchProgress::BatchProgress(const ConvertCommand& wishes)
    : isBar_(wishes.progress == ProgressChoice::Always || StandardErrorIsTerminal()),
      isShown_(wishes.progress == ProgressChoice::Always ||
               (wishes.progress == ProgressChoice::WhenTerminal && !wishes.quiet)),
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
  std::string text = std::to_string(ended) + " of " + std::to_string(all) + " files";
  if (account.Failed() > 0) text += ", " + std::to_string(account.Failed()) + " failed";
  if (const std::string left = RemainingText(Elapsed(), share * 100); !left.empty()) text += ", " + left;
  if (!isBar_) {
    PrintError(text);
    return;
  }
  const auto filled = std::min(kWidth, static_cast<std::size_t>(share * static_cast<double>(kWidth)));
  const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
  std::fprintf(stderr, "\r[%s] %3d%%  %s\x1b[K", bar.c_str(), static_cast<int>(share * 100), text.c_str());
  std::fflush(stderr);
  isDrawn_ = true;
}

void BatchProgress::Erase() {
  if (isDrawn_) std::fputs("\r\x1b[K", stderr);
  isDrawn_ = false;
}

}  // namespace tesselink
