// SPDX-License-Identifier: MIT
// Comma-separated values as RFC 4180 has them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

/// A value as it stands in a line, quoted where it must be.
std::string CsvField(std::string_view value);

/// Goes through a text record by record. Lines end with LF or CR LF; a quoted value may hold both.
class CsvReader {
 public:
  explicit CsvReader(std::string_view text) : rest_(text) {}

  /// The next record that is not an empty line; false at the end. Throws Error for a quote that is not closed.
  bool Read(std::vector<std::string>& record);
  /// The line that the last record begins on, from 1.
  std::size_t Line() const { return line_; }

 private:
  std::string TakeQuoted();
  std::string TakePlain();

  std::string_view rest_;
  std::size_t line_ = 0, nextLine_ = 1;
};

}  // namespace tesselink
