// SPDX-License-Identifier: MIT
#include "core/io/CodePage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <iterator>
#include <map>

#include "core/io/CodePages.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"

namespace tesselink {
namespace {

constexpr int kMacRoman = 10000;
constexpr int kIso8859 = 28590;

struct Name {
  std::string_view name;
  int number;
};

// Names that are not a number behind letters, without what stands between their parts.
constexpr Name kNames[] = {
    {"UTF8", CodePage::kUtf8},
    {"ASCII", CodePage::kUtf8},
    {"USASCII", CodePage::kUtf8},
    {"SHIFTJIS", 932},
    {"SJIS", 932},
    {"WINDOWS31J", 932},
    {"GBK", 936},
    {"GB2312", 936},
    {"EUCCN", 936},
    {"EUCKR", 949},
    {"UHC", 949},
    {"KSC5601", 949},
    {"KSC56011987", 949},
    {"BIG5", 950},
    {"BIG5HKSCS", 951},
    {"JOHAB", 1361},
    {"MACROMAN", kMacRoman},
    {"MACINTOSH", kMacRoman},
    {"KOI8R", 20866},
    {"KOI8U", 21866},
    {"EUCJP", 51932},
    {"GB18030", 54936},
    {"TIS620", 874},
    {"LATIN1", kIso8859 + 1},
    {"LATIN2", kIso8859 + 2},
};
// What iconv calls pages otherwise than "CP" and the number.
constexpr Name kOwnNames[] = {
    {"BIG5-HKSCS", 951}, {"KOI8-R", 20866}, {"KOI8-U", 21866}, {"EUC-JP", 51932}, {"GB18030", 54936}};

// A name without what people put between its letters, as in "ISO88591".
std::string Condensed(std::string_view name) {
  std::string letters;
  std::copy_if(name.begin(), name.end(), std::back_inserter(letters),
               [](char c) { return static_cast<unsigned char>(c) > ' ' && c != '-' && c != '_' && c < 127; });
  return UpperCase(letters);
}

// 0 for a name that tells none.
int NumberOf(std::string_view name) {
  const std::string condensed = Condensed(name);
  const auto* known =
      std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& n) { return n.name == condensed; });
  if (known != std::end(kNames)) return known->number;
  constexpr std::string_view kIso = "8859";
  std::string_view digits = condensed;
  digits.remove_prefix(std::min(digits.find_first_of("0123456789"), digits.size()));
  const bool iso = digits.size() > kIso.size() && digits.starts_with(kIso);
  if (iso) digits.remove_prefix(kIso.size());
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (digits.empty() || error != std::errc() || end != digits.data() + digits.size()) return 0;
  return iso ? (number < 17 ? kIso8859 + number : 0) : number;
}

std::u16string_view TableOf(int number) {
  const bool isAnsi = (number >= 1250 && number <= 1258) || number == 874;
  const bool isIso = number > kIso8859 && number < kIso8859 + 10;
  return UpperHalf(number == kMacRoman ? "MAC-ROMAN"
                   : isIso             ? "ISO8859-" + std::to_string(number - kIso8859)
                                       : (isAnsi ? "ANSI_" : "DOS") + std::to_string(number));
}

// What iconv has for no converter.
void* NoConverter() { return reinterpret_cast<void*>(-1); }  // NOLINT: it is how iconv says so

std::string NameForIconv(int number) {
  const auto* own =
      std::find_if(std::begin(kOwnNames), std::end(kOwnNames), [&](const Name& n) { return n.number == number; });
  if (own != std::end(kOwnNames)) return std::string(own->name);
  const bool isIso = number > kIso8859 && number < kIso8859 + 17;
  return isIso ? "ISO-8859-" + std::to_string(number - kIso8859) : "CP" + std::to_string(number);
}

}  // namespace

CodePage::~CodePage() {
  for (void* converter : {converter_, encoder_}) {
    if (converter != nullptr) iconv_close(converter);
  }
}

