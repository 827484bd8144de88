// Lookup files as their packages write them.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tesselink {

/// "$CDF.MAP" of pairs of a code and a description; what the layout leaves unused is filled with "u".
inline std::string EntityTypes(const std::vector<std::pair<std::string, std::string>>& types) {
  std::string bytes;
  for (auto [code, description] : types) {
    code.resize(7, '\0');
    description.resize(43, '\0');
    bytes += "uu" + code.substr(0, 3) + std::string(7, 'u') + code.substr(3) + std::string(8, 'u') + description;
  }
  return bytes;
}

}  // namespace tesselink
