// SPDX-License-Identifier: MIT
// The one loop over the elements of a file.
#pragma once

#include <cstdint>

#include "core/element/tEntity.h"
#include "core/run/Filters.h"

namespace tesselink {

/// Fetches element after element into one entity that is reused throughout. The run, the preview, the fuzzers and the
/// tests all read by it:
///
///   while (pump.Next(reader)) if (pump.Delivered()) Use(pump.Element());
class Pump {
 public:
  /// Whether a single vertex at (0, 0) counts is the dialect's to decide.
  explicit Pump(Dialect dialect) { entity_.CountOrigin(dialect == Dialect::Standard); }

  /// Clears the element of the call before and asks the reader for the next one. False at the end of the file; a call
  /// may also find nothing, which Delivered tells.
  bool Next(InputFilter& reader) {
    if (started_) entity_.Clear();
    started_ = true;
    delivered_ = false;
    if (reader.Eof()) return false;
    delivered_ = reader.GetNextEntity(entity_);
    elements_ += delivered_ ? 1 : 0;
    return true;
  }
  bool Delivered() const { return delivered_; }
  tEntity& Element() { return entity_; }
  /// The number of elements delivered so far, of all files.
  std::int64_t Elements() const { return elements_; }

 private:
  tEntity entity_;
  bool started_ = false, delivered_ = false;
  std::int64_t elements_ = 0;
};

}  // namespace tesselink
