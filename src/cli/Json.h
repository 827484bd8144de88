// SPDX-License-Identifier: MIT
// Elements and summaries as JSON, with the keys that scripts rely on.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "core/element/Extents.h"
#include "core/element/tEntity.h"
#include "core/run/Coordinates.h"
#include "core/run/Dialect.h"
#include "core/run/Report.h"

namespace tesselink {

using Json = nlohmann::ordered_json;

/// Texts are UTF-8 as they stand, other bytes the letters of Windows-1252. z, radius and angles are singles in the
/// classic dialect and printed as such.
Json ElementJson(const tEntity& entity, Dialect dialect);
/// The text of a value, on one line or indented. Letters that a terminal would obey are escaped.
std::string JsonText(const Json& json, int indent = -1);
/// The bounds, or null before the first vertex.
Json ExtentsJson(const Extents& extents);
/// Every kind that an element can have; "other" only where there is one.
Json CountsJson(const KindCounts& counts);
Json TextsJson(const std::vector<std::string>& texts);
Json SystemJson(const CoordinateSystem& system);
Json SystemsJson(const SystemsUsed& systems);

}  // namespace tesselink
