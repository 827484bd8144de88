// SPDX-License-Identifier: MIT
#include "cli/StandingOptions.h"

#include <algorithm>

#include "app/StandingSettings.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Reading.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "formats/Formats.h"

namespace tesselink {
namespace {

using Words = std::vector<std::string>;

ParsingEnded Refused(const std::string& what) { return {Visible(what), kExitUsage}; }

const CommandOption* OptionOf(const std::vector<CommandOption>& options, const std::string& name) {
  const auto found = std::find_if(options.begin(), options.end(), [&](const auto& o) { return o.name == name; });
  return found == options.end() ? nullptr : &*found;
}

const ReadingOptions* ReadingOf(const Command& command) {
  return std::visit(
      [](const auto& c) -> const ReadingOptions* {
        if constexpr (requires { c.reading; }) return &c.reading;
        if constexpr (requires { c.conversion; }) return &c.conversion.reading;
        return nullptr;
      },
      command);
}

// The row of the command's output; null where it has none, or none that it knows.
const OutputFormat* OutputOf(const Command& command) {
  const auto* const batch = std::get_if<BatchCommand>(&command);
  const auto* const convert = batch != nullptr ? &batch->conversion : std::get_if<ConvertCommand>(&command);
  if (convert == nullptr || (convert->output.empty() && convert->to.empty())) return nullptr;
  try {
    return &OutputFormatOf(convert->to, convert->output);
  } catch (const UsageError&) {
    return nullptr;
  }
}

const FormatOption* Offered(const Format& format, const std::string& name) {
  for (const FormatOption& option : format.options) {
    if (option.name == name) return &option;
  }
  return nullptr;
}

// What a setting says is meant for runs that it fits: others it does not stop, as the same option would.
class Fitting {
 public:
  Fitting(const Command& command, const std::vector<CommandOption>& options, const std::vector<Setting>& settings)
      : options_(options), output_(OutputOf(command)) {
    const CommandOption* const given = OptionOf(options, "dialect");
    const Setting* const set = SettingOf(settings, "dialect");
    if (given != nullptr && !given->given.empty()) {
      classic_ = ReadingOf(command)->dialect == Dialect::Classic;
    } else {
      classic_ = set == nullptr || set->value != "standard";
    }
  }

  bool operator()(const Setting& setting) const {
    const CommandOption* const option = OptionOf(options_, setting.key);
    if (option == nullptr || !option->given.empty() || setting.value.empty()) return false;
    bool ofOutputs = false;
    for (const OutputFormat& row : AllFormats().Outputs())
      ofOutputs = ofOutputs || Offered(row, setting.key) != nullptr;
    if (ofOutputs && output_ != nullptr && Offered(*output_, setting.key) == nullptr) return false;
    const bool standards =
        BelongsToStandard(setting, AllFormats().Inputs()) || BelongsToStandard(setting, AllFormats().Outputs());
    return !(classic_ && standards);
  }

 private:
  template <typename Rows>
  static bool BelongsToStandard(const Setting& setting, const Rows& rows) {
    return std::any_of(rows.begin(), rows.end(), [&](const Format& row) {
      const FormatOption* const option = Offered(row, setting.key);
      return option != nullptr &&
             (option->standardOnly ||
              std::count(option->standardChoices.begin(), option->standardChoices.end(), setting.value) > 0);
    });
  }

