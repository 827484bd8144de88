// SPDX-License-Identifier: MIT
#include "cli/Reading.h"

#include <filesystem>

#include "app/ProgramFolder.h"
#include "app/SettingsFiles.h"
#include "app/SummaryText.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Suggestions.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/run/WrittenFiles.h"
#include "formats/Formats.h"
#include "formats/cdf/CodeTables.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

template <typename Row>
const Row& RowOf(const std::vector<Row>& rows, const std::string& key, const std::string& path,
                 const std::string& side) {
  const std::string extension = ExtensionOf(path);
  std::string known;
  std::vector<std::string> extensions;
  for (const Row& row : rows) {
    if (key.empty() ? row.Extension() == extension : row.key == key) return row;
    known += (known.empty() ? "" : ", ") + row.key;
    extensions.push_back(row.Extension());
  }
  throw UsageError((path == "-" ? "standard " + side : path + ": its extension") + " tells no " + side +
                   " format; give one with --" + (side == "input" ? "from" : "to") + " (" + known + ")" +
                   DidYouMean(extension, extensions));
}

// Hands every element that a writer would get to a function.
class ForwardingWriter final : public OutputFilter {
 public:
  using Handler = std::function<void(const tEntity&)>;
  ForwardingWriter(const FilterContext& context, const Reading& reading, const Handler& handler)
      : OutputFilter(context), reading_(reading), handler_(handler) {}
  ~ForwardingWriter() override { ReleaseQuietly(); }
  SystemWish WishesSystem() const override { return reading_.systemWish; }
  void SourceOpened(InputFilter& source) override {
    if (reading_.opened) reading_.opened(source);
  }

 private:
  void Create(const std::string&) override {}
  Carrying CarriesSource() const override { return Carrying::Yes; }  // nobody expects that here
  bool WritesRecords() const override { return false; }
  Holding Holds() const override {
    return {.parts = true, .areas = true, .bulges = true, .measures = true, .curves = true};
  }
  WriteResult Write(tEntity& entity) override {
    handler_(entity);
    return WriteResult::Written;
  }
  void Complete() override {}
  void Drop() noexcept override {}

  const Reading& reading_;
  const Handler& handler_;
};

}  // namespace

const InputFormat& InputFormatOf(const ReadingOptions& options, const std::string& path) {
  if (options.textField.empty() && !(options.look.height.empty() && options.look.angle.empty())) {
    throw UsageError("--text-height and --text-angle go with --text-field");
  }
  const InputFormat& format = RowOf(AllFormats().Inputs(), options.from, path, "input");
  if (!format.hasAttributes && UsesAttributes(options)) {
    throw UsageError("--layer-field, --text-field and --colour-field go with a shapefile; " + path + " is read as " +
                     format.Name());
  }
  return format;
}

const OutputFormat& OutputFormatOf(const std::string& key, const std::string& path) {
  return RowOf(AllFormats().Outputs(), key, path, "output");
}

bool UsesAttributes(const ReadingOptions& options) {
  return !options.layerField.empty() || !options.textField.empty() || !options.look.colour.empty();
}

FilterOptions FilterOptionsOf(const ReadingOptions& options) {
  for (const InputFormat& row : AllFormats().Inputs()) {
    for (const FormatOption& option : row.options) {
      if (!options.own.Has(option.name)) continue;
      if (option.standardOnly && options.dialect == Dialect::Classic) {
        throw UsageError("--" + option.name + " goes with the standard dialect; add --dialect standard");
      }
      if (option.kind != FormatOption::Kind::File) continue;
      const std::string file = options.own.Text(option.name);
      if (const std::string reason = WhyNotReadable(file); !reason.empty()) throw Error(reason);
    }
  }
  for (const std::string& system : {options.systems.from, options.systems.to}) {
    if (!system.empty()) SystemDefinition(system);
  }
  FilterOptions result;
  result.dialect = options.dialect;
  result.programFolder = ProgramDataFolder();
  result.moduleFolder = ModuleFolder();
  result.own = options.own;
  result.tolerance = options.tolerance;
  result.attributes = options.attributes;
  result.systems = options.systems;
  result.layers = options.layers;
  result.withoutLayers = options.withoutLayers;
  result.clip = options.clip;
  return result;
}

void RefuseExistingCopy(const ReadingOptions& options) {
  std::error_code error;
  if (options.lineEnds == LineEndsChoice::Copy && fs::exists(options.lineEndsCopy, error)) {
    throw Error(options.lineEndsCopy + ": exists already; give --line-ends copy= the name of a new file");
  }
}

void RefuseCopyAmong(const ReadingOptions& options, const std::vector<std::string>& written) {
  if (options.lineEnds != LineEndsChoice::Copy || FileAmong(options.lineEndsCopy, written).empty()) return;
  throw UsageError("--line-ends copy=" + options.lineEndsCopy +
                   " would be replaced by the output; give it another name");
}