// Whether it is known, and begins with ASCII, on which all that reads texts rests.
bool CodePage::Open() {
  if (IsUtf8()) return true;
  upperHalf_ = TableOf(number_);
  if (!upperHalf_.empty()) return true;
  void* opened = iconv_open("UTF-8", NameForIconv(number_).c_str());
  if (opened == NoConverter()) return false;
  converter_ = opened;
  std::string ascii, decoded;
  for (char c = ' '; c < 127; ++c) ascii += c;
  AppendConverted(decoded, ascii);
  return decoded == ascii;
}

const CodePage* CodePage::Numbered(int number) {
  static std::map<int, std::unique_ptr<CodePage>> known;
  if (number <= 0) return nullptr;
  if (const auto found = known.find(number); found != known.end()) return found->second.get();
  std::unique_ptr<CodePage> page(new CodePage(number));
  return page->Open() ? (known[number] = std::move(page)).get() : nullptr;
}

const CodePage* CodePage::Named(std::string_view name) { return Numbered(NumberOf(name)); }

std::size_t CodePage::AppendDecoded(std::string& text, std::string_view bytes) const {
  if (IsUtf8()) return AppendRepaired(text, bytes);
  if (upperHalf_.empty()) return AppendConverted(text, bytes);
  const auto hasNone = [this](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 128 && upperHalf_[byte - 128U] == 0xFFFD;
  };
  tesselink::AppendDecoded(text, bytes, upperHalf_);
  return static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), hasNone));
}

// A lead byte whose second byte does not go with it stands for none alone; one at the end, which a field's width cut
// off, as well.
std::size_t CodePage::AppendConverted(std::string& text, std::string_view bytes) const {
  iconv(converter_, nullptr, nullptr, nullptr, nullptr);
  std::array<char, 512> converted;
  char* from = const_cast<char*>(bytes.data());
  std::size_t left = bytes.size(), none = 0;
  while (left > 0) {
    char* to = converted.data();
    std::size_t room = converted.size();
    const std::size_t result = iconv(converter_, &from, &left, &to, &room);
    text.append(converted.data(), to);
    if (result != static_cast<std::size_t>(-1)) continue;
    if (errno == E2BIG) continue;
    const bool cutOff = errno == EINVAL;
    text += kReplacement;
    ++none;
    from += cutOff ? left : 1;
    left -= cutOff ? left : 1;
  }
  return none;
}

bool CodePage::AppendEncoded(std::string& bytes, std::string_view text) const {
  if (IsUtf8()) {
    bytes += text;
    return true;
  }
  if (upperHalf_.empty()) return AppendConvertedBack(bytes, text);
  const std::size_t before = bytes.size();
  const bool held = tesselink::AppendEncoded(bytes, text, upperHalf_) == 0;
  if (!held) bytes.resize(before);
  return held;
}

bool CodePage::AppendConvertedBack(std::string& bytes, std::string_view text) const {
  if (encoder_ == nullptr) {
    void* opened = iconv_open(NameForIconv(number_).c_str(), "UTF-8");
    if (opened == NoConverter()) return false;
    encoder_ = opened;
  }
  iconv(encoder_, nullptr, nullptr, nullptr, nullptr);
  const std::size_t before = bytes.size();
  std::size_t left = text.size(), room = 2 * left;  // no letter takes more
  bytes.resize(before + room);
  char* from = const_cast<char*>(text.data());
  char* to = bytes.data() + before;
  // More than none are letters that became others that resemble them.
  const bool held = iconv(encoder_, &from, &left, &to, &room) == 0;
  bytes.resize(held ? bytes.size() - room : before);
  return held;
}

bool CodePage::Holds(std::string_view letter) const {
  std::string bytes, back;
  return AppendEncoded(bytes, letter) && AppendDecoded(back, bytes) == 0 && back == letter;
}

std::size_t AppendRepaired(std::string& text, std::string_view bytes) {
  std::size_t none = 0;
  for (bool wasValid = true; !bytes.empty();) {
    const std::size_t length = Utf8Length(bytes);
    if (length > 0) {
      text += bytes.substr(0, length);
    } else if (wasValid) {
      text += kReplacement;
      ++none;
    }
    wasValid = length > 0;
    bytes.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return none;
}

}  // namespace tesselink
