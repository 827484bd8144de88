// SPDX-License-Identifier: MIT
// Texts for the lines of a file that has one byte a letter.
#pragma once

#include <string>
#include <string_view>

#include "core/run/Filters.h"

namespace tesselink {

class Report;

/// Serves the writers of such formats: what would break a line becomes a blank, and texts that are known to be UTF-8
/// are put into the code page that their input names, or into Windows-1252, where a letter that it lacks becomes "?".
/// Both are warnings. Texts of any other input pass byte by byte.
class SingleByteText {
 public:
  /// `subjects` is what the output takes from elements, as in "a text".
  SingleByteText(Report& report, const char* subjects) : report_(report), subjects_(subjects) {}

  /// The output that warnings name, until the next one. Texts pass byte by byte until a source is told.
  void Start(const std::string& path);
  /// What the texts from here on are.
  void SourceOpened(const InputFilter& source) { encoding_ = source.Encoding(); }

  /// A text of an element as the line holds it; valid until the next call.
  std::string_view Of(const std::string& text);
  /// The first letters of a name of the system, as of a file; valid until the next call.
  std::string_view OfName(std::string_view name, std::size_t letters = std::string_view::npos);
  /// What a person can be shown of bytes that came of Of.
  std::string Shown(std::string_view bytes) const;

 private:
  std::u16string_view Page() const;
  std::string_view Encoded(std::string_view text);

  Report& report_;
  const char* subjects_;
  std::string path_;
  TextEncoding encoding_;
  std::string cleaned_, encoded_;
};

}  // namespace tesselink
