// SPDX-License-Identifier: MIT
#include "picture/PreviewReading.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

std::string BeginningOf(const std::string& path) {
  constexpr std::size_t kLongest = 16384;
  BinaryFile file(path);
  std::string text(std::min(static_cast<std::size_t>(file.Size()), kLongest), ' ');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return text;
}

}  // namespace

// The unit of the whole stands last, behind those of what it is made of; a system of heights follows.
std::string UnitOfProjection(const std::string& wkt) {
  const std::string capitals = UpperCase(wkt);
  const std::size_t heights = std::min(capitals.find("VERTCS"), capitals.find("VERT_CS"));
  constexpr std::string_view kUnit = "UNIT[\"";
  const std::size_t unit = capitals.rfind(kUnit, heights);
  if (unit == std::string::npos) return {};
  const std::size_t begin = unit + kUnit.size();
  const std::size_t end = std::min(capitals.find('"', begin), capitals.size());
  const std::string_view name = std::string_view(capitals).substr(begin, end - begin);
  constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kNames{{
      {"METER", "m"},
      {"METRE", "m"},
      {"FOOT_US", "ft (US)"},
      {"US SURVEY FOOT", "ft (US)"},
      {"FOOT", "ft"},
      {"KILOMETER", "km"},
      {"DEGREE", "\u00B0"},
      {"DEGREE (SUPPLIER TO DEFINE REPRESENTATION)", "\u00B0"},
  }};
  const auto known = std::find_if(kNames.begin(), kNames.end(), [&](const auto& row) { return row.first == name; });
  return known == kNames.end() ? wkt.substr(begin, end - begin) : std::string(known->second);
}

DrawingFacts PreviewReading::Facts() const {
  DrawingFacts facts = facts_;
  const PreviewInput& input = Input();
  facts.unread = Unread();
  facts.table = input.format.hasAttributes && !PartnerFile(input.paths[0], "DBF").empty();
  facts.pointFile = !PartnerFile(input.paths[0], "PTS").empty();
  return facts;
}

// A file that spoils nothing: whoever reads it for more than that tells what is wrong with it.
void PreviewReading::Opened(InputFilter& reader) {
  picture_.Define(reader.LineTypes());
  const std::string projection = reader.ProjectionPath();
  if (!unit_.empty() || projection.empty()) return;
  try {
    unit_ = UnitOfProjection(BeginningOf(projection));
  } catch (const Error&) {
    unit_.clear();
  }
}

}  // namespace tesselink
