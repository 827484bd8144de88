// SPDX-License-Identifier: MIT
// What the main window remembers from one day to the next.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "core/run/Settings.h"

namespace tesselink {

/// An input that was converted, and the drop-down's text of its format.
struct RecentInput {
  QStringList paths;
  QString format;
  bool operator==(const RecentInput&) const = default;
};

class WindowMemory {
 public:
  static constexpr std::size_t kMostRecent = 10;

  /// The settings must outlive the memory.
  explicit WindowMemory(Settings& settings) : settings_(settings) {}

  /// A value by its key; empty when there is none.
  QString Get(const char* key) const;
  void Set(const char* key, const QString& value);

  /// The last one first, as far as their files are there.
  std::vector<RecentInput> Recent() const;
  void AddRecent(RecentInput input);
  void ForgetRecent();

 private:
  std::vector<RecentInput> Kept() const;
  void Keep(const std::vector<RecentInput>& recent);

  Settings& settings_;
};

}  // namespace tesselink
