// SPDX-License-Identifier: MIT
// The texts of a drawing as UTF-8: its code page, and the codes for letters and typography within texts.
#pragma once

#include <string>
#include <string_view>

#include "core/io/CodePage.h"

namespace tesselink {

/// Decodes the texts of one drawing. From release AC1021 on drawings are UTF-8; before, $DWGCODEPAGE names the code
/// page. A drawing that names none is taken for UTF-8 as far as its texts are valid UTF-8, else for ANSI_1252.
class DrawingText {
 public:
  /// The system's own convention: the pages of one byte a letter, by the names that drawings have for them.
  DrawingText();
  /// Every page, by any name; one that a person chose, where it is not null, whatever the drawing names.
  explicit DrawingText(const tesselink::CodePage* chosen);

  /// $ACADVER, as in "AC1015".
  void Release(std::string_view release);
  /// $DWGCODEPAGE. False for a code page that is not known: its texts are then read as if it were not named.
  bool CodePage(std::string_view name);

  /// The upper half of the code page that the drawing names and is in; empty where it is none, or has none.
  std::u16string_view NamedPage() const { return pageNamed_ && !utf8Release_ ? upperHalf_ : std::u16string_view(); }

  /// Whether bytes were no letters of the code page, so that U+FFFD stands for them.
  bool HadOtherBytes() const { return otherBytes_; }

  /// Each function replaces `text` by the decoded bytes; those of texts say whether formats are left out of it.
  /// A name: the code page, and "\U+XXXX" for any letter.
  void DecodeName(std::string_view bytes, std::string& text) const;
  /// The text of a TEXT or ATTRIB: also "%%d" and its like, and "^I" and its like for control characters.
  bool DecodeText(std::string_view bytes, std::string& text) const;
  /// A value of extended data: also "^I" and its like.
  void DecodeValue(std::string_view bytes, std::string& text) const;
  /// The text of an MTEXT: also its inline codes; between two lines and two columns stands what is given.
  bool DecodeMText(std::string_view bytes, std::string& text, char lineBreak, char columnBreak) const;

 private:
  void Take(const tesselink::CodePage& page);
  void DecodePage(std::string_view bytes, std::string& text) const;

  bool everyPage_ = false, chosen_ = false;
  bool utf8Release_ = false;
  bool pageNamed_ = false;
  std::u16string_view upperHalf_;              // empty for a page that has none
  const tesselink::CodePage* page_ = nullptr;  // where every one is known
  mutable bool otherBytes_ = false;
  mutable std::string decoded_;
};

}  // namespace tesselink
