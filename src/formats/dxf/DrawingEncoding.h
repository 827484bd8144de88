// Texts and names for drawings of the code page ANSI_1252, the inverse of DrawingText.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

// Bytes that are valid UTF-8 are taken for it, others for ANSI_1252. A letter that the code page lacks is written as
// "\U+XXXX". Line breaks are the caller's to replace.

/// Replaces `bytes` by the text of a TEXT. What would be read as a code of its own ("%%d", "^J", "\U+0041") is written
/// so that it is read as it stands; control characters are written as such codes, as "^I".
void EncodeText(std::string_view text, std::string& bytes);

/// Replaces `bytes` by the name of a layer or a line type. ASCII letters and digits, "$", "-", "_", blanks within, and
/// all letters beyond ASCII stay; anything else becomes "_", and a name ends after 240 letters. False when the name had
/// to change.
bool EncodeName(std::string_view name, std::string& bytes);

}  // namespace tesselink
