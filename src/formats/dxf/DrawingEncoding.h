// Texts and names for drawings that are written, the inverse of DrawingText.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

/// The letters that a drawing is written in, and those that its names may hold.
enum class DrawingLetters {
  Ansi,     ///< ANSI_1252; a letter that it lacks is written as "\U+XXXX"
  Unicode,  ///< UTF-8, as from AC1021 on
};

// Bytes that are valid UTF-8 are taken for it, others for ANSI_1252. Line breaks are the caller's to replace.

/// Replaces `bytes` by the text of a TEXT. What would be read as a code of its own ("%%d", "^J", "\U+0041") is written
/// so that it is read as it stands; control characters are written as such codes, as "^I".
void EncodeText(std::string_view text, DrawingLetters letters, std::string& bytes);

/// Replaces `bytes` by the name of a layer or a line type. A name ends after 240 letters; those that NameRule does not
/// list become "_". False when the name had to change.
bool EncodeName(std::string_view name, DrawingLetters letters, std::string& bytes);
/// What names may hold, for those who are told of one that had to change.
std::string_view NameRule(DrawingLetters letters);

}  // namespace tesselink
