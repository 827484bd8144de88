// SPDX-License-Identifier: MIT
#include "core/io/CodePages.h"

#include <algorithm>

#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

struct Page {
  std::string_view name;
  std::u16string_view letters;
};

constexpr char16_t kNoLetter = 0xFFFD;

constexpr Page kPages[] = {
#include "core/io/CodePages.inc"
};

static_assert(std::all_of(std::begin(kPages), std::end(kPages), [](const Page& p) { return p.letters.size() == 128; }));

}  // namespace

std::u16string_view UpperHalf(std::string_view codePage) {
  for (const Page& page : kPages) {
    if (EqualsIgnoringCase(page.name, codePage)) return page.letters;
  }
  return {};
}

void AppendDecoded(std::string& text, std::string_view bytes, std::u16string_view upperHalf) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 128) {
      text += c;
    } else {
      AppendUtf8(text, upperHalf[byte - 128U]);
    }
  }
}

std::optional<char> ByteOf(std::uint32_t letter, std::u16string_view upperHalf) {
  if (letter < 128) return static_cast<char>(letter);
  if (letter > 0xFFFF || letter == kNoLetter) return std::nullopt;
  // Most letters of Windows-1252 lie at their own numbers.
  const bool isOwn = letter < 256 && upperHalf[letter - 128] == letter;
  const std::size_t at = isOwn ? letter - 128 : upperHalf.find(static_cast<char16_t>(letter));
  if (at == std::u16string_view::npos) return std::nullopt;
  return static_cast<char>(128 + at);
}

std::size_t AppendEncoded(std::string& bytes, std::string_view text, std::u16string_view upperHalf) {
  std::size_t lost = 0;
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    const auto byte = length == 0 ? text[0] : ByteOf(Utf8Letter(text.substr(0, length)), upperHalf);
    bytes += byte.value_or('?');
    if (!byte) ++lost;
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return lost;
}

std::u16string_view Windows1252() {
  static const std::u16string_view page = UpperHalf("ANSI_1252");
  return page;
}

std::uint32_t LetterOf1252(char byte) {
  const auto number = static_cast<unsigned char>(byte);
  if (number < 128) return number;
  const char16_t letter = Windows1252()[number - 128U];
  return letter == kNoLetter ? number : letter;
}

void AppendDecoded1252(std::string& text, std::string_view bytes) {
  for (const char c : bytes) {
    static_cast<unsigned char>(c) < 128 ? text.push_back(c) : AppendUtf8(text, LetterOf1252(c));
  }
}

}  // namespace tesselink
