// SPDX-License-Identifier: MIT
#include "core/run/Report.h"

#include <algorithm>
#include <numeric>

#include "core/run/Warnings.h"

namespace tesselink {
namespace {

constexpr std::size_t kMostTypes = 200;

}  // namespace

// The longest of the names that fit: one may be another's beginning, as that of "index cut".
const WarningEntry* EntryNamed(std::string_view kind) {
  const WarningEntry* found = nullptr;
  for (const WarningEntry& entry : kWarnings) {
    const bool fits =
        kind.starts_with(entry.name) && (kind.size() == entry.name.size() || kind[entry.name.size()] == ' ');
    if (fits && (found == nullptr || found->name.size() < entry.name.size())) found = &entry;
  }
  return found;
}

std::int64_t KindCounts::Of(std::string_view name) const {
  const auto found = std::find(kNames.begin(), kNames.end(), name);
  return found == kNames.end() ? 0 : counts_[static_cast<std::size_t>(found - kNames.begin())];
}

std::int64_t KindCounts::Total() const { return std::accumulate(counts_.begin(), counts_.end(), std::int64_t{0}); }

void Report::Warn(WarningKind kind, std::string_view text, std::string_view subject) {
  const std::string_view name = EntryOf(kind).name;
  const auto isKnown = [&](const Warning& known) {
    const std::string_view whole = known.kind;
    return whole.starts_with(name) && (subject.empty() ? whole.size() == name.size()
                                                       : whole.size() == name.size() + 1 + subject.size() &&
                                                             whole[name.size()] == ' ' && whole.ends_with(subject));
  };
  const auto known = std::find_if(warnings_.begin(), warnings_.end(), isKnown);
  if (known != warnings_.end()) {
    ++known->count;
    return;
  }
  std::string whole(name);
  if (!subject.empty()) whole.append(" ").append(subject);
  warnings_.push_back({std::move(whole), std::string(text), 1});
}

const Warning* Report::Of(WarningKind kind) const {
  const auto found = std::find_if(warnings_.begin(), warnings_.end(),
                                  [&](const Warning& warning) { return warning.kind == EntryOf(kind).name; });
  return found == warnings_.end() ? nullptr : &*found;
}

void Report::Reword(const std::function<std::string(const std::string&)>& reworded) {
  for (Warning& warning : warnings_) warning.text = reworded(warning.text);
}

void Report::Add(const Report& other) {
  for (const Warning& warning : other.warnings_) {
    const auto known = std::find_if(warnings_.begin(), warnings_.end(),
                                    [&](const Warning& mine) { return mine.kind == warning.kind; });
    if (known == warnings_.end()) {
      warnings_.push_back(warning);
    } else {
      known->count += warning.count;
    }
  }
}

void Report::Undelivered(std::string_view type, std::int64_t count) {
  const auto known = undelivered_.find(type);
  if (known != undelivered_.end()) {
    known->second += count;
  } else if (undelivered_.size() < kMostTypes) {
    undelivered_.emplace(type, count);
  } else {
    undelivered_["other types"] += count;
  }
}

}  // namespace tesselink
