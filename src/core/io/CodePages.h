// SPDX-License-Identifier: MIT
// The code pages of one byte a letter, which drawings and tables name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tesselink {

/// The 128 letters of bytes 128 to 255, U+FFFD where there is none; empty for a code page that is not known. Names are
/// as drawings have them, as in "ANSI_1252" or "dos850".
std::u16string_view UpperHalf(std::string_view codePage);

/// Appends bytes of the code page with that upper half.
void AppendDecoded(std::string& text, std::string_view bytes, std::u16string_view upperHalf);

/// The byte of a letter in the code page with that upper half; nothing for a letter that it lacks.
std::optional<char> ByteOf(std::uint32_t letter, std::u16string_view upperHalf);

/// Appends UTF-8 text as bytes of the code page with that upper half, "?" for each letter that it lacks. Returns how
/// many those were. Bytes that are no UTF-8 pass as they are.
std::size_t AppendEncoded(std::string& bytes, std::string_view text, std::u16string_view upperHalf);

/// Windows-1252, which bytes are taken for that nothing says more about.
std::u16string_view Windows1252();
/// Its letter for a byte; a byte without one is the letter of its own number, so that nothing is lost.
std::uint32_t LetterOf1252(char byte);
void AppendDecoded1252(std::string& text, std::string_view bytes);

}  // namespace tesselink
