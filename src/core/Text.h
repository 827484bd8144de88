// Small text operations on single bytes, the same whatever the locale.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

/// ASCII letters in lower or upper case, whatever the locale.
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);
/// Whether two texts are equal but for the case of ASCII letters.
bool EqualsIgnoringCase(std::string_view a, std::string_view b);
/// The text without the blanks at its ends; other white space stays.
std::string_view Trimmed(std::string_view text);

}  // namespace tesselink
