// SPDX-License-Identifier: MIT
// The points that lie beside a CDF drawing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/element/tEntity.h"
#include "core/io/Files.h"

namespace tesselink {

class Report;

/// Reads a ".pts" file as CDFOutFilter writes it: a line of a point has its name in columns 1 to 40, x in 41 to 50 and
/// y in 54 to 63. Other lines are counted and passed over.
class PointFile {
 public:
  void Open(const std::string& path) { reader_ = LineReader(path); }
  bool IsOpen() const { return reader_.IsOpen(); }
  /// Whether there is anything further to read.
  bool HasMore() const { return reader_.IsOpen() && !reader_.AtEnd(); }
  /// The kind, the place and the name of the next point; false behind the last one.
  bool Next(tEntity& entity, Report& report);
  std::string Where() const { return reader_.Path() + ", line " + std::to_string(reader_.LineNumber()); }
  std::int64_t Position() const { return reader_.IsOpen() ? reader_.Position() : 0; }
  std::int64_t Size() const { return reader_.IsOpen() ? reader_.Size() : 0; }

 private:
  LineReader reader_;
};

}  // namespace tesselink
