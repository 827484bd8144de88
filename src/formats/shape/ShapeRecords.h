// SPDX-License-Identifier: MIT
// The records of a shapefile: .shp by way of its .shx, or by their own headers.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/element/VertexChains.h"
#include "core/element/tEntity.h"
#include "core/io/Files.h"
#include "formats/shape/RecordWalk.h"
#include "formats/shape/ShapeLayout.h"

namespace tesselink {

class Report;
enum class WarningKind;

/// Finds each record and reads its parts as vertices of an element. Points and vertices are streamed, so memory follows
/// the largest element, not the file. A record that cannot be read is a warning, and holds nothing.
class ShapeRecords {
 public:
  /// `everyType`: types outside of the system's own convention are read too, m values, and records whose index is
  /// missing or does not fit.
  ShapeRecords(Report& report, bool everyType) : report_(report), everyType_(everyType) {}

  /// Opens the main file, closing the one before; nothing is listed until its index is open too. Throws Error for a
  /// file that is no shapefile.
  void Open(const std::string& path);
  void OpenIndex(const std::string& path);
  void OpenWithoutIndex();
  void Close();

  const BinaryFile& File() const { return shp_; }
  /// The number of records, by the length of the index or the number of the last one.
  std::int64_t Count() const { return count_; }
  /// The current record, from 1; 0 before the first.
  std::int64_t Number() const { return number_; }
  /// The end of the current record in the main file.
  std::int64_t Position() const { return position_; }
  bool AtEnd() const { return number_ >= count_; }
  /// The type that the file's header gives for all records; nullptr where it gives none.
  const ShapeType* FileType() const { return ShapeTypeOf(fileType_); }
  /// What the header says of the extents: the least x and y, the greatest x and y.
  const std::array<double, 4>& Box() const { return box_; }
  /// File and record, as in "wells.shp, record 7".
  std::string Where() const { return shp_.Path() + ", record " + std::to_string(number_); }

  /// Makes the record with that number the next one.
  void MoveTo(std::int64_t number);
  /// Goes on to the next record. False when it holds nothing that is read.
  bool Next();
  /// The code in the current record; 0 for one that could not be found.
  std::int32_t TypeCode() const { return current_.code; }
  /// The type of that code; nullptr where the code stands for none.
  const ShapeType* Type() const { return ShapeTypeOf(current_.code); }
  bool Reads(const ShapeType& type) const { return everyType_ || type.isClassic; }
  /// Whether the current record was read and has no vertices.
  bool IsEmpty() const { return current_.isEmpty; }

  /// Leaves the current record as if it held nothing more.
  void Leave() { part_ = current_.parts; }
  std::int32_t Parts() const { return current_.parts; }
  bool AtFirstPart() const { return part_ == 0; }
  bool PartsLeft() const { return part_ < current_.parts; }
  /// Puts the vertices of the next part into a cleared element. False when the part holds none. A triangle strip comes
  /// as its outline.
  bool ReadPart(tEntity& entity);
  /// The same for all parts of the record, where they begin and their m values included. False when they hold none.
  bool ReadShape(tEntity& entity);
  /// The same for all points of the record, as a single part.
  bool ReadPoints(tEntity& entity) { return StoreVertices(entity, {0, current_.points}); }

  /// Warns of what belongs to no record, once all has been read.
  void WarnOfUnlisted();

 private:
  // Where the pieces of the current record lie. Offsets count from the file's first byte; 0 parts means that nothing is
  // left.
  struct Record {
    std::int32_t code = 0;
    std::int32_t parts = 0;
    std::int32_t points = 0;
    std::int64_t partsAt = 0;
    std::int64_t partTypesAt = 0;  // of a MultiPatch alone
    std::int64_t pointsAt = 0;
    std::int64_t zAt = 0;  // 0: no Z values
    std::int64_t mAt = 0;  // 0: no m values
    bool isEmpty = false;
  };
  struct Range {
    std::int32_t first = 0, count = 0;
  };

  void WalkInstead(const std::string& reason);
  bool Walk();
  bool Load();
  bool LoadAt(std::int64_t at, std::span<const std::byte> head, std::int64_t available);
  std::int64_t RecordLength(std::int64_t at, std::int64_t next, std::int64_t indexWords, std::int64_t ownWords);
  void WarnOfLength();
  bool Holds(std::int64_t bytes, std::int64_t available);
  bool LoadPoint(const ShapeType& type, std::int64_t available);
  bool LoadMultiPoint(const ShapeType& type, std::span<const std::byte> head, std::int64_t available);
  bool LoadParts(const ShapeType& type, std::span<const std::byte> head, std::int64_t available);
  void FindZAndM(const ShapeType& type, std::int64_t at, std::int64_t behindPoints, std::int64_t available);
  void WarnOfNoZ();
  void FindMeasures(const ShapeType& type, std::int64_t at, std::int32_t count);
  std::span<const std::byte> Piece(ReadWindow& window, std::int64_t offset, std::size_t count);
  bool NextRange(Range& range);
  bool FollowOn(std::vector<tEntity::Index>& starts);
  void ReadPiecewise(tEntity& entity);
  bool StoreVertices(tEntity& entity, Range range);
  bool StorePlace(tEntity& entity, std::int32_t index);
  bool StoreXY(tEntity& entity, Range range);
  void StoreZ(tEntity& entity, Range range);
  void StoreMeasures(tEntity& entity, Range range);
  bool DropWildVertices(tEntity& entity);
  void OutlineOfPatch(tEntity& entity, std::int32_t part);
  void Warn(WarningKind kind, const std::string& what);

  Report& report_;
  const bool everyType_;
  BinaryFile shp_, shx_;
  RecordWalk walk_{shp_};
  bool walking_ = false;  // records are found by it, not by the index
  // Records come whole from one window; what is too large for it is read by a window for each of its pieces.
  ReadWindow index_{shx_}, recordBytes_{shp_}, partStarts_{shp_}, vertices_{shp_}, values_{shp_};
  std::span<const std::byte> whole_;
  std::int64_t wholeAt_ = 0;
  std::int32_t fileType_ = 0;
  std::array<double, 4> box_{};
  std::int64_t count_ = 0;
  std::int64_t number_ = 0;
  std::int64_t position_ = 0;
  std::int64_t ownLength_ = 0;  // of the current record, by its own header
  std::int64_t listed_ = 0;     // bytes of the header and of every record so far
  bool inOrder_ = true;         // every record so far was read once, so that the sum above says something
  Record current_;
  std::int32_t part_ = 0;       // the next part of the current record
  std::int32_t nextPoint_ = 0;  // no part may begin before it
  VertexChain strip_;
  tEntity piece_;
};

}  // namespace tesselink
