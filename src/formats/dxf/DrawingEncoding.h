// SPDX-License-Identifier: MIT
// Texts and names for drawings that are written, the inverse of DrawingText.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tesselink {

/// The signs that names may hold.
enum class NameSigns {
  Few,   ///< as up to AC1009: letters, digits and few more
  Most,  ///< as from AC1015 on: all but those that have a meaning in commands
};

// What comes of these functions is UTF-8. Bytes that are valid UTF-8 are taken for it, others for ANSI_1252. Line
// breaks are the caller's to replace.

/// Replaces `encoded` by the text of a TEXT. What would be read as a code of its own ("%%d", "^J", "\U+0041") is
/// written so that it is read as it stands; control characters are written as such codes, as "^I".
void EncodeText(std::string_view text, std::string& encoded);

/// Replaces `encoded` by a value of extended data, where percent signs begin no codes.
void EncodeValue(std::string_view value, std::string& encoded);

/// Replaces `encoded` by the name of a layer or a line type. A name ends after 240 letters; those that NameRule does
/// not list become "_". False when the name had to change.
bool EncodeName(std::string_view name, NameSigns signs, std::string& encoded);
/// What names may hold, for those who are told of one that had to change.
std::string_view NameRule(NameSigns signs);

/// Appends a letter as "\U+XXXX", as two of them beyond U+FFFF.
void AppendUnicodeCode(std::string& bytes, std::uint32_t letter);

}  // namespace tesselink
