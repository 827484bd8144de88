#include "cli/Usage.h"

#include <CLI/CLI.hpp>
#include <string_view>

#include "cli/Console.h"
#include "cli/Exit.h"

namespace tesselink {
namespace {

// Usage lines as people write them, and no table of the positionals that they name.
class HelpFormatter final : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(34); }
  std::string make_usage(const CLI::App* app, std::string) const override {
    if (app->get_parent() == nullptr) return "Usage: tesselink COMMAND [OPTIONS] ...\n";
    return "Usage: tesselink " + app->get_name() + " [OPTIONS]" + PositionalsOf(*app) + "\n";
  }
  std::string make_positionals(const CLI::App*) const override { return {}; }
};

// As in "convert, info and cat".
std::string CommandList(const CLI::App& app) {
  std::string list;
  const auto commands = app.get_subcommands({});
  for (std::size_t i = 0; i < commands.size(); ++i) {
    list += (i == 0 ? "" : i + 1 == commands.size() ? " and " : ", ") + commands[i]->get_name();
  }
  return list;
}

// The library's words, but for the mistakes that people make first.
std::string Wording(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
  if (app.get_subcommands().empty()) {
    const std::string commands = "the commands are " + CommandList(app);
    if (arguments.empty()) return "give a command; " + commands;
    const bool isOption = arguments.front().starts_with('-');
    return "\"" + arguments.front() + (isOption ? "\" is no option here; " : "\" is no command; ") + commands;
  }
  const bool convertLacksFiles = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr ||
                                 (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr &&
                                  std::string_view(error.what()).starts_with("FILES"));
  if (convertLacksFiles && app.get_subcommands().front()->get_name() == "convert") {
    return "convert needs an input and an output";
  }
  return error.what();
}

}  // namespace

std::string PositionalsOf(const CLI::App& command) {
  std::string text;
  for (const CLI::Option* option : command.get_options()) {
    if (option->nonpositional()) continue;
    text += " " + (option->get_type_name().empty() ? option->get_name() : option->get_type_name());
  }
  return text;
}

std::shared_ptr<CLI::FormatterBase> HelpFormat() { return std::make_shared<HelpFormatter>(); }

ParsingEnded EndOfParsing(const CLI::App& app, const CLI::ParseError& error,
                          const std::vector<std::string>& arguments) {
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

}  // namespace tesselink
