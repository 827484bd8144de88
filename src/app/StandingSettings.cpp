// SPDX-License-Identifier: MIT
#include "app/StandingSettings.h"

#include <algorithm>
#include <cstdlib>

#include "app/ProgramFolder.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

std::string_view WithoutSpace(std::string_view text) {
  constexpr std::string_view kSpace = " \t\r";
  const std::size_t begin = text.find_first_not_of(kSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kSpace) + 1 - begin);
}

std::string Unknown(std::string_view key) {
  std::string list;
  for (const std::string& known : SettingKeys()) list += (list.empty() ? "" : ", ") + known;
  return "\"" + std::string(key) + "\" is no setting; the settings are " + list;
}

Setting SettingOn(std::string_view line, const std::string& place) {
  const std::size_t equals = line.find('=');
  const std::string key(WithoutSpace(line.substr(0, equals)));
  const std::vector<std::string>& keys = SettingKeys();
  if (equals == std::string_view::npos) {
    throw Error(place + ": \"" + std::string(line) + "\" is no setting; write one as dialect = standard");
  }
  if (std::find(keys.begin(), keys.end(), key) == keys.end()) throw Error(place + ": " + Unknown(key));
  return {key, std::string(WithoutSpace(line.substr(equals + 1))), place};
}

}  // namespace

const std::vector<std::string>& SettingKeys() {
  static const std::vector<std::string> kKeys{"dialect",        "tolerance",   "units",          "map-scale",  "layers",
                                              "without-layers", "layer-codes", "smart-assign",   "attributes", "blocks",
                                              "limit",          "encoding",    "shape-type",     "release",    "points",
                                              "from-crs",       "to-crs",      "allow-ballpark", "cdf-map",    "lngsl",
                                              "line-ends",      "max-output",  "sync",           "quiet"};
  return kKeys;
}

std::string SettingsFile() {
  const std::string folder = SettingsFolder();
  return folder.empty() ? folder : folder + "/tesselink/tesselink.conf";
}

std::string VariableOf(const std::string& key) {
  std::string name = "TESSELINK_" + UpperCase(key);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

std::vector<Setting> SettingsIn(const std::string& file) {
  std::vector<Setting> settings;
  if (file.empty() || !IsThere(file)) return settings;
  LineReader reader(file);
  std::string_view line;
  while (reader.ReadLine(line)) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (reader.LineNumber() == 1 && line.starts_with(kMark)) line.remove_prefix(kMark.size());
    line = WithoutSpace(line);
    if (line.empty() || line.front() == '#' || line.front() == ';') continue;
    Setting setting = SettingOn(line, file + ", line " + std::to_string(reader.LineNumber()));
    if (SettingOf(settings, setting.key) != nullptr) {
      throw Error(setting.origin + ": " + setting.key + " is set before as well; keep one of the lines");
    }
    settings.push_back(std::move(setting));
  }
  return settings;
}

std::vector<Setting> ReadSettings() {
  const std::vector<Setting> inFile = SettingsIn(SettingsFile());
  std::vector<Setting> settings;
  for (const std::string& key : SettingKeys()) {
    const std::string variable = VariableOf(key);
    if (const char* const value = std::getenv(variable.c_str())) {
      settings.push_back({key, value, variable});
    } else if (const Setting* const setting = SettingOf(inFile, key)) {
      settings.push_back(*setting);
    }
  }
  return settings;
}

const Setting* SettingOf(const std::vector<Setting>& settings, std::string_view key) {
  const auto found = std::find_if(settings.begin(), settings.end(), [&](const auto& s) { return s.key == key; });
  return found == settings.end() ? nullptr : &*found;
}

}  // namespace tesselink
