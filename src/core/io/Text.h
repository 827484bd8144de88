// SPDX-License-Identifier: MIT
// Small text operations on single bytes, the same whatever the locale.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tesselink {

/// Whether two texts are the same, without a call where they are as short as most names.
inline bool IsSame(std::string_view a, std::string_view b) {
  const auto endsAreSame = [&](auto word) {  // which overlap, and so are all of it
    auto other = word;
    const auto same = [&](std::size_t at) {
      std::memcpy(&word, a.data() + at, sizeof word);
      std::memcpy(&other, b.data() + at, sizeof other);
      return word == other;
    };
    return same(0) && same(a.size() - sizeof word);
  };
  if (a.size() != b.size()) return false;
  if (a.size() > 16 || a.size() < 4) return a == b;
  return a.size() < 8 ? endsAreSame(std::uint32_t{}) : endsAreSame(std::uint64_t{});
}

/// ASCII letters in lower or upper case, whatever the locale.
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);
/// Whether two texts are equal but for the case of ASCII letters.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);
/// Whether a text is as a pattern says, but for the case of ASCII letters: * stands for any letters, ? for one.
bool MatchesPattern(std::string_view text, std::string_view pattern);
/// The text without the blanks at its ends; other white space stays.
std::string_view Trimmed(std::string_view text);
/// The same at its end alone.
std::string_view WithoutBlanksBehind(std::string_view text);
/// The text up to its first NUL.
inline std::string_view CutAtNul(std::string_view text) { return text.substr(0, text.find('\0')); }
/// A number with its noun, as in "1 point" and "2 points".
std::string Counted(std::int64_t count, std::string_view noun);
/// Whether a character would break the lines of a text file or end a text within: a carriage return, a line feed, a
/// NUL.
constexpr bool BreaksLine(char c) { return c == '\r' || c == '\n' || c == '\0'; }
/// The text with blanks for such characters; a tab and its like stay. It is `value` itself where there are none, else
/// `cleaned`.
const std::string& WithoutLineBreaks(const std::string& value, std::string& cleaned);

}  // namespace tesselink
