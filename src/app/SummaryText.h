// SPDX-License-Identifier: MIT
// The words in which both faces account for a run.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "app/Wording.h"
#include "core/run/ConversionRun.h"

namespace tesselink {

/// Counts by kind, as in "2 points, 1 line"; empty when there are none.
std::string Listed(const KindCounts& counts, const Wording& words = kPlainWording);
/// As in "no elements" and "1 element".
std::string Elements(std::int64_t count, const Wording& words = kPlainWording);
/// The elements that the output holds.
std::int64_t InOutput(const RunSummary& summary);
/// As in "wells.dbf: has … (and 3 more of this kind)".
std::string WarningText(const Warning& warning, const Wording& words = kPlainWording);
/// What a reader met and did not deliver.
std::string UndeliveredText(const std::string& type, std::int64_t count, const Wording& words = kPlainWording);
/// What was not written, as in "7 points", and how to write it too; empty when there is none.
std::string SkippedText(const RunSummary& summary, const Wording& words = kPlainWording);
/// What was not written, as a sentence.
std::string NotWrittenText(const std::string& elements, const Wording& words = kPlainWording);
/// As in "areas built: 4, of 12 lines, 4 texts".
std::string AreasText(const RunSummary& summary, const Wording& words = kPlainWording);
/// The output, or the files that were made instead of it, as in "plat-points.shp, plat-lines.shp".
std::string OutputNames(const RunSummary& summary, const std::string& output);
/// What an interrupted or failed run left behind.
std::string WhatTheOutputHolds(const RunSummary& summary, const std::string& output);

/// The coordinate systems that the run met, and how it transformed vertices, a line each; none where nobody asked.
std::vector<std::string> SystemLines(const SystemsUsed& systems, const Wording& words = kPlainWording);
/// The account of a run for people, each list a sentence an entry; files are named in the last one alone.
struct RunAccount {
  std::string ending;                     ///< what came of it
  std::vector<std::string> reasons = {};  ///< why it ended so; none where all is well
  std::vector<std::string> gone = {};     ///< what of the input the output lacks
  std::vector<std::string> changed = {};  ///< what it has in another way
  std::vector<std::string> remarks = {};  ///< what else is good to know
  std::vector<std::string> counts = {};   ///< what was read and written
  std::vector<std::string> files = {};    ///< that exist now
  bool isEmpty = false;                   ///< nothing was written
};
RunAccount AccountOf(const RunSummary& summary, const Wording& words = kPlainWording);
/// The list of an account that a warning belongs to, by its kind.
std::vector<std::string>& ListOf(RunAccount& account, std::string_view kind);
/// A warning's text; in another language what its kind means goes before it, in a line of its own.
std::string InWords(std::string_view kind, const std::string& text, const Wording& words);

/// As in "about 2 min 10 s remaining"; empty while it cannot be told yet.
std::string RemainingText(std::chrono::milliseconds elapsed, double percent, const Wording& words = kPlainWording);

}  // namespace tesselink
