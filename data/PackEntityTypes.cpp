// SPDX-License-Identifier: MIT
// Packs the readable list of entity types into the two lookup files of the program's own folder: $CDF.MAP, codes and
// descriptions, and $LNGSL.DAT, descriptions and colour numbers. Unused bytes are NUL.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kCodeLength = 7;
constexpr std::size_t kLongestDescription = 40;  // what $LNGSL.DAT holds; $CDF.MAP holds 43

struct EntityType {
  std::string code, description;
  int line = 0, text = 0;
};

// Why a type cannot be packed; empty for one that can.
std::string Fault(const EntityType& type) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
  const std::string& description = type.description;
  if (type.code.size() != kCodeLength || !std::all_of(type.code.begin(), type.code.end(), isDigit)) {
    return "expected a code of 7 digits";
  }
  if (description.empty() || description.size() > kLongestDescription || description.front() == ' ' ||
      description.back() == ' ' || !std::all_of(description.begin(), description.end(), isPrintable)) {
    return "expected a description of 1 to 40 characters without blanks at its ends";
  }
  if (std::min(type.line, type.text) < 1 || std::max(type.line, type.text) > 255) {
    return "expected colour numbers of 1 to 255";
  }
  return {};
}

// The description comes last, so that it may hold commas.
EntityType Parsed(const std::string& line) {
  EntityType type;
  char code[kCodeLength + 1] = "";
  int end = 0;
  const int read = std::sscanf(line.c_str(), "%7[^,],%d,%d,%n", code, &type.line, &type.text, &end);
  if (read != 3 || end == 0) return {};
  type.code = code;
  type.description = line.substr(static_cast<std::size_t>(end));
  return type;
}

bool ReadList(const char* path, std::vector<EntityType>& types) {
  std::ifstream list(path);
  std::string line;
  std::getline(list, line);
  std::set<std::string> seen;  // codes and descriptions; none of one is one of the other
  while (std::getline(list, line)) {
    EntityType type = Parsed(line);
    std::string fault = Fault(type);
    if (fault.empty() && !(seen.insert(type.code).second && seen.insert(type.description).second)) {
      fault = "expected a code and a description that no other line has";
    }
    if (!fault.empty()) {
      std::fprintf(stderr, "%s: %s in \"%s\"\n", path, fault.c_str(), line.c_str());
      return false;
    }
    types.push_back(std::move(type));
  }
  return !types.empty();
}

std::string MapRecord(const EntityType& type) {
  std::string record(67, '\0');
  record.replace(2, 3, type.code, 0, 3);
  record.replace(12, 4, type.code, 3, 4);
  return record.replace(24, type.description.size(), type.description);
}

std::string ColourRecord(const EntityType& type) {
  std::string record(126, '\0');
  record.replace(0, type.description.size(), type.description);
  record[40] = static_cast<char>(type.line);
  record[42] = static_cast<char>(type.text);
  return record;
}

bool WriteRecords(const char* path, const std::vector<EntityType>& types, std::string (*record)(const EntityType&)) {
  std::ofstream out(path, std::ios::binary);
  for (const EntityType& type : types) out << record(type);
  out.flush();
  return out.good();
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("usage: pack-entity-types entity-types.csv '$CDF.MAP' '$LNGSL.DAT'\n", stderr);
    return 2;
  }
  std::vector<EntityType> types;
  const bool packed = ReadList(arguments[1], types) && WriteRecords(arguments[2], types, MapRecord) &&
                      WriteRecords(arguments[3], types, ColourRecord);
  return packed ? 0 : 1;
}
