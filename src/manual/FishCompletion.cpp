// SPDX-License-Identifier: MIT
#include "manual/Completions.h"

namespace tesselink {
namespace {

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

// Whether a value or operand is one of some words, a file, a folder, or nothing that could be completed.
std::string ActionFor(const ValueText& value) {
  if (!value.words.empty()) return " -x -a " + Quoted(Joined(WordsToType(value), " "));
  if (value.isFolder) return " -x -a '(__fish_complete_directories)'";
  if (!value.isFile) return " -x";
  if (value.extensions.empty()) return " -r -F";
  return " -x -a " + Quoted("(__tesselink_files " + Joined(value.extensions, " ") + ")");
}

std::string OptionLine(const std::string& condition, const OptionText& option) {
  std::string line = "complete -c tesselink -n " + Quoted(condition);
  for (const std::string& name : option.names)
    line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  if (!option.value.name.empty()) line += ActionFor(option.value);
  return line + " -d " + Quoted(Brief(option.help)) + "\n";
}

std::string CommandLines(const CommandText& command) {
  const std::string condition = "__tesselink_command_is " + command.name;
  std::string lines;
  for (const OptionText& option : command.options) lines += OptionLine(condition, option);
  for (const ValueText& operand : command.operands) {
    if (!operand.words.empty() || operand.isFile) {
      lines += "complete -c tesselink -n " + Quoted(condition) + ActionFor(operand) + "\n";
    }
  }
  return lines;
}

constexpr const char* kHead = R"fish(# fish completion for tesselink

function __tesselink_command_is
    set -l words (commandline -opc)
    test "$words[2]" = "$argv[1]"
end

function __tesselink_has_no_command
    test (count (commandline -opc)) -eq 1
end

# Files with one of the extensions, in small or capital letters, and folders.
function __tesselink_files
    set -l extensions (string join '|' -- $argv)
    for path in (__fish_complete_path (commandline -ct))
        if string match -qir "(/|\.($extensions))\$" -- (string split \t -- $path)[1]
            echo $path
        end
    end
end

complete -c tesselink -f
)fish";

}  // namespace

std::string FishCompletion(const ProgramText& text) {
  constexpr const char* kFirst = "__tesselink_has_no_command";
  std::string script = kHead;
  for (const OptionText& option : text.program.options) script += OptionLine(kFirst, option);
  for (const CommandText& command : text.commands) {
    script += std::string("complete -c tesselink -n ") + kFirst + " -a " + command.name + " -d " +
              Quoted(Brief(command.summary)) + "\n";
  }
  for (const CommandText& command : text.commands) script += "\n" + CommandLines(command);
  return script;
}

}  // namespace tesselink
