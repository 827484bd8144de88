// SPDX-License-Identifier: MIT
#include "cli/CommandTable.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "app/OptionChecks.h"
#include "cli/BatchOptions.h"
#include "cli/ClipOption.h"
#include "cli/CommandOptions.h"
#include "cli/Suggestions.h"
#include "cli/SystemOptions.h"
#include "cli/Usage.h"
#include "core/run/EncodingOption.h"
#include "formats/Formats.h"

namespace tesselink {
namespace {

// The heading of options that two functions add to.
constexpr const char* kAttributes = "Attributes and labels";

constexpr const char* kConvertExamples =
    "Examples:\n"
    "  # for other programs of today\n"
    "  tesselink convert --dialect standard examples/quarter-section.asc section.dxf\n"
    "  # layers and labels from the attributes of each shape\n"
    "  tesselink convert --dialect standard --layer-field LAYER --text-field LABEL examples/wells.shp labels.dxf\n"
    "  # several shapefiles in one drawing\n"
    "  tesselink convert --dialect standard examples/*.shp sheet.dxf\n"
    "\n"
    "Exit codes: 0 done, 1 failed, 2 wrong usage, 3 ended early (the output is incomplete), 130 cancelled.";

constexpr const char* kInfoExample =
    "Example:\n"
    "  tesselink info examples/wells.shp";

constexpr const char* kCatExample =
    "Example:\n"
    "  tesselink cat examples/quarter-section.asc > elements.jsonl";

constexpr const char* kLayersExamples =
    "Examples:\n"
    "  tesselink layers --smart-assign examples/quarter-section.asc > layers.csv\n"
    "  # and with layers.csv as you have edited it\n"
    "  tesselink convert --dialect standard --layer-codes layers.csv examples/quarter-section.asc layers.cdf";

constexpr const char* kPreviewExamples =
    "Examples:\n"
    "  tesselink preview examples/quarter-section.asc quarter-section.svg\n"
    "  # coloured by an attribute, with labels\n"
    "  tesselink preview --dialect standard --layer-field LAYER --text-field LABEL examples/wells.shp wells.svg";

constexpr const char* kTableExample =
    "Example:\n"
    "  tesselink table examples/wells.dbf > wells.csv";

template <typename Rows>
std::string KeyList(const Rows& rows) {
  std::string keys;
  for (const auto& row : rows) keys += (keys.empty() ? "" : ", ") + row.key;
  return keys;
}

template <typename Rows>
CLI::Validator KnownKey(const Rows& rows, const std::string& what) {
  return CLI::Validator(
      [&rows, what](std::string& key) {
        std::vector<std::string> keys;
        for (const auto& row : rows) keys.push_back(row.key);
        if (std::find(keys.begin(), keys.end(), key) != keys.end()) return std::string();
        const std::string meant = DidYouMean(key, keys);
        return "\"" + key + "\" is no " + what + " format" +
               (meant.empty() ? "; the keys are " + KeyList(rows) : meant);
      },
      "");
}

CLI::Validator OneOf(const std::vector<std::string>& choices) {
  return CLI::Validator(
      [choices](std::string& given) {
        if (std::find(choices.begin(), choices.end(), given) != choices.end()) return std::string();
        return "\"" + given + "\" is not " + Listed(choices, "or") + DidYouMean(given, choices);
      },
      CLI::detail::generate_set(choices));
}

// Units are powers of 1024.
CLI::Validator SizeInBytes() {
  return CLI::Validator(
      [](std::string& text) {
        std::string bytes = text;
        try {
          CLI::AsSizeValue(false)(bytes);
        } catch (const CLI::ValidationError&) {
          bytes = "0";
        }
        if (bytes == "0") return "\"" + text + "\" is no size; give one as 500M or 20G";
        text = bytes;
        return std::string();
      },
      "");
}

CLI::Validator Checked(std::string (*wrong)(const std::string&)) {
  return CLI::Validator([wrong](std::string& text) { return wrong(text); }, "");
}

// The options that the rows of one side bring along, each once.
template <typename Rows>
void AddFormatOptions(CommandOptions& command, const Rows& rows, OptionValues& values) {
  for (const auto& row : rows) {
    for (const FormatOption& option : row.options) {
      const std::string name = "--" + option.name;
      if (!command.Wants(name)) continue;
      if (option.kind == FormatOption::Kind::Flag) {
        command.add_flag_callback(
            name, [&values, &option] { values.Set(option.name, "yes"); }, option.help);
        continue;
      }
      AddedOption added = command.add_option_function<std::string>(
          name, [&values, &option](const std::string& value) { values.Set(option.name, value); }, option.help);
      added.type_name(option.value);
      if (!option.choices.empty()) added.check(OneOf(option.choices));
      if (option.check) added.check(CLI::Validator(option.check, ""));
    }
  }
}

void SetLineEnds(ReadingOptions& options, const std::string& choice) {
  constexpr std::string_view kCopy = "copy=";
  if (choice == "keep") {
    options.lineEnds = LineEndsChoice::Keep;
  } else if (choice == "replace") {
    options.lineEnds = LineEndsChoice::Replace;
  } else if (choice.starts_with(kCopy) && choice.size() > kCopy.size()) {
    options.lineEnds = LineEndsChoice::Copy;
    options.lineEndsCopy = choice.substr(kCopy.size());
  } else {
    throw CLI::ValidationError("--line-ends", "\"" + choice + "\" is not keep, replace or copy=FILE" +
                                                  DidYouMean(choice, {"keep", "replace"}));
  }
}

void AddDialect(CommandOptions& command, ReadingOptions& options) {
  command
      .add_option_function<std::string>(
          "--dialect",
          [&options](const std::string& name) {
            options.dialect = name == "standard" ? Dialect::Standard : Dialect::Classic;
          },
          "Conventions that files follow: classic (default) or\n"
          "standard, as other programs read them")
      ->type_name("NAME")
      ->check(OneOf({"classic", "standard"}));
}

void AddLayerList(CommandOptions& command, const char* name, const char* help, std::vector<std::string>& layers) {
  const auto take = [&layers](const std::vector<std::string>& lists) {
    for (const std::string& list : lists) {
      for (std::string& item : ListIn(list)) layers.push_back(std::move(item));
    }
  };
  command.add_option_function<std::vector<std::string>>(name, take, help)
      ->type_name("LIST")
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void AddLabels(CommandOptions& command, ReadingOptions& options) {
  command
      .add_option("--text-field", options.textField,
                  "Attribute field whose value becomes a text at each shape,\n"
                  "or a template of several: '{NAME} ({DEPTH} ft)'")
      ->type_name("NAME");
  command
      .add_option("--text-height", options.look.height,
                  "Height of these texts, or the field that holds it\n"
                  "(classic: 1000; standard: by the size of the drawing)")
      ->type_name("N|NAME")
      ->check(Checked(WrongHeight));
  command.add_option("--text-angle", options.look.angle, "Their angle in degrees, or the field that holds it")
      ->type_name("N|NAME");
  command
      .add_option("--colour-field", options.look.colour,
                  "Attribute field with the colour of shapes and texts: a\n"
                  "number from 1 to 255, a name, #rrggbb or r,g,b")
      ->type_name("NAME");
}

void AddQuiet(CommandOptions& command, ReadingOptions& options, const char* help) {
  command.add_flag("-q,--quiet", options.quiet, help);
}

void AddReadingOptions(CommandOptions& command, ReadingOptions& options) {
  const auto& formats = AllFormats().Inputs();
  AddDialect(command, options);
  command.Group("Input");
  command.add_option("--from", options.from, "Input format, whatever the extension: " + KeyList(formats))
      ->type_name("KEY")
      ->check(KnownKey(formats, "input"));
  AddFormatOptions(command, formats, options.own);
  command
      .add_option_function<std::string>(
          "--line-ends", [&options](const std::string& choice) { SetLineEnds(options, choice); },
          "For a text file with bare line feeds: keep (default),\n"
          "replace (repair the file), copy=FILE (repair a copy)")
      ->type_name("CHOICE:{keep,replace,copy=FILE}");
  command
      .add_option("--tolerance", options.tolerance,
                  "Greatest distance of a curve from its chain, in drawing\n"
                  "units (standard: the lesser of 0.01 and a ten-thousandth\n"
                  "of the radius; classic: its own chains)")
      ->type_name("DISTANCE")
      ->check(Checked(WrongDistance));
  command.Group(kAttributes);
  command.add_option("--layer-field", options.layerField, "Attribute field of a shapefile that names the layer")
      ->type_name("NAME");
  AddLabels(command, options);
  command.Group("Layers and place");
  AddLayerList(command, "--layers",
               "Take these layers alone: names, or patterns with * and ?,\n"
               "divided by commas; :off, :frozen and :locked are those\n"
               "that a drawing marks so",
               options.layers);
  AddLayerList(command, "--without-layers", "Leave these layers out, given likewise", options.withoutLayers);
  AddClip(command, options.clip);
  command
      .add_option("--layer-codes", options.layerCodes,
                  "CSV file with the columns layer and code: the entity\ncodes of layers (see \"tesselink layers\")")
      ->type_name("FILE");
  command.add_flag("--smart-assign", options.smartAssign,
                   "Guess the entity codes of layers from their names,\nafter the remembered ones");
}

void AddAttributes(CommandOptions& command, ReadingOptions& options) {
  command.Group(kAttributes);
  const auto take = [&options](const std::string& choice) { options.attributes = choice == "keep"; };
  command
      .add_option_function<std::string>("--attributes", take,
                                        "What becomes of an input's attributes: keep (default),\n"
                                        "where the output holds them, or drop")
      ->type_name("CHOICE")
      ->check(OneOf({"keep", "drop"}));
}

// How a conversion is done, whatever its files.
void AddConversion(CommandOptions& options, ConvertCommand& command) {
  const auto& formats = AllFormats().Outputs();
  AddReadingOptions(options, command.reading);
  AddAttributes(options, command.reading);
  AddSystemOptions(options, command.reading.systems, true);
  options.Group("Output");
  options.add_option("--to", command.to, "Output format, whatever the extension:\n" + KeyList(formats))
      ->type_name("KEY")
      ->check(KnownKey(formats, "output"));
  options.add_flag("-O,--overwrite", command.overwrite, "Replace an existing output");
  AddFormatOptions(options, formats, command.reading.own);
  options
      .add_option("--max-output", command.maxOutput,
                  "How much may be written, as 500M or 20G; the output is\n"
                  "kept as far as it goes (default: the greater of 1 GiB\n"
                  "and 200 times what is read)")
      ->type_name("SIZE")
      ->transform(SizeInBytes());
  options.add_flag("--sync", command.sync, "Return when the output is on the disk");
  options.Group("Areas");
  options.add_flag("--build-areas", command.buildAreas,
                   "Make areas of what lines surround, for shapefiles with\n"
                   "--shape-type polygons or each and other outputs that\n"
                   "hold areas (standard)");
  options
      .add_option("--snap", command.snap,
                  "How far lines may miss each other that are to meet where\n"
                  "areas are built, in drawing units (default: by rounding)")
      ->type_name("DISTANCE")
      ->check(Checked(WrongDistance));
  AddLayerList(options, "--label-layer",
               "Layers whose texts become the Text of the areas that\nthey lie in, given as with --layers",
               command.labelLayers);
  options.Group("Messages");
  options.add_flag_callback(
      "--progress", [&] { command.progress = ProgressChoice::Always; },
      "Show a progress bar (the default on a terminal); in a file\nor pipe, a line for every tenth");
  options.add_flag_callback(
      "--no-progress", [&] { command.progress = ProgressChoice::Never; }, "Show no progress");
  AddQuiet(options, command.reading, "Print errors alone: no summary, warnings and bar");
  options.add_flag("--json", command.json, "Print the summary as JSON on standard output");
}

}  // namespace

// Of the commands but the one that is asked for only the names are needed.
CLI::App* AddConvert(CLI::App& app, const Asked& asked, ConvertCommand& command) {
  CLI::App* convert = app.add_subcommand("convert", "Convert a drawing; several shapefiles become one output");
  if (!asked.Command("convert")) return convert;
  CommandOptions options(*convert, asked);
  options.add_option("FILES", command.inputs)->type_name("INPUT... OUTPUT")->expected(2, 1 << 20);
  AddConversion(options, command);
  options.add_flag("--show-settings", command.showSettings,
                   "Tell which settings hold, and where each comes from;\nconvert nothing");
  AddPartOfBatch(*convert, command, asked.Arguments());
  convert->footer(kConvertExamples);
  return convert;
}

CLI::App* AddBatch(CLI::App& app, const Asked& asked, BatchCommand& command) {
  CLI::App* batch = app.add_subcommand("batch", "Convert many drawings, whole folders too, several at a time");
  if (!asked.Command("batch")) return batch;
  AddBatchOptions(*batch, command, SizeInBytes());
  const Asked whole = asked.Wholly();
  CommandOptions options(*batch, whole);
  AddConversion(options, command.conversion);
  batch->get_option("--to")->required();
  return batch;
}

CLI::App* AddInfo(CLI::App& app, const Asked& asked, InfoCommand& command) {
  CLI::App* info = app.add_subcommand("info", "Tell what a drawing holds: elements, layers, extents, fields");
  if (!asked.Command("info")) return info;
  CommandOptions options(*info, asked);
  options.add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  AddQuiet(options, command.reading, "Print errors, and no warnings");
  options.add_flag("--json", command.json, "Print as JSON");
  AddReadingOptions(options, command.reading);
  AddSystemOptions(options, command.reading.systems, false);
  info->footer(kInfoExample);
  return info;
}

CLI::App* AddCat(CLI::App& app, const Asked& asked, CatCommand& command) {
  CLI::App* cat = app.add_subcommand("cat", "Print every element as one JSON object a line");
  if (!asked.Command("cat")) return cat;
  CommandOptions options(*cat, asked);
  options.add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  AddQuiet(options, command.reading, "Print errors, and no warnings");
  AddReadingOptions(options, command.reading);
  AddSystemOptions(options, command.reading.systems, true);
  cat->footer(kCatExample);
  return cat;
}

CLI::App* AddLayers(CLI::App& app, const Asked& asked, LayersCommand& command) {
  CLI::App* layers = app.add_subcommand("layers", "List layers and their entity codes as CSV, ready for --layer-codes");
  if (!asked.Command("layers")) return layers;
  CommandOptions options(*layers, asked);
  options.add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  AddQuiet(options, command.reading, "Print errors, and no warnings");
  AddReadingOptions(options, command.reading);
  layers->footer(kLayersExamples);
  return layers;
}

CLI::App* AddTable(CLI::App& app, const Asked& asked, TableCommand& command) {
  CLI::App* table = app.add_subcommand("table", "Print an attribute table (.dbf) as CSV, field names first");
  if (!asked.Command("table")) return table;
  CommandOptions options(*table, asked);
  options.add_option("FILE", command.file, "The table")->required()->type_name("FILE.dbf");
  AddQuiet(options, command.reading, "Print errors, and no warnings");
  static const std::vector<Format> kRows{{.options = {EncodingOption()}}};
  AddFormatOptions(options, kRows, command.reading.own);
  AddDialect(options, command.reading);
  table->footer(kTableExample);
  return table;
}

CLI::App* AddPreview(CLI::App& app, const Asked& asked, PreviewCommand& command) {
  CLI::App* preview = app.add_subcommand("preview", "Draw a picture (SVG) of a drawing, coloured by layer");
  if (!asked.Command("preview")) return preview;
  CommandOptions options(*preview, asked);
  options.add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  options.add_option("PICTURE", command.picture, "The picture")->required()->type_name("PICTURE.svg");
  options.add_flag("-O,--overwrite", command.overwrite, "Replace an existing picture");
  AddQuiet(options, command.reading, "Print errors, and no warnings");
  AddReadingOptions(options, command.reading);
  preview->footer(kPreviewExamples);
  return preview;
}

void AddFormats(CLI::App& app, const Asked& asked, FormatsCommand& command) {
  CLI::App* formats = app.add_subcommand("formats", "List the formats, their keys and extensions");
  if (!asked.Command("formats")) return;
  CommandOptions options(*formats, asked);
  options.add_flag("--json", command.json, "Print as JSON");
}

// "help COMMAND" never comes to be parsed; the command is there to be listed, and for what else stands behind it.
void AddHelp(CLI::App& app, const Asked& asked) {
  CLI::App* help = app.add_subcommand(kHelp, "Tell how a command is used, and what its options are");
  if (!asked.Command(kHelp)) return;
  help->add_option("COMMAND", "The command")->type_name("[COMMAND]");
  help->callback([] { throw CLI::CallForHelp(); });
}

}  // namespace tesselink
