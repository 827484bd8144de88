// SPDX-License-Identifier: MIT
#include "core/io/Utf8.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

#include "core/io/CodePages.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {}  // namespace

std::size_t Utf8LengthOfMore(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  const std::size_t length = lead >= 0xE0 && lead < 0xF0 ? 3 : lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
  if (length == 0 || bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates, and what is beyond U+10FFFF.
  if ((lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F)) return 0;
  if ((lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) > 0x8F)) return 0;
  return length;
}

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = Utf8Length(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string_view FirstLetters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  for (; count > 0 && end < text.size(); --count) end += Utf8Length(text.substr(end));
  return text.substr(0, end);
}

std::string_view CutUtf8(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0) == 0x80) --most;
  return text.substr(0, most);
}

bool IsControl(std::uint32_t letter) {
  return letter < ' ' || (letter >= 0x7F && letter < 0xA0) || (letter >= 0x202A && letter <= 0x202E) ||
         (letter >= 0x2066 && letter <= 0x2069);
}

void AppendUtf8(std::string& text, std::uint32_t letter) {
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (letter < 0x80) {
    text += BreaksLine(static_cast<char>(letter)) ? ' ' : static_cast<char>(letter);
  } else if (letter < 0x800) {
    const char bytes[] = {static_cast<char>(0xC0 | letter >> 6), static_cast<char>(0x80 | (letter & 0x3F))};
    text.append(bytes, 2);
  } else if ((letter >= 0xD800 && letter < 0xE000) || letter > 0x10FFFF) {
    text += kReplacement;
  } else if (letter < 0x10000) {
    put(0xE0 | letter >> 12);
    put(0x80 | (letter >> 6 & 0x3F));
    put(0x80 | (letter & 0x3F));
  } else {
    put(0xF0 | letter >> 18);
    put(0x80 | (letter >> 12 & 0x3F));
    put(0x80 | (letter >> 6 & 0x3F));
    put(0x80 | (letter & 0x3F));
  }
}

// By way of the capital: some letters have two small ones.
std::string FoldedCase(std::string_view text) {
  static const locale_t kLetters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (kLetters == nullptr || IsAscii(text)) return LowerCase(text);
  std::string folded;
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    if (length == 0) {
      folded += text[0];
    } else {
      const auto letter = static_cast<wint_t>(Utf8Letter(text.substr(0, length)));
      AppendUtf8(folded, static_cast<std::uint32_t>(towlower_l(towupper_l(letter, kLetters), kLetters)));
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return folded;
}

std::string AsUtf8(const std::string& text) {
  if (IsUtf8(text)) return text;
  std::string decoded;
  AppendDecoded1252(decoded, text);
  return decoded;
}

}  // namespace tesselink
