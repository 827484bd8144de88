// SPDX-License-Identifier: MIT
// The list of entity colours, "$LNGSL.DAT": a description with the colour numbers of lines and texts. Read, never
// written.
#pragma once

#include <cstdint>
#include <string>

#include "core/run/LookupFile.h"

namespace tesselink {

/// Records of 126 bytes: the description, 40 characters that end at the first NUL, then the colour numbers of lines at
/// byte 40 and of texts at byte 42, 16 bits each, low byte first.
class LNGSLMap {
 public:
  explicit LNGSLMap(const FilterContext& context);

  /// Finds and opens the list; see LookupFile.
  void Create() { file_.Create(); }
  std::int16_t Count() const { return file_.Count(); }
  /// The number, from 1, of the first record with exactly this description, or 0.
  std::int16_t SearchDesc(const std::string& description);
  /// The colour numbers of a record, counted from 1.
  std::int16_t LineColour(int number) { return Number(number, 40); }
  std::int16_t TextColour(int number) { return Number(number, 42); }

 private:
  std::int16_t Number(int record, std::size_t offset);

  LookupFile file_;
};

}  // namespace tesselink
