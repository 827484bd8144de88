// The shapefile reader: .shp by way of its .shx, with layer and label text from its .dbf.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "core/FieldSelection.h"
#include "core/Files.h"
#include "core/Filters.h"
#include "core/Paths.h"
#include "formats/shape/DBFInFilter.h"

namespace tesselink {

/// Delivers one element a part in file order and, where a label field is chosen, one text at the record's centre behind
/// them. Points and vertices are streamed, so memory follows the largest part, not the file. The file layout is that of
/// the ESRI Shapefile Technical Description of July 1998.
///
/// Shape n, counted from 1, takes its attributes from row n counted from 0: the row after the one at its own position.
/// This is the system's convention.
class ESRIInFilt final : public InputFilter {
 public:
  explicit ESRIInFilt(const FilterContext& context) : InputFilter(context) {}

  int FileNumber() const override { return shp_.Number(); }
  std::int64_t Loc() const override { return position_; }
  double Progress() const override;
  /// True once everything that the index lists has been delivered.
  bool Eof() const override;
  std::string Where() const override;
  /// Turns attribute use on and takes the selection that several files share.
  void SetDBFObj(FieldSelection& selection) override;
  std::string AttributesPath() const override { return PartnerFile(filename_, "DBF"); }
  std::int64_t Records() const override { return records_; }

  /// The number of records, by the length of the index.
  std::int64_t NumPoints() const { return records_; }
  /// As GetNextEntity, from a record counted from 1 on.
  bool GetNextEntity(tEntity& entity, std::int64_t record);
  using InputFilter::GetNextEntity;

 private:
  // Where the pieces of the current record lie. Offsets count from the file's first byte; 0 parts means that nothing is
  // left.
  struct Record {
    std::int32_t type = 0;
    std::int32_t parts = 0;
    std::int32_t points = 0;
    std::int64_t partsAt = 0;
    std::int64_t pointsAt = 0;
    std::int64_t zAt = 0;  // 0: no Z values
  };
  struct Range {
    std::int32_t first = 0, count = 0;
  };

  void Open(const std::string& path) override;
  bool Next(tEntity& entity) override;
  bool Deliver(tEntity& entity);
  void WarnOfUnlisted();

  void OpenMainFile(const std::string& path);
  void OpenTable();
  void UseTable();
  bool NextRecord();
  bool LoadRecord();
  std::int64_t RecordLength(std::int64_t at, std::int64_t indexWords, std::int64_t ownWords);
  void WarnOfLength();
  bool Holds(std::int64_t bytes, std::int64_t available);
  bool LoadPoint(std::int64_t available);
  bool LoadChain(std::span<const std::byte> head, std::int64_t available);
  bool LoadMultiPoint(std::span<const std::byte> head, std::int64_t available);
  void ReportUnhandled(std::int32_t type);
  std::span<const std::byte> Piece(ReadWindow& window, std::int64_t offset, std::size_t count);
  bool DeliverPart(tEntity& entity);
  bool DeliverLabel(tEntity& entity);
  bool NextRange(Range& range);
  bool StoreVertices(tEntity& entity, Range range);
  void StoreZ(tEntity& entity, Range range);
  bool DropWildVertices(tEntity& entity);
  void SetAttributes(tEntity& entity);
  void WarnRecord(std::string_view kind, const std::string& what);

  bool UsesTable() const { return Layered && table_ != nullptr; }

  BinaryFile shp_, shx_;
  // Records come whole from one window; what is too large for it is read by a window for each of its pieces.
  ReadWindow index_{shx_}, recordBytes_{shp_}, partStarts_{shp_}, vertices_{shp_}, zValues_{shp_};
  std::span<const std::byte> whole_;
  std::int64_t wholeAt_ = 0;
  std::int64_t records_ = 0;
  std::int64_t record_ = 0;  // 1-based; 0 before the first
  std::int64_t position_ = 0;
  std::int64_t ownLength_ = 0;  // of the current record, by its own header
  std::int64_t listed_ = 0;     // bytes of the header and of every record so far
  bool inOrder_ = true;         // every record so far was read once, so that the sum above says something
  Record current_;
  std::int32_t part_ = 0;       // the next part of the current record
  std::int32_t nextPoint_ = 0;  // no part may begin before it
  bool labelPending_ = false;
  bool tableTried_ = false;  // for the file that is open

  std::unique_ptr<DBFInFilter> table_;
  FieldSelection ownSelection_;
  FieldSelection* selection_ = &ownSelection_;
  int layerField_ = -1, textField_ = -1;
};

}  // namespace tesselink
