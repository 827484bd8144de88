// SPDX-License-Identifier: MIT
// The per-user settings store, addressed by application, section and key.
#pragma once

#include <map>
#include <string>

namespace tesselink {

class Settings {
 public:
  virtual ~Settings() = default;
  virtual std::string Get(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& whenAbsent) = 0;
  virtual void Set(const std::string& application, const std::string& section, const std::string& key,
                   const std::string& value) = 0;
  /// Every key of a section with its value.
  virtual std::map<std::string, std::string> All(const std::string& application, const std::string& section) = 0;
};

}  // namespace tesselink
