// SPDX-License-Identifier: MIT
#include "core/io/Text.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tesselink {
namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

std::string LowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), Lower);
  return result;
}

std::string UpperCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), Upper);
  return result;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

bool MatchesPattern(std::string_view text, std::string_view pattern) {
  constexpr std::size_t kNone = std::string_view::npos;
  const auto isWithinLetter = [&](std::size_t i) { return i < text.size() && (text[i] & 0xC0) == 0x80; };
  std::size_t at = 0, p = 0, star = kNone, retry = 0;
  while (at < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      retry = at;
    } else if (p < pattern.size() && pattern[p] == '?') {
      ++p;
      do ++at;
      while (isWithinLetter(at));
    } else if (p < pattern.size() && Lower(pattern[p]) == Lower(text[at])) {
      ++p;
      ++at;
    } else if (star != kNone) {
      p = star + 1;
      at = ++retry;
    } else {
      return false;
    }
  }
  return pattern.substr(p).find_first_not_of('*') == kNone;
}

// Values of tables have many blanks behind them, so those go eight at a time.
std::string_view WithoutBlanksBehind(std::string_view text) {
  constexpr std::uint64_t kBlanks = 0x2020202020202020;
  while (text.size() >= sizeof kBlanks) {
    std::uint64_t end = 0;
    std::memcpy(&end, text.data() + text.size() - sizeof end, sizeof end);
    const std::uint64_t others = end ^ kBlanks;
    constexpr bool kLastIsHigh = std::endian::native == std::endian::little;
    const int bits = kLastIsHigh ? std::countl_zero(others) : std::countr_zero(others);
    text.remove_suffix(static_cast<std::size_t>(bits) / 8);
    if (others != 0) return text;
  }
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

std::string_view Trimmed(std::string_view text) {
  text = WithoutBlanksBehind(text);
  while (text.starts_with(' ')) text.remove_prefix(1);
  return text;
}

std::string Counted(std::int64_t count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

const std::string& WithoutLineBreaks(const std::string& value, std::string& cleaned) {
  if (std::none_of(value.begin(), value.end(), BreaksLine)) return value;
  cleaned = value;
  std::replace_if(cleaned.begin(), cleaned.end(), BreaksLine, ' ');
  return cleaned;
}

}  // namespace tesselink
