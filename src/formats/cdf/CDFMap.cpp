// SPDX-License-Identifier: MIT
#include "formats/cdf/CDFMap.h"

#include "core/io/CodePages.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr std::size_t kCodeLength = 7;

// Whether a character is in a bracketed list such as "A-CX" or "!0-9".
bool InList(char c, std::string_view list) {
  const bool excluded = list.starts_with('!');
  if (excluded) list.remove_prefix(1);
  bool found = false;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const bool range = i + 2 < list.size() && list[i + 1] == '-';
    const char last = range ? list[i + 2] : list[i];
    found = found || (c >= list[i] && c <= last);
    if (range) i += 2;
  }
  return found != excluded;
}

// Takes one element off a pattern and says whether the character fits it.
bool FitsOne(char c, std::string_view& pattern) {
  const char first = pattern.front();
  const std::size_t close = first == '[' ? pattern.find(']') : std::string_view::npos;
  if (close != std::string_view::npos) {
    const bool fits = InList(c, pattern.substr(1, close - 1));
    pattern.remove_prefix(close + 1);
    return fits;
  }
  pattern.remove_prefix(1);
  return first == '?' || (first == '#' ? c >= '0' && c <= '9' : first == c);
}

}  // namespace

// Where a character does not fit, the last "*" takes one character more; no pattern costs more than text times pattern.
bool FitsPattern(std::string_view text, std::string_view pattern) {
  std::string_view behindStar, textAtStar;
  bool hasStar = false;
  for (;;) {
    if (pattern.starts_with('*')) {
      pattern.remove_prefix(1);
      behindStar = pattern;
      textAtStar = text;
      hasStar = true;
      continue;
    }
    if (text.empty() && pattern.empty()) return true;
    if (!text.empty() && !pattern.empty() && FitsOne(text.front(), pattern)) {
      text.remove_prefix(1);
      continue;
    }
    if (!hasStar || textAtStar.empty()) return false;
    textAtStar.remove_prefix(1);
    text = textAtStar;
    pattern = behindStar;
  }
}

CDFMap::CDFMap(const FilterContext& context) : CDFMap(context, RegisteredClassValue) {}

CDFMap::CDFMap(const FilterContext& context, std::function<std::string(const std::string&)> registry)
    : file_(context, {"$CDF.MAP", "CDFMAP", 67, context.options.own.Text("cdf-map"), std::move(registry)}) {}

std::string CDFMap::Code(int number) {
  const std::string_view record = file_.Record(number);
  std::string code(record.substr(2, 3));
  code += record.substr(12, 4);
  return std::string(CutAtNul(code));
}

std::string CDFMap::Description(int number) { return std::string(CutAtNul(file_.Record(number).substr(24))); }

std::string CDFMap::DescriptionUtf8(int number) {
  std::string text;
  AppendDecoded1252(text, Description(number));
  return text;
}

template <typename Fits>
std::int16_t CDFMap::FirstThat(Fits fits) {
  const std::int16_t count = Count();
  for (int number = 1; number <= count; ++number) {
    if (fits(number)) return static_cast<std::int16_t>(number);
  }
  return 0;
}

std::int16_t CDFMap::FindCode(std::string_view code) {
  return FirstThat([&](int number) { return Code(number) == code; });
}

std::int16_t CDFMap::SearchDesc(const std::string& description) {
  if (descriptionFound_ != 0 && description == lastDescription_) return descriptionFound_;
  const std::int16_t found = FirstThat([&](int number) { return Description(number) == description; });
  if (found == 0) return 0;
  lastDescription_ = description;
  return descriptionFound_ = found;
}

std::int16_t CDFMap::SearchCode(std::string& pattern) {
  if (patternFound_ != 0 && pattern == lastPattern_) return patternFound_;
  if (const std::string_view trimmed = Trimmed(pattern); trimmed.size() < kCodeLength) {
    pattern = std::string(trimmed) + "*";
  }
  const std::int16_t found = FirstThat([&](int number) { return FitsPattern(Code(number), pattern); });
  if (found == 0) return 0;
  lastPattern_ = pattern;
  return patternFound_ = found;
}

}  // namespace tesselink
