// SPDX-License-Identifier: MIT
// Names and values as the per-user settings files have them: any bytes, in the letters that an ini file leaves alone.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

/// A section's or a key's name, and a value, as they are written: percent-encoded, and the names' percent signs again.
std::string IniName(std::string_view bytes);
std::string IniValue(std::string_view bytes);
/// The bytes that a written name or value stands for. What others write is understood too: letters as %XX and %UXXXX in
/// names, quotation marks and backslash codes in values.
std::string OfIniName(std::string_view written);
std::string OfIniValue(std::string_view written);

}  // namespace tesselink
