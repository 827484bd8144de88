// SPDX-License-Identifier: MIT
#include "app/SettingsFiles.h"

// Bytes as they are, and the templates themselves rather than a library for every way of converting them.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "app/IniText.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "core/io/System.h"

namespace tesselink {
namespace {

using Ini = CSimpleIniCaseA;

// Throws Error where there is a file that cannot be read.
void Load(Ini& ini, const std::string& path) {
  if (!IsThere(path)) return;
  BinaryFile file(path);
  std::string text(static_cast<std::size_t>(file.Size()), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  if (ini.LoadData(text) < 0) throw Error(path + ": is no settings file");
}

// The name that the file has for a section or a key, as it is spelt there; a new one where it has none.
std::string Spelling(const Ini::TNamesDepend& names, const std::string& wanted) {
  for (const Ini::Entry& name : names) {
    if (OfIniName(name.pItem) == wanted) return name.pItem;
  }
  return IniName(wanted);
}

std::string SectionIn(const Ini& ini, const std::string& section) {
  Ini::TNamesDepend names;
  ini.GetAllSections(names);
  return Spelling(names, section);
}

// The keys of a section as they are spelt there, by what they mean.
std::map<std::string, std::string> SpellingsIn(const Ini& ini, const std::string& writtenSection) {
  Ini::TNamesDepend names;
  ini.GetAllKeys(writtenSection.c_str(), names);
  std::map<std::string, std::string> spellings;
  for (const Ini::Entry& name : names) spellings.emplace(OfIniName(name.pItem), name.pItem);
  return spellings;
}

// A program holds the lock for the time of one small file; a killed one leaves none behind.
sys::Descriptor Locked(const std::string& folder) {
  sys::Descriptor lock = sys::Open(folder, sys::Access::Folder);
  if (!lock) throw Error(SystemReason(folder, "cannot be opened"));
  for (int attempt = 0; attempt < 1000; ++attempt) {
    const sys::Locking locking = sys::TryLock(lock);
    if (locking == sys::Locking::Held) return lock;
    if (locking == sys::Locking::Failed) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  throw Error(folder + ": the settings there are in use");
}

void Save(const Ini& ini, const std::string& path) {
  std::string text;
  if (ini.Save(text) < 0) throw Error(path + ": cannot be written");
  sys::Status old;
  sys::StatusOf(path, old);
  // Nobody else writes under the lock, and what a killed program left is written anew.
  const std::string fresh = path + ".new";
  FileWriter file(fresh);
  file.Write(text).Close();
  if (old.Exists()) sys::SetMode(fresh, old.mode);
  if (!sys::Rename(fresh, path)) throw Error(SystemReason(path, "cannot be replaced"));
}

}  // namespace

SettingsFiles::SettingsFiles(std::string folder) : folder_(std::move(folder)) {}

std::string SettingsFiles::Get(const std::string& application, const std::string& section, const std::string& key,
                               const std::string& whenAbsent) {
  const std::map<std::string, std::string> pairs = All(application, section);
  const auto found = pairs.find(key);
  return found == pairs.end() ? whenAbsent : found->second;
}

void SettingsFiles::SetAll(const std::string& application, const std::string& section,
                           const std::vector<std::pair<std::string, std::string>>& pairs) try {
  if (folder_.empty()) return;
  std::filesystem::create_directories(folder_);
  const std::string path = FollowLinks(FileOf(application));
  const sys::Descriptor lock = Locked(folder_);
  Ini ini;
  ini.SetSpaces(false);
  Load(ini, path);
  const std::string writtenSection = SectionIn(ini, section);
  const std::map<std::string, std::string> spellings = SpellingsIn(ini, writtenSection);
  for (const auto& [key, value] : pairs) {
    if (key.empty()) continue;
    const auto known = spellings.find(key);
    const std::string name = known == spellings.end() ? IniName(key) : known->second;
    ini.SetValue(writtenSection.c_str(), name.c_str(), IniValue(value).c_str());
  }
  Save(ini, path);
} catch (const std::exception& error) {
  problem_ = error.what();
}

std::map<std::string, std::string> SettingsFiles::All(const std::string& application, const std::string& section) {
  std::map<std::string, std::string> pairs;
  if (folder_.empty()) return pairs;
  Ini ini;
  try {
    Load(ini, FileOf(application));
  } catch (const Error&) {
    return pairs;
  }
  Ini::TNamesDepend keys;
  const std::string writtenSection = SectionIn(ini, section);
  ini.GetAllKeys(writtenSection.c_str(), keys);
  for (const Ini::Entry& key : keys) {
    pairs[OfIniName(key.pItem)] = OfIniValue(ini.GetValue(writtenSection.c_str(), key.pItem, ""));
  }
  return pairs;
}

}  // namespace tesselink
