// SPDX-License-Identifier: MIT
#include "app/SummaryText.h"

#include <algorithm>
#include <cmath>

#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/run/Warnings.h"

namespace tesselink {
namespace {

std::string EndingOf(const RunSummary& summary) {
  const std::string elements = Elements(InOutput(summary));
  if (summary.outcome == RunOutcome::Done) return elements + " written";
  if (summary.outputs.empty()) return "no output was written";
  return (summary.oldKept ? "the output is as it was before; what was converted lies beside it, with " + elements
                          : "the output is incomplete; it holds " + elements);
}

void AddLine(std::vector<std::string>& lines, const std::string& label, const std::string& text) {
  if (!text.empty()) lines.push_back(label + text);
}

}  // namespace

std::string Listed(const KindCounts& counts) {
  std::string list;
  for (std::size_t i = 0; i < KindCounts::kNames.size(); ++i) {
    const std::int64_t count = counts.All()[i];
    if (count == 0) continue;
    list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + std::string(KindCounts::kNames[i]) +
            (count == 1 ? "" : "s");
  }
  return list;
}

std::string Elements(std::int64_t count) {
  return (count == 0 ? "no" : std::to_string(count)) + (count == 1 ? " element" : " elements");
}

std::int64_t InOutput(const RunSummary& summary) { return summary.written.Total() + summary.converted.Total(); }

std::string WarningText(const Warning& warning) {
  return warning.text + (warning.count > 1 ? " (and " + std::to_string(warning.count - 1) + " more of this kind)" : "");
}

std::string UndeliveredText(const std::string& type, std::int64_t count) {
  return "not read, and so not converted: " + std::to_string(count) + " of type " + type;
}

std::string SkippedText(const RunSummary& summary) {
  if (summary.skipped.Total() == 0) return {};
  return Listed(summary.skipped) + (summary.skippedHint.empty() ? "" : "; " + summary.skippedHint);
}

std::string AreasText(const RunSummary& summary) {
  const std::string made = Listed(summary.intoAreas);
  return "areas built: " + std::to_string(summary.areasBuilt) + (made.empty() ? "" : ", of " + made);
}

std::string OutputNames(const RunSummary& summary, const std::string& output) {
  const std::vector<std::string>& files = summary.outputs;
  if (std::find(files.begin(), files.end(), output) != files.end()) return output;
  std::string names;
  for (const std::string& file : files) {
    if (ExtensionOf(file) == ExtensionOf(files[0])) names.append(names.empty() ? "" : ", ").append(file);
  }
  return names.empty() ? output : names;
}

std::string WhatTheOutputHolds(const RunSummary& summary, const std::string& output) {
  if (summary.outputs.empty()) return "no output was written";
  const std::string held = " is incomplete; it holds " + Elements(InOutput(summary));
  const std::string names = OutputNames(summary, output);
  return (summary.oldKept ? output + " is as it was before; " : "") + names + held;
}

std::vector<std::string>& ListOf(RunAccount& account, std::string_view kind) {
  const WarningEntry* const entry = EntryNamed(kind);
  if (entry == nullptr || entry->gravity == Gravity::Remark) return account.remarks;
  return entry->gravity == Gravity::Gone ? account.gone : account.changed;
}

RunAccount AccountOf(const RunSummary& summary) {
  RunAccount account{.ending = EndingOf(summary), .files = summary.outputs};
  AddLine(account.reasons, "", summary.error);
  AddLine(account.reasons, "", summary.reason);
  AddLine(account.gone, "not written: ", SkippedText(summary));
  for (const auto& [type, count] : summary.report.UndeliveredTypes()) {
    account.gone.push_back(UndeliveredText(type, count));
  }
  for (const Warning& warning : summary.report.Warnings()) {
    ListOf(account, warning.kind).push_back(WarningText(warning));
  }
  AddLine(account.counts, "Read: ", summary.read.Total() == 0 ? Elements(0) : Listed(summary.read));
  AddLine(account.counts, "Written: ", Listed(summary.written));
  AddLine(account.counts, "Written as another kind: ", Listed(summary.converted));
  AddLine(account.counts, "Left out by layer: ", Listed(summary.leftOut));
  AddLine(account.counts, "Left out by clip: ", Listed(summary.clipped));
  for (const std::string& line : SystemLines(summary.systems)) account.counts.push_back(line);
  return account;
}

std::vector<std::string> SystemLines(const SystemsUsed& systems) {
  if (!systems.to.IsKnown()) return {};
  const auto named = [](const CoordinateSystem& system) {
    return system.name + (system.epsg > 0 ? " (EPSG:" + std::to_string(system.epsg) + ")" : "") +
           (system.unit.empty() ? "" : ", in units of " + system.unit);
  };
  std::vector<std::string> lines;
  if (systems.from.size() != 1 || systems.from[0].wkt != systems.to.wkt) {
    for (const CoordinateSystem& from : systems.from) lines.push_back("from " + named(from));
    lines.push_back("to " + named(systems.to));
  } else {
    lines.push_back("coordinates: " + named(systems.to));
  }
  for (const OperationUse& use : systems.operations) {
    std::string accuracy = " (accuracy unknown";
    if (use.accuracy >= 0) accuracy = " (accuracy " + NumberText(use.accuracy) + " m";
    for (const std::string& grid : use.grids) accuracy += ", grid " + grid;
    lines.push_back("by " + use.name + accuracy + "): " + std::to_string(use.count) +
                    (use.count == 1 ? " vertex" : " vertices"));
    if (!use.better.empty()) lines.push_back("more accurate were " + use.better);
  }
  return lines;
}

std::string RemainingText(std::chrono::milliseconds elapsed, double percent) {
  constexpr std::chrono::milliseconds kSoonest{1000};
  if (elapsed < kSoonest || !(percent > 0) || percent >= 100) return {};
  const double left = std::ceil(static_cast<double>(elapsed.count()) / 1000 * (100 - percent) / percent);
  constexpr double kLongest = 99 * 3600;
  if (left > kLongest) return {};
  const auto seconds = static_cast<std::int64_t>(left);
  std::string text = std::to_string(seconds % 60) + " s";
  if (seconds >= 60) text = std::to_string(seconds / 60 % 60) + " min " + text;
  if (seconds >= 3600) text = std::to_string(seconds / 3600) + " h " + std::to_string(seconds / 60 % 60) + " min";
  return "about " + text + " remaining";
}

}  // namespace tesselink
