// SPDX-License-Identifier: MIT
#include "core/run/SingleByteText.h"

#include <algorithm>

#include "core/io/CodePages.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Report.h"

namespace tesselink {

void SingleByteText::Start(const std::string& path) {
  path_ = path;
  encoding_ = {};
}

std::u16string_view SingleByteText::Page() const {
  return encoding_.codePage.empty() ? Windows1252() : encoding_.codePage;
}

std::string_view SingleByteText::Of(const std::string& text) {
  const std::string& clean = WithoutLineBreaks(text, cleaned_);
  if (&clean != &text) {
    report_.Warn(WarningKind::ControlCharacters, path_ + ": control characters in " + subjects_ + " became blanks");
  }
  return encoding_.isUtf8 ? Encoded(clean) : std::string_view(clean);
}

std::string_view SingleByteText::OfName(std::string_view name, std::size_t letters) {
  const bool isUtf8 = IsUtf8(name);
  cleaned_ = isUtf8 ? FirstLetters(name, letters) : name.substr(0, letters);
  std::replace_if(cleaned_.begin(), cleaned_.end(), BreaksLine, ' ');
  return isUtf8 ? Encoded(cleaned_) : std::string_view(cleaned_);
}

std::string_view SingleByteText::Encoded(std::string_view text) {
  if (IsAscii(text)) return text;
  encoded_.clear();
  if (AppendEncoded(encoded_, text, Page()) > 0) {
    constexpr std::size_t kShown = 60;
    report_.Warn(WarningKind::Letters, path_ + ": \"" + std::string(CutUtf8(text, kShown)) +
                                           "\" has letters that the file's code page lacks; each became \"?\"");
  }
  return encoded_;
}

std::string SingleByteText::Shown(std::string_view bytes) const {
  if (!encoding_.isUtf8) return std::string(bytes);
  std::string text;
  AppendDecoded(text, bytes, Page());
  return text;
}

}  // namespace tesselink
