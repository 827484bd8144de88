// The code pages of one byte a letter, which drawings and tables name.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

/// The 128 letters of bytes 128 to 255, U+FFFD where there is none; empty for a code page that is not known. Names are
/// as drawings have them, as in "ANSI_1252" or "dos850".
std::u16string_view UpperHalf(std::string_view codePage);

/// Appends bytes of the code page with that upper half.
void AppendDecoded(std::string& text, std::string_view bytes, std::u16string_view upperHalf);

}  // namespace tesselink
