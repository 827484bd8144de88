// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "manual/Completions.h"

namespace tesselink {
namespace {

// Files are offered by extension, in small or capital letters, folders always.
constexpr const char* kHead = R"bash(# bash completion for tesselink

# Files with one of the extensions, which | divides; all files without one.
_tesselink_files() {
  local IFS=$'\n' file
  compopt -o filenames 2> /dev/null
  for file in $(compgen -f -- "$cur"); do
    if [[ -z $1 || -d ${file/#\~/$HOME} || ${file,,} =~ \.($1)$ ]]; then COMPREPLY+=("$file"); fi
  done
}

_tesselink_folders() {
  local IFS=$'\n'
  compopt -o filenames 2> /dev/null
  COMPREPLY=($(compgen -d -- "$cur"))
}

_tesselink_words() {
  COMPREPLY=($(compgen -W "$1" -- "$cur"))
}

_tesselink() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
  COMPREPLY=()
  # "--option=value" comes in three words.
  if [[ $cur == = ]]; then
    cur=
  elif [[ $prev == = ]]; then
    prev=${COMP_WORDS[COMP_CWORD-2]}
  fi
)bash";

std::string ActionFor(const ValueText& value) {
  if (!value.words.empty()) return "_tesselink_words '" + Joined(WordsToType(value), " ") + "'";
  if (value.isFile) return "_tesselink_files '" + Joined(value.extensions, "|") + "'";
  return value.isFolder ? "_tesselink_folders" : "";
}

std::string OptionNames(const CommandText& command) {
  return Joined(command.options, " ", [](const OptionText& option) { return Joined(option.names, " "); });
}

// Operands are not counted: any of them may come next.
std::string OperandAction(const CommandText& command) {
  ValueText any;
  for (const ValueText& operand : command.operands) {
    any.isFile |= operand.isFile;
    any.words.insert(any.words.end(), operand.words.begin(), operand.words.end());
    any.extensions.insert(any.extensions.end(), operand.extensions.begin(), operand.extensions.end());
  }
  return ActionFor(any);
}

// Options with the same action stand together.
std::string OptionCases(const CommandText& command) {
  std::vector<std::pair<std::string, std::string>> cases;  // the action, and the names
  for (const OptionText& option : command.options) {
    if (option.value.name.empty()) continue;
    const std::string action = ActionFor(option.value), names = Joined(option.names, " | ");
    const auto same = std::find_if(cases.begin(), cases.end(), [&](const auto& one) { return one.first == action; });
    if (same == cases.end()) {
      cases.emplace_back(action, names);
    } else {
      same->second += " | " + names;
    }
  }
  std::string text;
  for (const auto& [action, names] : cases)
    text += "        " + names + ") " + action + (action.empty() ? "" : "; ") + "return ;;\n";
  return text.empty() ? text : "      case $prev in\n" + text + "      esac\n";
}

std::string CommandCase(const CommandText& command) {
  std::string text = "    " + command.name + ")\n" + OptionCases(command);
  const std::string operands = OperandAction(command);
  text += "      if [[ $cur == -* ]]; then\n        _tesselink_words '" + OptionNames(command) + "'\n";
  if (!operands.empty()) text += "      else\n        " + operands + "\n";
  return text + "      fi\n      ;;\n";
}

}  // namespace

std::string BashCompletion(const ProgramText& text) {
  const auto name = [](const CommandText& command) { return command.name; };
  std::string script = kHead;
  script += "  if [[ $COMP_CWORD -eq 1 ]]; then\n    _tesselink_words '" + Joined(text.commands, " ", name) + " " +
            OptionNames(text.program) + "'\n    return\n  fi\n  case ${COMP_WORDS[1]} in\n";
  for (const CommandText& command : text.commands) script += CommandCase(command);
  return script + "  esac\n}\n\ncomplete -F _tesselink tesselink\n";
}

}  // namespace tesselink
