// SPDX-License-Identifier: MIT
#include "formats/FeatureProperties.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/element/ColourNames.h"
#include "core/element/Justification.h"
#include "core/io/CodePages.h"
#include "core/io/Numbers.h"
#include "core/io/Utf8.h"
#include "core/run/AttributeTable.h"
#include "core/run/LayerCodes.h"

namespace tesselink {
namespace {

// Whole numbers of so many digits fit into 64 bits.
constexpr int kMostDigits = 18;
constexpr double kMostExact = 9007199254740992;  // 2^53

using Kinds = unsigned;
constexpr Kinds Bit(FeatureKind kind) { return 1U << static_cast<unsigned>(kind); }
constexpr Kinds kChains = Bit(FeatureKind::Lines) | Bit(FeatureKind::Areas);
constexpr Kinds kPoints = Bit(FeatureKind::Points), kTexts = Bit(FeatureKind::Texts);
constexpr Kinds kAll = kChains | kPoints | kTexts;

// Bytes that nothing is known of are taken for Windows-1252.
std::string_view AsUtf8(std::string_view text, std::string& scratch) {
  if (IsUtf8(text)) return text;
  scratch.clear();
  AppendDecoded1252(scratch, text);
  return scratch;
}

PropertyValue TextOrNothing(const std::string& text, std::string& scratch) {
  if (text.empty()) return {};
  return AsUtf8(text, scratch);
}

PropertyValue NumberOrNothing(double value) {
  if (!std::isfinite(value)) return {};
  return value;
}

PropertyValue Colour(const tEntity& entity, std::string& scratch) {
  if (entity.RGB == 0 && !entity.IsBlack) return {};
  const auto text = HexOfColour(entity.RGB);
  scratch.assign(text.begin(), text.end());
  return std::string_view(scratch);
}

bool HasSymbol(const tEntity& entity) {
  return entity.bType == kPoint && !entity.Text.empty() && entity.Text != "NOSTATUS";
}

PropertyValue JustificationWords(const tEntity& entity, std::string& scratch) {
  using Place = TextPlacement;
  const auto [across, up] = PlacementOf(entity.TextJust);
  scratch = across == Place::kMiddle ? "centre" : across == Place::kRight ? "right" : "left";
  scratch += up == Place::kBaseline ? " baseline"
             : up == Place::kCentre ? " middle"
             : up == Place::kTop    ? " top"
                                    : " bottom";
  return std::string_view(scratch);
}

PropertyType TypeOf(const CarriedField& field) {
  switch (ContentOf(field.type, field.length)) {
    case FieldContent::Date:
      return PropertyType::Date;
    case FieldContent::Logical:
      return PropertyType::Boolean;
    case FieldContent::Number: {
      const bool isBinary = field.type == 'I' || field.type == '+';
      const bool isWhole = field.type == 'N' && field.decimals == 0 && field.length <= kMostDigits;
      return isBinary || isWhole ? PropertyType::Integer : PropertyType::Real;
    }
    case FieldContent::Text:
      break;
  }
  return PropertyType::Text;
}

// "20040131" as "2004-01-31"; empty for what is no date.
std::string_view Date(std::string_view text, std::string& scratch) {
  constexpr std::size_t kDigits = 8;
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const int month = number / 100 % 100, day = number % 100;
  const bool isDate = text.size() == kDigits && end == text.data() + kDigits && error == std::errc() && number > 0 &&
                      month >= 1 && month <= 12 && day >= 1 && day <= 31;
  if (!isDate) return {};
  scratch.assign(text.substr(0, 4)).append("-").append(text.substr(4, 2)).append("-").append(text.substr(6));
  return scratch;
}

}  // namespace

// What the drawing itself says of an element.
struct FeatureProperties::Own {
  const char* name;
  PropertyType type;
  Kinds kinds;
  PropertyValue (*value)(const tEntity& entity, std::string& scratch);
};

const std::vector<FeatureProperties::Own>& FeatureProperties::Owns() {
  using Value = PropertyValue;
  static const std::vector<Own> kOwns{
      {"layer", PropertyType::Text, kAll, [](const tEntity& e, std::string& s) { return TextOrNothing(e.Layer, s); }},
      {"code", PropertyType::Text, kAll,
       [](const tEntity& e, std::string& s) {
         return e.CDFCode == kUnassociatedCode ? Value() : TextOrNothing(e.CDFCode, s);
       }},
      {"colour", PropertyType::Text, kAll, Colour},
      {"colourNumber", PropertyType::Integer, kAll,
       [](const tEntity& e, std::string&) { return e.Colour == 0 ? Value() : Value(std::int64_t{e.Colour}); }},
      {"lineType", PropertyType::Text, kChains,
       [](const tEntity& e, std::string& s) { return TextOrNothing(e.LineStyle, s); }},
      {"symbol", PropertyType::Text, kPoints,
       [](const tEntity& e, std::string& s) { return HasSymbol(e) ? TextOrNothing(e.Text, s) : Value(); }},
      {"symbolAngle", PropertyType::Real, kPoints,
       [](const tEntity& e, std::string&) {
         return HasSymbol(e) || e.TextAng != 0 ? NumberOrNothing(e.TextAng) : Value();
       }},
      {"text", PropertyType::Text, kTexts, [](const tEntity& e, std::string& s) { return Value(AsUtf8(e.Text, s)); }},
      {"textAngle", PropertyType::Real, kTexts,
       [](const tEntity& e, std::string&) { return NumberOrNothing(e.TextAng); }},
      {"textHeight", PropertyType::Real, kTexts,
       [](const tEntity& e, std::string&) { return NumberOrNothing(e.TextSize); }},
      {"textPlacement", PropertyType::Text, kTexts, JustificationWords},
  };
  return kOwns;
}

FeatureProperties::FeatureProperties(Report& report, const FilterOptions& options, Losses& losses, PropertyRules rules)
    : options_(options),
      losses_(losses),
      rules_(std::move(rules)),
      // Where bytes are passed on as they are, binary values are no text.
      carried_(report, {.types = options.dialect == Dialect::Standard ? std::string_view() : kTextTypes,
                        .reserved = rules_.reserved}) {
  losses_.Describe(WarningKind::CutValues, {}, "values that are none of their column's type were left out");
}

void FeatureProperties::Reset() {
  carried_.Reset();
  isDeclared_ = false;
  all_.clear();
  own_.clear();
  carriedCount_ = 0;
}

AttributeTable* FeatureProperties::TableOf(InputFilter* source) const {
  return source != nullptr && options_.attributes ? source->Attributes() : nullptr;
}

void FeatureProperties::Turn(InputFilter* source, FeatureKind kind) {
  if (!isDeclared_) {
    Declare(source, kind);
  } else {
    carried_.Match(TableOf(source), source->AttributesPath());
  }
  isDeclared_ = true;
}

void FeatureProperties::Declare(InputFilter* source, FeatureKind kind) {
  if (AttributeTable* const table = TableOf(source)) {
    carried_.Declare(*table, source->AttributesPath(), [this](const CarriedField& field) {
      if (all_.size() + Owns().size() >= rules_.most) return false;
      all_.push_back({field.name, TypeOf(field)});
      return true;
    });
  }
  carriedCount_ = all_.size();
  if (source == nullptr || !carried_.Any() || source->Layered) {
    for (const Own& own : Owns()) {
      if (rules_.areKindsApart && (own.kinds & Bit(kind)) == 0) continue;
      own_.push_back(&own);
      all_.push_back({carried_.FreeName(own.name), own.type});
    }
  }
  scratch_.resize(all_.size());
  values_.resize(all_.size());
}

const std::vector<PropertyValue>& FeatureProperties::Of(const tEntity& entity) {
  if (!isDeclared_) Turn(nullptr);
  texts_.clear();
  const bool hasRow = entity.Record > 0 && (rules_.areKindsApart || entity.bType != kText);
  carried_.Values(hasRow ? entity.Record - 1 : -1, texts_);
  for (std::size_t i = 0; i < carriedCount_; ++i) {
    const bool isThere = hasRow && carried_.Fields()[i].source >= 0;
    values_[i] = isThere ? Typed(texts_[i], all_[i].type, scratch_[i]) : PropertyValue();
  }
  const Kinds kind = Bit(FeatureKindOf(entity, {}));
  for (std::size_t i = 0; i < own_.size(); ++i) {
    const Own& own = *own_[i];
    const bool has = rules_.areKindsApart || (own.kinds & kind) != 0;
    values_[carriedCount_ + i] = has ? own.value(entity, scratch_[carriedCount_ + i]) : PropertyValue();
  }
  return values_;
}

PropertyValue FeatureProperties::Typed(std::string_view text, PropertyType type, std::string& scratch) {
  if (type == PropertyType::Text) return AsUtf8(text, scratch);
  if (text.empty()) return {};
  PropertyValue value;
  bool isBlank = false;
  if (type == PropertyType::Boolean) {
    constexpr std::string_view kTrue = "TtYy1", kFalse = "FfNn0";
    isBlank = text == "?";
    if (kTrue.find(text[0]) != std::string_view::npos) value = true;
    if (kFalse.find(text[0]) != std::string_view::npos) value = false;
  } else if (type == PropertyType::Date) {
    isBlank = text.find_first_not_of('0') == std::string_view::npos;
    if (const std::string_view date = Date(text, scratch); !date.empty()) value = date;
  } else {
    // Asterisks stand for a number that its field had no room for.
    isBlank = text.find_first_not_of('*') == std::string_view::npos;
    value = Number(text, type == PropertyType::Integer);
  }
  if (value.index() == 0 && !isBlank) losses_.Add(WarningKind::CutValues);
  return value;
}

PropertyValue FeatureProperties::Number(std::string_view text, bool isInteger) {
  std::int64_t whole = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), whole);
  if (isInteger && error == std::errc() && end == text.data() + text.size()) return whole;
  const double number = NumberOrNone(text);
  if (!std::isfinite(number)) return {};
  if (!isInteger) return number;
  if (std::trunc(number) == number && std::fabs(number) <= kMostExact) return static_cast<std::int64_t>(number);
  if (rules_.isStrict) return {};
  return number;
}

}  // namespace tesselink
