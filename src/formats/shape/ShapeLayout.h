// SPDX-License-Identifier: MIT
// What reading and writing shapefiles share of the layout, that of the ESRI Shapefile Technical Description of July
// 1998.
#pragma once

#include <cstdint>

namespace tesselink {

inline constexpr std::int32_t kShapeFileCode = 9994;
inline constexpr std::int64_t kShapeHeaderSize = 100;
inline constexpr std::int64_t kIndexEntrySize = 8;
inline constexpr std::int64_t kRecordHeaderSize = 8;
/// The type of a shape, first in its record.
inline constexpr std::int64_t kTypeSize = 4;
/// An x and a y.
inline constexpr std::int64_t kXYSize = 16;

/// m values up to it stand for none; the layout says those below, and files have it itself.
inline constexpr double kLeastMeasure = -1e38;

/// How the content of a record is laid out.
enum class ShapeLayout { None, Point, MultiPoint, Parts, Patches };

/// A type of shape.
struct ShapeType {
  std::int32_t code;  ///< in the file
  ShapeLayout layout;
  const char* name;
  bool isArea;     ///< its parts are the rings of one
  bool isClosed;   ///< they are rings or outlines
  bool hasZ;       ///< behind x and y
  bool mayHaveM;   ///< behind these
  bool isClassic;  ///< of those that the system's own convention reads
};

/// The type of a code; nullptr for a code that stands for none.
const ShapeType* ShapeTypeOf(std::int32_t code);

}  // namespace tesselink
