// SPDX-License-Identifier: MIT
#include "core/run/WrittenFiles.h"

#include <algorithm>
#include <filesystem>

#include "core/io/Paths.h"
#include "core/io/Text.h"

namespace tesselink {

namespace fs = std::filesystem;

namespace {

// The companion of a format that a path is by its extension; null for none.
const Companion* CompanionOf(const OutputFormat& format, const std::string& path) {
  const std::string extension = ExtensionOf(path);
  const auto found = std::find_if(format.companions.begin(), format.companions.end(), [&](const Companion& companion) {
    return extension == "." + LowerCase(companion.extension);
  });
  return found == format.companions.end() ? nullptr : &*found;
}

}  // namespace

std::vector<const Companion*> WrittenCompanions(const OutputFormat& format, const FilterOptions& options) {
  std::vector<const Companion*> written;
  for (const Companion& companion : format.companions) {
    const bool isWanted = companion.namesSystem && options.systems.IsGiven();
    if (!companion.standardOnly || isWanted || options.dialect == Dialect::Standard) written.push_back(&companion);
  }
  return written;
}

std::vector<std::string> WrittenFiles(const std::string& output, const OutputFormat& format,
                                      const FilterOptions& options) {
  std::vector<std::string> files;
  const auto add = [&files](const std::string& file) {
    if (!file.empty() && std::find(files.begin(), files.end(), file) == files.end()) files.push_back(file);
  };
  const std::vector<std::string> parts = format.parts ? format.parts(options.own) : std::vector<std::string>{};
  for (const std::string& part : parts.empty() ? std::vector<std::string>{""} : parts) {
    const std::string main = BehindStem(output, part);
    const std::string stem = FolderOf(main) + StripExtension(FileNameOf(main)) + ".";
    add(main);
    for (const Companion* companion : WrittenCompanions(format, options)) {
      const std::string& extension = companion->extension;
      add(stem + extension);
      add(stem + LowerCase(extension));
      add(PartnerFile(main, extension));
    }
  }
  return files;
}

std::string FileAmong(const std::string& path, const std::vector<std::string>& files) {
  const auto whole = [](const std::string& name) {
    std::error_code ignored;
    return fs::weakly_canonical(fs::absolute(name, ignored), ignored);
  };
  const auto found = std::find_if(files.begin(), files.end(),
                                  [&, wanted = whole(path)](const std::string& file) { return whole(file) == wanted; });
  return found == files.end() ? std::string() : *found;
}

std::vector<std::string> ReplacedFiles(const std::string& output, const OutputFormat& format,
                                       const FilterOptions& options) {
  std::vector<std::string> files;
  for (const std::string& file : WrittenFiles(output, format, options)) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_regular_file(status) || fs::is_directory(status)) files.push_back(file);
  }
  return files;
}

std::vector<std::string> InOrder(std::vector<std::string> files, const OutputFormat& format) {
  std::stable_sort(files.begin(), files.end(), [&](const std::string& a, const std::string& b) {
    return CompanionOf(format, a) < CompanionOf(format, b);
  });
  return files;
}

void TellOlder(Report& report, const OutputFormat& format, const std::string& file) {
  const Companion* companion = CompanionOf(format, file);
  if (companion == nullptr) {
    report.Warn(WarningKind::Output, file + ": was there before; this conversion made none, and left it as it is",
                file);
  } else if (companion->whenOlder) {
    report.Warn(*companion->whenOlder, file + ": " + std::string(EntryOf(*companion->whenOlder).lost));
  }
}

}  // namespace tesselink
