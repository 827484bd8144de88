// SPDX-License-Identifier: MIT
// DXF colour numbers to 24-bit colours, by the table file "ACADTBL.TBL" in the program's folder: three bytes a colour
// number, the record of number n at byte 3 n + 3.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/io/Files.h"

namespace tesselink {

class cColourTab {
 public:
  /// The folder is the one that holds the program's data.
  explicit cColourTab(std::string programFolder) : folder_(std::move(programFolder)) {}

  /// Opens the table, closing one that is open. Throws Error when there is none.
  void Create();
  /// The order of a record's bytes: "I" (Intel), the first is the lowest, or "M" (Motorola), the first is the highest,
  /// which is also the order while none is set. Only the first letter counts, in either case; throws Error for another.
  void ByteOrd(std::string_view order);
  /// The colour of a number, the table being opened when it is not. Throws Error when it cannot be opened, when the
  /// record's position does not fit 16 bits (numbers above 10921), and when the table holds no such record.
  std::int32_t Colour(std::int32_t number);
  /// Whether a number from 1 to 255 has just that colour. Throws as Colour does.
  bool IsColourOf(std::int32_t number, std::int32_t colour);
  /// The number from 1 to 255 whose colour is nearest to a colour; of equally near ones the first. Throws as Colour
  /// does.
  std::int32_t Nearest(std::int32_t colour);

 private:
  std::int32_t Combined(const std::uint8_t* record) const;
  const std::vector<std::int32_t>& Palette();

  std::string folder_;
  BinaryFile file_;
  std::vector<std::int32_t> palette_;  // colours 1 to 255, once Nearest has been asked
  char byteOrder_ = 'M';
  std::unordered_map<std::int32_t, std::int32_t> nearest_;  // what was asked for before
};

}  // namespace tesselink
