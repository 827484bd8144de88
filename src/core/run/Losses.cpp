// SPDX-License-Identifier: MIT
#include "core/run/Losses.h"

#include "core/run/Report.h"

namespace tesselink {

void Losses::Tell(Report& report, const std::string& output) const {
  for (const WarningEntry& entry : kWarnings) {
    const std::int64_t count = counts_[static_cast<std::size_t>(entry.kind)];
    if (count == 0) continue;
    const auto found = described_.find(entry.kind);
    const Description& own = found == described_.end() ? Description{} : found->second;
    std::string text = own.file.empty() ? output : own.file;
    text.append(": ").append(own.words.empty() ? std::string(entry.lost) : own.words);
    text.append(": ").append(std::to_string(count));
    if (const auto place = places_.find(entry.kind); place != places_.end()) {
      text.append(count == 1 ? ", at " : ", the first at ").append(place->second);
    }
    report.Warn(entry.kind, text);
  }
}

}  // namespace tesselink
