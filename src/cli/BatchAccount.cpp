// SPDX-License-Identifier: MIT
#include "cli/BatchAccount.h"

#include <algorithm>
#include <iterator>

#include "cli/Console.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Warnings.h"

namespace tesselink {
namespace {

// A screen has 24 lines at least; failures are more urgent than losses.
constexpr std::size_t kMostReasons = 30, kMostLosses = 12, kLongestText = 300;

// A warning's kind without the file, layer or field that it was met with.
std::string KindOf(const std::string& whole) {
  const WarningEntry* const entry = EntryNamed(whole);
  return entry == nullptr ? whole : std::string(entry->name);
}

std::string Cut(const std::string& text) {
  const std::string shown = AsUtf8(text);
  const std::string_view cut = CutUtf8(shown, kLongestText);
  return std::string(cut) + (cut.size() < shown.size() ? "..." : "");
}

// Most messages begin with the file's name.
std::string WithFile(const std::string& input, const std::string& text) {
  return Cut(text.find(input) != std::string::npos ? text : input + ": " + text);
}

std::int64_t Sum(const Json& counts) {
  std::int64_t sum = 0;
  for (const Json& count : counts) sum += count.is_number_integer() ? count.get<std::int64_t>() : 0;
  return sum;
}

std::string SoManyFiles(std::int64_t count) { return Counted(count, "file"); }

}  // namespace

void BatchAccount::Add(const BatchResult& result) {
  if (result.outcome == BatchOutcome::Cancelled) return;
  ++(result.outcome == BatchOutcome::Converted    ? converted_
     : result.outcome == BatchOutcome::Incomplete ? incomplete_
                                                  : failed_);
  if (result.outcome != BatchOutcome::Converted) AddReason(result);
  if (result.summary.is_object()) AddLosses(result);
}

void BatchAccount::AddReason(const BatchResult& result) {
  reasons_.emplace(result.number, WithFile(result.input, result.reason));
  if (reasons_.size() > kMostReasons) reasons_.erase(std::prev(reasons_.end()));
}

void BatchAccount::AddLosses(const BatchResult& result) {
  const Json& summary = result.summary;
  std::vector<std::string> kinds;  // a file counts once for each
  for (const Json& warning : summary.value("warnings", Json::array())) {
    const std::string kind = KindOf(warning.value("kind", ""));
    if (std::count(kinds.begin(), kinds.end(), kind) > 0) continue;
    kinds.push_back(kind);
    AddLoss(kind, result, warning.value("text", ""));
  }
  if (const std::int64_t count = Sum(summary.value("skipped", Json::object())); count > 0) {
    AddLoss("not written", result, Counted(count, "element"));
  }
  if (const std::int64_t count = Sum(summary.value("undelivered", Json::object())); count > 0) {
    AddLoss("not read", result, Counted(count, "element"));
  }
}

void BatchAccount::AddLoss(const std::string& kind, const BatchResult& result, const std::string& text) {
  Loss& loss = losses_[kind];
  if (++loss.files > 1 && loss.number < result.number) return;
  loss.number = result.number;
  loss.input = result.input;
  loss.text = WithFile(AsUtf8(result.input), text);
}

std::vector<std::pair<std::string, BatchAccount::Loss>> BatchAccount::LossesByFiles() const {
  std::vector<std::pair<std::string, Loss>> losses(losses_.begin(), losses_.end());
  std::stable_sort(losses.begin(), losses.end(),
                   [](const auto& a, const auto& b) { return a.second.files > b.second.files; });
  return losses;
}

void BatchAccount::PrintDetails(const std::string& report) const {
  const std::string seeReport = report.empty() ? "; --report FILE.jsonl lists them" : "; see " + report;
  for (const auto& [number, reason] : reasons_) PrintError(reason);
  if (const std::size_t rest = failed_ + incomplete_ - reasons_.size(); rest > 0) {
    PrintError("and " + SoManyFiles(static_cast<std::int64_t>(rest)) + " more that failed" + seeReport);
  }
  const auto losses = LossesByFiles();
  const std::size_t shown = std::min(losses.size(), kMostLosses);
  for (std::size_t i = 0; i < shown; ++i) {
    const auto& [kind, loss] = losses[i];
    PrintWarning("in " + SoManyFiles(loss.files) + ", " + kind + (loss.files > 1 ? "; first " : ": ") + loss.text);
  }
  if (losses.size() > shown) {
    PrintWarning("and " + Counted(static_cast<std::int64_t>(losses.size() - shown), "kind") + " more" + seeReport);
  }
}

std::string BatchAccount::Line(const std::string& into, std::chrono::milliseconds elapsed) const {
  std::string line = into + ": " + std::to_string(converted_) + " of " +
                     Counted(static_cast<std::int64_t>(files_), "drawing") + " converted";
  const auto add = [&line](std::size_t count, const char* what) {
    if (count > 0) line += ", " + std::to_string(count) + what;
  };
  add(passedOver_, " done before");
  add(incomplete_, " incomplete");
  add(failed_, " failed");
  add(files_ - Ended() - passedOver_, " not begun or cancelled");
  return line + " (" + TimeText(elapsed) + ")";
}

Json BatchAccount::AsJson(std::chrono::milliseconds elapsed) const {
  Json warnings = Json::array();
  for (const auto& [kind, loss] : LossesByFiles()) {
    warnings.push_back({{"kind", kind}, {"files", loss.files}, {"first", AsUtf8(loss.input)}, {"text", loss.text}});
  }
  Json failures = Json::array();
  for (const auto& [number, reason] : reasons_) failures.push_back(reason);
  return {{"files", files_},           {"converted", converted_},
          {"passedOver", passedOver_}, {"incomplete", incomplete_},
          {"failed", failed_},         {"seconds", static_cast<double>(elapsed.count()) / 1000},
          {"failures", failures},      {"warnings", warnings}};
}

std::string TimeText(std::chrono::milliseconds time) {
  const std::int64_t tenths = (time.count() + 50) / 100;
  if (tenths < 600) return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
  const std::int64_t seconds = tenths / 10;
  if (seconds < 3600) return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
  return std::to_string(seconds / 3600) + " h " + std::to_string(seconds / 60 % 60) + " min";
}

}  // namespace tesselink
