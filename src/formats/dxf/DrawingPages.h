// SPDX-License-Identifier: MIT
// The code pages of drawings before AC1021.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/io/CodePage.h"

namespace tesselink {

/// Finds the one code page that holds the letters of a drawing, ANSI_1252 where it does, and writes texts in it. All
/// that it is handed is UTF-8.
class DrawingPages {
 public:
  void NoteName(std::string_view name) { Note(name, true); }
  void NoteText(std::string_view text) { Note(text, false); }
  /// Chooses the page that holds most names, and of these the one that holds most texts.
  void Choose();

  /// Whether there was something that is not in ANSI_1252 as it will be in the drawing.
  bool NeedOther() const { return needOther_; }
  /// The chosen page, ANSI_1252 before there was a choice; as in "ANSI_1252".
  std::string Name() const;
  /// Whether the page holds all letters of a name; each that it lacks becomes "_".
  bool FitName(std::string& name);
  /// Appends a text in the page; a letter that it lacks is written as "\U+XXXX".
  void AppendText(std::string& bytes, std::string_view text);

 private:
  static constexpr std::size_t kPages = 14;
  using PageSet = std::uint16_t;  // a bit for each

  void Note(std::string_view text, bool isName);
  PageSet PagesWith(std::string_view letter);
  static PageSet Ask(std::string_view letter);
  bool HoldsLetter(std::string_view letter);

  std::array<std::int64_t, kPages> lackingNames_{}, lackingTexts_{};
  std::vector<PageSet> asked_;  // by letter, with a bit of its own once it has been; empty until the first one comes
  std::size_t chosen_ = 0;
  bool needOther_ = false;
};

}  // namespace tesselink
