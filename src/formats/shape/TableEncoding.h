// The encoding of a dBase table's texts.
#pragma once

#include <string>
#include <string_view>

namespace tesselink {

/// Tells from a .cpg file or the header's language byte how texts become UTF-8. Without a word of either, and where a
/// code page is not known, a text that is valid UTF-8 is taken for that, any other for code page 1252.
class TableEncoding {
 public:
  TableEncoding();

  /// The words of a .cpg file, as in "UTF-8", "1252", "ANSI 1252" or "ISO-8859-1".
  void FromName(std::string_view name);
  /// Byte 29 of a table's header.
  void FromLanguageByte(unsigned char mark);
  /// What was named but is not known, as a person may be told of it; empty otherwise.
  const std::string& Unknown() const { return unknown_; }

  /// The upper half of the code page that is named; empty where none is.
  std::u16string_view NamedPage() const { return mayBeUtf8_ ? std::u16string_view() : upperHalf_; }

  /// The text as UTF-8: itself, or in `decoded`.
  std::string_view AsUtf8(std::string_view text, std::string& decoded) const;

 private:
  bool FromNumber(int codePage);

  std::u16string_view upperHalf_;
  bool mayBeUtf8_ = true;
  std::string unknown_;
};

}  // namespace tesselink
