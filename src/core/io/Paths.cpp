// SPDX-License-Identifier: MIT
#include "core/io/Paths.h"

#include <filesystem>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/System.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

using sys::Access;

constexpr std::string_view kSeparators = "/\\";

}  // namespace

bool FileExists(const std::string& path) { return WhyNotReadable(path).empty(); }

bool IsThere(const std::string& path) {
  sys::Status status;
  return !sys::StatusOf(path, status, sys::Links::Keep) || status.Exists();
}

std::string WhyNotReadable(const std::string& path) {
  constexpr std::string_view kNotOpened = "could not be opened for reading";
  sys::Status status;
  if (!sys::StatusOf(path, status)) return SystemReason(path, kNotOpened);
  switch (status.kind) {
    case sys::FileKind::Regular:
      return sys::Open(path, Access::Read) ? std::string() : SystemReason(path, kNotOpened);
    case sys::FileKind::Folder:
      return path + ": is a folder, not a file";
    case sys::FileKind::Other:
      return path + ": is a device or a pipe, not a file on a disk";
    case sys::FileKind::Link:
    case sys::FileKind::None:
      break;
  }
  return path + ": does not exist";
}

bool IsStream(const std::string& path) {
  if (path.starts_with("/dev/std") || path.starts_with("/dev/fd/")) return true;
  sys::Status status;
  return sys::StatusOf(path, status) && status.kind == sys::FileKind::Other;
}

bool IsPipe(const std::string& path) {
  if (path == "-" || path == "/dev/stdin") return true;
  sys::Status status;
  return sys::StatusOf(path, status) && status.isPipe;
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

std::string BehindStem(const std::string& path, const std::string& text) {
  const std::string folder = FolderOf(path), name = path.substr(folder.size());
  const std::size_t dot = name.rfind('.');
  const std::size_t at = dot == std::string::npos || dot == 0 ? name.size() : dot;
  return folder + name.substr(0, at) + text + name.substr(at);
}

std::string ExtensionOf(std::string_view path) {
  const std::string name = FileNameOf(path);
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos ? std::string() : LowerCase(std::string_view(name).substr(dot));
}

std::string JoinPath(const std::string& folder, const std::string& name) {
  return (std::filesystem::path(folder) / name).string();
}

bool SameFile(const std::string& a, const std::string& b) {
  sys::Status first, second;
  for (auto [path, status] : {std::pair(&a, &first), std::pair(&b, &second)}) {
    if (!sys::StatusOf(*path, *status)) throw Error(SystemReason(*path, "could not be looked up"));
    if (!status->Exists()) return false;
  }
  return first.SameFile(second);
}

// Every spelling is tried: a folder of ten thousand files takes longer to look through.
std::string FindSpelling(const std::string& stem, const std::string& extension,
                         const std::function<bool(const std::string&)>& isThere) {
  const std::string small = LowerCase(extension), capital = UpperCase(extension);
  const unsigned allSmall = (1U << extension.size()) - 1;
  std::string candidate;
  const auto found = [&](unsigned smallLetters) {
    candidate = stem;
    for (std::size_t i = 0; i < extension.size(); ++i) {
      candidate += (smallLetters >> i & 1U) != 0 ? small[i] : capital[i];
    }
    return isThere(candidate);
  };
  if (found(0) || found(allSmall)) return candidate;
  for (unsigned mixed = 1; mixed < allSmall; ++mixed) {
    if (found(mixed)) return candidate;
  }
  return {};
}

std::string PartnerFile(const std::string& path, const std::string& extension) {
  return FindSpelling(FolderOf(path) + StripExtension(FileNameOf(path)) + ".", extension, IsThere);
}

}  // namespace tesselink
