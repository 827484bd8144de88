// SPDX-License-Identifier: MIT
#include "manual/CommandTexts.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "cli/Arguments.h"
#include "cli/Usage.h"
#include "formats/Formats.h"

namespace tesselink {
namespace {

std::vector<std::string> Split(const std::string& text, char between) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, between);) parts.push_back(part);
  return parts;
}

std::string OnOneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

template <typename Rows>
std::vector<std::string> Keys(const Rows& rows) {
  std::vector<std::string> keys;
  for (const auto& row : rows) keys.push_back(row.key);
  return keys;
}

template <typename Rows>
std::vector<std::string> Extensions(const Rows& rows) {
  std::vector<std::string> extensions;
  for (const auto& row : rows) {
    const std::string extension = row.Extension().substr(1);
    if (std::find(extensions.begin(), extensions.end(), extension) == extensions.end()) extensions.push_back(extension);
  }
  return extensions;
}

// As in "NAME:{classic,standard}", "FILE.dbf" or "INPUT...".
ValueText ValueOf(const std::string& type) {
  ValueText value{type.substr(0, type.find(":{")), {}, {}};
  if (const std::size_t open = type.find('{'); open != std::string::npos) {
    value.words = Split(type.substr(open + 1, type.rfind('}') - open - 1), ',');
  }
  if (const std::size_t dot = type.find('.'); dot != std::string::npos && type.substr(dot) != "...") {
    value.extensions = {type.substr(dot + 1)};
  }
  value.isFile = type.find("FILE") != std::string::npos || type == "SYSTEM" || !value.extensions.empty();
  value.isFolder = type == "FOLDER";
  return value;
}

OptionText TextOf(const CLI::Option& option) {
  OptionText text;
  for (const std::string& name : option.get_snames()) text.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) text.names.push_back("--" + name);
  if (option.get_type_size() > 0) text.value = ValueOf(option.get_type_name());
  if (text.value.name == "KEY") {
    text.value.words = text.names.back() == "--from" ? Keys(AllFormats().Inputs()) : Keys(AllFormats().Outputs());
  }
  text.group = option.get_group();
  text.help = OnOneLine(option.get_description());
  return text;
}

ValueText OperandOf(const std::string& word, const std::vector<std::string>& commands) {
  ValueText operand = ValueOf(word);
  if (word.starts_with("INPUT")) operand.extensions = Extensions(AllFormats().Inputs());
  if (word.starts_with("OUTPUT")) operand.extensions = Extensions(AllFormats().Outputs());
  operand.isFile = !operand.extensions.empty();
  if (word == "[COMMAND]") operand.words = commands;
  return operand;
}

CommandText TextOf(const CLI::App& command, const std::vector<std::string>& commands) {
  CommandText text;
  text.name = command.get_name();
  text.summary = command.get_description();
  text.usage = UsageOf(command);
  for (const CLI::Option* option : command.get_options()) {
    if (option->nonpositional()) {
      text.options.push_back(TextOf(*option));
      continue;
    }
    const std::string type = option->get_type_name();
    for (const std::string& word : Split(type.empty() ? option->get_name() : type, ' ')) {
      text.operands.push_back(OperandOf(word, commands));
    }
  }
  for (const std::string& line : Split(command.get_footer(), '\n')) {
    if (line.starts_with("  ")) text.examples.push_back(line.substr(2));
  }
  return text;
}

}  // namespace

ProgramText TextOfProgram() {
  ProgramText text;
  ShowCommands([&text](const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
    text.program = TextOf(app, names);
    for (const CLI::App* command : app.get_subcommands({})) text.commands.push_back(TextOf(*command, names));
  });
  return text;
}

std::vector<std::string> WordsToType(const ValueText& value) {
  std::vector<std::string> words;
  for (const std::string& word : value.words) {
    const std::size_t sign = word.find('=');
    words.push_back(sign == std::string::npos ? word : word.substr(0, sign + 1));
  }
  return words;
}

std::string Brief(const std::string& help) {
  std::size_t end = help.size();
  for (const char* mark : {"; ", ": ", " (", ", as in ", ". "}) end = std::min(end, help.find(mark));
  return help.substr(0, end);
}

std::string HelpAndChoices(const std::string& help, const std::string& value, const std::vector<std::string>& words) {
  const bool namesAll = std::all_of(words.begin(), words.end(),
                                    [&](const std::string& word) { return help.find(word) != std::string::npos; });
  return help + (help.ends_with('.') ? "" : ".") +
         (namesAll ? "" : " " + value + " is one of " + Joined(words, ", ") + ".");
}

std::string Joined(const std::vector<std::string>& words, const std::string& between) {
  return Joined(words, between, [](const std::string& word) { return word; });
}

}  // namespace tesselink
