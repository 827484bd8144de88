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
namespace {

constexpr double kPi = std::numbers::pi;

}  // namespace

EntityReader::EntityReader(EntitySource source) : context_(std::move(source)) {}

const EntityReader::Type* EntityReader::TypeOf(std::string_view name) {
  using R = EntityReader;
  static constexpr std::array kTypes{
      Type{"POLYLINE", &R::GatherPolyline, &R::MakePolyline},
      Type{"LWPOLYLINE", &R::GatherLwPolyline, &R::MakeLwPolyline},
      Type{"TEXT", &R::Gather, &R::MakeText},
      Type{"MTEXT", &R::Gather, &R::MakeMText},
      Type{"ATTRIB", &R::Gather, &R::MakeAttrib},
      Type{"SEQEND", &R::Gather, &R::MakeNothing},
      Type{"CIRCLE", &R::Gather, &R::MakeCircle},
      Type{"ARC", &R::Gather, &R::MakeArc},
      Type{"ELLIPSE", &R::Gather, &R::MakeEllipse},
      Type{"SPLINE", &R::GatherSpline, &R::MakeSpline},
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

void EntityReader::GatherSpline() {
  context_.spline.Clear();
  const auto coordinate = [this](VertexChain& points, int code) {
    if (code < 20) points.push_back({NumberHere(context_), 0, 0});
    if (points.empty() || code < 20) return;
    (code < 30 ? points.back().y : points.back().z) = NumberHere(context_);
  };
  GatherWith(context_, [&](int code) {
    switch (code) {
      case 10:
      case 20:
      case 30:
        coordinate(context_.spline.control, code);
        return true;
      case 11:
      case 21:
      case 31:
        coordinate(context_.spline.fit, code);
        return true;
      case 40:
        context_.spline.knots.push_back(NumberHere(context_));
        return true;
      case 41:
        context_.spline.weights.push_back(NumberHere(context_));
        return true;
      default:
        return false;
    }
  });
}

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

// A circle that is tilted against the map is no circle there.
bool EntityReader::MakeCircle(tEntity& element) {
  if (!context_.groups.Has(10) || !context_.groups.Has(40)) return Damaged(context_, "has no centre or no radius");
  const ObjectCoordinates plane(context_.groups.Extrusion());
  const double radius = std::fabs(context_.groups.Number(40, 0));
  if (plane.IsTilted()) {
    AppendCircle(context_.chain, context_.groups.Point(0), radius);
    ToWorld(context_, plane);
    element.Closed = true;
    return StoreChain(context_, element, kPolyline);
  }
  return StoreRadius(context_, element, radius) &&
         StorePoint(context_, element, kCircle, plane.ToWorld(context_.groups.Point(0)));
}

bool EntityReader::MakeArc(tEntity& element) {
  if (!context_.groups.Has(10) || !context_.groups.Has(40)) return Damaged(context_, "has no centre or no radius");
  const ObjectCoordinates plane(context_.groups.Extrusion());
  const double radius = std::fabs(context_.groups.Number(40, 0));
  double start = context_.groups.Number(50, 0), end = context_.groups.Number(51, 0);
  if (!(end > start && end - start <= 360)) {
    const double sweep = std::fmod(end - start, 360);
    end = start + (sweep > 0 ? sweep : sweep + 360);
  }
  if (!std::isfinite(start) || !std::isfinite(end)) return Damaged(context_, "has an angle that is no number");
  if (plane.IsTilted()) {
    AppendArc(context_.chain, context_.groups.Point(0), radius, start, end - start);
    ToWorld(context_, plane);
    return StoreChain(context_, element, kPolyline);
  }
  if (plane.IsMirrored()) {
    start = 180 - std::exchange(end, 180 - start);
    const double turn = start < 0 ? 360 : 0;
    start += turn;
    end += turn;
  }
  element.AngStart = static_cast<float>(start);
  element.AngEnd = static_cast<float>(end);
  return StoreRadius(context_, element, radius) &&
         StorePoint(context_, element, kArc, plane.ToWorld(context_.groups.Point(0)));
}

bool EntityReader::MakeEllipse(tEntity& element) {
  if (!context_.groups.Has(10) || !context_.groups.Has(11)) return Damaged(context_, "has no centre or no axis");
  const ObjectCoordinates plane(context_.groups.Extrusion());
  const Vertex& major = context_.groups.Point(1);
  const double ratio = context_.groups.Number(40, 1);
  const Vertex across = Cross(plane.Normal(), major);
  const Vertex minor{ratio * across.x, ratio * across.y, ratio * across.z};
  const double start = context_.groups.Number(41, 0);
  double sweep = context_.groups.Number(42, 2 * kPi) - start;
  if (!(std::hypot(major.x, major.y, major.z) > 0)) return Damaged(context_, "has an axis without length");
  if (!std::isfinite(sweep) || !std::isfinite(ratio)) return Damaged(context_, "has a parameter that is no number");
  constexpr double kRounding = 1e-9;
  if (sweep <= 0 || sweep > 2 * kPi + kRounding) {
    sweep = std::fmod(sweep, 2 * kPi);
    if (sweep <= 0) sweep += 2 * kPi;
  }
  element.Closed = sweep >= 2 * kPi - kRounding;
  AppendEllipse(context_.chain, context_.groups.Point(0), major, minor, start, element.Closed ? 2 * kPi : sweep);
  return StoreChain(context_, element, kPolyline);
}

bool EntityReader::MakeSpline(tEntity& element) {
  // A degree that is not given follows from the number of knots.
  const auto implied = static_cast<std::int64_t>(context_.spline.knots.size()) -
                       static_cast<std::int64_t>(context_.spline.control.size()) - 1;
  context_.spline.degree =
      context_.groups.Integer(71, static_cast<std::int32_t>(std::clamp<std::int64_t>(implied, 0, 1000)));
  context_.spline.closed = (context_.groups.Integer(70, 0) & 1) != 0;
  if (context_.groups.Has(12)) context_.spline.startTangent = context_.groups.Point(2);
  if (context_.groups.Has(13)) context_.spline.endTangent = context_.groups.Point(3);
  if (const std::string reason = AppendSpline(context_.chain, context_.spline); !reason.empty()) {
    Warn(context_, WarningKind::Splines, reason + "; straight segments through its points were delivered");
  }
  element.Closed = context_.spline.closed;
  return StoreChain(context_, element, kPolyline);
}

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
