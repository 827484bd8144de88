// SPDX-License-Identifier: MIT
#include "formats/dxf/EntityReader.h"

#include "core/run/Report.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/EntityTypes.h"
#include "formats/dxf/TextEntities.h"

namespace tesselink {

bool EntityReader::Read(tEntity& element) {
  context_.groups.Begin(context_.source.scanner.Place());
  context_.wires.Clear();
  context_.lines.at = TextLines::kNone;
  context_.atEnd = context_.toDraw = false;
  context_.lost = 0;
  const std::string_view name = context_.source.scanner.Keyword();
  const EntityType* type = EntityTypeOf(name);
  if (type != nullptr && type->ofWhole && !context_.source.whole) type = nullptr;
  isOfInsert_ = type != nullptr && type->ofInsert;
  if (!isOfInsert_) context_.inArray = false;
  if (type == nullptr) {
    PassOver(name);
    return false;
  }
  context_.type = type->name;
  context_.chain.clear();
  type->gather(context_);
  if (context_.groups.WrongPlace() != 0) {
    WarnAt(context_, context_.groups.WrongPlace(), WarningKind::Numbers, "expected a number");
  }
  if (!IsWanted(type) || type->make == nullptr) return false;
  const bool made = type->make(context_, element);
  if (made || context_.toDraw) StoreAttributes(context_, element);
  return made;
}

std::int32_t EntityReader::RgbOf(const DrawingLayer& layer) { return tesselink::RgbOf(context_, layer); }

bool EntityReader::NextWire(tEntity& element) {
  const bool stored = StoreWire(context_, element) || StoreTextLine(context_, element);
  if (stored || context_.toDraw) StoreAttributes(context_, element);
  return stored;
}

// Counts an entity of a type that is no element.
void EntityReader::PassOver(std::string_view name) {
  context_.type = ShownType(name);
  insertInPaper_ = false;
  while (NextGroup(context_)) {
    if (context_.source.scanner.Code() == 67) context_.groups.Take(context_.source.scanner);
  }
  if (context_.type == "VIEWPORT" && context_.groups.Integer(67, 0) == 1) return;  // a window on the drawing
  if (IsWanted(nullptr)) context_.source.report.Undelivered(context_.type);
}

// Attributes are where their insert is, whatever they say. The type is null for one that is not read.
bool EntityReader::IsWanted(const EntityType* type) {
  if (type == nullptr || !type->ofInsert) insertInPaper_ = context_.groups.Integer(67, 0) == 1;
  if (!insertInPaper_ || context_.source.paperSpace) return true;
  const bool told = type == nullptr || type->make != nullptr;
  if (told) Warn(context_, WarningKind::PaperSpace, "lies in paper space and was left out");
  return false;
}

}  // namespace tesselink
