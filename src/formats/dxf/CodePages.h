// The code pages of one byte a letter that drawings name in $DWGCODEPAGE.
#pragma once

#include <string_view>

namespace tesselink {

/// The 128 letters of bytes 128 to 255, U+FFFD where there is none; empty for a code page that is not known. Names are
/// as drawings have them, as in "ANSI_1252" or "dos850".
std::u16string_view UpperHalf(std::string_view codePage);

}  // namespace tesselink
