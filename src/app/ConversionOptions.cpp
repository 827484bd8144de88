// SPDX-License-Identifier: MIT
#include "app/ConversionOptions.h"

#include <algorithm>

#include "app/LayerOptions.h"
#include "app/OptionChecks.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/run/Coordinates.h"

namespace tesselink {
namespace {

using OptionKind = FormatOption::Kind;

bool HasAttributes(const InputFormat& input, const OutputFormat&) { return input.hasAttributes || input.hasRecords; }
bool HasCurves(const InputFormat& input, const OutputFormat&) { return !input.hasAttributes; }
bool HasLabels(const InputFormat& input, const OutputFormat& output) {
  return input.hasAttributes && !output.ignoresLayers;
}
bool HasLayers(const InputFormat&, const OutputFormat& output) { return !output.ignoresLayers; }
bool MayHoldAreas(const InputFormat&, const OutputFormat& output) { return static_cast<bool>(output.areas); }
bool AsksLineEnds(const InputFormat& input, const OutputFormat&) { return input.asksLineEnds; }
bool Always(const InputFormat&, const OutputFormat&) { return true; }

// An option that belongs to no format, and the pairs of formats that have it.
struct General {
  const char* name;
  OptionGroup group;
  OptionKind kind = OptionKind::Text;
  OptionValue names = OptionValue::Anything;
  bool (*has)(const InputFormat&, const OutputFormat&) = Always;
  std::string (*wrong)(const std::string&) = nullptr;
  std::vector<std::string> choices = {};
  bool ofOneDrawing = false;
};

const std::vector<General>& Generals() {
  using enum OptionGroup;
  using enum OptionValue;
  static const std::vector<General> kGenerals{
      {"line-ends", Input, OptionKind::Choice, Anything, AsksLineEnds, nullptr, {"keep", "replace"}},
      {"tolerance", Input, OptionKind::Text, Anything, HasCurves, WrongDistance},
      {"layer-field", Labels, OptionKind::Text, Field, HasLabels, nullptr, {}, true},
      {"text-field", Labels, OptionKind::Text, Template, HasLabels, nullptr, {}, true},
      {"text-height", Labels, OptionKind::Text, FieldOrNumber, HasLabels, WrongHeight, {}, true},
      {"text-angle", Labels, OptionKind::Text, FieldOrNumber, HasLabels, nullptr, {}, true},
      {"colour-field", Labels, OptionKind::Text, Field, HasLabels, nullptr, {}, true},
      {"attributes", Labels, OptionKind::Choice, Anything, HasAttributes, nullptr, {"keep", "drop"}},
      {"layers", Layers, OptionKind::Text, LayerList, Always, nullptr, {}, true},
      {"without-layers", Layers, OptionKind::Text, LayerList, Always, nullptr, {}, true},
      {"clip", Layers, OptionKind::Text, Box, Always, WrongBox, {}, true},
      {"layer-codes", Layers, OptionKind::File, Anything, HasLayers},
      {"smart-assign", Layers, OptionKind::Flag, Anything, HasLayers},
      {"from-crs", Systems, OptionKind::Text, System},
      {"to-crs", Systems, OptionKind::Text, System},
      {"allow-ballpark", Systems, OptionKind::Flag},
      {"build-areas", Areas, OptionKind::Flag, Anything, MayHoldAreas},
      {"snap", Areas, OptionKind::Text, Anything, MayHoldAreas, WrongDistance},
      {"label-layer", Areas, OptionKind::Text, LayerList, MayHoldAreas, nullptr, {}, true},
      {"max-output", Output, OptionKind::Text, Anything, Always, WrongSize},
      {"sync", Output, OptionKind::Flag}};
  return kGenerals;
}

ConversionOption OptionOf(const General& general) {
  FormatOption row{.name = general.name, .help = {}, .kind = general.kind, .choices = general.choices};
  if (general.wrong != nullptr) row.check = general.wrong;
  row.standardOnly = general.group == OptionGroup::Areas;
  return {row, general.group, general.names, general.ofOneDrawing};
}

// The fields of an output's own options are those of a table that goes with one drawing.
void AddRows(std::vector<ConversionOption>& options, const Format& format, OptionGroup group) {
  for (const FormatOption& row : format.options) {
    const bool known = std::any_of(options.begin(), options.end(),
                                   [&](const ConversionOption& option) { return option.row.name == row.name; });
    if (!known) options.push_back({row, group, OptionValue::Anything, row.strict});
  }
}

std::vector<std::string> ListOf(const OptionValues& values, const char* name) {
  return values.Has(name) ? ListIn(values.Text(name)) : std::vector<std::string>();
}

std::string WrongCodes(const std::string& file) try {
  const LayerOptions codes(file, false);
  return {};
} catch (const Error& error) {
  return error.what();
}

}  // namespace

std::vector<ConversionOption> OptionsOf(const InputFormat& input, const OutputFormat& output) {
  std::vector<ConversionOption> options;
  AddRows(options, input, OptionGroup::Input);
  AddRows(options, output, OptionGroup::Output);
  for (const General& general : Generals()) {
    if (general.has(input, output)) options.push_back(OptionOf(general));
  }
  std::stable_sort(options.begin(), options.end(), [](const auto& a, const auto& b) { return a.group < b.group; });
  return options;
}

OptionRest RestOf(const ConversionOption& option, const OptionSituation& situation) {
  const std::string& name = option.row.name;
  if (option.row.standardOnly && situation.dialect == Dialect::Classic) return OptionRest::NeedsStandard;
  if (option.group == OptionGroup::Areas) {
    if (situation.output.PlaceOfAreas(situation.values) == AreaPlace::None) return OptionRest::NeedsAreas;
    if (name != "build-areas" && !situation.values.Has("build-areas")) return OptionRest::NeedsBuildAreas;
  }
  const bool ofTexts = name == "text-height" || name == "text-angle";
  return ofTexts && !situation.values.Has("text-field") ? OptionRest::NeedsText : OptionRest::Counts;
}

std::string WrongWith(const ConversionOption& option, const std::string& value, Dialect dialect) {
  const FormatOption& row = option.row;
  const auto among = [&](const std::vector<std::string>& values) {
    return std::find(values.begin(), values.end(), value) != values.end();
  };
  if (row.kind == OptionKind::Choice && !among(row.choices)) return "\"" + value + "\" is none of the choices";
  if (dialect == Dialect::Classic && among(row.standardChoices)) return "This choice belongs to the standard dialect";
  if (row.kind == OptionKind::File) {
    if (const std::string reason = WhyNotReadable(value); !reason.empty()) return reason;
    return row.name == "layer-codes" ? WrongCodes(value) : std::string();
  }
  if (option.names == OptionValue::System) {
    try {
      SystemDefinition(value);
    } catch (const Error& error) {
      return error.what();
    }
  }
  return row.check ? row.check(value) : std::string();
}

OptionValues ValuesThatCount(const std::vector<ConversionOption>& options, const OptionSituation& situation) {
  OptionValues counting;
  for (const ConversionOption& option : options) {
    const std::string& name = option.row.name;
    if (!situation.values.Has(name) || RestOf(option, situation) != OptionRest::Counts) continue;
    counting.Set(name, situation.values.Text(name));
  }
  return counting;
}

void ApplyOptions(const OptionValues& values, ConversionRequest& request) {
  FilterOptions& options = request.options;
  const auto isGeneral = [](const std::string& name) {
    return std::any_of(Generals().begin(), Generals().end(), [&](const General& g) { return name == g.name; });
  };
  for (const auto& [name, value] : values.All()) {
    if (!isGeneral(name)) options.own.Set(name, value);
  }
  if (values.Has("tolerance")) options.tolerance = StrictNumber(values.Text("tolerance"));
  if (values.Has("attributes")) options.attributes = values.Text("attributes") == "keep";
  options.layers = ListOf(values, "layers");
  options.withoutLayers = ListOf(values, "without-layers");
  if (values.Has("clip")) options.clip = BoxIn(values.Text("clip"));
  options.systems = {values.Text("from-crs"), values.Text("to-crs"), values.Has("allow-ballpark")};
  options.buildAreas = values.Has("build-areas");
  options.snap = values.Number("snap", 0);
  options.labelLayers = ListOf(values, "label-layer");
  request.sync = values.Has("sync");
  request.maxOutput = BytesIn(values.Text("max-output")).value_or(0);
  if (values.Has("layer-codes")) request.alsoRead = {values.Text("layer-codes")};
}

}  // namespace tesselink
