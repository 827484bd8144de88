#include "cli/Commands.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include "cli/ConsoleInteraction.h"
#include "cli/Exit.h"
#include "cli/Json.h"
#include "cli/QtSettings.h"
#include "core/ConversionRun.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "formats/Formats.h"
#include "formats/shape/DBFInFilter.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

// Wrong usage that shows only when the words are put together.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

bool StandardErrorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

// Everything that a command prints goes through here, so that a full disk behind ">" is noticed.
void Print(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    throw Error(SystemReason("standard output", "could not be written"));
  }
}

void FlushOutput() {
  if (std::fflush(stdout) != 0) throw Error(SystemReason("standard output", "could not be written"));
}

template <typename Row>
const Row& RowOf(const std::vector<Row>& rows, const std::string& key, const std::string& path,
                 const std::string& side) {
  const std::string extension = ExtensionOf(path);
  std::string known;
  for (const Row& row : rows) {
    if (key.empty() ? row.Extension() == extension : row.key == key) return row;
    known += (known.empty() ? "" : ", ") + row.key;
  }
  throw UsageError(path + ": its extension tells no " + side + " format; give one with --" +
                   (side == "input" ? "from" : "to") + " (" + known + ")");
}

// ---- reading through a run
// --------------------------------------------------------------------------------------------

// Hands every element that a writer would get to a function.
class ForwardingWriter final : public OutputFilter {
 public:
  using Handler = std::function<void(const tEntity&)>;
  ForwardingWriter(const FilterContext& context, const Handler& handler) : OutputFilter(context), handler_(handler) {}
  ~ForwardingWriter() override { ReleaseQuietly(); }

 private:
  void Create(const std::string&) override {}
  WriteResult Write(tEntity& entity) override {
    handler_(entity);
    return WriteResult::Written;
  }
  void Complete() override {}
  void Drop() noexcept override {}

  const Handler& handler_;
};

const InputFormat& InputFormatOf(const ReadingOptions& options, const std::string& path) {
  const InputFormat& format = RowOf(AllFormats().Inputs(), options.from, path, "input");
  if (!format.hasAttributes && !(options.layerField.empty() && options.textField.empty())) {
    throw UsageError("--layer-field and --text-field go with a shapefile; " + path + " is read as " + format.Name());
  }
  return format;
}

bool UsesAttributes(const ReadingOptions& options) { return !options.layerField.empty() || !options.textField.empty(); }

struct Reading {
  explicit Reading(const std::string& path, const ReadingOptions& options)
      : input(path),
        format(InputFormatOf(options, path)),
        useAttributes(UsesAttributes(options)),
        interaction(options, false) {}

  std::string input;
  const InputFormat& format;
  bool useAttributes;
  ConsoleInteraction interaction;
  RunSummary summary;
};

int ExitCodeOf(const RunSummary& summary, const ConsoleInteraction& interaction) {
  switch (summary.outcome) {
    case RunOutcome::Done:
      return kExitDone;
    case RunOutcome::Cancelled:
      return interaction.StalledAt().empty() ? kExitCancelled : kExitEndedEarly;
    case RunOutcome::Refused:
    case RunOutcome::Failed:
      break;
  }
  return kExitFailed;
}

std::string Times(std::int64_t count) { return std::to_string(count) + (count == 1 ? " time" : " times"); }

void PrintWarnings(const RunSummary& summary, const ConsoleInteraction& interaction) {
  for (const auto& [text, count] : interaction.Notices()) {
    if (count > 1) PrintError(text + " (" + Times(count) + " in all)");
  }
  for (const Warning& warning : summary.report.Warnings()) {
    PrintError("warning: " + warning.text +
               (warning.count > 1 ? " (and " + std::to_string(warning.count - 1) + " more of this kind)" : ""));
  }
  for (const auto& [type, count] : summary.report.UndeliveredTypes()) {
    PrintError("warning: not converted: " + std::to_string(count) + " of type " + type);
  }
  if (!interaction.StalledAt().empty()) {
    PrintError("warning: " + interaction.StalledAt() + ": repeats without end; the rest was not read");
  }
}

