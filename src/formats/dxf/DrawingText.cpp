// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "core/io/CodePages.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

// The number that the first `count` letters are, all of them digits of the base.
std::optional<std::uint32_t> Digits(std::string_view text, std::size_t count, int base) {
  const std::string_view digits = text.substr(0, count);
  const auto isDigit = [base](char c) {
    return (c >= '0' && c <= '9') || (base == 16 && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
  };
  if (digits.size() < count || !std::all_of(digits.begin(), digits.end(), isDigit)) return std::nullopt;
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + count, value, base);
  return value;
}

// "\U+XXXX" at the front of the text, two of them for a letter beyond U+FFFF. Takes it off and appends its letter.
bool TakeUnicode(std::string_view& rest, std::string& text) {
  const auto unit = [](std::string_view from) -> std::optional<std::uint32_t> {
    return EqualsIgnoringCase(from.substr(0, 3), "\\U+") ? Digits(from.substr(3), 4, 16) : std::nullopt;
  };
  constexpr std::size_t kLength = 7;
  const auto first = unit(rest);
  if (!first) return false;
  rest.remove_prefix(kLength);
  std::uint32_t letter = *first;
  if (letter >= 0xD800 && letter < 0xDC00) {
    if (const auto second = unit(rest); second && *second >= 0xDC00 && *second < 0xE000) {
      letter = 0x10000 + ((letter - 0xD800) << 10) + (*second - 0xDC00);
      rest.remove_prefix(kLength);
    }
  }
  AppendUtf8(text, letter);
  return true;
}

// "%%d" and its like at the front of the text, in any letter case.
bool TakePercentCode(std::string_view& rest, std::string& text, std::u16string_view upperHalf) {
  if (!rest.starts_with("%%") || rest.size() < 3) return false;
  switch (rest[2]) {
    case 'd':
    case 'D':
      text += "\xC2\xB0";
      break;
    case 'p':
    case 'P':
      text += "\xC2\xB1";
      break;
    case 'c':
    case 'C':
      text += "\xC3\x98";
      break;
    case 'u':
    case 'U':
    case 'o':
    case 'O':
    case 'k':
    case 'K':
      break;
    case '%':
      text += '%';
      break;
    default: {
      const auto code = Digits(rest.substr(2), 3, 10);
      if (!code || *code > 255 || (*code > 127 && upperHalf.empty())) return false;
      AppendUtf8(text, *code < 128 ? *code : upperHalf[*code - 128]);
      rest.remove_prefix(5);
      return true;
    }
  }
  rest.remove_prefix(3);
  return true;
}

// "^I" and its like: control characters, of which line breaks become blanks unless all are wanted as they are; "^ " is
// the caret itself.
bool TakeCaretCode(std::string_view& rest, std::string& text, bool asTheyAre = false) {
  if (rest.size() < 2 || rest[0] != '^') return false;
  const char c = rest[1];
  if (c != ' ' && !(c >= '@' && c <= '_')) return false;
  if (c == ' ') {
    text += '^';
  } else if (asTheyAre) {
    text += static_cast<char>(c - '@');
  } else if (c != 'M') {
    AppendUtf8(text, static_cast<std::uint32_t>(c - '@'));
  }
  rest.remove_prefix(2);
  return true;
}

void TakeLetter(std::string_view& rest, std::string& text) {
  text += BreaksLine(rest[0]) ? ' ' : rest[0];
  rest.remove_prefix(1);
}

// "1/2", "1#2" or "+0.1^-0.1" as a line of text.
void AppendStacked(std::string_view stacked, std::string& text) {
  for (std::size_t i = 0; i < stacked.size(); ++i) {
    const char c = stacked[i];
    if (c == '\\' && i + 1 < stacked.size()) {
      text += stacked[++i];
    } else if (c == '#') {
      text += '/';
    } else if (c != '^') {
      text += c;
    } else {
      while (i + 1 < stacked.size() && stacked[i + 1] == ' ') ++i;
      if (i > 0 && i + 1 < stacked.size()) text += ' ';
    }
  }
}

// An inline code of an MTEXT at the front of the text, which begins with a backslash.
bool TakeInlineCode(std::string_view& rest, std::string& text, char lineBreak, char columnBreak) {
  if (rest.size() < 2) return false;
  std::size_t length = 2;
  switch (rest[1]) {
    case 'P':
    case 'X':
      text += lineBreak;
      break;
    case 'N':
      text += columnBreak;
      break;
    case '~':
      text += ' ';
      break;
    case '\\':
    case '{':
    case '}':
      text += rest[1];
      break;
    case 'L':
    case 'l':
    case 'O':
    case 'o':
    case 'K':
    case 'k':
      break;
    case 'A':
    case 'C':
    case 'c':
    case 'F':
    case 'f':
    case 'H':
    case 'Q':
    case 'T':
    case 'W':
    case 'p':
    case 'S': {
      const std::size_t end = rest.find(';');
      if (end == std::string_view::npos) return false;
      if (rest[1] == 'S') AppendStacked(rest.substr(2, end - 2), text);
      length = end + 1;
      break;
    }
    default:
      return false;
  }
  rest.remove_prefix(length);
  return true;
}

