// SPDX-License-Identifier: MIT
#include "core/run/Traits.h"

#include "core/element/ColourNames.h"
#include "core/element/Justification.h"
#include "core/io/Text.h"
#include "core/run/LayerCodes.h"

namespace tesselink {
namespace {

struct Row {
  TraitSet trait;
  WarningKind kind;
};
constexpr std::array kRows{
    Row{kHasLayer | kHasLayerBesideColour, WarningKind::Layers},
    Row{kHasLineType, WarningKind::LineTypes},
    Row{kHasColour | kHasUnnamedColour, WarningKind::Colours},
    Row{kHasSymbol, WarningKind::Symbols},
    Row{kHasJustification, WarningKind::Justifications},
    Row{kHasBaseline, WarningKind::Baselines},
    Row{kHasEntityCode, WarningKind::EntityCodes},
    Row{kHasUnmatchedLayer, WarningKind::UnmatchedLayers},
    Row{kHasSeveralPoints, WarningKind::PointGroups},
    Row{kHasClosedMark, WarningKind::ClosedMarks},
    Row{kFirstOfReading * kLostArea, WarningKind::Areas},
    Row{kFirstOfReading * kLostParts, WarningKind::PartsSplit},
    Row{kFirstOfReading * kLostBaseline, WarningKind::Baselines},
    Row{kFirstOfReading * kLostCurve, WarningKind::Curves},
    Row{kFirstOfReading * kLostDigits, WarningKind::RoundedNumbers},
    Row{kFirstOfReading * kLostHiding, WarningKind::Hidden},
    Row{kFirstOfReading * kLostLayerHiding, WarningKind::HiddenLayers},
    Row{kFirstOfReading * kLostPattern, WarningKind::Patterns},
    Row{kFirstOfReading * kLostBreaks, WarningKind::BrokenLines},
    Row{kFirstOfReading * kLostPicture, WarningKind::Pictures},
    Row{kFirstOfReading * kLostData, WarningKind::ExtendedData},
    Row{kFirstOfReading * kLostAppearance, WarningKind::Appearance},
};

struct Looks {
  ReadingLoss lost;
  std::string_view name;
};
constexpr std::array kLooks{
    Looks{kLostWidth, "line widths"},
    Looks{kLostThickness, "thickness"},
    Looks{kLostWeight, "line weights"},
    Looks{kLostFont, "fonts"},
    Looks{kLostSlant, "slant of letters"},
    Looks{kLostLetterWidth, "widths of letters"},
    Looks{kLostFormats, "formats within texts"},
    Looks{kLostArrow, "heads of arrows"},
};

bool HasLayer(const tEntity& entity) { return !entity.Layer.empty() && !IsSame(entity.Layer, "0"); }
bool HasColour(const tEntity& entity) { return entity.RGB != 0 || entity.IsBlack; }
bool HasCode(const tEntity& entity) { return !entity.CDFCode.empty() && !IsSame(entity.CDFCode, kUnassociatedCode); }

}  // namespace

bool TraitLosses::IsNamed(std::int32_t rgb) {
  if (rgb != asked_) {
    asked_ = rgb;
    named_ = ColourOfName(ColourName(rgb)) == rgb;
  }
  return named_;
}

TraitSet TraitLosses::Of(const tEntity& entity) {
  TraitSet found = kFirstOfReading * static_cast<TraitSet>(entity.Lost & ~kept_);
  const auto note = [&](Trait trait, auto&& has) {
    if ((lacking_ & trait) != 0 && has()) found |= trait;
  };
  const bool isPoint = entity.bType == kPoint, isText = entity.bType == kText;
  note(kHasLayer, [&] { return HasLayer(entity); });
  note(kHasLayerBesideColour, [&] { return HasLayer(entity) && entity.Layer != ColourName(entity.RGB); });
  note(kHasLineType, [&] { return !entity.LineStyle.empty() && !EqualsIgnoringCase(entity.LineStyle, "CONTINUOUS"); });
  note(kHasColour, [&] { return HasColour(entity); });
  note(kHasUnnamedColour, [&] { return HasColour(entity) && !IsNamed(entity.RGB); });
  note(kHasSymbol,
       [&] { return isPoint && ((!entity.Text.empty() && !IsSame(entity.Text, "NOSTATUS")) || entity.TextAng != 0); });
  note(kHasJustification, [&] { return isText && entity.TextJust != 0; });
  note(kHasBaseline, [&] { return isText && PlacementOf(entity.TextJust).up == TextPlacement::kBaseline; });
  note(kHasEntityCode, [&] { return HasCode(entity); });
  note(kHasUnmatchedLayer, [&] { return HasLayer(entity) && !HasCode(entity); });
  note(kHasSeveralPoints, [&] { return isPoint && entity.PointCount() > 0; });
  note(kHasClosedMark, [&] { return entity.Closed && IsChain(entity.bType); });
  return found;
}

// All of that is told in one line, which names what has occurred.
void TraitLosses::NameLooks(std::uint32_t lost) {
  looks_ |= lost;
  std::string names;
  for (const auto& [bit, name] : kLooks) {
    const bool isLast = (looks_ & ~(2 * bit - 1)) == 0;
    if ((looks_ & bit) != 0) names.append(names.empty() ? "" : isLast ? " and " : ", ").append(name);
  }
  losses_.Describe(WarningKind::Appearance, {}, "elements that came without their " + names);
}

void TraitLosses::CountEach(TraitSet traits) {
  const auto looks = static_cast<std::uint32_t>(traits / kFirstOfReading) & kLostAppearance;
  if ((looks & ~looks_) != 0) NameLooks(looks);
  for (const Row& row : kRows) {
    if ((traits & row.trait) != 0) losses_.Add(row.kind);
  }
}

}  // namespace tesselink
