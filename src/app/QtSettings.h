// The per-user settings as files of the desktop's settings folder, one for each application name.
#pragma once

#include "core/run/Settings.h"

namespace tesselink {

class QtSettings final : public Settings {
 public:
  std::string Get(const std::string& application, const std::string& section, const std::string& key,
                  const std::string& whenAbsent) override;
  void Set(const std::string& application, const std::string& section, const std::string& key,
           const std::string& value) override;
  std::map<std::string, std::string> All(const std::string& application, const std::string& section) override;
};

}  // namespace tesselink
