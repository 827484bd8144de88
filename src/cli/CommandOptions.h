// SPDX-License-Identifier: MIT
// The options of a command, of which only those that are asked for are built: fifty take as long as a small conversion.
#pragma once

#include <CLI/App.hpp>
#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tesselink {

/// What of the command line is built.
class Asked {
 public:
  /// The command that comes first among the arguments, and its options that occur in them.
  static Asked InArguments(const std::vector<std::string>& arguments) { return {arguments, false, false}; }
  /// That command with all its options, for help and for telling what is wrong.
  static Asked WithAllOptions(const std::vector<std::string>& arguments) { return {arguments, true, false}; }
  /// Every command with all its options, for manuals.
  static Asked Everything() { return {{}, true, true}; }

  /// The same, with all options of the command.
  Asked Wholly() const { return {arguments_, true, allCommands_}; }
  const std::vector<std::string>& Arguments() const { return arguments_; }

  bool Command(std::string_view name) const {
    return allCommands_ || (!arguments_.empty() && arguments_.front() == name);
  }
  /// Takes names as the library does: "--to", "-O,--overwrite", "INPUT". Those of one letter may stand in one argument
  /// with others, so they are always built.
  bool Option(std::string_view names) const {
    return allOptions_ || !names.starts_with("--") ||
           std::any_of(arguments_.begin(), arguments_.end(),
                       [names](std::string_view argument) { return argument.substr(0, argument.find('=')) == names; });
  }

 private:
  Asked(std::vector<std::string> arguments, bool allOptions, bool allCommands)
      : arguments_(std::move(arguments)), allOptions_(allOptions), allCommands_(allCommands) {}

  std::vector<std::string> arguments_;
  bool allOptions_, allCommands_;
};

/// An option that was added, or passed over; then what is said of it goes nowhere.
class AddedOption {
 public:
  explicit AddedOption(CLI::Option* option) : option_(option) {}
  AddedOption* operator->() { return this; }

  AddedOption type_name(const std::string& name) {
    return Told([&] { option_->type_name(name); });
  }
  AddedOption required() {
    return Told([&] { option_->required(); });
  }
  AddedOption expected(int count) {
    return Told([&] { option_->expected(count); });
  }
  AddedOption expected(int least, int most) {
    return Told([&] { option_->expected(least, most); });
  }
  AddedOption check(const CLI::Validator& validator) {
    return Told([&] { option_->check(validator); });
  }
  AddedOption transform(const CLI::Validator& validator) {
    return Told([&] { option_->transform(validator); });
  }
  AddedOption allow_extra_args(bool allowed) {
    return Told([&] { option_->allow_extra_args(allowed); });
  }
  AddedOption multi_option_policy(CLI::MultiOptionPolicy policy) {
    return Told([&] { option_->multi_option_policy(policy); });
  }

 private:
  template <typename Tell>
  AddedOption Told(const Tell& tell) {
    if (option_ != nullptr) tell();
    return *this;
  }

  CLI::Option* option_;
};

/// A command to which options are added by the library's own calls.
class CommandOptions {
 public:
  CommandOptions(CLI::App& command, const Asked& asked) : command_(command), asked_(asked) {}

  bool Wants(std::string_view name) const {
    return asked_.Option(name) && command_.get_option_no_throw(std::string(name)) == nullptr;
  }

  /// Those added from here on stand below this heading.
  void Group(const char* heading) { command_.option_defaults()->group(heading); }

  template <typename Target>
  AddedOption add_option(std::string_view names, Target& target, const std::string& help = {}) {
    return Added(names, [&](const std::string& text) { return command_.add_option(text, target, help); });
  }
  template <typename Value, typename Take>
  AddedOption add_option_function(std::string_view names, const Take& take, const std::string& help) {
    return Added(names, [&](const std::string& text) { return command_.add_option_function<Value>(text, take, help); });
  }
  AddedOption add_flag(std::string_view names, bool& target, const char* help) {
    return Added(names, [&](const std::string& text) { return command_.add_flag(text, target, help); });
  }
  template <typename Take>
  AddedOption add_flag_callback(std::string_view names, const Take& take, const std::string& help) {
    return Added(names, [&](const std::string& text) { return command_.add_flag_callback(text, take, help); });
  }

 private:
  template <typename Add>
  AddedOption Added(std::string_view names, const Add& add) {
    return AddedOption(asked_.Option(names) ? add(std::string(names)) : nullptr);
  }

  CLI::App& command_;
  const Asked& asked_;
};

}  // namespace tesselink
