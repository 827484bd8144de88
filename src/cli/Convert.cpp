// SPDX-License-Identifier: MIT
// convert: one conversion, and an account of it.
#include "cli/Convert.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "app/ProgramFolder.h"
#include "app/SettingsFiles.h"
#include "app/SummaryText.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Json.h"
#include "cli/Reading.h"
#include "cli/Suggestions.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "core/io/Processes.h"
#include "core/io/Utf8.h"
#include "core/run/WrittenFiles.h"
#include "formats/Formats.h"
#include "formats/cdf/CodeTables.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

bool IsStandardOutput(const std::string& path) {
  return path == "-" || path.starts_with("/dev/std") || path == "/dev/fd/1";
}

const OutputFormat& FormatOf(const ConvertCommand& command) { return OutputFormatOf(command.to, command.output); }

// A format's name without its last word, as in "T/R Digitizer".
std::string ShortName(const OutputFormat& format) { return format.Name().substr(0, format.Name().rfind(' ')); }

// Options that say nothing about this output are a mistake, not a wish.
void RefuseOptionsOfOtherOutputs(const ConvertCommand& command) {
  const OutputFormat& format = FormatOf(command);
  const std::string isWritten = "; " + command.output + " is written as " + format.Name();
  for (const OutputFormat& other : AllFormats().Outputs()) {
    std::vector<std::string> names;
    bool given = false;
    for (const FormatOption& option : other.options) {
      if (!option.strict) continue;
      names.push_back("--" + option.name);
      given = given || command.reading.own.Has(option.name);
    }
    if (given && other.key != format.key) {
      throw UsageError(Listed(names, "and") + " go with a " + ShortName(other) + " output" + isWritten);
    }
  }
  if (format.ignoresLayers && UsesAttributes(command.reading)) {
    throw UsageError("--layer-field and --text-field do not go with an output without layers and texts" + isWritten);
  }
  if (command.reading.dialect == Dialect::Standard) return;
  for (const FormatOption& option : format.options) {
    const std::string value = command.reading.own.Text(option.name);
    if (std::count(option.standardChoices.begin(), option.standardChoices.end(), value) == 0) continue;
    throw UsageError("--" + option.name + " " + value + " belongs to the standard dialect; give --dialect standard");
  }
}

// What goes through standard output is one file, of a format that is written from its beginning to its end.
void RefuseStreams(const ConvertCommand& command) {
  const OutputFormat& format = FormatOf(command);
  if (IsStandardOutput(command.output) && !format.streams) {
    throw UsageError(command.output + ": " + format.Name() + " does not go through standard output; " +
                     StreamKeys(AllFormats().Outputs()));
  }
  if (command.inputs.size() == 1) return;
  for (const std::string& input : command.inputs) {
    if (IsPipe(input)) throw UsageError(input + ": goes alone; several inputs are files");
  }
}

void RefuseAreasWhereNoneGo(const ConvertCommand& command) {
  if (!command.buildAreas) {
    if (command.labelLayers.empty() && command.snap == 0) return;
    throw UsageError("--label-layer and --snap concern the areas that --build-areas makes; give that as well");
  }
  if (command.reading.dialect == Dialect::Classic) {
    throw UsageError("--build-areas belongs to the standard dialect; give --dialect standard");
  }
  const OutputFormat& format = FormatOf(command);
  if (format.PlaceOfAreas(command.reading.own) != AreaPlace::None) return;
  throw UsageError(
      "--build-areas needs an output that holds areas, as a shapefile with --shape-type polygons or each, or "
      "a drawing with --release 2007; " +
      command.output + " is written as " + format.Name());
}

