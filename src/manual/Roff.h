// SPDX-License-Identifier: MIT
// A manual page as troff's macros for manual pages have it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

class ManualPage {
 public:
  /// The page "TITLE(SECTION)"; the date as in "2026-01-31".
  ManualPage(const std::string& title, int section, const std::string& date);

  void Section(std::string_view heading);
  void Subsection(std::string_view heading);
  /// Options and names of pages in the text are set bold: "--to", "tesselink-convert(1)".
  void Paragraph(std::string_view text);
  /// A term and what there is to say of it; the term comes from Bold, Italic and Plain.
  void Term(const std::string& term, std::string_view text);
  void Line(const std::string& roff) { text_ += roff + "\n"; }
  /// Lines as they stand.
  void Code(const std::vector<std::string>& lines);
  const std::string& Text() const { return text_; }

  static std::string Bold(std::string_view text);
  static std::string Italic(std::string_view text);
  /// Every letter as it stands, to be copied into a shell.
  static std::string Plain(std::string_view text);

 private:
  void Heading(const std::string& heading);

  std::string text_;
  bool afterHeading_ = false;
};

}  // namespace tesselink
