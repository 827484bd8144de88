// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingEncoding.h"

#include <algorithm>
#include <cstdint>

#include "core/io/CodePages.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

bool IsDigit(std::uint32_t c) { return c >= '0' && c <= '9'; }
bool IsAsciiLetter(std::uint32_t c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Takes off the first letter.
std::uint32_t TakeLetter(std::string_view& rest, bool utf8) {
  const std::size_t length = utf8 ? Utf8Length(rest) : 1;
  const std::string_view sequence = rest.substr(0, length);
  rest.remove_prefix(length);
  return utf8 ? Utf8Letter(sequence) : LetterOf1252(sequence[0]);
}

void AppendUnicode(std::string& bytes, std::uint32_t unit) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  bytes += "\\U+";
  for (int shift = 12; shift >= 0; shift -= 4) bytes += kDigits[unit >> shift & 15];
}

// Two percent signs before a letter or a digit begin a code, and three are one sign.
bool TakePercents(std::string_view& rest, std::string& bytes) {
  const std::size_t count = std::min(rest.find_first_not_of('%'), rest.size());
  if (count < 2) return false;
  const unsigned char next = count < rest.size() ? static_cast<unsigned char>(rest[count]) : ' ';
  const bool isCode = count > 2 || IsDigit(next) || IsAsciiLetter(next);
  for (std::size_t i = 0; i < count; ++i) bytes += isCode ? "%%%" : "%";
  rest.remove_prefix(count);
  return true;
}

bool TakeSpecial(std::string_view& rest, std::string& bytes, bool percents) {
  if (rest[0] == '%') return percents && TakePercents(rest, bytes);
  const bool isUnicode = rest.size() > 2 && rest[0] == '\\' && rest[2] == '+' &&
                         std::string_view("UuMm").find(rest[1]) != std::string_view::npos;
  if (isUnicode) {
    AppendUnicode(bytes, '\\');
  } else if (rest[0] == '^') {
    bytes += "^ ";
  } else if (static_cast<unsigned char>(rest[0]) < ' ') {
    bytes += {'^', static_cast<char>(rest[0] + '@')};
  } else {
    return false;
  }
  rest.remove_prefix(1);
  return true;
}

// Letters that a name may hold at its ends; within it there may be blanks, too.
bool IsOfName(std::uint32_t letter, NameSigns signs) {
  if (signs == NameSigns::Most) {
    constexpr std::string_view kRefused = "<>/\\\":;?*|,=`";
    return letter > ' ' && !IsControl(letter) &&
           (letter >= 128 || kRefused.find(static_cast<char>(letter)) == std::string_view::npos);
  }
  return letter >= 128 || IsAsciiLetter(letter) || IsDigit(letter) || letter == '$' || letter == '-' || letter == '_';
}

void Encode(std::string_view text, std::string& bytes, bool percents) {
  bytes.clear();
  const bool utf8 = IsUtf8(text);
  const auto isPlain = [utf8](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= ' ' && (byte < 128 || utf8) && c != '%' && c != '^' && c != '\\';
  };
  for (std::string_view rest = text; !rest.empty();) {
    const auto plain = static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), isPlain) - rest.begin());
    bytes += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (!rest.empty() && !TakeSpecial(rest, bytes, percents)) AppendUtf8(bytes, TakeLetter(rest, utf8));
  }
}

}  // namespace

void AppendUnicodeCode(std::string& bytes, std::uint32_t letter) {
  if (letter <= 0xFFFF) return AppendUnicode(bytes, letter);
  AppendUnicode(bytes, 0xD800 + ((letter - 0x10000) >> 10));
  AppendUnicode(bytes, 0xDC00 + ((letter - 0x10000) & 0x3FF));
}

void EncodeText(std::string_view text, std::string& bytes) { Encode(text, bytes, true); }

void EncodeValue(std::string_view value, std::string& bytes) { Encode(value, bytes, false); }

bool EncodeName(std::string_view name, NameSigns signs, std::string& bytes) {
  constexpr int kLongest = 240;  // 255 would be read; the rest is room for what tells names apart
  bytes.clear();
  const bool utf8 = IsUtf8(name);
  bool kept = true;
  std::string_view rest = name;
  for (int length = 0; !rest.empty() && length < kLongest; ++length) {
    const bool first = rest.size() == name.size();
    const std::uint32_t letter = TakeLetter(rest, utf8);
    const bool allowed = IsOfName(letter, signs) || (letter == ' ' && !first && !rest.empty());
    AppendUtf8(bytes, allowed ? letter : '_');
    kept = kept && allowed;
  }
  return kept && rest.empty();
}

std::string_view NameRule(NameSigns signs) {
  return signs == NameSigns::Few
             ? "names hold up to 240 letters, digits, $, -, _ and blanks within, and differ in more than letter case"
             : "names hold up to 240 letters other than < > / \\ \" : ; ? * | , = ` and blanks at their ends, and "
               "differ "
               "in more than letter case";
}

}  // namespace tesselink
