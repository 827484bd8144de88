// SPDX-License-Identifier: MIT
// The encoding of a dBase table's texts.
#pragma once

#include <string>
#include <string_view>

#include "core/io/CodePage.h"

namespace tesselink {

/// Tells from a .cpg file or the header's language byte how texts become UTF-8. Without a word of either, and where a
/// code page is not known, a text that is valid UTF-8 is taken for that, any other for code page 1252.
class TableEncoding {
 public:
  /// The words of a .cpg file, as in "UTF-8", "1252", "ANSI 1252", "GBK" or "LDID/87".
  void FromName(std::string_view name);
  /// Byte 29 of a table's header.
  void FromLanguageByte(unsigned char mark);
  /// What a person said.
  void FromPage(const CodePage& page) { page_ = &page; }
  /// What was named but is not known, as a person may be told of it; empty otherwise.
  const std::string& Unknown() const { return unknown_; }

  /// The upper half of the code page that is named; empty where none is, or one of another kind.
  std::u16string_view NamedPage() const { return page_ != nullptr ? page_->UpperHalf() : std::u16string_view(); }

  /// The text as UTF-8: itself, or in `decoded`. `none` counts what is no letter of the page, for which U+FFFD stands.
  std::string_view AsUtf8(std::string_view text, std::string& decoded, std::size_t& none) const;

 private:
  const CodePage* page_ = nullptr;  // null where nothing that is known was named
  std::string unknown_;
};

}  // namespace tesselink
