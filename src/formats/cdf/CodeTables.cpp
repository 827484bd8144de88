// SPDX-License-Identifier: MIT
#include "formats/cdf/CodeTables.h"

#include <memory>

#include "core/io/Errors.h"
#include "core/io/Text.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

// Codes without end in a file cost time, not memory.
constexpr std::size_t kMostKnown = 10000;

}  // namespace

CodeTables::CodeTables(const FilterContext& context)
    : context_(context), types_(context), colours_(context), colourNumbers_(context.options.programFolder) {}

void CodeTables::Open() {
  opened_ = true;
  const auto open = [this](auto& list, WarningKind kind) {
    try {
      list.Create();
    } catch (const Error& error) {
      context_.report.Warn(kind, error.what());
    }
  };
  open(types_, WarningKind::NoEntityTypes);
  open(colours_, WarningKind::NoEntityColours);
}

void CodeTables::Fill(tEntity& entity, bool asUtf8) {
  auto known = known_.find(entity.CDFCode);
  if (known == known_.end()) {
    if (known_.size() >= kMostKnown) known_.clear();
    known = known_.emplace(entity.CDFCode, Look(entity.CDFCode)).first;
  }
  const Meaning& meaning = known->second;
  entity.Layer = asUtf8 ? meaning.layerUtf8 : meaning.layer;
  if (!meaning.coloured) return;
  const Colour& colour = entity.bType == kText ? meaning.text : meaning.line;
  entity.Colour = colour.number;
  entity.RGB = colour.rgb;
}

CodeTables::Meaning CodeTables::Look(const std::string& code) {
  if (!opened_) Open();
  Meaning meaning;
  if (Trimmed(code).empty()) return meaning;  // as a pattern it would fit every type
  std::string pattern = code;
  const std::int16_t type = types_.SearchCode(pattern);
  if (type == 0) return meaning;
  meaning.layer = types_.Description(type);
  meaning.layerUtf8 = types_.DescriptionUtf8(type);
  const std::int16_t entry = colours_.SearchDesc(meaning.layer);
  if (entry == 0) return meaning;
  meaning.coloured = true;
  meaning.line = ColourOf(colours_.LineColour(entry));
  meaning.text = ColourOf(colours_.TextColour(entry));
  return meaning;
}

CodeTables::Colour CodeTables::ColourOf(std::int16_t number) {
  try {
    return {number, number >= 0 && number < 256 ? colourNumbers_.Colour(number) : 0};
  } catch (const Error& error) {  // a drawing without its colour table is still a drawing
    context_.report.Warn(WarningKind::ColourTable, error.what());
    return {number, 0};
  }
}

LayerFiller FillerFromCodeTables() {
  auto tables = std::make_shared<std::unique_ptr<CodeTables>>();
  return [tables](tEntity& entity, const FilterContext& context, const TextEncoding& encoding) {
    if (!*tables) *tables = std::make_unique<CodeTables>(context);
    (*tables)->Fill(entity, encoding.isUtf8);
  };
}

}  // namespace tesselink
