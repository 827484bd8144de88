// SPDX-License-Identifier: MIT
#include "cli/Usage.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "cli/Exit.h"
#include "cli/Suggestions.h"

namespace tesselink {
namespace {

// Usage lines as people write them, and no table of the positionals that they name.
class HelpFormatter final : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(34); }
  std::string make_usage(const CLI::App* app, std::string) const override {
    if (app->get_parent() == nullptr) return "\nUsage: tesselink COMMAND [OPTIONS] ...\n";
    return "\nUsage: " + UsageOf(*app) + "\n";
  }
  std::string make_positionals(const CLI::App*) const override { return {}; }
  std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
    return CLI::detail::find_and_replace(Formatter::make_help(app, name, mode), "\n\n\n", "\n\n");
  }
};

std::vector<std::string> NamesOf(const std::vector<const CLI::App*>& commands) {
  std::vector<std::string> names;
  for (const CLI::App* command : commands) names.push_back(command->get_name());
  return names;
}

// The nearest words, or else what to do.
std::string MeantOr(const std::string& meant, const std::string& advice) {
  return meant.empty() ? "; " + advice : meant;
}

// As in "--from"; a value may stand behind it.
std::string NameIn(const std::string& argument) { return argument.substr(0, argument.find('=')); }

std::string NearestOptions(const CLI::App& command, const std::string& name) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& longName : option->get_lnames()) names.push_back("--" + longName);
  }
  return DidYouMean(name, names);
}

bool IsOption(const std::string& argument) { return argument.size() > 1 && argument.starts_with('-'); }

// Something else stands where a command is expected.
std::string WithoutCommand(const CLI::App& app, const std::vector<std::string>& arguments) {
  const std::vector<std::string> names = NamesOf(app.get_subcommands({}));
  const std::string all = "the commands are " + Listed(names, "and");
  if (arguments.empty()) return "give a command; " + all;
  const std::string name = NameIn(arguments.front());
  if (!IsOption(name)) return "\"" + name + "\" is no command" + MeantOr(DidYouMean(name, names), all);
  return name + ": unknown option" + MeantOr(NearestOptions(app, name), "options of a command stand behind it; " + all);
}

// What the library has to say of an option's values, in words about the option.
std::string AboutValues(const std::string& text) {
  const std::string name = text.substr(0, text.find(": "));
  if (text.starts_with(name + ": At Most 1 ")) return name + " is given more than once";
  return text.ends_with(" missing") ? name + " needs a value" : text;
}

std::string WordsOf(const CLI::App& app, const CLI::ParseError& error, const std::vector<std::string>& arguments) {
  if (app.get_subcommands().empty() || IsOption(arguments.front())) return WithoutCommand(app, arguments);
  const CLI::App& command = *app.get_subcommands().front();
  // A misspelt option is the mistake, whatever its value is then taken for.
  const std::vector<std::string> rest = command.remaining();
  const auto unknown = std::find_if(rest.begin(), rest.end(), IsOption);
  if (unknown != rest.end()) {
    return NameIn(*unknown) + ": unknown option" + NearestOptions(command, NameIn(*unknown));
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && !rest.empty()) {
    return "\"" + rest.front() + "\" is one argument too many; the command is " + UsageOf(command);
  }
  const bool isMismatch = dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr;
  const bool convertLacksFiles = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr ||
                                 (isMismatch && std::string_view(error.what()).starts_with("FILES"));
  if (convertLacksFiles && command.get_name() == "convert") return "convert needs an input and an output";
  return isMismatch ? AboutValues(error.what()) : error.what();
}

}  // namespace

std::string UsageOf(const CLI::App& command) {
  std::string text = "tesselink " + command.get_name() + " [OPTIONS]";
  for (const CLI::Option* option : command.get_options()) {
    if (option->nonpositional()) continue;
    text += " " + (option->get_type_name().empty() ? option->get_name() : option->get_type_name());
  }
  return text;
}

std::shared_ptr<CLI::FormatterBase> HelpFormat() { return std::make_shared<HelpFormatter>(); }

ParsingEnded EndOfParsing(const CLI::App& app, const CLI::ParseError& error,
                          const std::vector<std::string>& arguments) {
  // Help on something that is no command is none.
  const bool strayed = !arguments.empty() && app.get_subcommands().empty() && !IsOption(arguments.front());
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success) && !strayed) {
    const CLI::App* asked = &app;
    for (const CLI::App* sub : app.get_subcommands()) asked = sub;
    const bool version = dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr;
    return {version ? std::string(error.what()) + "\n" : asked->help(), kExitDone, {}};
  }
  std::string name = "tesselink";
  for (const CLI::App* sub : app.get_subcommands()) name += " " + sub->get_name();
  return {WordsOf(app, error, arguments), kExitUsage, "See \"" + name + " --help\".\n"};
}

}  // namespace tesselink
