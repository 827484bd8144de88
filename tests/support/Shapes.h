// SPDX-License-Identifier: MIT
// Shapefiles and dBase tables made byte by byte from their published layouts, well-formed or broken on purpose.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace tesselink {

template <typename T>
std::string Little(T value) {
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}
inline std::string Big(std::int32_t value) {
  const std::string little = Little(value);
  return {little.rbegin(), little.rend()};
}

using Points = std::vector<std::pair<double, double>>;

inline std::string PointContent(double x, double y) { return Little(std::int32_t{1}) + Little(x) + Little(y); }

inline std::string ChainContent(std::int32_t type, const std::vector<std::int32_t>& parts, const Points& points,
                                const std::vector<double>& z = {}) {
  std::string bytes = Little(type) + std::string(32, '\0') + Little(static_cast<std::int32_t>(parts.size())) +
                      Little(static_cast<std::int32_t>(points.size()));
  for (const std::int32_t part : parts) bytes += Little(part);
  for (const auto& [x, y] : points) bytes += Little(x) + Little(y);
  if (!z.empty()) bytes += std::string(16, '\0');
  for (const double value : z) bytes += Little(value);
  return bytes;
}

inline std::string MultiPointContent(const Points& points) {
  std::string bytes =
      Little(std::int32_t{8}) + std::string(32, '\0') + Little(static_cast<std::int32_t>(points.size()));
  for (const auto& [x, y] : points) bytes += Little(x) + Little(y);
  return bytes;
}

/// The main file and the index of a list of record contents.
struct ShapeFile {
  std::string shp, shx;

  explicit ShapeFile(const std::vector<std::string>& contents, std::int32_t type = 3) {
    std::string records, index;
    std::int32_t number = 0;
    for (const std::string& content : contents) {
      const auto words = static_cast<std::int32_t>(content.size() / 2);
      index += Big(static_cast<std::int32_t>((100 + records.size()) / 2)) + Big(words);
      records += Big(++number) + Big(words) + content;
    }
    shp = Header(type, records.size()) + records;
    shx = Header(type, index.size()) + index;
  }

 private:
  static std::string Header(std::int32_t type, std::size_t behind) {
    return Big(9994) + std::string(20, '\0') + Big(static_cast<std::int32_t>((100 + behind) / 2)) +
           Little(std::int32_t{1000}) + Little(type) + std::string(64, '\0');
  }
};

struct TableField {
  std::string name;
  int length;
  char type = 'C';
};

/// A dBase table with its terminator, deletion flags and end byte.
inline std::string Table(const std::vector<TableField>& fields, const std::vector<std::vector<std::string>>& rows) {
  std::size_t recordLength = 1;
  std::string descriptors;
  for (const TableField& field : fields) {
    recordLength += static_cast<std::size_t>(field.length);
    std::string name = field.name;
    name.resize(11, '\0');
    descriptors += name + field.type + std::string(4, '\0') + static_cast<char>(field.length) + std::string(15, '\0');
  }
  std::string bytes = std::string("\x03\x7e\x01\x01", 4) + Little(static_cast<std::uint32_t>(rows.size())) +
                      Little(static_cast<std::uint16_t>(33 + 32 * fields.size())) +
                      Little(static_cast<std::uint16_t>(recordLength)) + std::string(20, '\0') + descriptors + "\r";
  for (const auto& row : rows) {
    bytes += ' ';
    for (std::size_t i = 0; i < fields.size(); ++i) {
      std::string value = row[i];
      value.resize(static_cast<std::size_t>(fields[i].length), ' ');
      bytes += value;
    }
  }
  return bytes + '\x1a';
}

}  // namespace tesselink
