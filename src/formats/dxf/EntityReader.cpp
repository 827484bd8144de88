#include "formats/dxf/EntityReader.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/EntityTypes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>

#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {
EntityReader::EntityReader(EntitySource source) : context_(std::move(source)) {}

const EntityReader::Type* EntityReader::TypeOf(std::string_view name) {
  using R = EntityReader;
  static constexpr std::array kTypes{
      Type{"POLYLINE", &R::GatherPolyline, &R::MakePolyline},
      Type{"LWPOLYLINE", &R::GatherLwPolyline, &R::MakeLwPolyline},
      Type{"SEQEND", &R::Gather, &R::MakeNothing},
  };
  const auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](const Type& type) { return type.name == name; });
  return found == kTypes.end() ? nullptr : &*found;
}

bool EntityReader::Read(tEntity& element) {
  context_.groups.Begin(context_.source.scanner.Place());
  context_.wires.Clear();
  const std::string_view name = context_.source.scanner.Keyword();
  const EntityType* type = EntityTypeOf(name);
  const Type* own = type == nullptr ? TypeOf(name) : nullptr;
  if (type == nullptr && own == nullptr) {
    PassOver(name);
    return false;
  }
  context_.type = type != nullptr ? type->name : own->name;
  context_.chain.clear();
  type != nullptr ? type->gather(context_) : (this->*own->gather)();
  if (context_.groups.WrongPlace() != 0) {
    WarnAt(context_, context_.groups.WrongPlace(), WarningKind::Numbers, "expected a number");
  }
  if (!IsWanted()) return false;
  if (!(type != nullptr ? type->make(context_, element) : (this->*own->make)(element))) return false;
  StoreAttributes(context_, element);
  return true;
}

bool EntityReader::NextWire(tEntity& element) {
  if (!StoreWire(context_, element)) return false;
  StoreAttributes(context_, element);
  return true;
}

// ---- gathering groups

void EntityReader::Gather() { GatherCommon(context_); }

void EntityReader::GatherLwPolyline() {
  context_.bulges.clear();
  GatherWith(context_, [this](int code) {
    switch (code) {
      case 10:
        context_.chain.push_back({NumberHere(context_), 0, 0});
        return true;
      case 20:
        if (!context_.chain.empty()) context_.chain.back().y = NumberHere(context_);
        return true;
      case 42:
        if (!context_.chain.empty()) {
          context_.bulges.resize(context_.chain.size());
          context_.bulges.back() = NumberHere(context_);
        }
        return true;
      default:
        return false;
    }
  });
}

// ---- making elements

bool EntityReader::MakeNothing(tEntity&) { return false; }

// ---- reporting what is not delivered

// Counts an entity of a type that is no element.
void EntityReader::PassOver(std::string_view name) {
  context_.type = ShownType(name);
  insertInPaper_ = false;
  while (NextGroup(context_)) {
    if (context_.source.scanner.Code() == 67) context_.groups.Take(context_.source.scanner);
  }
  if (context_.type == "VIEWPORT" && context_.groups.Integer(67, 0) == 1) return;  // a window on the drawing
  if (IsWanted()) context_.source.report.Undelivered(context_.type);
}

// Attributes are where their insert is, whatever they say.
bool EntityReader::IsWanted() {
  const bool part = context_.type == "ATTRIB" || context_.type == "SEQEND";
  if (!part) insertInPaper_ = context_.groups.Integer(67, 0) == 1;
  const bool paper = insertInPaper_ || context_.groups.Integer(67, 0) == 1;
  if (!paper || context_.source.paperSpace) return true;
  if (context_.type != "SEQEND") Warn(context_, WarningKind::PaperSpace, "lies in paper space and was left out");
  return false;
}

}  // namespace tesselink
