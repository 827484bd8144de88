// SPDX-License-Identifier: MIT
#include "ui/WindowMemory.h"

#include <filesystem>
#include <string>

#include "core/io/Paths.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Window";
constexpr const char* kSection = "MainWindow";
constexpr const char* kRecent = "Recent";

}  // namespace

QString WindowMemory::Get(const char* key) const {
  return QString::fromStdString(settings_.Get(kApplication, kSection, key, ""));
}

void WindowMemory::Set(const char* key, const QString& value) {
  settings_.Set(kApplication, kSection, key, value.toStdString());
}

// A line for the format and for each path, and an empty one behind each input. A path that has line feeds itself is not
// remembered.
std::vector<RecentInput> WindowMemory::Kept() const {
  std::vector<RecentInput> recent;
  for (const QString& input : Get(kRecent).split("\n\n", Qt::SkipEmptyParts)) {
    QStringList lines = input.split('\n');
    const QString format = lines.takeFirst();
    if (!lines.isEmpty()) recent.push_back({lines, format});
  }
  return recent;
}

void WindowMemory::Keep(const std::vector<RecentInput>& recent) {
  QStringList kept;
  for (const RecentInput& input : recent) kept += input.format + '\n' + input.paths.join('\n');
  Set(kRecent, kept.join("\n\n"));
}

std::vector<RecentInput> WindowMemory::Recent() const {
  std::vector<RecentInput> recent = Kept();
  std::erase_if(recent, [](const RecentInput& input) { return !FileExists(PathOf(input.paths[0])); });
  return recent;
}

void WindowMemory::AddRecent(RecentInput input) {
  for (QString& path : input.paths) {
    std::error_code error;
    path = Shown(std::filesystem::absolute(PathOf(path), error).string());
    if (error || path.contains('\n')) return;
  }
  std::vector<RecentInput> recent = Kept();
  if (input.paths.isEmpty() || (!recent.empty() && recent[0] == input)) return;
  std::erase_if(recent, [&](const RecentInput& other) { return other.paths == input.paths; });
  recent.insert(recent.begin(), input);
  if (recent.size() > kMostRecent) recent.resize(kMostRecent);
  Keep(recent);
}

void WindowMemory::ForgetRecent() { Keep({}); }

}  // namespace tesselink
