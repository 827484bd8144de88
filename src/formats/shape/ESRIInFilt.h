// SPDX-License-Identifier: MIT
// The shapefile reader: .shp by way of its .shx, with layer and label text from its .dbf.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/io/Paths.h"
#include "core/run/FieldSelection.h"
#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/LabelFields.h"
#include "formats/shape/DBFInFilter.h"
#include "formats/shape/DrawingColumns.h"
#include "formats/shape/FieldColours.h"
#include "formats/shape/ShapeRecords.h"

namespace tesselink {

/// What a dialect decides in reading a shapefile. What it decides in reading the table, DBFReading tells.
struct ESRIReading {
  std::int64_t rowOfFirstShape;  ///< counted from 0; the row of shape n follows
  bool everyType;                ///< PointZ, the M types and MultiPatch are read; else a person is told of each record
  bool needsIndex;               ///< else records whose index is missing or does not fit are read by their own headers
  bool wholeShapes;   ///< one element a record, with its parts and m values, and one without vertices for a Null shape
  bool skipsDeleted;  ///< a shape whose row is marked as deleted is left out
  bool closesPolygons;         ///< polygons are areas, and the parts of a MultiPatch `Closed`
  bool layerZeroWithoutField;  ///< layer "0" where no field is chosen for it; else an empty layer
  bool knowsDrawings;          ///< a table that a drawing was written into makes one again, where no field is chosen
  bool legibleLabels;          ///< labels that are given no height have one by the size of the drawing; else 1000
};

/// Delivers one element a part in file order, or one a record in the standard dialect, and, where a label field is
/// chosen, one text at the record's centre behind them.
///
/// By the system's own convention shape n, counted from 1, takes its attributes from row n counted from 0: the row
/// after the one at its own position.
class ESRIInFilt final : public InputFilter {
 public:
  explicit ESRIInFilt(const FilterContext& context);
  /// The files beside a .shp that are read with it.
  static std::vector<Companion> Companions() { return {{"SHX"}, {"DBF"}, {"CPG"}, {"PRJ"}}; }

  int FileNumber() const override { return records_.File().Number(); }
  std::int64_t Loc() const override { return records_.Position(); }
  double Progress() const override;
  /// True once the last record has been delivered.
  bool Eof() const override;
  std::string Where() const override { return records_.Where(); }
  TextEncoding Encoding() const override { return table_ ? table_->Encoding() : TextEncoding(); }
  /// Turns attribute use on and takes the selection that several files share.
  void SetDBFObj(FieldSelection& selection) override;
  AttributeTable* Attributes() override;
  std::string AttributesPath() const override { return isDrawing_ && !others_ ? std::string() : TablePath(); }
  ElementForm Form() const override;
  std::int64_t Records() const override { return records_.Count(); }
  std::string ProjectionPath() const override { return PartnerFile(filename_, "PRJ"); }

  /// The number of records, by the length of the index or the number of the last one.
  std::int64_t NumPoints() const { return records_.Count(); }
  /// As GetNextEntity, from a record counted from 1 on.
  bool GetNextEntity(tEntity& entity, std::int64_t record);
  using InputFilter::GetNextEntity;

 private:
  void Open(const std::string& path) override;
  void OpenFiles(const std::string& path);
  void Close();
  bool Next(tEntity& entity) override;
  bool Deliver(tEntity& entity);
  std::string TablePath() const { return PartnerFile(filename_, "DBF"); }
  std::unique_ptr<DBFInFilter> NewTable() const;
  void OpenTable();
  void UseTable();
  void GatherLayers(const FieldSelection& selection);
  void ChooseLabelHeight();
  bool FindTable();
  void KnowDrawing();
  void TellOfTable();
  bool NextRecord();
  bool IsDeleted();
  bool ReportUnread();
  void Begin(tEntity& entity, Kind kind) const;
  bool DeliverShape(tEntity& entity);
  bool DeliverLabel(tEntity& entity);
  void SetAttributes(tEntity& entity) {
    if (isDrawing_ || UsesTable()) TakeAttributes(entity);
  }
  void TakeAttributes(tEntity& entity);

  bool ShapeLeft() const { return reading_.wholeShapes ? shapePending_ : records_.PartsLeft(); }
  bool UsesTable() const { return Layered && table_ != nullptr; }
  // The row of the current record, from 0.
  std::int64_t Row() const { return records_.Number() - 1 + reading_.rowOfFirstShape; }

  const ESRIReading& reading_;
  ShapeRecords records_;
  std::uint32_t lost_ = 0;     // of the record, by what is delivered of it; see ReadingLoss
  bool shapePending_ = false;  // of the current record, where it is delivered whole
  bool labelPending_ = false;
  // For the file that is open:
  bool tableTried_ = false;   // its fields were asked for
  bool tableBroken_ = false;  // it cannot be read
  bool tableTold_ = false;    // what is to be said of it was said

  std::unique_ptr<DBFInFilter> table_;
  FieldSelection ownSelection_;
  FieldSelection* selection_ = &ownSelection_;
  int layerField_ = -1;
  std::optional<LabelFields> labels_;
  FieldColours colours_;
  bool isDrawing_ = false;  // the table has what follows
  DrawingColumns columns_;
  std::optional<SomeFields> others_;  // none: there are no others
};

}  // namespace tesselink