// Why the run did not end normally, where the person has not been told yet.
void PrintOutcome(const RunSummary& summary, const ConsoleInteraction& interaction, const std::string& input) {
  if (summary.outcome == RunOutcome::Refused) PrintError(summary.error + ": " + input);
  if (summary.outcome == RunOutcome::Failed) PrintError(summary.error);
  if (summary.outcome == RunOutcome::Cancelled && interaction.StalledAt().empty()) PrintError("cancelled");
}

// Runs the input through the very loop of a conversion, into a handler instead of a file.
int ReadThrough(Reading& reading, const ForwardingWriter::Handler& handler) {
  OutputFormat sink;
  sink.fallBack = true;
  sink.create = [&handler](const FilterContext& context) {
    return std::make_unique<ForwardingWriter>(context, handler);
  };
  const FormatTable table(AllFormats().Inputs(), {sink});
  QtSettings settings;
  ConversionRequest request;
  request.Infile = reading.input;
  request.OutFile = "standard output";
  request.InFormat = reading.format.entry;
  request.useAttributes = reading.useAttributes;
  if (reading.format.severalFiles) request.chosenFiles = {"", reading.input};
  reading.summary = ConversionRun(table, reading.interaction, settings).Run(request);
  FlushOutput();
  PrintWarnings(reading.summary, reading.interaction);
  PrintOutcome(reading.summary, reading.interaction, reading.input);
  return ExitCodeOf(reading.summary, reading.interaction);
}

// ---- cat, info, table, formats
// ----------------------------------------------------------------------------------------

int Run(const CatCommand& command) {
  Reading reading(command.input, command.reading);
  return ReadThrough(reading, [](const tEntity& entity) { Print(ElementJson(entity).dump() + "\n"); });
}

Json FieldsJson(const std::string& input) {
  Json fields = Json::array();
  const std::string path = PartnerFile(input, "DBF");
  if (path.empty()) return fields;
  DBFInFilter table;
  table.filename(path);
  for (int i = 0; i <= table.NumFields(); ++i) {
    fields.push_back({{"name", Utf8(table.GetFieldName(i))},
                      {"type", Utf8(std::string(1, table.FieldType(i)))},
                      {"length", table.FieldLength(i)},
                      {"decimals", table.FieldDecimals(i)}});
  }
  return fields;
}

std::string InfoText(const std::string& input, const Json& info) {
  std::string text = input + ": " + info["format"].get<std::string>() + "\n  elements ";
  std::string kinds;
  for (const auto& [kind, count] : info["elements"].items()) {
    if (count > 0) kinds += (kinds.empty() ? "" : ", ") + std::to_string(count.get<std::int64_t>()) + " " + kind;
  }
  text += (kinds.empty() ? "none" : kinds) + "\n  vertices " + std::to_string(info["vertices"].get<std::int64_t>());
  text += "\n  layers   ";
  if (info["layers"].empty()) text += "none";
  for (std::size_t i = 0; i < info["layers"].size(); ++i) {
    text += (i > 0 ? ", " : "") + info["layers"][i].get<std::string>();
  }
  if (const Json& e = info["extents"]; !e.is_null()) {
    for (const std::string axis : {"X", "Y", "Z"}) {
      text += "\n  " + axis + "        " + NumberText(e["min" + axis].get<double>()) + " to " +
              NumberText(e["max" + axis].get<double>());
    }
  }
  for (const Json& field : info["fields"]) {
    text += "\n  field    " + field["name"].get<std::string>() + " " + field["type"].get<std::string>() + " " +
            std::to_string(field["length"].get<int>()) + "." + std::to_string(field["decimals"].get<int>());
  }
  return text + "\n";
}

int Run(const InfoCommand& command) {
  Reading reading(command.input, command.reading);
  std::int64_t vertices = 0;
  const int exitCode = ReadThrough(reading, [&](const tEntity& entity) { vertices += entity.PointCount() + 1; });
  if (exitCode != kExitDone && exitCode != kExitEndedEarly) return exitCode;

  std::vector<std::string> layers = reading.interaction.ReportedLayers();
  for (const std::string& layer : reading.summary.layers) {
    if (std::find(layers.begin(), layers.end(), layer) == layers.end()) layers.push_back(layer);
  }
  const Json info{{"format", reading.format.key},
                  {"elements", CountsJson(reading.summary.read)},
                  {"vertices", vertices},
                  {"layers", TextsJson(layers)},
                  {"extents", ExtentsJson(reading.summary.extents)},
                  {"fields", reading.format.hasAttributes ? FieldsJson(command.input) : Json::array()}};
  Print(command.json ? info.dump(2) + "\n" : InfoText(command.input, info));
  return exitCode;
}

