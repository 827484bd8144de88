// SPDX-License-Identifier: MIT
// Options that formats bring along: what a face offers, and what a person gave.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

/// One option of a format, as its row carries it.
struct FormatOption {
  enum class Kind {
    Flag,    ///< given or not
    Text,    ///< any text that `check` accepts
    Choice,  ///< one of `choices`
    File,    ///< the path of a file that is read, which must exist
  };
  std::string name;        ///< as on the command line behind "--", as in "map-scale"
  std::string help;        ///< one sentence, its lines broken for 80 columns
  std::string value = {};  ///< what stands for the value in help texts, as in "NUMBER"; empty for a flag
  Kind kind = Kind::Text;
  std::vector<std::string> choices = {};
  std::vector<std::string> standardChoices = {};  ///< those of them that only the standard dialect has
  /// What is wrong with a value; empty when nothing is.
  std::function<std::string(const std::string& value)> check = {};
  /// Given for another format it is a mistake; else it says nothing there.
  bool strict = false;
  /// In the classic dialect it is a mistake.
  bool standardOnly = false;
};

/// The values that a person gave, by the names of their options.
class OptionValues {
 public:
  void Set(const std::string& name, const std::string& value) { values_[name] = value; }
  bool Has(std::string_view name) const { return values_.find(name) != values_.end(); }
  /// All of them.
  const auto& All() const& { return values_; }
  void All() && = delete;
  /// The value of an option; `otherwise` when it was not given.
  std::string Text(std::string_view name, std::string_view otherwise = {}) const {
    const auto found = values_.find(name);
    return found == values_.end() ? std::string(otherwise) : found->second;
  }
  /// The value as a number. Throws Error when it is none.
  double Number(std::string_view name, double otherwise) const;

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tesselink
