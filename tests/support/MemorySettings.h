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
    const auto found = store_.find({a + "\n" + s, k});
    return found == store_.end() ? d : found->second;
  }
  void Set(const std::string& a, const std::string& s, const std::string& k, const std::string& v) override {
    store_[{a + "\n" + s, k}] = v;
  }
  std::map<std::string, std::string> All(const std::string& a, const std::string& s) override {
    const std::string section = a + "\n" + s;
    std::map<std::string, std::string> pairs;
    for (const auto& [key, value] : store_) {
      if (key.first == section) pairs[key.second] = value;
    }
    return pairs;
  }

 private:
  std::map<std::pair<std::string, std::string>, std::string> store_;
};

}  // namespace tesselink
