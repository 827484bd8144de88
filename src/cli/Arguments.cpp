#include "cli/Arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>

#include "cli/BatchOptions.h"
#include "cli/ClipOption.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/SystemOptions.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/run/EncodingOption.h"
#include "formats/Formats.h"

namespace tesselink {
namespace {

constexpr const char* kAbout =
    "Converts vector map drawings between the file formats of oil-and-gas and land-survey mapping.\n";

// The examples run as they stand in a checkout; a test does so.
constexpr const char* kExamples =
    "Examples:\n"
    "  tesselink info examples/wells.shp\n"
    "  tesselink convert --dialect standard examples/quarter-section.asc quarter-section.dxf\n"
    "\"tesselink COMMAND --help\" tells the options of a command.";

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

// Usage lines as people write them, and no table of the positionals that they name.
class HelpFormatter final : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(34); }
  std::string make_usage(const CLI::App* app, std::string) const override {
    static const std::map<std::string, std::string> kPositionals{{"convert", " INPUT... OUTPUT"},
                                                                 {"info", " INPUT"},
                                                                 {"cat", " INPUT"},
                                                                 {"layers", " INPUT"},
                                                                 {"batch", " --to KEY --into FOLDER INPUT..."},
                                                                 {"preview", " INPUT PICTURE.svg"},
                                                                 {"table", " FILE.dbf"}};
    if (app->get_parent() == nullptr) return "Usage: tesselink COMMAND [OPTIONS] ...\n";
    const auto positionals = kPositionals.find(app->get_name());
    return "Usage: tesselink " + app->get_name() + " [OPTIONS]" +
           (positionals == kPositionals.end() ? "" : positionals->second) + "\n";
  }
  std::string make_positionals(const CLI::App*) const override { return {}; }
};

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
        const bool known = std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return row.key == key; });
        return known ? std::string() : "\"" + key + "\" is no " + what + " format; the keys are " + KeyList(rows);
      },
      "");
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

CLI::Validator Distance() {
  return CLI::Validator(
      [](std::string& text) {
        try {
          if (StrictNumber(text) > 0) return std::string();
        } catch (const Error&) {
        }
        return "\"" + text + "\" is no distance; give a number greater than 0";
      },
      "");
}

CLI::Validator HeightOrName() {
  return CLI::Validator(
      [](std::string& text) {
        const double number = NumberOrNone(text);
        return number <= 0 ? "\"" + text + "\" is no height; give a number greater than 0, or a field" : std::string();
      },
      "");
}

