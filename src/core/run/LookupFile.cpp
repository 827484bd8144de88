// SPDX-License-Identifier: MIT
#include "core/run/LookupFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/FilesRead.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"
#include "core/run/Settings.h"
#include "core/run/Translatable.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace tesselink {
namespace {

// A component of the package that the lookup files belong to; its type library lies beside them.
constexpr const char* kTypeLibraryKey = "TypeLib\\{4A7DDD20-9A54-11D0-8F33-0060973D1220}\\1.0\\0\\win32";
constexpr std::size_t kRegistryBuffer = 50;
constexpr std::ptrdiff_t kTypeLibraryName = 10;
constexpr const char* kSection = "Locations";

bool EndsWithName(const std::string& path, const std::string& name) {
  return UpperCase(path).ends_with(UpperCase(name));
}

}  // namespace

#ifdef _WIN32
std::string RegisteredClassValue(const std::string& key) {
  char value[1024];
  DWORD size = sizeof value;
  const LSTATUS status = RegGetValueA(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value, &size);
  return status == ERROR_SUCCESS ? std::string(value) : std::string();
}
#else
std::string RegisteredClassValue(const std::string&) { return {}; }
#endif

void LookupFile::Create() {
  if (file_.IsOpen()) return;
  const std::string path = Locate();
  try {
    if (context_.filesRead != nullptr) context_.filesRead->Add(path);
    file_ = BinaryFile(path);
    window_.Reset();
  } catch (const Error& error) {  // then it counts as empty
    context_.report.Warn(WarningKind::ListUnread, error.what());
  }
}

std::string LookupFile::Locate() {
  if (!kind_.given.empty()) {
    if (const std::string reason = WhyNotReadable(kind_.given); !reason.empty()) {
      throw Error(reason + "; a " + kind_.fileName + " is expected");
    }
    return kind_.given;
  }
  const std::string inPackage = InPackageFolder();
  if (inPackage != kind_.fileName && IsUsable(inPackage)) return inPackage;
  const std::string remembered = context_.settings.Get(kind_.application, kSection, kind_.fileName, "");
  if (!remembered.empty() && IsUsable(remembered)) return remembered;
  return InProgramFolderOrAsked(remembered);
}

// A file that is there and cannot be opened is passed over, but not in silence.
bool LookupFile::IsUsable(const std::string& path) const {
  const std::string reason = WhyNotReadable(path);
  if (!reason.empty() && IsThere(path)) context_.report.Warn(WarningKind::ListUnread, reason);
  return reason.empty();
}

// Beside the package's type library; the bare file name where no package is registered.
std::string LookupFile::InPackageFolder() const {
  std::string value = kind_.registry(kTypeLibraryKey).substr(0, kRegistryBuffer);
  value = Trimmed(CutAtNul(value));
  const auto kept = std::abs(static_cast<std::ptrdiff_t>(value.size()) - kTypeLibraryName);
  value.resize(std::min(value.size(), static_cast<std::size_t>(kept)));
  value += kind_.fileName;
  return EndsWithName(value, kind_.fileName) ? value : std::string();
}

std::string LookupFile::InProgramFolderOrAsked(const std::string& remembered) {
  std::string candidate = context_.options.programFolder;
  std::string reasons = remembered.empty() ? std::string() : WhyNotReadable(remembered) + "\n";
  for (;;) {
    const bool isNothing = candidate.empty();
    if (!EndsWithName(candidate, kind_.fileName)) {
      if (!candidate.ends_with('/') && !candidate.ends_with('\\')) {
        candidate += static_cast<char>(std::filesystem::path::preferred_separator);
      }
      candidate += kind_.fileName;
    }
    if (IsUsable(candidate)) break;
    reasons += isNothing ? "Nothing was named; the conversion cannot go on without " + kind_.fileName
                         : WhyNotReadable(candidate);
    candidate = context_.interaction.AskText(
        {Replaced(TRANSLATABLE("Messages", "Error Finding %1"), "%1", kind_.fileName),
         Replaced(TRANSLATABLE("Messages", "Could Not locate %1\r\n\r\nPlease type it's location in the box below"),
                  "%1", kind_.fileName),
         kind_.fileName, reasons});
    reasons.clear();
  }
  context_.settings.Set(kind_.application, kSection, kind_.fileName, candidate);
  return candidate;
}

std::int16_t LookupFile::Count() const {
  if (!file_.IsOpen()) return 0;
  const double records = RoundHalfEven(static_cast<double>(file_.Size()) / static_cast<double>(kind_.recordLength));
  return static_cast<std::int16_t>(std::min<double>(records, std::numeric_limits<std::int16_t>::max()));
}

std::string_view LookupFile::Record(int number) {
  const auto length = static_cast<std::size_t>(kind_.recordLength);
  record_.assign(length, '\0');
  if (file_.IsOpen() && number > 0) {
    const auto bytes = window_.At((number - std::int64_t{1}) * kind_.recordLength, length);
    if (!bytes.empty()) std::memcpy(record_.data(), bytes.data(), bytes.size());
  }
  return record_;
}

}  // namespace tesselink
