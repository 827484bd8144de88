// SPDX-License-Identifier: MIT
#include "cli/Arguments.h"

#include <CLI/CLI.hpp>

#include "cli/BatchOptions.h"
#include "cli/CommandTable.h"
#include "cli/Usage.h"

namespace tesselink {
namespace {

constexpr const char* kAbout =
    "Converts vector map drawings between the file formats of oil-and-gas and land-survey mapping.";

// The examples run as they stand in a checkout; a test does so.
constexpr const char* kExamples =
    "Examples:\n"
    "  tesselink info examples/wells.shp\n"
    "  tesselink convert --dialect standard examples/quarter-section.asc quarter-section.dxf\n"
    "\"tesselink help COMMAND\" tells the options of a command.";

// "help COMMAND" as "COMMAND --help", "help" as "--help"; everything else as it stands.
std::vector<std::string> HelpAsOption(const std::vector<std::string>& arguments) {
  constexpr const char* kOption = "--help";
  if (arguments.empty() || arguments.front() != kHelp || arguments.size() > 2) return arguments;
  if (arguments.size() == 1) return {kOption};
  if (arguments[1].starts_with('-')) return arguments;
  return {arguments[1], kOption};
}

// All commands, and what their options set.
struct CommandLine {
  explicit CommandLine(const Asked& asked) {
    app.set_version_flag("-V,--version", "tesselink " TESSELINK_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    app.formatter(HelpFormat());
    convertApp = AddConvert(app, asked, convert);
    batchApp = AddBatch(app, asked, batch);
    infoApp = AddInfo(app, asked, info);
    catApp = AddCat(app, asked, cat);
    layersApp = AddLayers(app, asked, layers);
    previewApp = AddPreview(app, asked, preview);
    tableApp = AddTable(app, asked, table);
    AddFormats(app, asked, formats);
    AddHelp(app, asked);
    app.footer(kExamples);  // last, for commands take over what stands here before them
  }

  Command Parse(const std::vector<std::string>& arguments) {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    if (convertApp->parsed()) {
      if (convert.inputs.empty() && convert.showSettings) return convert;
      if (convert.inputs.empty()) throw CLI::RequiredError("FILES");
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

  CLI::App app{kAbout, "tesselink"};
  ConvertCommand convert;
  BatchCommand batch;
  InfoCommand info;
  CatCommand cat;
  LayersCommand layers;
  PreviewCommand preview;
  TableCommand table;
  FormatsCommand formats;
  const CLI::App *convertApp, *batchApp, *infoApp, *catApp, *layersApp, *previewApp, *tableApp;
};

std::vector<CommandOption> OptionsOf(const CLI::App& command) {
  std::vector<CommandOption> options;
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_lnames().empty()) continue;
    options.push_back({option->get_lnames().front(), option->get_items_expected_max() == 0, option->results()});
  }
  return options;
}

}  // namespace

Command ParseArguments(const std::vector<std::string>& typed, std::vector<CommandOption>* options) {
  const std::vector<std::string> arguments = HelpAsOption(typed);
  try {
    if (options == nullptr) return CommandLine(Asked::InArguments(arguments)).Parse(arguments);
  } catch (const CLI::ParseError&) {
    // Help and what is wrong are told by all options.
  }
  CommandLine whole(Asked::WithAllOptions(arguments));
  try {
    Command command = whole.Parse(arguments);
    if (options != nullptr) *options = OptionsOf(*whole.app.get_subcommands().front());
    return command;
  } catch (const CLI::ParseError& error) {
    return EndOfParsing(whole.app, error, arguments);
  }
}

void ShowCommands(const std::function<void(const CLI::App& program)>& look) {
  look(CommandLine(Asked::Everything()).app);
}

}  // namespace tesselink