InputSource::InputSource(const std::string& named, const InputFormat& format) : named_(named) {
  if (!IsPipe(named)) return;
  if (!format.streams) {
    throw UsageError(named + ": " + format.Name() + " does not go through a pipe; " +
                     StreamKeys(AllFormats().Inputs()));
  }
  spool_.emplace(named == "/dev/stdin" ? "-" : named, [] {
    if (Interrupted()) throw Error("cancelled while standard input was read");
  });
}

void InputSource::Reword(RunSummary& summary) const {
  if (!spool_) return;
  const auto named = [this](const std::string& text) { return spool_->Named(text); };
  summary.report.Reword(named);
  summary.error = named(summary.error);
  summary.subject = named(summary.subject);
  summary.reason = named(summary.reason);
}

bool ShowsBar(const ReadingOptions& options) { return !options.quiet && StandardErrorObeysCodes(); }

Reading::Reading(const std::string& path, const ReadingOptions& readingOptions, bool showProgress)
    : input(path),
      options(readingOptions),
      format(InputFormatOf(readingOptions, path)),
      source(path, format),
      interaction(readingOptions, showProgress) {}

int ExitCodeOf(const RunSummary& summary, const ConsoleInteraction& interaction) {
  switch (summary.outcome) {
    case RunOutcome::Done:
      return kExitDone;
    case RunOutcome::Cancelled:
      return interaction.StalledAt().empty() ? kExitCancelled : kExitEndedEarly;
    case RunOutcome::Limited:
      return kExitEndedEarly;
    case RunOutcome::Refused:
    case RunOutcome::Failed:
      break;
  }
  return kExitFailed;
}

std::string EndlessWarning(const ConsoleInteraction& interaction) {
  return interaction.StalledAt().empty() ? std::string()
                                         : interaction.StalledAt() + ": repeats without end; the rest was not read";
}

std::string UnmatchedWarning(const RunSummary& summary, const ConsoleInteraction& interaction) {
  if (summary.outcome != RunOutcome::Done || !interaction.LayersLeftUnmatched()) return {};
  return "--layer-codes and --smart-assign had nothing to match: the input reports no layers (a shapefile does with "
         "--layer-field)";
}

void PrintUnremembered(const SettingsFiles& settings) {
  if (settings.Problem().empty()) return;
  PrintWarning("an answer is not remembered for the next time: " + settings.Problem());
}

void PrintWarnings(const RunSummary& summary, const ConsoleInteraction& interaction) {
  for (const Warning& warning : summary.report.Warnings()) {
    PrintWarning(WarningText(warning));
  }
  for (const auto& [type, count] : summary.report.UndeliveredTypes()) {
    PrintWarning(UndeliveredText(type, count));
  }
  if (const std::string unmatched = UnmatchedWarning(summary, interaction); !unmatched.empty()) PrintWarning(unmatched);
  // It says why the exit code is none of success.
  if (const std::string endless = EndlessWarning(interaction); !endless.empty()) PrintError("warning: " + endless);
}

void PrintOutcome(const RunSummary& summary, const ConsoleInteraction& interaction) {
  if (summary.outcome == RunOutcome::Refused) {
    PrintError(summary.error + (summary.subject.empty() ? "" : ": " + summary.subject));
    if (!summary.reason.empty()) PrintError(summary.reason);
  }
  const bool ended = summary.outcome == RunOutcome::Failed || summary.outcome == RunOutcome::Limited;
  if (ended && !summary.error.empty()) PrintError(summary.error);
  if (summary.outcome == RunOutcome::Cancelled && interaction.StalledAt().empty()) PrintError("cancelled");
}

int ReadThrough(Reading& reading, const std::function<void(const tEntity&)>& handler) {
  RefuseExistingCopy(reading.options);
  OutputFormat sink;
  sink.fallBack = true;
  sink.makesNoFile = true;
  sink.create = [&](const FilterContext& context) {
    return std::make_unique<ForwardingWriter>(context, reading, handler);
  };
  const FormatTable table(AllFormats().Inputs(), {sink});
  SettingsFiles settings(RememberedFolder());
  ConversionRequest request;
  request.inputs = {reading.source.Path()};
  request.OutFile = reading.output;
  request.InFormat = reading.format.entry;
  request.useAttributes = UsesAttributes(reading.options);
  request.options = FilterOptionsOf(reading.options);
  request.options.layersWanted = reading.layersWanted;
  if (!reading.options.layerCodes.empty()) request.alsoRead = {reading.options.layerCodes};
  reading.summary = ConversionRun(table, reading.interaction, settings, FillerFromCodeTables()).Run(request);
  reading.source.Reword(reading.summary);
  FlushOutput();
  PrintUnremembered(settings);
  PrintWarnings(reading.summary, reading.interaction);
  PrintOutcome(reading.summary, reading.interaction);
  return ExitCodeOf(reading.summary, reading.interaction);
}

}  // namespace tesselink
