// SPDX-License-Identifier: MIT
// Settings that end with the test.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "core/run/Settings.h"

namespace tesselink {

class MemorySettings final : public Settings {
 public:
  std::string Get(const std::string& a, const std::string& s, const std::string& k, const std::string& d) override {
    const auto& section = store_[{a, s}];
    return section.contains(k) ? section.at(k) : d;
  }
  void Set(const std::string& a, const std::string& s, const std::string& k, const std::string& v) override {
    store_[{a, s}][k] = v;
  }
  std::map<std::string, std::string> All(const std::string& a, const std::string& s) override { return store_[{a, s}]; }

 private:
  std::map<std::pair<std::string, std::string>, std::map<std::string, std::string>> store_;
};

}  // namespace tesselink
