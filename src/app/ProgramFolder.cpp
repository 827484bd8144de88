// SPDX-License-Identifier: MIT
#include "app/ProgramFolder.h"

#include <bit>
#include <cstdlib>
#include <filesystem>
#ifdef _WIN32
#include <windows.h>
#else
#include <sys/auxv.h>
#endif

namespace tesselink {
namespace {

namespace fs = std::filesystem;

fs::path ProgramPath() {
#ifdef _WIN32
  wchar_t path[32768];
  const DWORD length = GetModuleFileNameW(nullptr, path, 32768);
  return length < 32768 ? fs::path(path, path + length) : fs::path();
#else
  std::error_code error;
  if (fs::path path = fs::read_symlink("/proc/self/exe", error); !error) return path;
  // Where nobody has mounted /proc, as in a bare chroot, the system still tells what it has started.
  const auto* const started = std::bit_cast<const char*>(getauxval(AT_EXECFN));
  return started == nullptr ? fs::path() : fs::canonical(started, error);
#endif
}

// The folder of the executable where a file lies beside it, or nothing is installed.
std::string FolderWith(const char* file, const char* installedIn) {
  const fs::path program = ProgramPath();
  if (program.empty()) return {};
  const fs::path beside = program.parent_path();
  const fs::path installed = beside.parent_path() / installedIn / "tesselink";
  std::error_code error;
  const bool hasInstalled = fs::is_directory(installed, error);
  return (hasInstalled && !fs::exists(beside / file, error) ? installed : beside).string();
}

}  // namespace

std::string ProgramDataFolder() { return FolderWith("ACADTBL.TBL", "share"); }

std::string ModuleFolder() { return FolderWith("tesselink-projection.so", TESSELINK_LIBRARY_FOLDER); }

std::string CommandProgram() {
  const fs::path program = ProgramPath().replace_filename("tesselink" + ProgramPath().extension().string());
  std::error_code error;
  return fs::is_regular_file(program, error) ? program.string() : std::string();
}

std::string SettingsFolder() {
  const auto variable = [](const char* name) {
    const char* const value = std::getenv(name);
    return std::string(value == nullptr ? "" : value);
  };
#ifdef _WIN32
  return variable("APPDATA");
#else
  if (std::string folder = variable("XDG_CONFIG_HOME"); folder.starts_with('/')) return folder;
  const std::string home = variable("HOME");
  return home.empty() ? home : home + "/.config";
#endif
}

std::string RememberedFolder() {
  const std::string folder = SettingsFolder();
  return folder.empty() ? folder : folder + "/Tesselink";
}

}  // namespace tesselink
