// SPDX-License-Identifier: MIT
#include "cli/ProgressBar.h"

#include <algorithm>
#include <cstdio>

#include "app/SummaryText.h"
#include "cli/Console.h"

namespace tesselink {
namespace {

// A run that is over sooner shows none.
constexpr std::chrono::milliseconds kFirst{300};
constexpr std::chrono::milliseconds kEvery{100};

std::string FactsText(const ProgressFacts& facts) {
  std::string text;
  for (const std::string& fact : {facts.count, facts.rate, facts.remaining}) {
    if (!fact.empty()) text += (text.empty() ? "  " : ", ") + fact;
  }
  return text;
}

std::string PercentText(double percent) {
  char text[8];
  std::snprintf(text, sizeof text, "%3d%%", static_cast<int>(std::clamp(percent, 0.0, 100.0)));
  return text;
}

void PrintAtOnce(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stderr); }

}  // namespace

std::string BarText(double percent, const ProgressFacts& facts, std::size_t columns) {
  constexpr std::size_t kStep = 10, kLongest = 40;  // in steps, lest it jump with every digit of the count
  const std::string number = PercentText(percent);
  for (const ProgressFacts& shown :
       {facts, {facts.count, {}, facts.remaining}, {{}, {}, facts.remaining}, ProgressFacts{}}) {
    const std::string text = "] " + number + FactsText(shown);
    // The last column stays free: there terminals begin a new line.
    if (columns < text.size() + kStep + 2) continue;
    const std::size_t width = std::min((columns - text.size() - 2) / kStep * kStep, kLongest);
    const auto filled = static_cast<std::size_t>(std::clamp(percent / 100, 0.0, 1.0) * static_cast<double>(width));
    return "[" + std::string(filled, '#') + std::string(width - filled, '.') + text;
  }
  return number.size() < columns ? number : std::string();
}

std::string RateText(std::int64_t count, std::chrono::milliseconds elapsed) {
  if (elapsed < std::chrono::seconds(1)) return {};
  double rate = static_cast<double>(count) * 1000 / static_cast<double>(elapsed.count());
  const char* unit = "";
  if (rate >= 999'950) {
    rate /= 1e6, unit = "M";
  } else if (rate >= 999.5) {
    rate /= 1e3, unit = "k";
  }
  char text[32];
  std::snprintf(text, sizeof text, *unit == '\0' || rate >= 99.95 ? "%.0f%s/s" : "%.1f%s/s", rate, unit);
  return text;
}

ProgressBar::ProgressBar() : onTerminal_(StandardErrorObeysCodes()) {}

void ProgressBar::ShowScan(const std::string& text, double percent) {
  if (IsDue(percent)) Draw(percent, {text, {}, RemainingText(Elapsed(), percent)});
}

void ProgressBar::ShowElements(std::int64_t elements, double percent) {
  if (!IsDue(percent)) return;
  Draw(percent, {Elements(elements), RateText(elements, Elapsed()), RemainingText(Elapsed(), percent)});
}

bool ProgressBar::IsDue(double percent) {
  const auto now = Clock::now();
  if (!started_) {
    started_ = now;
    next_ = now + kFirst;
    nextTenth_ = 1;
  }
  if (onTerminal_ ? now < next_ : percent < nextTenth_ * 10) return false;
  next_ = now + kEvery;
  nextTenth_ = static_cast<int>(percent / 10) + 1;
  return true;
}

void ProgressBar::Draw(double percent, ProgressFacts facts) {
  facts.count = Visible(facts.count);
  if (!onTerminal_) {
    PrintAtOnce(PercentText(percent) + FactsText(facts) + "\n");
    return;
  }
  const std::string line = BarText(percent, facts, TerminalColumns());
  if (line == drawn_) return;
  // What the line before had more is erased behind this one: one that is emptied first would flicker.
  PrintAtOnce("\r" + line + "\x1b[K");
  drawn_ = line;
}

void ProgressBar::Erase() {
  if (!drawn_.empty()) PrintAtOnce("\r\x1b[K");
  drawn_.clear();
}

void ProgressBar::End() {
  Erase();
  started_.reset();
}

std::chrono::milliseconds ProgressBar::Elapsed() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - *started_);
}

}  // namespace tesselink
