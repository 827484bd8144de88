// SPDX-License-Identifier: MIT
// What a writer had to give up, counted in one place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "core/run/Warnings.h"

namespace tesselink {

class Report;

/// Counts losses by kind; when the file is complete each kind is told in one warning, in the order of the table.
class Losses {
 public:
  /// Forgets all counts.
  void Reset() {
    counts_.fill(0);
    places_.clear();
  }
  /// How to tell where the run is, for the first loss of each kind; null: nowhere.
  void Locate(std::function<std::string()> where) { where_ = std::move(where); }
  void Add(WarningKind kind, std::int64_t count = 1) {
    std::int64_t& sum = counts_[static_cast<std::size_t>(kind)];
    if (sum == 0 && count > 0 && where_) places_[kind] = where_();
    sum += count;
  }
  /// Losses of this kind are told of another file than the output, or in other words than those of the table.
  void Describe(WarningKind kind, std::string_view file, std::string_view words = {}) {
    described_[kind] = {std::string(file), std::string(words)};
  }
  /// Warns of each kind that was counted: "FILE: words: count, the first at PLACE".
  void Tell(Report& report, const std::string& output) const;

 private:
  struct Description {
    std::string file, words;
  };
  std::array<std::int64_t, kWarnings.size()> counts_{};
  std::map<WarningKind, Description> described_;
  std::function<std::string()> where_;
  std::map<WarningKind, std::string> places_;  // of the first of each kind
};

}  // namespace tesselink
