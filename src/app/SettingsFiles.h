// SPDX-License-Identifier: MIT
// The per-user settings as files of the person's settings folder, one for each application name.
#pragma once

#include <string>

#include "core/run/Settings.h"

namespace tesselink {

/// Each call reads the file anew, since the other face and other runs write it too. Set replaces it at once and whole,
/// under a lock on its folder, and keeps what it does not know; a file that cannot be read is not replaced.
class SettingsFiles final : public Settings {
 public:
  /// Without a folder nothing is remembered.
  explicit SettingsFiles(std::string folder);
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& whenAbsent) override;
  void Set(const std::string& application, const std::string& section, const std::string& key,
           const std::string& value) override {
    SetAll(application, section, {{key, value}});
  }
  void SetAll(const std::string& application, const std::string& section,
              const std::vector<std::pair<std::string, std::string>>& pairs) override;
  std::map<std::string, std::string> All(const std::string& application, const std::string& section) override;
  std::string Problem() const override { return problem_; }

 private:
  std::string FileOf(const std::string& application) const { return folder_ + "/" + application + ".ini"; }

  std::string folder_, problem_;
};

}  // namespace tesselink