// Whether a switch of lines under, over or through letters follows.
bool BeginsLine(std::string_view rest) {
  return rest.size() > 2 && rest.starts_with("%%") &&
         std::string_view("uUoOkK").find(rest[2]) != std::string_view::npos;
}

// Whether an inline code follows that changes how letters look or stand.
bool BeginsFormat(std::string_view rest) {
  return rest.size() > 1 && rest[0] == '\\' &&
         std::string_view("LlOoKkACcFfHQTWpS").find(rest[1]) != std::string_view::npos;
}

}  // namespace

DrawingText::DrawingText() : upperHalf_(Windows1252()) {}

DrawingText::DrawingText(const tesselink::CodePage* chosen) : everyPage_(true), upperHalf_(Windows1252()) {
  if (chosen != nullptr) Take(*chosen);
  chosen_ = chosen != nullptr;
}

void DrawingText::Take(const tesselink::CodePage& page) {
  if (page.IsUtf8()) return;
  page_ = &page;
  upperHalf_ = page.UpperHalf();
  pageNamed_ = true;
}

void DrawingText::Release(std::string_view release) {
  utf8Release_ = release.starts_with("AC") && Digits(release.substr(2), 4, 10).value_or(0) >= 1021;
}

bool DrawingText::CodePage(std::string_view name) {
  if (chosen_ || EqualsIgnoringCase(name, "ASCII") || EqualsIgnoringCase(name, "UTF-8") ||
      EqualsIgnoringCase(name, "ANSI_65001")) {
    return true;
  }
  if (everyPage_) {
    const tesselink::CodePage* page = tesselink::CodePage::Named(name);
    if (page != nullptr) Take(*page);
    return page != nullptr;
  }
  const std::u16string_view letters = UpperHalf(name);
  if (letters.empty()) return false;
  upperHalf_ = letters;
  pageNamed_ = true;
  return true;
}

void DrawingText::DecodePage(std::string_view bytes, std::string& text) const {
  text.clear();
  if (IsAscii(bytes) || ((utf8Release_ || !pageNamed_) && IsUtf8(bytes))) {
    text = bytes;
    return;
  }
  if (page_ == nullptr) {
    AppendDecoded(text, bytes, upperHalf_);
  } else if (page_->AppendDecoded(text, bytes) > 0) {
    otherBytes_ = true;
  }
}

void DrawingText::DecodeName(std::string_view bytes, std::string& text) const {
  DecodePage(bytes, decoded_);
  text.clear();
  for (std::string_view rest = decoded_; !rest.empty();) {
    if (!TakeUnicode(rest, text)) TakeLetter(rest, text);
  }
}

bool DrawingText::DecodeText(std::string_view bytes, std::string& text) const {
  DecodePage(bytes, decoded_);
  text.clear();
  bool formats = false;
  const auto isPlain = [](char c) { return c != '\\' && c != '%' && c != '^' && !BreaksLine(c); };
  for (std::string_view rest = decoded_; !rest.empty();) {
    const auto plain = static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), isPlain) - rest.begin());
    text += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (rest.empty()) break;
    formats = formats || BeginsLine(rest);
    if (!TakeUnicode(rest, text) && !TakePercentCode(rest, text, upperHalf_) && !TakeCaretCode(rest, text)) {
      TakeLetter(rest, text);
    }
  }
  return formats;
}

void DrawingText::DecodeValue(std::string_view bytes, std::string& text) const {
  DecodePage(bytes, decoded_);
  text.clear();
  for (std::string_view rest = decoded_; !rest.empty();) {
    const std::size_t plain = std::min(rest.find_first_of("\\^"), rest.size());
    text += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (!rest.empty() && !TakeUnicode(rest, text) && !TakeCaretCode(rest, text, true)) {
      text += rest[0];
      rest.remove_prefix(1);
    }
  }
}

bool DrawingText::DecodeMText(std::string_view bytes, std::string& text, char lineBreak, char columnBreak) const {
  DecodePage(bytes, decoded_);
  text.clear();
  bool formats = false;
  for (std::string_view rest = decoded_; !rest.empty();) {
    formats = formats || BeginsLine(rest) || BeginsFormat(rest);
    if (rest[0] == '{' || rest[0] == '}') {
      rest.remove_prefix(1);
    } else if (rest.starts_with("^J")) {
      text += lineBreak;
      rest.remove_prefix(2);
    } else if (!TakeUnicode(rest, text) && !(rest[0] == '\\' && TakeInlineCode(rest, text, lineBreak, columnBreak)) &&
               !TakePercentCode(rest, text, upperHalf_) && !TakeCaretCode(rest, text)) {
      TakeLetter(rest, text);
    }
  }
  return formats;
}

}  // namespace tesselink
