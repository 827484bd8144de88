// SPDX-License-Identifier: MIT
// Records of the lookup files that belong to another package, byte by byte.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/Shapes.h"

namespace tesselink {

/// A record of "$CDF.MAP": three and four characters of the code, and the description.
inline std::string TypeRecord(std::string code, std::string description) {
  code.resize(7, '\0');
  description.resize(43, '\0');
  return "xx" + code.substr(0, 3) + "unused1" + code.substr(3) + "unused 2" + description;
}

/// "$CDF.MAP" of pairs of a code and a description.
inline std::string EntityTypes(const std::vector<std::pair<std::string, std::string>>& types) {
  std::string records;
  for (const auto& [code, description] : types) records += TypeRecord(code, description);
  return records;
}

/// A record of "$LNGSL.DAT": the description and the colour numbers of lines and of texts.
inline std::string ColourRecord(std::string description, std::int16_t line, std::int16_t text) {
  description.resize(40, '\0');
  return description + Little(line) + Little(text) + std::string(82, 'x');
}

}  // namespace tesselink
