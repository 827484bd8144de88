// SPDX-License-Identifier: MIT
// Code pages by the many names that tables, drawings and people have for them, those of two bytes a letter included.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tesselink {

/// Decodes and encodes the letters of one code page. The pages of one byte a letter that are known by heart
/// (CodePages.h) do so on every system; others are those of the C library's iconv, and there where it has them. All
/// begin with ASCII.
class CodePage {
 public:
  static constexpr int kUtf8 = 65001;

  /// The page of a name, as in "936", "GBK", "ANSI_936", "Shift_JIS", "ISO-8859-2" or "UTF-8"; null for one not known.
  /// It stays there as long as the program runs.
  static const CodePage* Named(std::string_view name);
  /// The page of a number, as Windows counts them; null for one not known.
  static const CodePage* Numbered(int number);

  ~CodePage();
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;

  bool IsUtf8() const { return number_ == kUtf8; }
  /// The letters of bytes 128 to 255 in a page of one byte a letter that is known by heart; empty for all others.
  std::u16string_view UpperHalf() const { return upperHalf_; }
  /// Appends the bytes as UTF-8, with U+FFFD for those that are no letter of the page. Returns how often it stands.
  std::size_t AppendDecoded(std::string& text, std::string_view bytes) const;
  /// Appends UTF-8 as bytes of the page. False, and nothing is appended, where a letter is not in it.
  bool AppendEncoded(std::string& bytes, std::string_view text) const;
  /// Whether the page has a letter of UTF-8 and gives the very same one back: not all that it has do.
  bool Holds(std::string_view letter) const;

 private:
  explicit CodePage(int number) : number_(number) {}
  bool Open();
  std::size_t AppendConverted(std::string& text, std::string_view bytes) const;
  bool AppendConvertedBack(std::string& bytes, std::string_view text) const;

  int number_;
  std::u16string_view upperHalf_;
  void* converter_ = nullptr;        // of iconv, to UTF-8
  mutable void* encoder_ = nullptr;  // likewise, from UTF-8; opened when it is needed first
};

/// Appends UTF-8 of which some may not be valid: U+FFFD stands for each run that is not. Returns how often.
std::size_t AppendRepaired(std::string& text, std::string_view bytes);

}  // namespace tesselink
