// SPDX-License-Identifier: MIT
#include "formats/shape/TableEncoding.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "core/io/CodePages.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

struct Language {
  unsigned char mark;
  int codePage;
};

// The language drivers of dBase and FoxPro.
constexpr Language kLanguages[] = {
    {0x01, 437},  {0x02, 850},  {0x03, 1252}, {0x04, 10000}, {0x08, 865}, {0x09, 437},  {0x0A, 850},  {0x0B, 437},
    {0x0D, 437},  {0x0E, 850},  {0x0F, 437},  {0x10, 850},   {0x11, 437}, {0x12, 850},  {0x13, 932},  {0x14, 850},
    {0x15, 437},  {0x16, 850},  {0x17, 865},  {0x18, 437},   {0x19, 437}, {0x1A, 850},  {0x1B, 437},  {0x1C, 863},
    {0x1D, 850},  {0x1F, 852},  {0x22, 852},  {0x23, 852},   {0x24, 860}, {0x25, 850},  {0x26, 866},  {0x37, 850},
    {0x40, 852},  {0x4D, 936},  {0x4E, 949},  {0x4F, 950},   {0x50, 874}, {0x58, 1252}, {0x59, 1252}, {0x64, 852},
    {0x65, 866},  {0x66, 865},  {0x67, 861},  {0x6A, 737},   {0x6B, 857}, {0x6C, 863},  {0x78, 950},  {0x79, 949},
    {0x7A, 936},  {0x7B, 932},  {0x7C, 874},  {0x86, 737},   {0x87, 852}, {0x88, 857},  {0xC8, 1250}, {0xC9, 1251},
    {0xCA, 1254}, {0xCB, 1253}, {0xCC, 1257},
};
// "ANSI", whichever that was on the machine that wrote the table.
constexpr unsigned char kSystemsOwn = 0x57;

// Whether letters beyond ASCII stand there as UTF-8, whatever else does.
bool HoldsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = Utf8Length(text);
    if (length > 1) return true;
    text.remove_prefix(1);
  }
  return false;
}

}  // namespace

void TableEncoding::FromName(std::string_view name) {
  const std::string_view word = Trimmed(name.substr(0, name.find_first_of("\r\n")));
  constexpr std::string_view kLanguage = "LDID";
  if (word.empty()) return;
  if (EqualsIgnoringCase(word.substr(0, kLanguage.size()), kLanguage)) {
    const std::string_view digits = word.substr(std::min(word.find_first_of("0123456789"), word.size()));
    int mark = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), mark);
    FromLanguageByte(static_cast<unsigned char>(mark));
    return;
  }
  page_ = CodePage::Named(word);
  if (page_ == nullptr) unknown_ = "code page \"" + std::string(word) + "\"";
}

void TableEncoding::FromLanguageByte(unsigned char mark) {
  if (mark == 0 || mark == kSystemsOwn) return;
  const auto* found =
      std::find_if(std::begin(kLanguages), std::end(kLanguages), [&](const Language& l) { return l.mark == mark; });
  if (found == std::end(kLanguages)) {
    unknown_ = "language byte " + std::to_string(mark);
    return;
  }
  page_ = CodePage::Numbered(found->codePage);
  if (page_ == nullptr) unknown_ = "code page " + std::to_string(found->codePage);
}

std::string_view TableEncoding::AsUtf8(std::string_view text, std::string& decoded, std::size_t& none) const {
  const bool mayBeUtf8 = page_ == nullptr || page_->IsUtf8();
  if (IsAscii(text) || (mayBeUtf8 && IsUtf8(text))) return text;
  decoded.clear();
  if (!mayBeUtf8 || (page_ != nullptr && HoldsUtf8(text))) {
    none += page_->AppendDecoded(decoded, text);
  } else {
    AppendDecoded(decoded, text, Windows1252());
  }
  return decoded;
}

}  // namespace tesselink
