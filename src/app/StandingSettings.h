// SPDX-License-Identifier: MIT
// What a person has set for every run: in the environment (TESSELINK_DIALECT and so on) and in the settings file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

/// A setting has the name of the option whose value it is where that is not given, as "map-scale".
struct Setting {
  std::string key, value;
  std::string origin;  ///< as in "TESSELINK_MAP_SCALE" and "/home/ada/.config/tesselink/tesselink.conf, line 3"
};

/// The names that settings can have. Options that concern one drawing are none of them.
const std::vector<std::string>& SettingKeys();
/// The settings file of the person for whom the program runs, which need not be there; empty where that has no place.
std::string SettingsFile();
/// The environment variable of a setting.
std::string VariableOf(const std::string& key);
/// The settings of a file, an empty value included, which sets nothing. Throws Error, with file and line, for a line
/// that is no setting; a file that is not there has none.
std::vector<Setting> SettingsIn(const std::string& file);
/// The settings that hold: the environment's, then those of the file that it has none for. Throws Error as SettingsIn.
std::vector<Setting> ReadSettings();
/// The setting of a name; null when there is none.
const Setting* SettingOf(const std::vector<Setting>& settings, std::string_view key);

}  // namespace tesselink
