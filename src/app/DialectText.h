// SPDX-License-Identifier: MIT
// What a dialect does with a drawing, in words for people. The table of sentences is the one that faces tell from.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/run/DrawingFacts.h"
#include "core/run/FormatTable.h"

namespace tesselink {

/// A sentence without its capital letter and its period. %1 stands for the count, %2 for the names.
struct DialectSentence {
  const char* one;   ///< for a count of 1
  const char* many;  ///< for any other
  std::int64_t count = 0;
  std::string names = {};

  /// The one or the other, as it stands; a face may translate it before it fills it in.
  const char* Pattern() const { return count == 1 ? one : many; }
};

/// What is to be told of a conversion in this dialect where the other one does something else, the gravest first. What
/// is counted is told of drawings that have it alone. `values`: of the options that were given.
std::vector<DialectSentence> DialectSentences(const InputFormat& input, const OutputFormat& output, Dialect dialect,
                                              const OptionValues& values, const DrawingFacts& drawing);

/// Whether readers of the classic dialect know this type and do not deliver it, while those of the standard one do.
bool IsReadInStandardAlone(std::string_view type);

}  // namespace tesselink
