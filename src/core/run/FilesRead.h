// SPDX-License-Identifier: MIT
// The one list of what a run reads.
#pragma once

#include <string>
#include <vector>

#include "core/run/FormatTable.h"

namespace tesselink {

/// Inputs with their companions, lookup files and what options name. None of them is ever written, under any spelling.
class FilesRead {
 public:
  /// An empty path is none.
  void Add(const std::string& path);
  /// A file and those companions of it that exist.
  void Add(const std::string& path, const std::vector<Companion>& companions);
  /// Whether a path names one of the files, however it is spelt.
  bool Holds(const std::string& path) const;
  /// Bytes in all of them together.
  std::int64_t Size() const;

 private:
  std::vector<std::string> paths_;
};

}  // namespace tesselink