// A value as RFC 4180 has it.
std::string CsvField(std::string_view value) {
  if (value.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(value);
  std::string quoted = "\"";
  for (const char c : value) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

int Run(const TableCommand& command) {
  if (!FileExists(command.file)) throw Error(command.file + ": is no file that can be opened for reading");
  DBFInFilter table;
  table.filename(command.file);
  std::string line;
  for (int i = 0; i <= table.NumFields(); ++i) line += (i > 0 ? "," : "") + CsvField(table.GetFieldName(i));
  Print(line + "\n");
  const std::int64_t records = table.NumRecs();
  for (std::int64_t record = 0; record < records && !Interrupted(); ++record) {
    line.clear();
    for (int i = 0; i <= table.NumFields(); ++i) {
      if (i > 0) line += ',';
      line += CsvField(table.GetFieldData(i, record));
    }
    Print(line += '\n');
  }
  return Interrupted() ? kExitCancelled : kExitDone;
}

int Run(const FormatsCommand& command) {
  Json list{{"input", Json::array()}, {"output", Json::array()}};
  const auto add = [](Json& rows, const auto& formats) {
    for (const auto& format : formats) {
      rows.push_back({{"key", format.key},
                      {"extension", format.Extension()},
                      {"name", format.Name()},
                      {"available", static_cast<bool>(format.create)}});
    }
  };
  add(list["input"], AllFormats().Inputs());
  add(list["output"], AllFormats().Outputs());
  if (command.json) {
    Print(list.dump(2) + "\n");
    return kExitDone;
  }
  for (const auto& [side, rows] : list.items()) {
    Print(side + "\n");
    for (const Json& row : rows) {
      std::string key = row["key"], extension = row["extension"];
      key.resize(10, ' ');
      extension.resize(6, ' ');
      Print("  " + key + extension + row["name"].get<std::string>() +
            (row["available"] ? "\n" : " (not available in this version)\n"));
    }
  }
  return kExitDone;
}

// ---- convert
// ----------------------------------------------------------------------------------------------------------

ConversionRequest RequestOf(const ConvertCommand& command) {
  const bool several = command.inputs.size() > 1;
  const InputFormat* format = &InputFormatOf(command.reading, command.inputs[0]);
  if (several && format->key != "shp" && format->key != "multishp") {
    throw UsageError("several inputs are read in one run from shapefiles only; " + command.inputs[0] + " is " +
                     format->Name());
  }
  if (several) format = &RowOf(AllFormats().Inputs(), "multishp", command.inputs[0], "input");
  ConversionRequest request;
  request.Infile = command.inputs[0];
  request.OutFile = command.output;
  request.InFormat = format->entry;
  request.OutFormat = RowOf(AllFormats().Outputs(), command.to, command.output, "output").entry;
  request.useAttributes = UsesAttributes(command.reading);
  if (format->severalFiles) {
    request.chosenFiles = {""};
    request.chosenFiles.insert(request.chosenFiles.end(), command.inputs.begin(), command.inputs.end());
  }
  return request;
}

void RefuseExistingOutput(const ConvertCommand& command) {
  std::error_code error;
  if (fs::is_directory(command.output, error)) throw Error(command.output + ": is a folder; name a file");
  for (const std::string& input : command.inputs) {
    if (input == command.output || SameFile(input, command.output)) return;  // the run has its own words for that
  }
  if (!command.overwrite && fs::is_regular_file(command.output, error)) {
    throw Error(command.output + ": exists already; give -O (--overwrite) to replace it");
  }
}

std::string Listed(const KindCounts& counts) {
  std::string list;
  for (std::size_t i = 0; i < KindCounts::kNames.size(); ++i) {
    const std::int64_t count = counts.All()[i];
    if (count == 0) continue;
    list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + std::string(KindCounts::kNames[i]) +
            (count == 1 ? "" : "s");
  }
  return list.empty() ? "nothing" : list;
}

std::int64_t InOutput(const RunSummary& summary) { return summary.written.Total() + summary.converted.Total(); }

std::string Elements(std::int64_t count) { return std::to_string(count) + (count == 1 ? " element" : " elements"); }

void PrintSummary(const ConvertCommand& command, const RunSummary& summary) {
  std::string text = command.output + ": " + Elements(InOutput(summary)) + " from " + Listed(summary.read) + " read\n";
  if (summary.converted.Total() > 0) text += "  converted to another kind: " + Listed(summary.converted) + "\n";
  if (summary.skipped.Total() > 0) text += "  skipped: " + Listed(summary.skipped) + "\n";
  Print(text);
}

// What an interrupted or failed run left behind.
void PrintWhatTheOutputHolds(const ConvertCommand& command, const RunSummary& summary) {
  if (summary.outcome == RunOutcome::Done || summary.outcome == RunOutcome::Refused) return;
  PrintError(summary.outputs.empty()
                 ? "no output was written"
                 : command.output + " is incomplete; it holds the first " + Elements(InOutput(summary)));
}

Json SummaryJson(const RunSummary& summary, const ConsoleInteraction& interaction) {
  Json warnings = Json::array();
  const auto add = [&](const std::string& kind, const std::string& text, std::int64_t count) {
    warnings.push_back({{"kind", kind}, {"text", Utf8(text)}, {"count", count}});
  };
  for (const auto& [text, count] : interaction.Notices()) add("message", text, count);
  for (const Warning& warning : summary.report.Warnings()) add(warning.kind, warning.text, warning.count);
  if (!interaction.StalledAt().empty()) {
    add("endless", interaction.StalledAt() + ": repeats without end; the rest was not read", 1);
  }
  Json undelivered = Json::object();
  for (const auto& [type, count] : summary.report.UndeliveredTypes()) undelivered[Utf8(type)] = count;
  return {{"read", CountsJson(summary.read)},
          {"written", CountsJson(summary.written)},
          {"converted", CountsJson(summary.converted)},
          {"skipped", CountsJson(summary.skipped)},
          {"undelivered", undelivered},
          {"layers", TextsJson(summary.layers)},
          {"extents", ExtentsJson(summary.extents)},
          {"outputs", TextsJson(summary.outputs)},
          {"warnings", warnings},
          {"error", Utf8(summary.error)}};
}

int Run(const ConvertCommand& command) {
  const ConversionRequest request = RequestOf(command);
  RefuseExistingOutput(command);
  const bool showProgress =
      command.progress == ProgressChoice::Always ||
      (command.progress == ProgressChoice::WhenTerminal && !command.quiet && StandardErrorIsTerminal());
  ConsoleInteraction interaction(command.reading, showProgress);
  QtSettings settings;
  const RunSummary summary = ConversionRun(AllFormats(), interaction, settings).Run(request);
  PrintWarnings(summary, interaction);
  PrintOutcome(summary, interaction, request.Infile);
  PrintWhatTheOutputHolds(command, summary);
  if (command.json) {
    Print(SummaryJson(summary, interaction).dump(2) + "\n");
  } else if (!command.quiet && !summary.outputs.empty()) {
    PrintSummary(command, summary);
  }
  return ExitCodeOf(summary, interaction);
}

int Run(const ParsingEnded& ended) {
  if (ended.exitCode == kExitDone) {
    Print(ended.text);
  } else {
    std::fputs(ended.text.c_str(), stderr);
  }
  return ended.exitCode;
}

}  // namespace

int RunCommand(const Command& command) {
  CatchInterrupts();
  try {
    const int exitCode = std::visit([](const auto& c) { return Run(c); }, command);
    FlushOutput();
    return exitCode;
  } catch (const UsageError& error) {
    PrintError(error.what());
    return kExitUsage;
  } catch (const std::exception& error) {
    PrintError(error.what());
    return kExitFailed;
  }
}

}  // namespace tesselink
