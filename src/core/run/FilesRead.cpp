#include "core/run/FilesRead.h"

#include <algorithm>

#include "core/io/Paths.h"

namespace tesselink {

void FilesRead::Add(const std::string& path) {
  if (!path.empty()) paths_.push_back(path);
}

void FilesRead::Add(const std::string& path, const std::vector<Companion>& companions) {
  Add(path);
  for (const Companion& companion : companions) Add(PartnerFile(path, companion.extension));
}

bool FilesRead::Holds(const std::string& path) const {
  return std::any_of(paths_.begin(), paths_.end(),
                     [&](const std::string& read) { return read == path || SameFile(read, path); });
}

}  // namespace tesselink
