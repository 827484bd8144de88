// SPDX-License-Identifier: MIT
#include "app/ShellText.h"

#include <string_view>

#include "core/io/Utf8.h"

namespace tesselink {

std::string ShellQuoted(const std::string& text) {
  constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=./,:@%";
  if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos) return text;
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string ShellQuotedAsUtf8(const std::string& text) {
  if (IsUtf8(text)) return ShellQuoted(text);
  std::string octal;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    octal += '\\';
    for (const int shift : {6, 3, 0}) octal += static_cast<char>('0' + (byte >> shift & 7));
  }
  return "\"$(printf '" + octal + "')\"";
}

}  // namespace tesselink
