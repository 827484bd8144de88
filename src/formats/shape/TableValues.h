// SPDX-License-Identifier: MIT
// Values of tables that do not stand there as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "core/io/Files.h"

namespace tesselink {

/// Whether bytes of that type and number are a binary value, which AppendValue reads. `isFoxPro`: "B" is a number,
/// which other tables use for a place in a memo file.
bool IsBinaryType(char type, std::size_t length, bool isFoxPro);

/// Appends a binary value as people write it: whole numbers, numbers in as many digits as they need, amounts with four
/// decimals, times as "2004-01-31T10:20:30". Nothing for a blank one. False for bytes that are no such value.
/// `isLevel7`: whole numbers are as dBase 7 has them, the highest byte first and the sign turned.
bool AppendValue(std::string& text, char type, std::span<const std::byte> bytes, bool isLevel7);

/// The memo file of a table: .dbt as dBase III or IV writes it, or FoxPro's .fpt.
class MemoFile {
 public:
  /// A longer text is cut, so that memory stays bounded.
  static constexpr std::int64_t kLongest = std::int64_t{1} << 20;
  enum class Found { Whole, Cut, Nothing };

  /// Opens the one beside a table. False when there is none.
  bool OpenBeside(const std::string& tablePath);
  void Close();
  const std::string& Path() const { return file_.Path(); }
  /// Replaces `bytes` by the text of a block; Nothing where no text is.
  Found Read(std::int64_t block, std::string& bytes);

 private:
  Found ReadCounted(std::int64_t at, std::int64_t length, std::string& bytes);
  Found ReadToMark(std::int64_t at, std::string& bytes);

  BinaryFile file_;
  ReadWindow window_{file_};
  bool isFoxPro_ = false;
  std::int64_t blockSize_ = 512;
};

}  // namespace tesselink
