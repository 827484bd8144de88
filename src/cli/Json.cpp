// SPDX-License-Identifier: MIT
#include "cli/Json.h"
#include "core/io/Utf8.h"

#include <charconv>
#include <cstdio>

namespace tesselink {
namespace {

// Of a single the shortest decimal that reads back as the same single: 0.1 rather than 0.10000000149011612.
double Shown(double value, Dialect dialect) {
  if (dialect == Dialect::Standard) return value;
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, static_cast<float>(value)).ptr;
  double shortest = value;
  std::from_chars(text, end, shortest);
  return shortest;
}

Json Heights(std::span<const double> values, Dialect dialect) {
  Json json = Json::array();
  for (const double value : values) json.push_back(Shown(value, dialect));
  return json;
}

}  // namespace

Json ElementJson(const tEntity& entity, Dialect dialect) {
  const auto [radius, start, end] = entity.Curve();
  Json json{{"bType", entity.bType},
            {"Layer", AsUtf8(entity.Layer)},
            {"Colour", entity.Colour},
            {"RGB", entity.RGB},
            {"CDFCode", AsUtf8(entity.CDFCode)},
            {"Closed", entity.Closed},
            {"LineStyle", AsUtf8(entity.LineStyle)},
            {"Rad", Shown(radius, dialect)},
            {"AngStart", Shown(start, dialect)},
            {"AngEnd", Shown(end, dialect)},
            {"Text", AsUtf8(entity.Text)},
            {"TextAng", entity.TextAng},
            {"TextSize", entity.TextSize},
            {"TextJust", entity.TextJust},
            {"TextUnits", AsUtf8(entity.TextUnits)},
            {"x", entity.AllX()},
            {"Y", entity.AllY()},
            {"Z", Heights(entity.AllZ(), dialect)}};
  if (!entity.Parts.empty()) json["Parts"] = entity.Parts;
  if (entity.IsArea) json["IsArea"] = true;
  if (!entity.Bulges.empty()) json["Bulges"] = entity.Bulges;
  if (!entity.Measures.empty()) json["Measures"] = entity.Measures;
  return json;
}

// The library escapes those below the blank. Others stand within texts alone.
std::string JsonText(const Json& json, int indent) {
  std::string text = json.dump(indent);
  for (std::size_t at = text.find_first_of("\x7F\xC2\xE2"); at != std::string::npos;
       at = text.find_first_of("\x7F\xC2\xE2", at + 1)) {
    const std::string_view rest = std::string_view(text).substr(at);
    const std::size_t length = Utf8Length(rest);
    const std::uint32_t letter = Utf8Letter(rest.substr(0, length));
    if (!IsControl(letter)) continue;
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", letter);
    text.replace(at, length, escaped);
  }
  return text;
}

Json ExtentsJson(const Extents& extents) {
  if (extents.Empty()) return nullptr;
  return {{"minX", extents.minX}, {"minY", extents.minY}, {"minZ", extents.minZ},
          {"maxX", extents.maxX}, {"maxY", extents.maxY}, {"maxZ", extents.maxZ}};
}

Json CountsJson(const KindCounts& counts) {
  Json json = Json::object();
  for (std::size_t i = 0; i < KindCounts::kNames.size(); ++i) {
    const std::string name(KindCounts::kNames[i]);
    if (name != "other" || counts.All()[i] > 0) json[name] = counts.All()[i];
  }
  return json;
}

Json TextsJson(const std::vector<std::string>& texts) {
  Json json = Json::array();
  for (const std::string& text : texts) json.push_back(AsUtf8(text));
  return json;
}

Json SystemJson(const CoordinateSystem& system) {
  return {{"name", AsUtf8(system.name)},
          {"epsg", system.epsg > 0 ? Json(system.epsg) : Json()},
          {"unit", AsUtf8(system.unit)}};
}

Json SystemsJson(const SystemsUsed& systems) {
  Json from = Json::array(), operations = Json::array();
  for (const CoordinateSystem& system : systems.from) from.push_back(SystemJson(system));
  for (const OperationUse& use : systems.operations) {
    operations.push_back({{"name", AsUtf8(use.name)},
                          {"accuracy", use.accuracy < 0 ? Json() : Json(use.accuracy)},
                          {"grids", TextsJson(use.grids)},
                          {"ballpark", use.isBallpark},
                          {"count", use.count},
                          {"better", use.better.empty() ? Json() : Json(AsUtf8(use.better))}});
  }
  return {{"from", from}, {"to", SystemJson(systems.to)}, {"operations", operations}};
}

}  // namespace tesselink
