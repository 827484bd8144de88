// SPDX-License-Identifier: MIT
#include "app/SummaryText.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/run/Translatable.h"
#include "core/run/Warnings.h"

namespace tesselink {
namespace {

struct Noun {
  const char *one, *many;
};

// In the order of KindCounts::kNames.
constexpr Noun kKinds[] = {
    {TRANSLATABLE("Summary", "%1 point"), TRANSLATABLE("Summary", "%1 points")},
    {TRANSLATABLE("Summary", "%1 line"), TRANSLATABLE("Summary", "%1 lines")},
    {TRANSLATABLE("Summary", "%1 polyline"), TRANSLATABLE("Summary", "%1 polylines")},
    {TRANSLATABLE("Summary", "%1 text"), TRANSLATABLE("Summary", "%1 texts")},
    {TRANSLATABLE("Summary", "%1 circle"), TRANSLATABLE("Summary", "%1 circles")},
    {TRANSLATABLE("Summary", "%1 arc"), TRANSLATABLE("Summary", "%1 arcs")},
    {TRANSLATABLE("Summary", "%1 other"), TRANSLATABLE("Summary", "%1 others")},
};
static_assert(std::size(kKinds) == KindCounts::kNames.size());
constexpr Noun kElement{TRANSLATABLE("Summary", "%1 element"), TRANSLATABLE("Summary", "%1 elements")};
constexpr Noun kVertex{TRANSLATABLE("Summary", "%1 vertex"), TRANSLATABLE("Summary", "%1 vertices")};

std::string Counted(std::int64_t count, const Noun& noun, const Wording& words) {
  return words.Told(count == 1 ? noun.one : noun.many, {words.Number(count)});
}

std::string EndingOf(const RunSummary& summary, const Wording& words) {
  const std::string elements = Elements(InOutput(summary), words);
  if (summary.outcome == RunOutcome::Done) return words.Told(TRANSLATABLE("Summary", "%1 written"), {elements});
  if (summary.outputs.empty()) return words.Told(TRANSLATABLE("Summary", "no output was written"), {});
  if (!summary.oldKept) {
    return words.Told(TRANSLATABLE("Summary", "the output is incomplete; it holds %1"), {elements});
  }
  return words.Told(
      TRANSLATABLE("Summary", "the output is as it was before; what was converted lies beside it, with %1"),
      {elements});
}

}  // namespace

std::string Listed(const KindCounts& counts, const Wording& words) {
  std::string list;
  for (std::size_t i = 0; i < KindCounts::kNames.size(); ++i) {
    const std::int64_t count = counts.All()[i];
    if (count == 0) continue;
    list += (list.empty() ? "" : ", ") + Counted(count, kKinds[i], words);
  }
  return list;
}

std::string Elements(std::int64_t count, const Wording& words) {
  return count == 0 ? words.Told(TRANSLATABLE("Summary", "no elements"), {}) : Counted(count, kElement, words);
}

std::int64_t InOutput(const RunSummary& summary) { return summary.written.Total() + summary.converted.Total(); }

std::string WarningText(const Warning& warning, const Wording& words) {
  if (warning.count <= 1) return warning.text;
  return words.Told(TRANSLATABLE("Summary", "%1 (and %2 more of this kind)"),
                    {warning.text, words.Number(warning.count - 1)});
}

std::string UndeliveredText(const std::string& type, std::int64_t count, const Wording& words) {
  return words.Told(TRANSLATABLE("Summary", "not read, and so not converted: %1 of type %2"),
                    {words.Number(count), type});
}

std::string SkippedText(const RunSummary& summary, const Wording& words) {
  if (summary.skipped.Total() == 0) return {};
  return Listed(summary.skipped, words) + (summary.skippedHint.empty() ? "" : "; " + summary.skippedHint);
}

std::string NotWrittenText(const std::string& elements, const Wording& words) {
  return words.Told(TRANSLATABLE("Summary", "not written: %1"), {elements});
}

std::string AreasText(const RunSummary& summary, const Wording& words) {
  const std::string built = words.Number(summary.areasBuilt), made = Listed(summary.intoAreas, words);
  if (made.empty()) return words.Told(TRANSLATABLE("Summary", "areas built: %1"), {built});
  return words.Told(TRANSLATABLE("Summary", "areas built: %1, of %2"), {built, made});
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

std::string InWords(std::string_view kind, const std::string& text, const Wording& words) {
  const WarningEntry* const entry = EntryNamed(kind);
  if (entry == nullptr) return text;
  const std::string meaning = words.Text("Warnings", entry->words.data());
  return meaning == entry->words ? text : meaning + '\n' + text;
}

RunAccount AccountOf(const RunSummary& summary, const Wording& words) {
  RunAccount account{.ending = EndingOf(summary, words), .files = summary.outputs, .isEmpty = InOutput(summary) == 0};
  for (const std::string& reason : {summary.error, summary.reason}) {
    if (!reason.empty()) account.reasons.push_back(reason);
  }
  if (summary.skipped.Total() > 0) account.gone.push_back(NotWrittenText(SkippedText(summary, words), words));
  for (const auto& [type, count] : summary.report.UndeliveredTypes()) {
    account.gone.push_back(UndeliveredText(type, count, words));
  }
  for (const Warning& warning : summary.report.Warnings()) {
    ListOf(account, warning.kind).push_back(InWords(warning.kind, WarningText(warning, words), words));
  }
  const auto add = [&](const char* pattern, const std::string& text) {
    if (!text.empty()) account.counts.push_back(words.Told(pattern, {text}));
  };
  add(TRANSLATABLE("Summary", "Read: %1"),
      summary.read.Total() == 0 ? Elements(0, words) : Listed(summary.read, words));
  if (summary.outcome == RunOutcome::Done || !summary.outputs.empty()) {
    add(TRANSLATABLE("Summary", "Written: %1"), Listed(summary.written, words));
    add(TRANSLATABLE("Summary", "Written as another kind: %1"), Listed(summary.converted, words));
  }
  if (summary.areasBuilt > 0 || summary.intoAreas.Total() > 0) account.counts.push_back(AreasText(summary, words));
  add(TRANSLATABLE("Summary", "Left out by layer: %1"), Listed(summary.leftOut, words));
  add(TRANSLATABLE("Summary", "Left out by clip: %1"), Listed(summary.clipped, words));
  for (const std::string& line : SystemLines(summary.systems, words)) account.counts.push_back(line);
  return account;
}

namespace {

std::string NameOf(const CoordinateSystem& system, const Wording& words) {
  const std::string name = system.name + (system.epsg > 0 ? " (EPSG:" + std::to_string(system.epsg) + ")" : "");
  if (system.unit.empty()) return name;
  return words.Told(TRANSLATABLE("Summary", "%1, in units of %2"), {name, system.unit});
}

std::string OperationText(const OperationUse& use, const Wording& words) {
  std::string accuracy = words.Told(TRANSLATABLE("Summary", "accuracy unknown"), {});
  if (use.accuracy >= 0) accuracy = words.Told(TRANSLATABLE("Summary", "accuracy %1 m"), {NumberText(use.accuracy)});
  for (const std::string& grid : use.grids) accuracy += words.Told(TRANSLATABLE("Summary", ", grid %1"), {grid});
  return words.Told(TRANSLATABLE("Summary", "by %1 (%2): %3"),
                    {use.name, accuracy, Counted(use.count, kVertex, words)});
}

}  // namespace

std::vector<std::string> SystemLines(const SystemsUsed& systems, const Wording& words) {
  if (!systems.to.IsKnown()) return {};
  std::vector<std::string> lines;
  const std::string to = NameOf(systems.to, words);
  if (systems.from.size() != 1 || systems.from[0].wkt != systems.to.wkt) {
    for (const CoordinateSystem& from : systems.from) {
      lines.push_back(words.Told(TRANSLATABLE("Summary", "from %1"), {NameOf(from, words)}));
    }
    lines.push_back(words.Told(TRANSLATABLE("Summary", "to %1"), {to}));
  } else {
    lines.push_back(words.Told(TRANSLATABLE("Summary", "coordinates: %1"), {to}));
  }
  for (const OperationUse& use : systems.operations) {
    lines.push_back(OperationText(use, words));
    if (use.better.empty()) continue;
    lines.push_back(words.Told(TRANSLATABLE("Summary", "more accurate were %1"), {use.better}));
  }
  return lines;
}

std::string RemainingText(std::chrono::milliseconds elapsed, double percent, const Wording& words) {
  constexpr std::chrono::milliseconds kSoonest{1000};
  if (elapsed < kSoonest || !(percent > 0) || percent >= 100) return {};
  const double left = std::ceil(static_cast<double>(elapsed.count()) / 1000 * (100 - percent) / percent);
  constexpr double kLongest = 99 * 3600;
  if (left > kLongest) return {};
  const auto seconds = static_cast<std::int64_t>(left);
  std::string text = std::to_string(seconds % 60) + " s";
  if (seconds >= 60) text = std::to_string(seconds / 60 % 60) + " min " + text;
  if (seconds >= 3600) text = std::to_string(seconds / 3600) + " h " + std::to_string(seconds / 60 % 60) + " min";
  return words.Told(TRANSLATABLE("Summary", "about %1 remaining"), {text});
}

}  // namespace tesselink
