// SPDX-License-Identifier: MIT
// What a run counts and warns of. Warnings are values: the console, the window's summary and the tests read one list.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/tEntity.h"
#include "core/run/WarningKind.h"

namespace tesselink {

/// Elements by kind. Kinds that no reader delivers share one counter.
class KindCounts {
 public:
  static constexpr std::array<std::string_view, 7> kNames{"point",  "line", "polyline", "text",
                                                          "circle", "arc",  "other"};

  void Add(const tEntity& entity) { ++counts_[Slot(entity.bType)]; }
  void Add(std::int16_t bType) { ++counts_[Slot(bType)]; }
  std::int64_t Of(std::string_view name) const;
  std::int64_t Total() const;
  const std::array<std::int64_t, 7>& All() const { return counts_; }
  /// The name that a kind is counted under.
  static std::string_view NameOf(std::int16_t bType) { return kNames[Slot(bType)]; }

 private:
  static std::size_t Slot(std::int16_t bType) {
    if (bType >= kPoint && bType <= kCircle) return static_cast<std::size_t>(bType);
    return bType == kArc ? 5 : 6;
  }
  std::array<std::int64_t, 7> counts_{};
};

/// Warnings of one kind: the first in full, and how many there were.
struct Warning {
  std::string kind;  ///< its name in the table of warnings, with the subject behind it
  std::string text;
  std::int64_t count = 0;
};

/// Gathers warnings and what a reader met but did not deliver. Memory does not grow with their number.
class Report {
 public:
  /// Counts a warning; of each kind, and subject where one is named, only the first text is kept.
  void Warn(WarningKind kind, std::string_view text, std::string_view subject = {});
  /// Replaces the text of every warning so far.
  void Reword(const std::function<std::string(const std::string& text)>& reworded);
  /// Counts something that a file holds and that is not delivered, by the file's own name for it, as in "PointZ"; after
  /// 200 names the rest are counted as "other types".
  void Undelivered(std::string_view type, std::int64_t count = 1);
  /// Counts the warnings of another report as well.
  void Add(const Report& other);

  const std::vector<Warning>& Warnings() const { return warnings_; }
  /// The warning of a kind without a subject; null where there was none.
  const Warning* Of(WarningKind kind) const;
  const std::map<std::string, std::int64_t, std::less<>>& UndeliveredTypes() const { return undelivered_; }

 private:
  std::vector<Warning> warnings_;
  std::map<std::string, std::int64_t, std::less<>> undelivered_;
};

}  // namespace tesselink
