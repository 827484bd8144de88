// SPDX-License-Identifier: MIT
#include "core/run/FilesRead.h"

#include <algorithm>

#include "core/io/Paths.h"
#include "core/io/System.h"

namespace tesselink {

void FilesRead::Add(const std::string& path) {
  if (!path.empty()) paths_.push_back(path);
}

void FilesRead::Add(const std::string& path, const std::vector<Companion>& companions) {
  Add(path);
  for (const Companion& companion : companions) Add(PartnerFile(path, companion.extension));
}

std::int64_t FilesRead::Size() const {
  std::int64_t size = 0;
  for (const std::string& path : paths_) {
    sys::Status status;
    if (sys::StatusOf(path, status)) size += status.size;
  }
  return size;
}

bool FilesRead::Holds(const std::string& path) const {
  return std::any_of(paths_.begin(), paths_.end(),
                     [&](const std::string& read) { return read == path || SameFile(read, path); });
}

}  // namespace tesselink
