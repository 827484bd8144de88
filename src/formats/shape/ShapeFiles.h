// SPDX-License-Identifier: MIT
// Writing .shp and .shx.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/Extents.h"
#include "core/element/tEntity.h"
#include "core/io/Files.h"
#include "formats/shape/Bytes.h"
#include "formats/shape/ShapeLayout.h"

namespace tesselink {

/// What all shapes of a file are; in the order of the option's values.
enum class ShapeKind { PointsOrText, Polyline, Polygon, MultiPoint };

/// A run of an element's vertices that becomes a part of a shape.
struct ShapePart {
  tEntity::Index begin, end;  ///< of its vertices, the end not included
  bool reversed = false;      ///< from the last one to the first
  bool closes = false;        ///< its first vertex stands at its end once more

  std::int64_t Count() const { return end - begin + (closes ? 1 : 0); }
};

/// Appends shapes of one kind to both files, straight from the vertices of an element. The layout is that of the ESRI
/// Shapefile Technical Description of July 1998.
class ShapeFiles {
 public:
  /// The layout counts 16-bit words in a signed 32-bit number.
  static constexpr std::int64_t kGreatestSize = std::int64_t{0x7FFFFFFF} * 2;

  /// `everyType`: the first z other than 0 makes the type with z of the file's type, the first m value that with m, the
  /// shapes before it included; else z and m are dropped. A shape is refused with FileFull where the file would grow
  /// beyond the limit.
  explicit ShapeFiles(bool everyType, std::int64_t sizeLimit = kGreatestSize)
      : everyType_(everyType), sizeLimit_(sizeLimit) {}

  /// Creates one file after the other; `created` takes the names of those that are there even when the next one fails.
  void Create(const std::string& shpPath, const std::string& shxPath, std::vector<std::string>& created);
  bool AreOpen() const { return shp_.IsOpen() && shx_.IsOpen(); }
  /// To be called before the first shape: what the files hold, and whether their type has z or m in any case.
  void Hold(ShapeKind kind, bool z = false, bool m = false);
  /// A vertex of an element as a point.
  void AddPoint(const tEntity& entity, tEntity::Index vertex);
  /// A shape of any other kind; that of a MultiPoint has one part.
  void AddShape(const tEntity& entity, std::span<const ShapePart> parts);
  /// A shape without vertices.
  void AddNull();
  /// Completes the headers by what was written.
  void WriteHeaders();
  void Close();
  void Discard() noexcept;
  /// Bytes that have been written so far.
  std::int64_t Size() const { return shp_.Size() + shx_.Size(); }

 private:
  // The type of the file: with z, which may have m in each record, or else with m.
  struct Form {
    bool z = false, m = false;
  };
  // A shape that is to be written.
  struct Shape {
    std::int64_t parts = 1, vertices = 1;
    Extents box = {};
    bool hasMeasures = false;
  };

  bool IsPoints() const { return kind_ == ShapeKind::PointsOrText; }
  std::int32_t TypeCode() const;
  std::string Header(std::int64_t size) const;
  std::int64_t HeadSize(std::int64_t parts) const;
  std::int64_t ContentSize(const Shape& shape, Form form) const;
  void MakeRoom(const Shape& shape);
  void RequireRoom(std::int64_t bytes) const;
  void BeginRecord(std::int64_t contentSize, std::int32_t type);
  void AddMeasure(double m);
  void Rewrite(Form form);
  std::int64_t CopyRecord(ReadWindow& source, std::int64_t at, Form from);
  void CopyBytes(ReadWindow& source, std::int64_t at, std::int64_t count);
  [[noreturn]] void ThrowOtherCopy() const;
  void PutAgain(double value, std::int64_t count);

  const bool everyType_;
  const std::int64_t sizeLimit_;
  FileWriter shp_, shx_;
  Extents extents_;  // of all shapes
  double leastM_ = 0, greatestM_ = 0;
  bool anyM_ = false;
  ShapeKind kind_ = ShapeKind::Polyline;
  Form form_;
  std::int32_t records_ = 0;
  std::int64_t shapes_ = 0, vertices_ = 0;  // of all records but Null ones
};

}  // namespace tesselink
