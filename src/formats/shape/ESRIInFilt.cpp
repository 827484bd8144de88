// SPDX-License-Identifier: MIT
#include "formats/shape/ESRIInFilt.h"

#include <algorithm>
#include <utility>

#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/EncodingOption.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"
#include "core/run/ScanProgress.h"
#include "core/run/Translatable.h"
#include "formats/shape/LabelHeight.h"

namespace tesselink {
namespace {

// A message whose text has the subject in the place of %1.
Message About(const std::string& subject, const char* text, const char* title, MessageIcon icon,
              Topic topic = Topic::Notice) {
  return {.topic = topic, .text = Replaced(text, "%1", subject), .title = title, .icon = icon, .subject = subject};
}

constexpr ESRIReading kClassicShapeReading{.rowOfFirstShape = 1,
                                           .everyType = false,
                                           .needsIndex = true,
                                           .wholeShapes = false,
                                           .skipsDeleted = false,
                                           .closesPolygons = false,
                                           .layerZeroWithoutField = false,
                                           .knowsDrawings = false,
                                           .legibleLabels = false};
constexpr ESRIReading kStandardShapeReading{.rowOfFirstShape = 0,
                                            .everyType = true,
                                            .needsIndex = false,
                                            .wholeShapes = true,
                                            .skipsDeleted = true,
                                            .closesPolygons = true,
                                            .layerZeroWithoutField = true,
                                            .knowsDrawings = true,
                                            .legibleLabels = true};

}  // namespace

ESRIInFilt::ESRIInFilt(const FilterContext& context)
    : InputFilter(context),
      reading_(options().dialect == Dialect::Classic ? kClassicShapeReading : kStandardShapeReading),
      records_(report(), reading_.everyType),
      colours_(options().programFolder, report()) {}

void ESRIInFilt::Open(const std::string& path) {
  if (!IsThere(path)) return;
  Close();
  try {
    OpenFiles(path);
  } catch (...) {
    Close();
    throw;
  }
}

void ESRIInFilt::Close() {
  filename_.clear();
  layers_.clear();
  labels_.reset();
  others_.reset();
  table_.reset();
  isDrawing_ = false;
  shapePending_ = labelPending_ = tableTried_ = tableBroken_ = tableTold_ = false;
  records_.Close();
}

void ESRIInFilt::OpenFiles(const std::string& path) {
  records_.Open(path);
  const std::string indexPath = PartnerFile(path, "SHX");
  if (indexPath.empty() && reading_.needsIndex) {
    interaction().ShowMessage(About(LowerCase(StripExtension(path) + ".SHX"),
                                    TRANSLATABLE("Messages", "Fatal Error: Could not find file %1"), "Error",
                                    MessageIcon::Critical));
    records_.Close();
    return;
  }
  filename_ = path;
  indexPath.empty() ? records_.OpenWithoutIndex() : records_.OpenIndex(indexPath);
  OpenTable();
  if (reading_.skipsDeleted) FindTable();
  KnowDrawing();
}

std::unique_ptr<DBFInFilter> ESRIInFilt::NewTable() const {
  return std::make_unique<DBFInFilter>(options().dialect, &report(), ChosenPage(options()));
}

// Opens the table where nobody asked for it, so that a broken one is no reason to stop; one that cannot be read is.
// False when there is none.
bool ESRIInFilt::FindTable() {
  if (table_) return true;
  const std::string path = TablePath();
  if (path.empty() || tableBroken_) return false;
  try {
    auto table = NewTable();
    table->OpenExisting(path);
    table->NumRecs();
    table_ = std::move(table);
  } catch (const ReadFailed&) {
    throw;
  } catch (const Error& error) {
    report().Warn(WarningKind::BrokenTable, std::string(error.what()) + "; no attributes are taken from it");
    tableBroken_ = true;
  }
  return table_ != nullptr;
}

AttributeTable* ESRIInFilt::Attributes() {
  if (filename_.empty() || !FindTable()) return nullptr;
  TellOfTable();
  if (!isDrawing_) return table_.get();
  return others_ ? &*others_ : nullptr;
}

// What the program itself has written of a drawing is a drawing, unless somebody wants to have it otherwise.
void ESRIInFilt::KnowDrawing() {
  const bool mayBe = reading_.knowsDrawings && table_ != nullptr && (!Layered || selection_->ChoosesNothing());
  others_.reset();
  isDrawing_ = mayBe && columns_.Find(*table_);
  if (!isDrawing_) return;
  TellOfTable();
  if (!columns_.OtherFields().empty()) others_.emplace(*table_, columns_.OtherFields());
  if (!Layered || !options().layersWanted) return;
  FieldSelection drawn;
  drawn.Create(*table_);
  drawn.Choose(FormOf(Column::Layer).name);
  GatherLayers(drawn);
}

// What whoever takes attributes from the table should know of it.
void ESRIInFilt::TellOfTable() {
  if (std::exchange(tableTold_, true)) return;
  const std::int64_t rows = table_->NumRecs();
  if (rows < records_.Count()) {
    report().Warn(WarningKind::ShortTable, table_->filename() + ": has " + Counted(rows, "row") + " for " +
                                               Counted(records_.Count(), "shape") +
                                               "; shapes without a row have empty values");
  }
  table_->WarnOfEncoding();
}

void ESRIInFilt::OpenTable() {
  if (!Layered) return;
  tableTried_ = true;
  const std::string tablePath = TablePath();
  if (tablePath.empty()) {
    interaction().ShowMessage(About(LowerCase(StripExtension(filename_) + ".DBF"),
                                    TRANSLATABLE("Messages", "Warning: \r\nCould not find file %1"), "",
                                    MessageIcon::Warning));
    Layered = false;
    return;
  }
  if (!table_) {
    table_ = NewTable();
    table_->OpenExisting(tablePath);
  }
  selection_->Create(*table_);
  UseTable();
}

// Asks for the fields unless they are chosen already, and gathers the layers that the table holds.
void ESRIInFilt::UseTable() {
  if (selection_->CurrentStep() != FieldSelection::Step::Done) {
    selection_->LayerWithoutField(!reading_.layerZeroWithoutField ? FieldSelection::WithoutField::Unassociated
                                  : reading_.knowsDrawings && columns_.Find(*table_)
                                      ? FieldSelection::WithoutField::OfDrawing
                                      : FieldSelection::WithoutField::Zero);
    interaction().SelectFields(*selection_);
  }
  const std::string& path = table_->filename();
  layerField_ = LabelFields::FieldNumber(selection_->LayerField(), *table_, path, report());
  labels_.emplace(*selection_, *table_, path, report());
  if (reading_.rowOfFirstShape != 0 && !selection_->ChoosesNothing()) {
    report().Warn(WarningKind::ShiftedRows, path +
                                                ": shape 1 takes layer and text from row 2, shape 2 from row 3, and so "
                                                "on; the last shape has none; the standard dialect (" +
                                                interaction().Naming("dialect", "standard") +
                                                ") gives each shape its own row");
  }
  TellOfTable();
  if (labels_->Wanted() && reading_.legibleLabels) ChooseLabelHeight();
  if (options().layersWanted) GatherLayers(*selection_);
}

void ESRIInFilt::GatherLayers(const FieldSelection& selection) {
  constexpr std::int64_t kRows = 4096;
  ScanProgress progress(interaction(), "Loading Database...", kRows);
  layers_ = selection.Entries([&](std::int64_t row) { progress.At(row, table_->NumRecs()); });
  progress.End();
}

void ESRIInFilt::ChooseLabelHeight() {
  const LabelHeight chosen = HeightOfLabels(records_.Box(), ProjectionPath());
  labels_->DefaultHeight(chosen.height);
  if (labels_->HasHeight()) return;
  report().Warn(WarningKind::LabelHeight, filename_ + ": its labels are " + NumberText(chosen.height) + " high, " +
                                              std::string(chosen.why) + "; " +
                                              interaction().Naming("text-height", "N") + " gives them another height");
}

void ESRIInFilt::SetDBFObj(FieldSelection& selection) {
  const bool attached = tableTried_ && selection_ == &selection;
  Layered = true;
  selection_ = &selection;
  if (attached || filename_.empty()) return;
  OpenTable();
  KnowDrawing();
}

double ESRIInFilt::Progress() const { return Percentage(Loc(), records_.File().Size()); }

bool ESRIInFilt::Eof() const { return records_.AtEnd() && !ShapeLeft() && !labelPending_; }

ElementForm ESRIInFilt::Form() const {
  const ShapeType* type = reading_.wholeShapes ? records_.FileType() : nullptr;
  ElementForm form{.isDrawing = isDrawing_,
                   .lineTypes = isDrawing_ && columns_.Has(Column::LineType),
                   .blocks = isDrawing_ && columns_.Has(Column::Block) && columns_.Has(Column::EntityHandle)};
  if (type == nullptr || type->layout == ShapeLayout::None) return form;
  form.heights = type->hasZ;
  form.measures = type->mayHaveM && !type->hasZ;
  form.shape = type->layout == ShapeLayout::Point        ? ElementForm::Shape::Points
               : type->layout == ShapeLayout::MultiPoint ? ElementForm::Shape::PointGroups
               : type->isArea                            ? ElementForm::Shape::Areas
                                                         : ElementForm::Shape::Chains;
  return form;
}

bool ESRIInFilt::GetNextEntity(tEntity& entity, std::int64_t record) {
  if (record > 0) {
    if (filename_.empty() || record > NumPoints()) return false;
    records_.MoveTo(record);
    shapePending_ = labelPending_ = false;
  }
  return GetNextEntity(entity);
}

bool ESRIInFilt::Next(tEntity& entity) {
  if (filename_.empty()) return false;
  const bool delivered = Deliver(entity);
  if (Eof()) records_.WarnOfUnlisted();
  return delivered;
}

bool ESRIInFilt::Deliver(tEntity& entity) {
  for (;;) {
    if (ShapeLeft()) {
      if (DeliverShape(entity)) return true;
    } else if (labelPending_) {
      labelPending_ = false;
      if (DeliverLabel(entity)) return true;
    } else if (!NextRecord()) {
      return false;
    }
  }
}

// Goes on to the next record that holds something. False when there is none, or when the record was one to tell the
// person about, so that the run yields after each message.
bool ESRIInFilt::NextRecord() {
  while (!records_.AtEnd()) {
    const bool holdsVertices = records_.Next();
    if (holdsVertices || (reading_.wholeShapes && records_.IsEmpty())) {
      if (IsDeleted()) continue;
      shapePending_ = true;
      labelPending_ = holdsVertices && UsesTable() && labels_ && labels_->Wanted();
      return true;
    }
    if (ReportUnread()) return false;
  }
  return false;
}

// Whether the record is to be left out for its row.
bool ESRIInFilt::IsDeleted() {
  if (!reading_.skipsDeleted || table_ == nullptr || !table_->IsDeleted(Row())) return false;
  report().Warn(WarningKind::Deleted, Where() + ": was left out, because its row in the table is marked as deleted");
  records_.Leave();
  return true;
}

// Counts a record of a type that is not read. True when the person was told.
bool ESRIInFilt::ReportUnread() {
  const ShapeType* type = records_.Type();
  if (type != nullptr && records_.Reads(*type)) return false;
  report().Undelivered(type == nullptr ? std::to_string(records_.TypeCode()) : type->name);
  if (type == nullptr) return false;
  interaction().ShowMessage(About(type->name, TRANSLATABLE("Messages", "Unhandled Data Type %1"), "",
                                  MessageIcon::Information, Topic::Unread));
  return true;
}

// A fresh element of the current record.
void ESRIInFilt::Begin(tEntity& entity, Kind kind) const {
  entity.Reset();
  entity.bType = kind;
  entity.Layer.push_back('0');
  entity.Record = records_.Number();
}

// The whole record, or its next part.
bool ESRIInFilt::DeliverShape(tEntity& entity) {
  // A record without vertices may say no more than that it is none of points.
  const ShapeType& own = *records_.Type();
  const ShapeType& type =
      own.layout == ShapeLayout::None && records_.FileType() != nullptr ? *records_.FileType() : own;
  const bool isPoint = type.layout == ShapeLayout::Point || type.layout == ShapeLayout::MultiPoint;
  shapePending_ = false;
  Begin(entity, isPoint ? kPoint : kPolyline);
  if (reading_.wholeShapes) {
    if (records_.PartsLeft()) records_.ReadShape(entity);
    entity.IsArea = type.isArea && !entity.IsNull();
    if (type.layout == ShapeLayout::Patches) {
      report().Warn(WarningKind::Patches, Where() + ": a MultiPatch came as closed chains, without its faces");
    }
  } else {
    if (records_.AtFirstPart()) {
      lost_ = (type.isArea ? kLostArea : 0U) | (records_.Parts() > 1 ? kLostParts : 0U);
    }
    if (!records_.ReadPart(entity)) return false;
    entity.Lost = std::exchange(lost_, 0U);
  }
  entity.Closed = reading_.closesPolygons && type.isClosed;
  SetAttributes(entity);
  return true;
}

bool ESRIInFilt::DeliverLabel(tEntity& entity) {
  Begin(entity, kText);
  if (!records_.ReadPoints(entity)) return false;
  entity.ResetToCentroid();
  SetAttributes(entity);
  entity.TextUnits.assign(1, 'M');
  entity.IsLabel = true;
  entity.TextJust = JustificationCode({TextPlacement::kMiddle, TextPlacement::kCentre});
  return labels_->Fill(Row(), entity);
}

void ESRIInFilt::TakeAttributes(tEntity& entity) {
  if (isDrawing_) {
    columns_.Store(*table_, Row(), entity);
    if (!Codes().empty()) entity.CDFCode = codes_.CodeOf(entity.Layer);
    return;
  }
  if (layerField_ >= 0 || !reading_.layerZeroWithoutField) entity.Layer = table_->GetFieldData(layerField_, Row());
  entity.CDFCode = codes_.CodeOf(entity.Layer);
  const int colour = labels_ ? labels_->ColourField() : -1;
  if (colour >= 0) colours_.Give(table_->GetFieldData(colour, Row()), entity, table_->filename(), Row());
}

}  // namespace tesselink
