// SPDX-License-Identifier: MIT
// The commands and their options as manuals and completions need them, taken from the command line's own table.
#pragma once

#include <string>
#include <vector>

namespace tesselink {

/// What stands behind an option, or by itself.
struct ValueText {
  std::string name;                     ///< as in "KEY"; empty for an option that takes none
  std::vector<std::string> words;       ///< all that it may be; empty where it may be anything
  std::vector<std::string> extensions;  ///< of the files that it names, as in "dbf"; empty: of any
  bool isFile = false, isFolder = false;
};

struct OptionText {
  std::vector<std::string> names;  ///< as in "-O", "--overwrite"
  ValueText value;
  std::string group, help;  ///< on one line
};

struct CommandText {
  std::string name, summary, usage;
  std::vector<std::string> examples;  ///< lines; those that begin with # tell what the next one is for
  std::vector<OptionText> options;
  std::vector<ValueText> operands;
};

/// The program itself, and its commands.
struct ProgramText {
  CommandText program;
  std::vector<CommandText> commands;
};

ProgramText TextOfProgram();

/// What of its words can be typed before the person goes on, as "copy=" of "copy=FILE".
std::vector<std::string> WordsToType(const ValueText& value);

/// The first part of a help text, as lists of completions show it.
std::string Brief(const std::string& help);

/// A help text as a sentence, with the words that a value may be where it does not name them all.
std::string HelpAndChoices(const std::string& help, const std::string& value, const std::vector<std::string>& words);

/// The texts in a row, each by a function of it.
template <typename Items, typename Text>
std::string Joined(const Items& items, const std::string& between, const Text& text) {
  std::string joined;
  for (const auto& item : items) joined += (joined.empty() ? "" : between) + text(item);
  return joined;
}
std::string Joined(const std::vector<std::string>& words, const std::string& between);

}  // namespace tesselink