// The options that the rows of one side bring along, each once.
template <typename Rows>
void AddFormatOptions(CLI::App& command, const Rows& rows, OptionValues& values) {
  for (const auto& row : rows) {
    for (const FormatOption& option : row.options) {
      const std::string name = "--" + option.name;
      if (command.get_option_no_throw(name) != nullptr) continue;
      if (option.kind == FormatOption::Kind::Flag) {
        command.add_flag_callback(
            name, [&values, &option] { values.Set(option.name, "yes"); }, option.help);
        continue;
      }
      CLI::Option* added = command.add_option_function<std::string>(
          name, [&values, &option](const std::string& value) { values.Set(option.name, value); }, option.help);
      added->type_name(option.value);
      if (!option.choices.empty()) added->check(CLI::IsMember(option.choices));
      if (option.check) added->check(option.check);
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
    throw CLI::ValidationError("--line-ends", "\"" + choice + "\" is not keep, replace or copy=FILE");
  }
}

void AddDialect(CLI::App& command, ReadingOptions& options) {
  command
      .add_option_function<std::string>(
          "--dialect",
          [&options](const std::string& name) {
            options.dialect = name == "standard" ? Dialect::Standard : Dialect::Classic;
          },
          "Conventions that files follow: classic (default) or\n"
          "standard, as other programs read them")
      ->type_name("NAME")
      ->check(CLI::IsMember({"classic", "standard"}));
}

void AddLayerList(CLI::App& command, const char* name, const char* help, std::vector<std::string>& layers) {
  const auto take = [&layers](const std::vector<std::string>& lists) {
    for (const std::string& list : lists) {
      for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        layers.push_back(list.substr(begin, end - begin));
        begin = end + 1;
      }
    }
  };
  command.add_option_function<std::vector<std::string>>(name, take, help)
      ->type_name("LIST")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void AddLabels(CLI::App& command, ReadingOptions& options) {
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
      ->check(HeightOrName());
  command.add_option("--text-angle", options.look.angle, "Their angle in degrees, or the field that holds it")
      ->type_name("N|NAME");
  command
      .add_option("--colour-field", options.look.colour,
                  "Attribute field with the colour of shapes and texts: a\n"
                  "number from 1 to 255, a name, #rrggbb or r,g,b")
      ->type_name("NAME");
}

void AddReadingOptions(CLI::App& command, ReadingOptions& options) {
  const auto& formats = AllFormats().Inputs();
  command.add_option("--from", options.from, "Input format, whatever the extension: " + KeyList(formats))
      ->type_name("KEY")
      ->check(KnownKey(formats, "input"));
  command.add_option("--layer-field", options.layerField, "Attribute field of a shapefile that names the layer")
      ->type_name("NAME");
  AddLabels(command, options);
  AddLayerList(command, "--layers",
               "Take these layers alone: names, or patterns with * and ?,\n"
               "divided by commas; :off, :frozen and :locked are those\n"
               "that a drawing marks so",
               options.layers);
  AddLayerList(command, "--without-layers", "Leave these layers out, given likewise", options.withoutLayers);
  AddClip(command, options.clip);
  command
      .add_option_function<std::string>(
          "--line-ends", [&options](const std::string& choice) { SetLineEnds(options, choice); },
          "For a text file with bare line feeds: keep (default),\n"
          "replace (repair the file), copy=FILE (repair a copy)")
      ->type_name("CHOICE");
  command
      .add_option("--layer-codes", options.layerCodes,
                  "CSV file with the columns layer and code: the entity\ncodes of layers (see \"tesselink layers\")")
      ->type_name("FILE");
  command.add_flag("--smart-assign", options.smartAssign,
                   "Guess the entity codes of layers from their names,\nafter the remembered ones");
  AddFormatOptions(command, formats, options.own);
  AddDialect(command, options);
  command
      .add_option("--tolerance", options.tolerance,
                  "Greatest distance of a curve from its chain, in drawing\n"
                  "units (standard: the lesser of 0.01 and a ten-thousandth\n"
                  "of the radius; classic: its own chains)")
      ->type_name("DISTANCE")
      ->check(Distance());
}

void AddAttributes(CLI::App& command, ReadingOptions& options) {
  const auto take = [&options](const std::string& choice) { options.attributes = choice == "keep"; };
  command
      .add_option_function<std::string>("--attributes", take,
                                        "What becomes of an input's attributes: keep (default),\n"
                                        "where the output holds them, or drop")
      ->type_name("CHOICE")
      ->check(CLI::IsMember({"keep", "drop"}));
}

// How a conversion is done, whatever its files.
void AddConversion(CLI::App* convert, ConvertCommand& command) {
  const auto& formats = AllFormats().Outputs();
  convert->add_flag("-O,--overwrite", command.overwrite, "Replace an existing output");
  AddReadingOptions(*convert, command.reading);
  AddSystemOptions(*convert, command.reading.systems, true);
  convert->add_option("--to", command.to, "Output format, whatever the extension:\n" + KeyList(formats))
      ->type_name("KEY")
      ->check(KnownKey(formats, "output"));
  AddFormatOptions(*convert, formats, command.reading.own);
  AddAttributes(*convert, command.reading);
  convert->add_flag("--build-areas", command.buildAreas,
                    "Make areas of what lines surround, for shapefiles with\n"
                    "--shape-type polygons or each and other outputs that\n"
                    "hold areas (standard)");
  convert
      ->add_option("--snap", command.snap,
                   "How far lines may miss each other that are to meet where\n"
                   "areas are built, in drawing units (default: by rounding)")
      ->type_name("DISTANCE")
      ->check(Distance());
  AddLayerList(*convert, "--label-layer",
               "Layers whose texts become the Text of the areas that\nthey lie in, given as with --layers",
               command.labelLayers);
  convert
      ->add_option("--max-output", command.maxOutput,
                   "How much may be written, as 500M or 20G; the output is\n"
                   "kept as far as it goes (default: the greater of 1 GiB\n"
                   "and 200 times what is read)")
      ->type_name("SIZE")
      ->transform(SizeInBytes());
  convert->add_flag("--sync", command.sync, "Return when the output is on the disk");
  convert->add_flag_callback(
      "--progress", [&] { command.progress = ProgressChoice::Always; },
      "Show a progress bar (the default on a terminal)");
  convert->add_flag_callback(
      "--no-progress", [&] { command.progress = ProgressChoice::Never; }, "Show no progress bar");
  convert->add_flag("-q,--quiet", command.quiet, "Print warnings and errors only");
  convert->add_flag("--json", command.json, "Print the summary as JSON on standard output");
}

// Of the commands but the one that is asked for, which is the first argument, only the names are needed.
CLI::App* AddConvert(CLI::App& app, const std::string& asked, ConvertCommand& command) {
  CLI::App* convert = app.add_subcommand("convert", "Convert a drawing; several shapefiles become one output");
  if (asked != convert->get_name()) return convert;
  convert->add_option("FILES", command.inputs)->type_name("INPUT... OUTPUT")->required()->expected(2, 1 << 20);
  AddConversion(convert, command);
  convert->footer(kConvertExamples);
  return convert;
}

CLI::App* AddBatch(CLI::App& app, const std::string& asked, BatchCommand& command) {
  CLI::App* batch = app.add_subcommand("batch", "Convert many drawings, whole folders too, several at a time");
  if (asked != batch->get_name()) return batch;
  AddBatchOptions(*batch, command, SizeInBytes());
  AddConversion(batch, command.conversion);
  batch->get_option("--to")->required();
  return batch;
}

CLI::App* AddInfo(CLI::App& app, const std::string& asked, InfoCommand& command) {
  CLI::App* info = app.add_subcommand("info", "Tell what a drawing holds: elements, layers, extents, fields");
  if (asked != info->get_name()) return info;
  info->add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  info->add_flag("--json", command.json, "Print as JSON");
  AddReadingOptions(*info, command.reading);
  AddSystemOptions(*info, command.reading.systems, false);
  info->footer(kInfoExample);
  return info;
}

CLI::App* AddCat(CLI::App& app, const std::string& asked, CatCommand& command) {
  CLI::App* cat = app.add_subcommand("cat", "Print every element as one JSON object a line");
  if (asked != cat->get_name()) return cat;
  cat->add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  AddReadingOptions(*cat, command.reading);
  AddSystemOptions(*cat, command.reading.systems, true);
  cat->footer(kCatExample);
  return cat;
}

CLI::App* AddLayers(CLI::App& app, const std::string& asked, LayersCommand& command) {
  CLI::App* layers = app.add_subcommand("layers", "List layers and their entity codes as CSV, ready for --layer-codes");
  if (asked != layers->get_name()) return layers;
  layers->add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  AddReadingOptions(*layers, command.reading);
  layers->footer(kLayersExamples);
  return layers;
}

CLI::App* AddTable(CLI::App& app, const std::string& asked, TableCommand& command) {
  CLI::App* table = app.add_subcommand("table", "Print an attribute table (.dbf) as CSV, field names first");
  if (asked != table->get_name()) return table;
  table->add_option("FILE", command.file, "The table")->required()->type_name("");
  static const std::vector<Format> kRows{{.options = {EncodingOption()}}};
  AddFormatOptions(*table, kRows, command.reading.own);
  AddDialect(*table, command.reading);
  table->footer(kTableExample);
  return table;
}

CLI::App* AddPreview(CLI::App& app, const std::string& asked, PreviewCommand& command) {
  CLI::App* preview = app.add_subcommand("preview", "Draw a picture (SVG) of a drawing, coloured by layer");
  if (asked != preview->get_name()) return preview;
  preview->add_option("INPUT", command.input, "The drawing")->required()->type_name("");
  preview->add_option("PICTURE", command.picture, "The picture")->required()->type_name("");
  preview->add_flag("-O,--overwrite", command.overwrite, "Replace an existing picture");
  AddReadingOptions(*preview, command.reading);
  preview->footer(kPreviewExamples);
  return preview;
}

// The library's words, but for the mistakes that people make first.
std::string Wording(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
  constexpr const char* kCommands = "the commands are convert, batch, info, cat, layers, preview, table and formats";
  if (app.get_subcommands().empty()) {
    if (arguments.empty()) return std::string("give a command; ") + kCommands;
    const bool isOption = arguments.front().starts_with('-');
    return "\"" + arguments.front() + (isOption ? "\" is no option here; " : "\" is no command; ") + kCommands;
  }
  const bool convertLacksFiles = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr ||
                                 (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr &&
                                  std::string_view(error.what()).starts_with("FILES"));
  if (convertLacksFiles && app.get_subcommands().front()->get_name() == "convert") {
    return "convert needs an input and an output";
  }
  return error.what();
}

ParsingEnded Ended(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    const CLI::App* asked = &app;
    for (const CLI::App* sub : app.get_subcommands()) asked = sub;
    const bool version = dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr;
    return {version ? std::string(error.what()) + "\n" : asked->help(), kExitDone};
  }
  std::string name = "tesselink";
  for (const CLI::App* sub : app.get_subcommands()) name += " " + sub->get_name();
  return {"tesselink: " + Visible(Wording(app, error, arguments)) + "\nSee \"" + name + " --help\".\n", kExitUsage};
}

}  // namespace

