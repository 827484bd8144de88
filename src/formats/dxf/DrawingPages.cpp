// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingPages.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "core/io/Utf8.h"
#include "formats/dxf/DrawingEncoding.h"

namespace tesselink {
namespace {

// In the order in which they are taken; drawings name them by these numbers behind "ANSI_".
constexpr int kNumbers[] = {1252, 1250, 1251, 1253, 1254, 1255, 1256, 1257, 1258, 874, 932, 936, 949, 950};
constexpr std::uint16_t kEvery = (1 << std::size(kNumbers)) - 1, kAsked = 1 << 15;
constexpr std::size_t kLetters = 0x10000;

bool IsAsciiByte(char c) { return static_cast<unsigned char>(c) < 128; }

std::string_view TakeLetter(std::string_view& rest) {
  const std::string_view letter = rest.substr(0, Utf8Length(rest));
  rest.remove_prefix(letter.size());
  return letter;
}

}  // namespace

void DrawingPages::Note(std::string_view text, bool isName) {
  if (IsAscii(text)) return;
  PageSet holding = kEvery;
  while (!text.empty()) {
    const std::string_view letter = TakeLetter(text);
    if (IsAsciiByte(letter[0])) continue;
    const PageSet with = PagesWith(letter);
    needOther_ = needOther_ || ((with & 1) == 0 && (isName || with != 0));
    // One that no page holds says nothing about which to take.
    if (with != 0) holding &= with;
  }
  if (holding == kEvery) return;
  auto& lacking = isName ? lackingNames_ : lackingTexts_;
  for (std::size_t page = 0; page < kPages; ++page) lacking[page] += (holding >> page & 1) == 0 ? 1 : 0;
}

DrawingPages::PageSet DrawingPages::PagesWith(std::string_view letter) {
  const std::uint32_t number = Utf8Letter(letter);
  if (number >= kLetters) return 0;
  if (asked_.empty()) asked_.resize(kLetters);
  PageSet& pages = asked_[number];
  if (pages == 0) pages = static_cast<PageSet>(kAsked | Ask(letter));
  return pages & kEvery;
}

// Controls and letters of private use, which programs take for others, count as lacking; so does the euro of ANSI_936,
// whose byte 80 many take for the first of two.
DrawingPages::PageSet DrawingPages::Ask(std::string_view letter) {
  const std::uint32_t number = Utf8Letter(letter);
  if (number < 0xA0 || (number >= 0xE000 && number < 0xF900)) return 0;
  PageSet with = 0;
  for (std::size_t i = 0; i < kPages; ++i) {
    const CodePage* page = CodePage::Numbered(kNumbers[i]);
    const bool isRare = kNumbers[i] == 936 && number == 0x20AC;
    if (page != nullptr && !isRare && page->Holds(letter)) with = static_cast<PageSet>(with | 1 << i);
  }
  return with;
}

void DrawingPages::Choose() {
  chosen_ = 0;
  const auto lacking = [this](std::size_t page) { return std::tie(lackingNames_[page], lackingTexts_[page]); };
  for (std::size_t page = 1; page < kPages; ++page) {
    if (lacking(page) < lacking(chosen_)) chosen_ = page;
  }
}

std::string DrawingPages::Name() const { return "ANSI_" + std::to_string(kNumbers[chosen_]); }

bool DrawingPages::FitName(std::string& name) {
  std::string fitting;
  for (std::string_view rest = name; !rest.empty();) {
    const std::string_view letter = TakeLetter(rest);
    fitting += HoldsLetter(letter) ? letter : "_";
  }
  const bool fits = fitting == name;
  name = std::move(fitting);
  return fits;
}

void DrawingPages::AppendText(std::string& bytes, std::string_view text) {
  const CodePage& page = *CodePage::Numbered(kNumbers[chosen_]);
  while (!text.empty()) {
    const auto ascii = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsAsciiByte) - text.begin());
    bytes += text.substr(0, ascii);
    text.remove_prefix(ascii);
    std::string_view rest = text;
    while (!rest.empty() && !IsAsciiByte(rest[0]) && HoldsLetter(rest.substr(0, Utf8Length(rest)))) TakeLetter(rest);
    page.AppendEncoded(bytes, text.substr(0, text.size() - rest.size()));
    if (!rest.empty() && !IsAsciiByte(rest[0])) AppendUnicodeCode(bytes, Utf8Letter(TakeLetter(rest)));
    text = rest;
  }
}

bool DrawingPages::HoldsLetter(std::string_view letter) {
  return IsAsciiByte(letter[0]) || (PagesWith(letter) >> chosen_ & 1) != 0;
}

}  // namespace tesselink
