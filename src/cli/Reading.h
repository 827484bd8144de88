// SPDX-License-Identifier: MIT
// What every command that reads a drawing shares: the format, the run, and what the person is told of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/SettingsFiles.h"
#include "cli/Arguments.h"
#include "cli/ConsoleInteraction.h"
#include "core/io/Files.h"
#include "core/run/ConversionRun.h"
#include "core/run/FormatTable.h"

namespace tesselink {

/// The input's format by `--from` or by its extension. Throws UsageError when neither tells one, and when attribute
/// fields are given for a format without.
const InputFormat& InputFormatOf(const ReadingOptions& options, const std::string& path);
/// The output's format by `--to` or by its extension.
const OutputFormat& OutputFormatOf(const std::string& key, const std::string& path);
bool UsesAttributes(const ReadingOptions& options);
/// What the options and the place of the program mean to the filters. Throws Error for a file that is not there.
FilterOptions FilterOptionsOf(const ReadingOptions& options);
/// The repaired copy of a text file takes no other file's place; a dialog would have asked. Throws Error.
void RefuseExistingCopy(const ReadingOptions& options);
/// Nor does an output take the place of the copy. Throws UsageError.
void RefuseCopyAmong(const ReadingOptions& options, const std::vector<std::string>& written);

/// The keys of the formats that go through pipes, as in "dxf, asc, cdf do".
template <typename Row>
std::string StreamKeys(const std::vector<Row>& rows) {
  std::string keys;
  for (const Row& row : rows) {
    if (row.streams) keys += (keys.empty() ? "" : ", ") + row.key;
  }
  return keys + " do";
}

/// An input as it was named: a file, or a pipe or standard input ("-"), of which a copy is read.
class InputSource {
 public:
  /// Copies what comes through a pipe, to its end. Throws UsageError where the format does not go through one, and
  /// Error when that fails.
  InputSource(const std::string& named, const InputFormat& format);
  /// What is read.
  const std::string& Path() const { return spool_ ? spool_->Path() : named_; }
  /// A run's account with the input's name wherever it has the copy's.
  void Reword(RunSummary& summary) const;

 private:
  std::string named_;
  std::optional<Spool> spool_;
};

/// Whether a bar shows by itself how far a run has got.
bool ShowsBar(const ReadingOptions& options);

/// One reading of a drawing.
struct Reading {
  Reading(const std::string& path, const ReadingOptions& readingOptions, bool showProgress);

  std::string input;                       ///< as it was named
  std::string output = "standard output";  ///< what is written from it; refused where the reading needs it
  bool layersWanted = true;                ///< those that a reader tells before its elements
  SystemWish systemWish = SystemWish::None;
  std::function<void(InputFilter&)> opened = {};  ///< told of the input once it is open
  ReadingOptions options;
  const InputFormat& format;
  InputSource source;  ///< what is read
  ConsoleInteraction interaction;
  RunSummary summary;
};

/// Runs the input through the very loop of a conversion, handing every element that a writer would get to a function.
/// Tells what went wrong and returns the exit code.
int ReadThrough(Reading& reading, const std::function<void(const tEntity&)>& handler);

int ExitCodeOf(const RunSummary& summary, const ConsoleInteraction& interaction);
/// What could not be remembered for the next run.
void PrintUnremembered(const SettingsFiles& settings);
/// Every loss, on standard error.
void PrintWarnings(const RunSummary& summary, const ConsoleInteraction& interaction);
/// Why the run did not end normally, where the person has not been told yet.
void PrintOutcome(const RunSummary& summary, const ConsoleInteraction& interaction);
/// The warning of layer options that had no layer to match; empty where they had one, or are not given.
std::string UnmatchedWarning(const RunSummary& summary, const ConsoleInteraction& interaction);
/// The warning of an input that repeats without end; empty for any other.
std::string EndlessWarning(const ConsoleInteraction& interaction);

}  // namespace tesselink
