// SPDX-License-Identifier: MIT
// The per-user settings store, addressed by application, section and key.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tesselink {

class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string Get(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& whenAbsent) = 0;
  virtual void Set(const std::string& application, const std::string& section, const std::string& key,
                   const std::string& value) = 0;
  /// Sets several keys of a section to their values.
  virtual void SetAll(const std::string& application, const std::string& section,
                      const std::vector<std::pair<std::string, std::string>>& pairs) {
    for (const auto& [key, value] : pairs) Set(application, section, key, value);
  }
  /// Why the last value that could not be kept was not; empty while all were.
  virtual std::string Problem() const { return {}; }
  /// Every key of a section with its value.
  virtual std::map<std::string, std::string> All(const std::string& application, const std::string& section) = 0;
};

}  // namespace tesselink
