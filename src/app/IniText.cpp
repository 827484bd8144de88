// SPDX-License-Identifier: MIT
#include "app/IniText.h"

#include <charconv>
#include <cstdint>

#include "core/io/Utf8.h"

namespace tesselink {
namespace {

constexpr const char* kHexDigits = "0123456789ABCDEF";

bool StandsForItself(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '.' || c == '_';
}

// `tilde` is how that letter is written, which the two encodings treat differently.
std::string Encoded(std::string_view bytes, std::string_view percent, std::string_view tilde) {
  std::string text;
  for (const char c : bytes) {
    if (StandsForItself(c)) {
      text += c;
    } else if (c == '~') {
      text += tilde;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text.append(percent).append({kHexDigits[byte >> 4], kHexDigits[byte & 15]});
    }
  }
  return text;
}

// The number that so many digits at a place are; false where they are none.
bool Digits(std::string_view text, std::size_t at, std::size_t count, int base, std::uint32_t& number) {
  if (at + count > text.size() || count == 0) return false;
  const char* const end = text.data() + at + count;
  const auto [stop, error] = std::from_chars(text.data() + at, end, number, base);
  return error == std::errc() && stop == end;
}

std::string PercentDecoded(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::uint32_t byte = 0;
    const bool code = text[i] == '%' && Digits(text, i + 1, 2, 16, byte);
    bytes += code ? static_cast<char>(byte) : text[i];
    if (code) i += 2;
  }
  return bytes;
}

// What the letter behind a backslash stands for; a letter without a meaning for itself.
char Escaped(char letter) {
  constexpr std::string_view kLetters = "abfnrtv0", kMeanings{"\a\b\f\n\r\t\v\0", 8};
  const std::size_t place = kLetters.find(letter);
  return place == std::string_view::npos ? letter : kMeanings[place];
}

std::size_t HexDigitsAt(std::string_view text, std::size_t at) {
  const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEF", at);
  return (end == std::string_view::npos ? text.size() : end) - at;
}

std::string Unquoted(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') continue;
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    ++i;
    std::uint32_t letter = 0;
    const std::size_t digits = text[i] == 'x' ? HexDigitsAt(text, i + 1) : 0;
    if (Digits(text, i + 1, digits, 16, letter)) {
      AppendUtf8(plain, letter);
      i += digits;
    } else {
      plain += Escaped(text[i]);
    }
  }
  return plain;
}

}  // namespace

std::string IniName(std::string_view bytes) { return Encoded(bytes, "%25", "%7E"); }

std::string IniValue(std::string_view bytes) { return Encoded(bytes, "%", "~"); }

std::string OfIniName(std::string_view written) {
  std::string name;
  for (std::size_t i = 0; i < written.size(); ++i) {
    std::uint32_t letter = 0;
    if (written[i] == '%' && Digits(written, i + 1, 2, 16, letter)) {
      name += static_cast<char>(letter);
      i += 2;
    } else if (written.substr(i, 2) == "%U" && Digits(written, i + 2, 4, 16, letter)) {
      AppendUtf8(name, letter);
      i += 5;
    } else {
      name += written[i];
    }
  }
  return PercentDecoded(name);
}

std::string OfIniValue(std::string_view written) { return PercentDecoded(Unquoted(written)); }

}  // namespace tesselink
