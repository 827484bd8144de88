// SPDX-License-Identifier: MIT
// What is known of a drawing once it has been read: how many of its elements have what formats and dialects differ in.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "core/run/Report.h"

namespace tesselink {

struct DrawingFacts {
  KindCounts kinds;
  std::int64_t closed = 0;    ///< chains that are marked as closed
  std::int64_t areas = 0;     ///< also those that came as chains, where their reader tells
  std::int64_t parts = 0;     ///< elements of several parts, or whose parts came as elements of their own
  std::int64_t heights = 0;   ///< elements with a z other than 0
  std::int64_t symbols = 0;   ///< points that stand for a symbol or a block
  std::int64_t atOrigin = 0;  ///< single vertices at (0, 0), which count as none; in no other number
  std::map<std::string, std::int64_t, std::less<>> unread = {};  ///< by the file's own name for it; see Report
  bool table = false;                                            ///< an attribute table lies beside it
  bool pointFile = false;                                        ///< a file of points lies beside it

  /// Counts an element.
  void Add(const tEntity& entity);
};

}  // namespace tesselink
