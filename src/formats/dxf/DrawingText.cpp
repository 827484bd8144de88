#include "formats/dxf/DrawingText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "core/Text.h"
#include "formats/dxf/CodePages.h"

namespace tesselink {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

// The length of the valid UTF-8 sequence that the bytes begin with; 0 when there is none.
std::size_t Utf8Length(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  if (length == 0 || bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates, and what is beyond U+10FFFF.
  if ((lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F)) return 0;
  if ((lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) > 0x8F)) return 0;
  return length;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = Utf8Length(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

void AppendUtf8(std::string& text, std::uint32_t letter) {
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (letter < ' ') {
    text += ' ';
  } else if (letter < 0x80) {
    put(letter);
  } else if (letter < 0x800) {
    put(0xC0 | letter >> 6);
    put(0x80 | (letter & 0x3F));
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
      if (!code || *code > 255) return false;
      AppendUtf8(text, *code < 128 ? *code : upperHalf[*code - 128]);
      rest.remove_prefix(5);
      return true;
    }
  }
  rest.remove_prefix(3);
  return true;
}

// "^J" and its like: control characters, which become blanks; "^ " is the caret itself.
bool TakeCaretCode(std::string_view& rest, std::string& text) {
  if (rest.size() < 2 || rest[0] != '^') return false;
  const char c = rest[1];
  if (c != ' ' && !(c >= '@' && c <= '_')) return false;
  if (c == ' ') {
    text += '^';
  } else if (c != 'M') {
    text += ' ';
  }
  rest.remove_prefix(2);
  return true;
}

void TakeLetter(std::string_view& rest, std::string& text) {
  text += static_cast<unsigned char>(rest[0]) < ' ' ? ' ' : rest[0];
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
bool TakeInlineCode(std::string_view& rest, std::string& text) {
  if (rest.size() < 2) return false;
  std::size_t length = 2;
  switch (rest[1]) {
    case 'P':
    case 'N':
    case 'X':
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

}  // namespace

DrawingText::DrawingText() : upperHalf_(UpperHalf("ANSI_1252")) {}

void DrawingText::Release(std::string_view release) {
  utf8Release_ = release.starts_with("AC") && Digits(release.substr(2), 4, 10).value_or(0) >= 1021;
}

bool DrawingText::CodePage(std::string_view name) {
  if (EqualsIgnoringCase(name, "ASCII") || EqualsIgnoringCase(name, "UTF-8")) return true;
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
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 128) {
      text += c;
    } else {
      AppendUtf8(text, upperHalf_[byte - 128U]);
    }
  }
}

void DrawingText::DecodeName(std::string_view bytes, std::string& text) const {
  DecodePage(bytes, decoded_);
  text.clear();
  for (std::string_view rest = decoded_; !rest.empty();) {
    if (!TakeUnicode(rest, text)) TakeLetter(rest, text);
  }
}

void DrawingText::DecodeText(std::string_view bytes, std::string& text) const {
  DecodePage(bytes, decoded_);
  text.clear();
  for (std::string_view rest = decoded_; !rest.empty();) {
    if (!TakeUnicode(rest, text) && !TakePercentCode(rest, text, upperHalf_) && !TakeCaretCode(rest, text)) {
      TakeLetter(rest, text);
    }
  }
}

void DrawingText::DecodeMText(std::string_view bytes, std::string& text) const {
  DecodePage(bytes, decoded_);
  text.clear();
  for (std::string_view rest = decoded_; !rest.empty();) {
    if (rest[0] == '{' || rest[0] == '}') {
      rest.remove_prefix(1);
    } else if (!TakeUnicode(rest, text) && !(rest[0] == '\\' && TakeInlineCode(rest, text)) &&
               !TakePercentCode(rest, text, upperHalf_) && !TakeCaretCode(rest, text)) {
      TakeLetter(rest, text);
    }
  }
}

}  // namespace tesselink
