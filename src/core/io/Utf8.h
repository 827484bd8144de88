// SPDX-License-Identifier: MIT
// UTF-8, letter by letter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tesselink {

/// Utf8Length of what does not begin with a valid sequence of one or two bytes.
std::size_t Utf8LengthOfMore(std::string_view bytes);
/// The length of the valid sequence that the bytes, one at least, begin with; 0 when there is none.
inline std::size_t Utf8Length(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  if (lead < 0x80) return 1;
  const bool isOfTwo = lead >= 0xC2 && lead < 0xE0 && bytes.size() > 1 && (bytes[1] & 0xC0) == 0x80;
  return isOfTwo ? 2 : Utf8LengthOfMore(bytes);
}
/// Whether every byte is ASCII, which is UTF-8 as well.
bool IsAscii(std::string_view bytes);
bool IsUtf8(std::string_view bytes);
/// The first letters of a valid text, so many at most.
std::string_view FirstLetters(std::string_view text, std::size_t count);
/// The text, or as many of its letters as take so many bytes.
std::string_view CutUtf8(std::string_view text, std::size_t most);
/// The letter of a valid sequence.
inline std::uint32_t Utf8Letter(std::string_view sequence) {
  constexpr unsigned char kLeadBits[] = {0x7F, 0x7F, 0x1F, 0x0F, 0x07};
  std::uint32_t letter = static_cast<unsigned char>(sequence[0]) & kLeadBits[sequence.size()];
  for (const char c : sequence.substr(1)) letter = letter << 6 | (static_cast<unsigned char>(c) & 0x3F);
  return letter;
}
/// U+FFFD, which stands for what is no letter.
inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
/// Appends a letter: a blank for a line break or a NUL, U+FFFD for a number that is no letter.
void AppendUtf8(std::string& text, std::uint32_t letter);
/// Whether a letter steers a terminal instead of being shown: those below the blank, DEL to U+009F, and the ones that
/// turn the direction of what follows them.
bool IsControl(std::uint32_t letter);
/// The text with the letters that differ in case alone made one, for comparisons; bytes that are no UTF-8 stay.
std::string FoldedCase(std::string_view text);
/// The text if it is valid UTF-8, else its bytes as the letters of Windows-1252: what a screen or a JSON text
/// can show.
std::string AsUtf8(const std::string& text);

}  // namespace tesselink
