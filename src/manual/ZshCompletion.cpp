// SPDX-License-Identifier: MIT
#include "manual/Completions.h"

namespace tesselink {
namespace {

// A text within '...[text]...' and 'name:text'.
std::string Quoted(const std::string& text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      if (c == '[' || c == ']' || c == ':' || c == '\\') quoted += '\\';
      quoted += c;
    }
  }
  return quoted;
}

std::string ActionFor(const ValueText& value) {
  if (!value.words.empty()) return "(" + Joined(WordsToType(value), " ") + ")";
  if (value.isFolder) return "_files -/";
  if (!value.isFile) return " ";
  return value.extensions.empty() ? "_files" : "_files -g \"*.(#i)(" + Joined(value.extensions, "|") + ")(-.)\"";
}

// As in '(-O --overwrite)'{-O,--overwrite}'[Replace an existing output]'. A list may be given several times.
std::string OptionSpec(const OptionText& option) {
  const bool several = option.value.name == "LIST";
  std::string names = option.names.front();
  if (option.names.size() > 1) names = "'{" + Joined(option.names, ",") + "}'";
  const std::string excluded = several ? "*" : "(" + Joined(option.names, " ") + ")";
  std::string spec = "'" + excluded + names;
  // A value stands behind "=" or in the next word.
  if (!option.value.name.empty() && option.names.size() == 1) spec += "=";
  spec += "[" + Quoted(Brief(option.help)) + "]";
  if (!option.value.name.empty()) spec += ":" + Quoted(option.value.name) + ":" + ActionFor(option.value);
  return spec + "'";
}

std::string OperandSpec(const ValueText& operand) {
  const bool several = operand.name.find("...") != std::string::npos;
  return std::string("'") + (several ? "*" : "") + ":" + Quoted(operand.name) + ":" + ActionFor(operand) + "'";
}

std::string CommandCase(const CommandText& command) {
  std::string text = "        (" + command.name + ")\n          _arguments -s";
  for (const OptionText& option : command.options) text += " \\\n            " + OptionSpec(option);
  for (const ValueText& operand : command.operands) {
    // Behind any number of others the last one cannot be told from them.
    text += " \\\n            " + OperandSpec(operand);
    if (operand.name.find("...") != std::string::npos) break;
  }
  return text + "\n          ;;\n";
}

}  // namespace

std::string ZshCompletion(const ProgramText& text) {
  std::string script =
      "#compdef tesselink\n\n_tesselink() {\n  local curcontext=$curcontext state line\n  _arguments -C";
  for (const OptionText& option : text.program.options) script += " \\\n    " + OptionSpec(option);
  script +=
      " \\\n    '1:command:->command' '*::argument:->argument'\n"
      "  case $state in\n    (command)\n      local -a commands=(\n";
  for (const CommandText& command : text.commands) {
    script += "        '" + Quoted(command.name) + ":" + Quoted(Brief(command.summary)) + "'\n";
  }
  script += "      )\n      _describe command commands\n      ;;\n    (argument)\n      case $line[1] in\n";
  for (const CommandText& command : text.commands) script += CommandCase(command);
  return script + "      esac\n      ;;\n  esac\n}\n\n_tesselink \"$@\"\n";
}

}  // namespace tesselink
