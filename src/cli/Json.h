// Elements and summaries as JSON, with the keys that scripts rely on.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "core/Extents.h"
#include "core/Report.h"
#include "core/tEntity.h"

namespace tesselink {

using Json = nlohmann::ordered_json;

/// A text as JSON can carry it: UTF-8 as it stands, other bytes as the characters of Latin-1.
std::string Utf8(const std::string& text);
Json ElementJson(const tEntity& entity);
/// The bounds, or null before the first vertex.
Json ExtentsJson(const Extents& extents);
/// Every kind that an element can have; "other" only where there is one.
Json CountsJson(const KindCounts& counts);
Json TextsJson(const std::vector<std::string>& texts);

}  // namespace tesselink
