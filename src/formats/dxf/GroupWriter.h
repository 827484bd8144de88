// SPDX-License-Identifier: MIT
// Group codes and values of a drawing, on alternate lines.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/io/Files.h"

namespace tesselink {

/// What identifies an object of a drawing; written as a hexadecimal number.
using Handle = std::uint64_t;
inline constexpr Handle kNoHandle = 0;

/// Appends a handle to a file.
FileWriter& WriteHandle(FileWriter& file, Handle handle);

/// Writes the parts of a drawing that are not worth a format of their own.
class GroupWriter {
 public:
  explicit GroupWriter(FileWriter& file) : file_(file) {}

  /// Groups as "0 TABLE|2 LAYER|70 1".
  GroupWriter& Groups(std::string_view groups);
  GroupWriter& Group(int code, std::string_view value);
  GroupWriter& Number(int code, double value);
  GroupWriter& Integer(int code, std::int64_t value);
  GroupWriter& Object(int code, Handle handle);
  /// x, y and z by their codes of 10 and 20 more than the first one.
  GroupWriter& Place(int code, double x, double y, double z);

 private:
  FileWriter& Code(int code);

  FileWriter& file_;
};

}  // namespace tesselink