ConversionRequest RequestOf(const ConvertCommand& command) {
  const InputFormat* format = &InputFormatOf(command.reading, command.inputs[0]);
  if (command.inputs.size() > 1) {
    for (const std::string& input : command.inputs) {
      if (const InputFormat& own = InputFormatOf(command.reading, input); !own.hasAttributes) {
        throw UsageError("several inputs are read in one run from shapefiles only; " + input + " is " + own.Name());
      }
    }
    ReadingOptions several = command.reading;
    several.from = "multishp";
    format = &InputFormatOf(several, command.inputs[0]);
  }
  RefuseStreams(command);
  RefuseOptionsOfOtherOutputs(command);
  RefuseAreasWhereNoneGo(command);
  RefuseCopyAmong(command.reading, WrittenFiles(command.output, FormatOf(command), FilterOptionsOf(command.reading)));
  ConversionRequest request;
  request.inputs = command.inputs;
  request.OutFile = command.output == "-" ? "/dev/stdout" : command.output;
  request.InFormat = format->entry;
  request.OutFormat = FormatOf(command).entry;
  request.useAttributes = UsesAttributes(command.reading);
  request.options = FilterOptionsOf(command.reading);
  request.options.buildAreas = command.buildAreas;
  request.options.snap = command.snap;
  request.options.labelLayers = command.labelLayers;
  request.overwrite = command.overwrite;
  request.sync = command.sync;
  request.leftovers = !command.nothingLeft;
  request.maxOutput = static_cast<std::int64_t>(std::min<std::uint64_t>(command.maxOutput, INT64_MAX));
  if (!command.reading.layerCodes.empty()) request.alsoRead = {command.reading.layerCodes};
  request.options.layersWanted = !command.reading.layerCodes.empty() || command.reading.smartAssign;
  return request;
}

void RefuseExistingOutput(const ConvertCommand& command) {
  RefuseExistingCopy(command.reading);
  std::error_code error;
  if (fs::is_directory(command.output, error)) throw Error(command.output + ": is a folder; name a file");
  for (const std::string& input : command.inputs) {
    if (input == command.output || SameFile(input, command.output)) return;  // the run has its own words for that
  }
  if (command.overwrite) return;
  const auto files = ReplacedFiles(command.output, FormatOf(command), FilterOptionsOf(command.reading));
  if (!files.empty()) {
    throw Error(files[0] + ": exists already; give -O (--overwrite) to replace it");
  }
}

// The system's name for it is nobody's.
void NameStandardOutput(RunSummary& summary) {
  const auto named = [](const std::string& text) { return Replaced(text, "/dev/stdout", "standard output"); };
  summary.report.Reword(named);
  summary.error = named(summary.error);
}

// Standard output may be the drawing itself; the account then goes to standard error.
void Account(const ConvertCommand& command, const std::string& text) {
  if (IsStandardOutput(command.output)) {
    std::fputs(text.c_str(), stderr);
  } else {
    Print(text);
  }
}

void PrintSummary(const ConvertCommand& command, const RunSummary& summary) {
  const std::string output =
      IsStandardOutput(command.output) ? "standard output" : OutputNames(summary, command.output);
  std::string text = Visible(output) + ": " + Elements(InOutput(summary)) + " written";
  if (summary.written.Total() > 0) text += " (" + Listed(summary.written) + ")";
  text += "\n";
  if (summary.converted.Total() > 0) text += "  written as another kind: " + Listed(summary.converted) + "\n";
  if (command.buildAreas) text += "  " + AreasText(summary) + "\n";
  if (summary.leftOut.Total() > 0) text += "  left out by layer: " + Listed(summary.leftOut) + "\n";
  if (summary.clipped.Total() > 0) text += "  left out by clip: " + Listed(summary.clipped) + "\n";
  for (const std::string& line : SystemLines(summary.systems)) text += "  " + Visible(line) + "\n";
  Account(command, text);
}

// Elements that the output's format cannot hold, or that have no vertex.
void PrintSkipped(const RunSummary& summary) {
  if (summary.skipped.Total() > 0) PrintWarning(NotWrittenText(SkippedText(summary)));
}

// What an interrupted or failed run left behind.
void PrintWhatTheOutputHolds(const ConvertCommand& command, const RunSummary& summary) {
  if (summary.outcome == RunOutcome::Done || summary.outcome == RunOutcome::Refused) return;
  PrintError(WhatTheOutputHolds(summary, command.output));
}