  const std::vector<CommandOption>& options_;
  const OutputFormat* output_;
  bool classic_ = true;
};

// Lists are written with blanks in a file, which a command line would take for a part of names.
std::string WithoutBlanksAtCommas(const Setting& setting) {
  if (setting.key != "layers" && setting.key != "without-layers") return setting.value;
  std::string list;
  for (std::size_t begin = 0; begin <= setting.value.size();) {
    const std::size_t end = std::min(setting.value.find(',', begin), setting.value.size());
    list += (begin == 0 ? "" : ",") + std::string(Trimmed(setting.value.substr(begin, end - begin)));
    begin = end + 1;
  }
  return list;
}

// A setting as words of the command line, none where it switches off what is off. Throws Error for a switch that is
// neither on nor off.
Words AsWords(const Setting& setting, bool isFlag) {
  if (!isFlag) return {"--" + setting.key + "=" + WithoutBlanksAtCommas(setting)};
  const std::string value = LowerCase(setting.value);
  if (value == "yes" || value == "true" || value == "on" || value == "1") return {"--" + setting.key};
  if (value == "no" || value == "false" || value == "off" || value == "0") return {};
  throw Error(setting.origin + ": " + setting.key + " is yes or no, and not \"" + setting.value + "\"");
}

// The settings go in front, behind the command's name, since what follows a "--" is no option.
Words With(const Words& arguments, const Words& added) {
  Words words = arguments;
  words.insert(words.begin() + 1, added.begin(), added.end());
  return words;
}

// Which of the settings the words that came of them were refused for, in the words of that refusal.
ParsingEnded Blamed(const Words& arguments, const std::vector<CommandOption>& options,
                    const std::vector<Setting>& fitting, const ParsingEnded& refusal) {
  for (const Setting& setting : fitting) {
    const Words words = AsWords(setting, OptionOf(options, setting.key)->isFlag);
    const Command command = ParseArguments(With(arguments, words));
    const auto* const ended = std::get_if<ParsingEnded>(&command);
    if (ended == nullptr) continue;
    return {Visible(setting.origin) + ": " + ended->text, ended->exitCode, ended->advice};
  }
  return refusal;
}

std::string Padded(const std::string& text, std::size_t width) {
  return text + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string Joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ",") + word;
  return text;
}

// One line for each setting: its name, its value, and where that comes from.
std::string Shown(const std::vector<CommandOption>& options, const std::vector<Setting>& settings,
                  const Fitting& fits) {
  const std::string file = SettingsFile();
  std::string text = "Settings file: " + (file.empty() ? "none, for there is no home folder" : Visible(file)) +
                     (file.empty() || IsThere(file) ? "" : " (not there)") + "\n";
  for (const std::string& key : SettingKeys()) {
    const CommandOption& option = *OptionOf(options, key);
    const Setting* const setting = SettingOf(settings, key);
    std::string value = "-", origin = "not set";
    if (!option.given.empty()) {
      value = option.isFlag ? "yes" : Joined(option.given);
      origin = "--" + key;
    } else if (setting != nullptr && !setting->value.empty()) {
      value = setting->value;
      origin = setting->origin + (fits(*setting) ? "" : "; not for this run");
    }
    text += "  " + Padded(key, 17) + Padded(Visible(value), 24) + Visible(origin) + "\n";
  }
  return text;
}

}  // namespace

Command ParseWithSettings(const Words& arguments) try {
  Command command = ParseArguments(arguments);
  if (ReadingOf(command) == nullptr) return command;
  const auto* const convert = std::get_if<ConvertCommand>(&command);
  if (convert != nullptr && convert->batch != 0) return command;  // given what the batch has found set
  const bool shows = convert != nullptr && convert->showSettings;
  const std::vector<Setting> settings = ReadSettings();
  if (settings.empty() && !shows) return command;
  std::vector<CommandOption> options;
  command = ParseArguments(arguments, &options);
  const Fitting fits(command, options, settings);
  std::vector<Setting> fitting;
  std::copy_if(settings.begin(), settings.end(), std::back_inserter(fitting), fits);
  Words added;
  for (const Setting& setting : fitting) {
    for (const std::string& word : AsWords(setting, OptionOf(options, setting.key)->isFlag)) added.push_back(word);
  }
  if (!added.empty()) command = ParseArguments(With(arguments, added));
  if (const auto* const refusal = std::get_if<ParsingEnded>(&command)) {
    return Blamed(arguments, options, fitting, *refusal);
  }
  if (shows) return ParsingEnded{Shown(options, settings, fits), kExitDone};
  return command;
} catch (const Error& error) {
  return Refused(error.what());
}

}  // namespace tesselink
