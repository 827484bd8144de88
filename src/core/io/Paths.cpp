#include "core/io/Paths.h"

#include <filesystem>
#include <fstream>

#include "core/io/Text.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSeparators = "/\\";

}  // namespace

bool FileExists(const std::string& path) {
  std::error_code error;
  return fs::is_regular_file(path, error) && std::ifstream(path, std::ios::binary).is_open();
}

bool IsStream(const std::string& path) {
  if (path.starts_with("/dev/std") || path.starts_with("/dev/fd/")) return true;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

bool IsPipe(const std::string& path) {
  if (path == "-" || path == "/dev/stdin") return true;
  std::error_code error;
  return fs::is_fifo(path, error);
}

std::string FolderOf(std::string_view path) {
  const std::size_t last = path.find_last_of(kSeparators);
  return std::string(last == std::string_view::npos ? std::string_view() : path.substr(0, last + 1));
}

std::string FileNameOf(std::string_view path) {
  const std::size_t last = path.find_last_of(kSeparators);
  return std::string(last == std::string_view::npos ? path : path.substr(last + 1));
}

std::string StripExtension(std::string_view path) { return std::string(path.substr(0, path.rfind('.'))); }

std::string ExtensionOf(std::string_view path) {
  const std::string name = FileNameOf(path);
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos ? std::string() : LowerCase(std::string_view(name).substr(dot));
}

std::string JoinPath(const std::string& folder, const std::string& name) { return (fs::path(folder) / name).string(); }

bool SameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return fs::equivalent(a, b, error) && !error;
}

// Every spelling is tried: a folder of ten thousand files takes longer to look through.
std::string PartnerFile(const std::string& path, const std::string& extension) {
  std::string candidate = FolderOf(path) + StripExtension(FileNameOf(path)) + "." + extension;
  const std::size_t first = candidate.size() - extension.size();
  const std::string small = LowerCase(extension);
  const unsigned allSmall = (1U << extension.size()) - 1;
  const auto exists = [&](unsigned smallLetters) {
    for (std::size_t i = 0; i < extension.size(); ++i) {
      candidate[first + i] = (smallLetters >> i & 1U) != 0 ? small[i] : extension[i];
    }
    return FileExists(candidate);
  };
  if (exists(0) || exists(allSmall)) return candidate;
  for (unsigned mixed = 1; mixed < allSmall; ++mixed) {
    if (exists(mixed)) return candidate;
  }
  return {};
}

}  // namespace tesselink