// Options of their own bring further keys.
void AddAsked(const ConvertCommand& command, const RunSummary& summary, Json& json) {
  if (command.reading.clip) json["clipped"] = CountsJson(summary.clipped);
  if (!command.buildAreas) return;
  json["areasBuilt"] = summary.areasBuilt;
  json["intoAreas"] = CountsJson(summary.intoAreas);
}

Json SummaryJson(const ConvertCommand& command, const RunSummary& summary, const ConsoleInteraction& interaction) {
  Json warnings = Json::array();
  const auto add = [&](const std::string& kind, const std::string& text, std::int64_t count) {
    warnings.push_back({{"kind", kind}, {"text", AsUtf8(text)}, {"count", count}});
  };
  for (const auto& [text, count] : interaction.Notices()) add("message", text, count);
  for (const Warning& warning : summary.report.Warnings()) add(warning.kind, warning.text, warning.count);
  if (const std::string unmatched = UnmatchedWarning(summary, interaction); !unmatched.empty()) {
    add("unmatched", unmatched, 1);
  }
  if (const std::string endless = EndlessWarning(interaction); !endless.empty()) add("endless", endless, 1);
  Json undelivered = Json::object();
  for (const auto& [type, count] : summary.report.UndeliveredTypes()) undelivered[AsUtf8(type)] = count;
  Json json{{"read", CountsJson(summary.read)},
            {"written", CountsJson(summary.written)},
            {"converted", CountsJson(summary.converted)},
            {"skipped", CountsJson(summary.skipped)},
            {"leftOut", CountsJson(summary.leftOut)},
            {"undelivered", undelivered},
            {"layers", TextsJson(summary.layers)},
            {"extents", ExtentsJson(summary.extents)},
            {"outputs", TextsJson(summary.outputs)},
            {"warnings", warnings},
            {"error", AsUtf8(summary.error + (summary.subject.empty() ? "" : ": " + summary.subject))},
            {"reason", AsUtf8(summary.reason)}};
  AddAsked(command, summary, json);
  if (summary.systems.to.IsKnown()) json["coordinateSystem"] = SystemsJson(summary.systems);
  return json;
}

// Ends with the batch, and takes no more memory than it allows.
void BecomePart(const ConvertCommand& command) {
  if (command.memoryOfBatch > 0 && !sys::LimitMemory(command.memoryOfBatch)) {
    throw Error(SystemReason("--memory", "could not be limited"));
  }
  sys::EndWith(command.batch);
}

}  // namespace

void CheckConversion(const ConvertCommand& command) {
  RequestOf(command);
  const ConsoleInteraction reads(command.reading, false);  // the list of codes
}

int Run(const ConvertCommand& command) {
  TakeFailedWritesAsErrors();
  if (command.batch != 0) BecomePart(command);
  ConversionRequest request = RequestOf(command);
  RefuseExistingOutput(command);
  const bool showProgress = command.progress == ProgressChoice::Always ||
                            (command.progress == ProgressChoice::WhenTerminal && ShowsBar(command.reading));
  ConsoleInteraction interaction(command.reading, showProgress);
  if (command.batch != 0) interaction.WantWholeOnly();
  SettingsFiles settings(RememberedFolder());
  std::optional<InputSource> source;
  if (request.inputs.size() == 1)
    request.inputs = {source.emplace(request.inputs[0], AllFormats().Input(request.InFormat)).Path()};
  RunSummary summary = ConversionRun(AllFormats(), interaction, settings, FillerFromCodeTables()).Run(request);
  if (source) source->Reword(summary);
  if (IsStandardOutput(command.output)) NameStandardOutput(summary);
  PrintUnremembered(settings);
  PrintWarnings(summary, interaction);
  PrintSkipped(summary);
  PrintOutcome(summary, interaction);
  PrintWhatTheOutputHolds(command, summary);
  if (command.json) {
    Account(command, JsonText(SummaryJson(command, summary, interaction), 2) + "\n");
  } else if (!command.reading.quiet && summary.outcome == RunOutcome::Done) {
    PrintSummary(command, summary);
  }
  return ExitCodeOf(summary, interaction);
}

}  // namespace tesselink
