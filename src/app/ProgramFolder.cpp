#include "app/ProgramFolder.h"

#include <filesystem>
#ifdef _WIN32
#include <windows.h>
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
  return fs::read_symlink("/proc/self/exe", error);
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

std::string ModuleFolder() { return FolderWith("tesselink-projection.so", "lib"); }

}  // namespace tesselink
