// SPDX-License-Identifier: MIT
#include "formats/cdf/LayerMatching.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "core/io/CodePages.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Interaction.h"
#include "core/run/Settings.h"

namespace tesselink {
namespace {

constexpr const char* kSection = "XRef";
constexpr std::size_t kWholeName = 9999;
constexpr double kFeetPerMetre = 3.2808;
// The set is complete as it stands: METERS with ABOVE is not among them.
constexpr std::array<std::string_view, 4> kElevations{"METRES ABOVE MEAN SEA LEVEL", "METERS BELOW MEAN SEA LEVEL",
                                                      "METRES BELOW MEAN SEA LEVEL", "METERS BELOW SEA LEVEL"};

std::optional<double> NumberIn(std::string_view text) {
  try {
    return StrictNumber(text);
  } catch (const Error&) {
    return std::nullopt;
  }
}

std::vector<std::string> SplitAtBlanks(const std::string& text) {
  std::vector<std::string> words;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    if (end > begin) words.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return words;
}

// A small letter of Windows-1252 in capitals; the capital of a small y with two dots stands apart.
char Capital(char byte) {
  const auto number = static_cast<unsigned char>(byte);
  if (number == 0xFF) return static_cast<char>(0x9F);
  if (number == 0x9A || number == 0x9C || number == 0x9E) return static_cast<char>(number - 0x10);
  return number >= 0xE0 && number != 0xF7 ? static_cast<char>(number - 0x20) : byte;
}

// How names are compared: as the list of types holds them, a byte a letter, in capitals. A letter that no type can have
// is a NUL, which none has.
std::string Folded(const std::string& utf8) {
  std::string letters = UpperCase(utf8);
  if (IsAscii(letters)) return letters;
  std::string folded;
  for (std::string_view rest = letters; !rest.empty();) {
    const std::size_t length = Utf8Length(rest);
    folded += Capital(ByteOf(Utf8Letter(rest.substr(0, length)), Windows1252()).value_or('\0'));
    rest.remove_prefix(length);
  }
  return folded;
}

std::size_t CommonLength(const std::string& a, const std::string& b) {
  const std::size_t length = std::min(a.size(), b.size());
  return static_cast<std::size_t>(
      std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(length), b.begin()).first - a.begin());
}

}  // namespace

std::string NameToMatch(const std::string& layer) {
  const std::string upper = UpperCase(layer);
  const bool elevation = std::any_of(kElevations.begin(), kElevations.end(),
                                     [&](std::string_view phrase) { return upper.find(phrase) != std::string::npos; });
  if (!elevation) return layer;
  const std::optional<double> metres = NumberIn(layer.substr(0, layer.find(' ')));
  if (!metres || !std::isfinite(*metres * kFeetPerMetre)) return layer;
  // By way of the text, which drops what the product has beyond 15 digits.
  const double feet = StrictNumber(NumberText(*metres * kFeetPerMetre));
  return "Contour " + NumberText(RoundHalfEven(feet / 100) * 100) + " Ft.";
}

void LayerMatching::Create(const std::vector<std::string>& layers, const std::string& heading,
                           const std::string& crossReference, bool countEmpty, std::size_t rowLimit) {
  map_.Create();
  if (!heading.empty()) heading_ = heading;
  crossReference_ = crossReference;
  types_.clear();
  for (int number = 1; number <= map_.Count(); ++number) types_.push_back(map_.DescriptionUtf8(number));
  rows_.clear();
  if (layers.size() > rowLimit) {
    // The two numbers differ by convention.
    context_.interaction.ShowMessage({Topic::Notice,
                                      "More than " + std::to_string(rowLimit) +
                                          " layers were found in the source file, only the first 150 "
                                          "will be assigned entity types",
                                      "Layer Name Matching"});
  }
  for (std::size_t i = 0; i < std::min(layers.size(), rowLimit); ++i) {
    const std::string name = NameToMatch(AsUtf8(layers[i])), folded = Folded(name);
    rows_.push_back({layers[i], {}, folded, SplitAtBlanks(folded), NumberIn(name).has_value()});
  }
  if (!crossReference_.empty()) Recall();
  if (!countEmpty) return;
  unReffed_ = static_cast<std::int16_t>(
      std::count_if(rows_.begin(), rows_.end(), [](const Row& row) { return row.type.empty(); }));
}

void LayerMatching::Recall() {
  const auto remembered = context_.settings.All(crossReference_, kSection);
  for (Row& row : rows_) {
    const auto pair = remembered.find(row.layer);
    if (pair == remembered.end() || pair->second.empty()) continue;
    if (const std::int16_t number = map_.FindCode(pair->second); number != 0) row.type = map_.DescriptionUtf8(number);
  }
}

void LayerMatching::AssignTypes() {
  for (std::size_t i = 0; i < rows_.size() && i < types_.size(); ++i) {
    if (rows_[i].type.empty()) rows_[i].type = types_[i];
  }
}

void LayerMatching::SmartAssign() {
  // One round more than there are types: the last one sees an empty entry.
  for (std::size_t i = 0; i <= types_.size(); ++i) {
    const std::string description = i < types_.size() ? types_[i] : std::string();
    const std::string upper = Folded(description);
    for (Row& row : rows_) {
      if (!row.numeric && upper.find(row.shortened) != std::string::npos) {
        row.type = description;
        row.strength = kWholeName;
      }
      for (const std::string& word : row.words) {
        const std::size_t length = CommonLength(word, upper);
        if (length <= row.strength) continue;
        row.type = description;
        row.strength = length;
      }
    }
  }
}

std::string LayerMatching::CodeOf(const std::string& description) {
  if (description.empty()) return {};
  const auto type = std::find(types_.begin(), types_.end(), description);
  return type == types_.end() ? std::string() : map_.Code(static_cast<int>(type - types_.begin()) + 1);
}

std::vector<std::string> LayerMatching::Codes() {
  std::vector<std::string> codes;
  for (const Row& row : rows_) codes.push_back(CodeOf(row.type));
  return codes;
}

std::vector<std::string> LayerMatching::HandBack() {
  std::vector<std::string> codes = Codes();
  if (crossReference_.empty()) return codes;
  std::vector<std::pair<std::string, std::string>> pairs;
  for (std::size_t i = 0; i < rows_.size(); ++i) pairs.emplace_back(rows_[i].layer, codes[i]);
  context_.settings.SetAll(crossReference_, kSection, pairs);
  return codes;
}

}  // namespace tesselink