Command ParseArguments(const std::vector<std::string>& arguments) {
  CLI::App app(kAbout, "tesselink");
  app.set_version_flag("--version", "tesselink " TESSELINK_VERSION);
  app.require_subcommand(1);
  app.formatter(std::make_shared<HelpFormatter>());

  ConvertCommand convert;
  BatchCommand batch;
  InfoCommand info;
  CatCommand cat;
  LayersCommand layers;
  PreviewCommand preview;
  TableCommand table;
  FormatsCommand formats;
  const std::string asked = arguments.empty() ? std::string() : arguments.front();
  CLI::App* convertApp = AddConvert(app, asked, convert);
  AddPartOfBatch(*convertApp, convert, arguments);
  const CLI::App* batchApp = AddBatch(app, asked, batch);
  const CLI::App* infoApp = AddInfo(app, asked, info);
  const CLI::App* catApp = AddCat(app, asked, cat);
  const CLI::App* layersApp = AddLayers(app, asked, layers);
  const CLI::App* previewApp = AddPreview(app, asked, preview);
  const CLI::App* tableApp = AddTable(app, asked, table);
  CLI::App* formatsApp = app.add_subcommand("formats", "List the formats, their keys and extensions");
  formatsApp->add_flag("--json", formats.json, "Print as JSON");
  app.footer(kExamples);  // last, for commands take over what stands here before them

  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    return Ended(app, error, arguments);
  }
  if (convertApp->parsed()) {
    convert.output = convert.inputs.back();
    convert.inputs.pop_back();
    return convert;
  }
  if (batchApp->parsed()) {
    batch.options = ConversionOptionsGiven(*batchApp);
    return batch;
  }
  if (infoApp->parsed()) return info;
  if (catApp->parsed()) return cat;
  if (layersApp->parsed()) return layers;
  if (previewApp->parsed()) return preview;
  if (tableApp->parsed()) return table;
  return formats;
}

}  // namespace tesselink
