// SPDX-License-Identifier: MIT
// cat and info: what a drawing holds.
#include <string>
#include <unordered_set>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/Json.h"
#include "cli/Reading.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/EncodingOption.h"
#include "formats/shape/DBFInFilter.h"

namespace tesselink {
namespace {

Json FieldsJson(const std::string& input, const FilterOptions& options) {
  Json fields = Json::array();
  const std::string path = PartnerFile(input, "DBF");
  if (path.empty()) return fields;
  DBFInFilter table(options.dialect, nullptr, ChosenPage(options));
  table.OpenExisting(path);
  for (int i = 0; i <= table.NumFields(); ++i) {
    const char type = table.FieldType(i);
    fields.push_back({{"name", AsUtf8(table.GetFieldName(i))},
                      {"type", AsUtf8(std::string(type == '\0' ? 0 : 1, type))},
                      {"length", table.FieldLength(i)},
                      {"decimals", table.FieldDecimals(i)}});
  }
  return fields;
}

// How a drawing marks its layers, by their names.
Json LayerStatesJson(const std::vector<std::string>& layers, const std::vector<LayerState>& states) {
  const std::unordered_set<std::string> wanted(layers.begin(), layers.end());
  Json marked = Json::object();
  for (const LayerState& state : states) {
    if (!wanted.contains(state.name)) continue;
    Json words = Json::array();
    if (state.isOff) words.push_back("off");
    if (state.isFrozen) words.push_back("frozen");
    if (state.isLocked) words.push_back("locked");
    marked[AsUtf8(state.name)] = words;
  }
  return marked;
}

std::string InfoText(const std::string& input, const std::string& format, const Json& info) {
  std::string text = Visible(input) + ": " + format + "\n  elements ";
  std::string kinds;
  for (const auto& [kind, count] : info["elements"].items()) {
    if (count > 0) kinds += (kinds.empty() ? "" : ", ") + Counted(count.get<std::int64_t>(), kind);
  }
  text += (kinds.empty() ? "none" : kinds) + "\n  vertices " + std::to_string(info["vertices"].get<std::int64_t>());
  if (info.contains("areas")) text += "\n  areas    " + std::to_string(info["areas"].get<std::int64_t>());
  if (info.contains("parts")) {
    text += "\n  parts    " + std::to_string(info["parts"].get<std::int64_t>()) + " of " +
            Counted(info["severalParts"].get<std::int64_t>(), "element");
  }
  text += "\n  layers   ";
  if (info["layers"].empty()) text += "none";
  for (std::size_t i = 0; i < info["layers"].size(); ++i) {
    const std::string layer = Visible(info["layers"][i].get<std::string>());
    text += (i > 0 ? ", " : "") + (layer.empty() ? "(no name)" : layer);
    if (!info.contains("layerStates")) continue;
    std::string words;
    for (const Json& word : info["layerStates"].value(info["layers"][i].get<std::string>(), Json::array())) {
      words += (words.empty() ? "" : ", ") + word.get<std::string>();
    }
    if (!words.empty()) text += " (" + words + ")";
  }
  if (const Json& e = info["extents"]; !e.is_null()) {
    for (const std::string axis : {"X", "Y", "Z"}) {
      text += "\n  " + axis + "        " + NumberText(e["min" + axis].get<double>()) + " to " +
              NumberText(e["max" + axis].get<double>());
    }
  }
  if (info.contains("coordinateSystem")) {
    const Json& system = info["coordinateSystem"];
    text += "\n  system   " + Visible(system["name"].get<std::string>());
    if (!system["epsg"].is_null()) text += " (EPSG:" + std::to_string(system["epsg"].get<int>()) + ")";
    text += "\n  unit     " + Visible(system["unit"].get<std::string>());
  }
  for (const Json& field : info["fields"]) {
    text += "\n  field    " + Visible(field["name"].get<std::string>()) + " " +
            Visible(field["type"].get<std::string>()) + " " + std::to_string(field["length"].get<int>()) + "." +
            std::to_string(field["decimals"].get<int>());
  }
  return text + "\n";
}

}  // namespace

int Run(const CatCommand& command) {
  Reading reading(command.input, command.reading, false);
  return ReadThrough(
      reading, [&](const tEntity& entity) { Print(JsonText(ElementJson(entity, command.reading.dialect)) + "\n"); });
}

int Run(const InfoCommand& command) {
  Reading reading(command.input, command.reading, ShowsBar(command.reading));
  reading.systemWish = SystemWish::Known;
  KindCounts elements;
  std::int64_t vertices = 0, areas = 0, parts = 0, severalParts = 0;
  const int exitCode = ReadThrough(reading, [&](const tEntity& entity) {
    elements.Add(entity);
    vertices += entity.PointCount() + 1;
    areas += entity.IsArea ? 1 : 0;
    if (entity.Parts.empty()) return;
    parts += static_cast<std::int64_t>(entity.PartCount());
    ++severalParts;
  });
  if (exitCode != kExitDone && exitCode != kExitEndedEarly) return exitCode;

  std::vector<std::string> layers = reading.interaction.ReportedLayers();
  const std::unordered_set<std::string> reported(layers.begin(), layers.end());
  for (const std::string& layer : reading.summary.layers) {
    if (!reported.contains(layer)) layers.push_back(layer);
  }
  Json info{{"format", reading.format.key},
            {"elements", CountsJson(elements)},
            {"vertices", vertices},
            {"layers", TextsJson(layers)},
            {"extents", ExtentsJson(reading.summary.extents)},
            {"fields", reading.format.hasAttributes ? FieldsJson(command.input, FilterOptionsOf(command.reading))
                                                    : Json::array()}};
  if (Json states = LayerStatesJson(layers, reading.summary.layerStates); !states.empty()) {
    info["layerStates"] = std::move(states);
  }
  if (const CoordinateSystem& system = reading.summary.systems.to; system.IsKnown()) {
    info["coordinateSystem"] = SystemJson(system);
  }
  if (areas > 0) info["areas"] = areas;
  if (parts > 0) info.update({{"parts", parts}, {"severalParts", severalParts}});
  Print(command.json ? JsonText(info, 2) + "\n" : InfoText(command.input, reading.format.Name(), info));
  return exitCode;
}

}  // namespace tesselink
