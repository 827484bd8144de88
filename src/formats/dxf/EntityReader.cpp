#include "formats/dxf/EntityReader.h"

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
constexpr std::int32_t kByLayer = 256;

bool IsFinite(const Vertex& v) { return std::isfinite(v.x) && std::isfinite(v.y); }

// 0xRRGGBB as a colour with red in the low byte.
std::int32_t RedLow(std::int32_t colour) { return (colour >> 16 & 0xFF) | (colour & 0xFF00) | (colour & 0xFF) << 16; }

// A type's name as it may be shown, whatever stands in the file.
std::string ShownName(std::string_view name) {
  constexpr std::size_t kLongest = 40;
  const bool plain = !name.empty() && name.size() <= kLongest &&
                     std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c <= '~'; });
  return plain ? std::string(name) : "unknown";
}

}  // namespace

EntityReader::EntityReader(EntitySource source)
    : source_(std::move(source)), colours_(source_.programFolder, source_.report) {}

const EntityReader::Type* EntityReader::TypeOf(std::string_view name) {
  using R = EntityReader;
  static constexpr std::array kTypes{
      Type{"LINE", &R::Gather, &R::MakeLine},
      Type{"POLYLINE", &R::GatherPolyline, &R::MakePolyline},
      Type{"LWPOLYLINE", &R::GatherLwPolyline, &R::MakeLwPolyline},
      Type{"POINT", &R::Gather, &R::MakePoint},
      Type{"INSERT", &R::Gather, &R::MakeInsert},
      Type{"TEXT", &R::Gather, &R::MakeText},
      Type{"MTEXT", &R::Gather, &R::MakeMText},
      Type{"ATTRIB", &R::Gather, &R::MakeAttrib},
      Type{"SEQEND", &R::Gather, &R::MakeNothing},
      Type{"CIRCLE", &R::Gather, &R::MakeCircle},
      Type{"ARC", &R::Gather, &R::MakeArc},
      Type{"ELLIPSE", &R::Gather, &R::MakeEllipse},
      Type{"SPLINE", &R::GatherSpline, &R::MakeSpline},
      Type{"3DFACE", &R::Gather, &R::MakeFace},
      Type{"SOLID", &R::Gather, &R::MakeSolid},
      Type{"TRACE", &R::Gather, &R::MakeSolid},
  };
  const auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](const Type& type) { return type.name == name; });
  return found == kTypes.end() ? nullptr : &*found;
}

bool EntityReader::Read(tEntity& element) {
  groups_.Begin(source_.scanner.Place());
  wires_.clear();
  nextWire_ = 0;
  const std::string_view name = source_.scanner.Keyword();
  const Type* type = TypeOf(name);
  if (type == nullptr) {
    PassOver(name);
    return false;
  }
  type_ = type->name;
  chain_.clear();
  (this->*type->gather)();
  if (groups_.WrongPlace() != 0) Warn(WarningKind::Numbers, groups_.WrongPlace(), "expected a number");
  if (!IsWanted() || !(this->*type->make)(element)) return false;
  SetAttributes(element);
  return true;
}

// ---- gathering groups

bool EntityReader::NextGroup() {
  if (source_.scanner.Next()) return source_.scanner.Code() != 0;
  atEnd_ = true;
  return false;
}

// Hands every group to `own`, and to the common groups what that does not take. Left out are lists that an application
// put in braces, and the object that newer releases embed behind code 101: both use the same codes in other meanings.
template <typename Own>
void EntityReader::GatherWith(const Own& own) {
  bool braces = false, embedded = false;
  while (NextGroup()) {
    const int code = source_.scanner.Code();
    if (code == 101) {
      embedded = true;
    } else if (code == 102) {
      braces = source_.scanner.Text().starts_with('{');
    } else if (!braces && !embedded && !own(code)) {
      groups_.Take(source_.scanner);
    }
  }
}

void EntityReader::Gather() {
  GatherWith([](int) { return false; });
}

void EntityReader::GatherSpline() {
  spline_.Clear();
  const auto coordinate = [this](VertexChain& points, int code) {
    if (code < 20) points.push_back({Number(), 0, 0});
    if (points.empty() || code < 20) return;
    (code < 30 ? points.back().y : points.back().z) = Number();
  };
  GatherWith([&](int code) {
    switch (code) {
      case 10:
      case 20:
      case 30:
        coordinate(spline_.control, code);
        return true;
      case 11:
      case 21:
      case 31:
        coordinate(spline_.fit, code);
        return true;
      case 40:
        spline_.knots.push_back(Number());
        return true;
      case 41:
        spline_.weights.push_back(Number());
        return true;
      default:
        return false;
    }
  });
}

void EntityReader::GatherLwPolyline() {
  bulges_.clear();
  GatherWith([this](int code) {
    switch (code) {
      case 10:
        chain_.push_back({Number(), 0, 0});
        return true;
      case 20:
        if (!chain_.empty()) chain_.back().y = Number();
        return true;
      case 42:
        if (!chain_.empty()) {
          bulges_.resize(chain_.size());
          bulges_.back() = Number();
        }
        return true;
      default:
        return false;
    }
  });
}

// ---- making elements

bool EntityReader::MakeNothing(tEntity&) { return false; }

bool EntityReader::MakePoint(tEntity& element) {
  if (!groups_.Has(10)) return Damaged("has no location");
  element.Text = "NOSTATUS";
  return StorePoint(element, kPoint, groups_.Point(0));
}

// A block inserted as an array has a vertex for each of its places.
bool EntityReader::MakeInsert(tEntity& element) {
  if (!groups_.Has(10)) return Damaged("has no insertion point");
  const ObjectCoordinates plane(groups_.Extrusion());
  const double rotation = groups_.Number(50, 0), angle = rotation * kPi / 180;
  std::int64_t columns = std::max(groups_.Integer(70, 1), 1), rows = std::max(groups_.Integer(71, 1), 1);
  constexpr std::int64_t kMostPlaces = 65536;
  if (columns * rows > kMostPlaces) {
    Warn(WarningKind::Arrays, groups_.Place(),
         "an array of " + std::to_string(columns) + " by " + std::to_string(rows) + " was read as its first insertion");
    columns = rows = 1;
  }
  const double stepX = groups_.Number(44, 0), stepY = groups_.Number(45, 0);
  for (std::int64_t i = 0; i < columns * rows; ++i) {
    const double x = static_cast<double>(i % columns) * stepX, y = static_cast<double>(i / columns) * stepY;
    Vertex at = groups_.Point(0);
    if (i > 0) {
      at.x += x * std::cos(angle) - y * std::sin(angle);
      at.y += x * std::sin(angle) + y * std::cos(angle);
    }
    chain_.push_back(plane.ToWorld(at));
  }
  source_.drawing.Text().DecodeName(groups_.Name(), element.Text);
  element.TextAng = std::isfinite(rotation) ? plane.AngleToWorld(rotation) : 0;
  return StoreChain(element, kPoint);
}

bool EntityReader::MakeLine(tEntity& element) {
  if (!groups_.Has(10) || !groups_.Has(11)) return Damaged("has no start or no end");
  if (!IsFinite(groups_.Point(0)) || !IsFinite(groups_.Point(1))) return Damaged("has an end that is no number");
  chain_.push_back(groups_.Point(0));
  chain_.push_back(groups_.Point(1));
  return StoreChain(element, kLine);
}

// A circle that is tilted against the map is no circle there.
bool EntityReader::MakeCircle(tEntity& element) {
  if (!groups_.Has(10) || !groups_.Has(40)) return Damaged("has no centre or no radius");
  const ObjectCoordinates plane(groups_.Extrusion());
  const double radius = std::fabs(groups_.Number(40, 0));
  if (plane.IsTilted()) {
    AppendCircle(chain_, groups_.Point(0), radius);
    ToWorld(plane);
    element.Closed = true;
    return StoreChain(element, kPolyline);
  }
  return StoreRadius(element, radius) && StorePoint(element, kCircle, plane.ToWorld(groups_.Point(0)));
}

bool EntityReader::MakeArc(tEntity& element) {
  if (!groups_.Has(10) || !groups_.Has(40)) return Damaged("has no centre or no radius");
  const ObjectCoordinates plane(groups_.Extrusion());
  const double radius = std::fabs(groups_.Number(40, 0));
  double start = groups_.Number(50, 0), end = groups_.Number(51, 0);
  if (!(end > start && end - start <= 360)) {
    const double sweep = std::fmod(end - start, 360);
    end = start + (sweep > 0 ? sweep : sweep + 360);
  }
  if (!std::isfinite(start) || !std::isfinite(end)) return Damaged("has an angle that is no number");
  if (plane.IsTilted()) {
    AppendArc(chain_, groups_.Point(0), radius, start, end - start);
    ToWorld(plane);
    return StoreChain(element, kPolyline);
  }
  if (plane.IsMirrored()) {
    start = 180 - std::exchange(end, 180 - start);
    const double turn = start < 0 ? 360 : 0;
    start += turn;
    end += turn;
  }
  element.AngStart = static_cast<float>(start);
  element.AngEnd = static_cast<float>(end);
  return StoreRadius(element, radius) && StorePoint(element, kArc, plane.ToWorld(groups_.Point(0)));
}

bool EntityReader::MakeEllipse(tEntity& element) {
  if (!groups_.Has(10) || !groups_.Has(11)) return Damaged("has no centre or no axis");
  const ObjectCoordinates plane(groups_.Extrusion());
  const Vertex& major = groups_.Point(1);
  const double ratio = groups_.Number(40, 1);
  const Vertex across = Cross(plane.Normal(), major);
  const Vertex minor{ratio * across.x, ratio * across.y, ratio * across.z};
  const double start = groups_.Number(41, 0);
  double sweep = groups_.Number(42, 2 * kPi) - start;
  if (!(std::hypot(major.x, major.y, major.z) > 0)) return Damaged("has an axis without length");
  if (!std::isfinite(sweep) || !std::isfinite(ratio)) return Damaged("has a parameter that is no number");
  constexpr double kRounding = 1e-9;
  if (sweep <= 0 || sweep > 2 * kPi + kRounding) {
    sweep = std::fmod(sweep, 2 * kPi);
    if (sweep <= 0) sweep += 2 * kPi;
  }
  element.Closed = sweep >= 2 * kPi - kRounding;
  AppendEllipse(chain_, groups_.Point(0), major, minor, start, element.Closed ? 2 * kPi : sweep);
  return StoreChain(element, kPolyline);
}

bool EntityReader::MakeSpline(tEntity& element) {
  // A degree that is not given follows from the number of knots.
  const auto implied =
      static_cast<std::int64_t>(spline_.knots.size()) - static_cast<std::int64_t>(spline_.control.size()) - 1;
  spline_.degree = groups_.Integer(71, static_cast<std::int32_t>(std::clamp<std::int64_t>(implied, 0, 1000)));
  spline_.closed = (groups_.Integer(70, 0) & 1) != 0;
  if (groups_.Has(12)) spline_.startTangent = groups_.Point(2);
  if (groups_.Has(13)) spline_.endTangent = groups_.Point(3);
  if (const std::string reason = AppendSpline(chain_, spline_); !reason.empty()) {
    Warn(WarningKind::Splines, groups_.Place(), reason + "; straight segments through its points were delivered");
  }
  element.Closed = spline_.closed;
  return StoreChain(element, kPolyline);
}

bool EntityReader::MakeFace(tEntity& element) { return MakeOutline(element, {0, 1, 2, 3}, {}); }

// The corners of a solid go across: first, second, fourth, third.
bool EntityReader::MakeSolid(tEntity& element) {
  return MakeOutline(element, {0, 1, 3, 2}, ObjectCoordinates(groups_.Extrusion()));
}

bool EntityReader::MakeOutline(tEntity& element, const std::array<int, 4>& order, const ObjectCoordinates& plane) {
  const bool triangle = !groups_.Has(13) || groups_.Point(3) == groups_.Point(2);
  for (const int corner : order) {
    if (groups_.Has(10 + corner) && !(triangle && corner == 3)) chain_.push_back(groups_.Point(corner));
  }
  if (chain_.size() < 3) return Damaged("has fewer than three corners");
  chain_.push_back(Vertex(chain_.front()));
  ToWorld(plane);
  element.Closed = true;
  return StoreChain(element, kPolyline);
}

void EntityReader::ToWorld(const ObjectCoordinates& plane) {
  if (plane.IsWorld()) return;
  for (Vertex& v : chain_) v = plane.ToWorld(v);
}

// ---- storing what was made

// Stores from the highest index down, so that each array grows once. Vertices are stored by index: the first may lie
// at 0.
bool EntityReader::StoreChain(tEntity& element, std::int16_t kind, std::size_t begin, std::size_t end) {
  const auto first = chain_.begin() + static_cast<std::ptrdiff_t>(begin);
  const auto last = std::remove_if(first, chain_.begin() + static_cast<std::ptrdiff_t>(end),
                                   [](const Vertex& v) { return !IsFinite(v); });
  const auto kept = last - first;
  if (static_cast<std::size_t>(kept) < end - begin) {
    if (kept == 0) return Damaged("has no vertex that could be read");
    Warn(WarningKind::WildVertices, groups_.Place(),
         std::to_string(end - begin - static_cast<std::size_t>(kept)) + " vertices are no numbers and were left out");
  }
  if (kept == 0) return Damaged("has no vertices");
  constexpr double kGreatest = static_cast<double>(std::numeric_limits<float>::max());
  bool wild = false;
  for (std::ptrdiff_t i = kept; i-- > 0;) {
    const Vertex& v = first[i];
    const bool fits = std::fabs(v.z) <= kGreatest;
    element.x(i, v.x);
    element.Y(i, v.y);
    element.Z(i, fits ? static_cast<float>(v.z) : 0.0F);
    wild = wild || !fits;
  }
  if (wild) Warn(WarningKind::WildZ, groups_.Place(), "z values that are no number or too large were read as 0");
  element.bType = kind;
  return true;
}

bool EntityReader::StorePoint(tEntity& element, std::int16_t kind, const Vertex& at) {
  chain_.assign(1, at);
  return StoreChain(element, kind);
}

bool EntityReader::StoreRadius(tEntity& element, double radius) {
  if (!(radius <= static_cast<double>(std::numeric_limits<float>::max())))
    return Damaged("has a radius that is no number");
  element.Rad = static_cast<float>(radius);
  return true;
}

void EntityReader::SetAttributes(tEntity& element) {
  const DrawingLayer& layer = source_.drawing.LayerOf(groups_.Layer());
  element.Layer = layer.name;
  const std::string& lineType = groups_.LineType();
  if (!lineType.empty() && !EqualsIgnoringCase(lineType, "BYLAYER")) {
    source_.drawing.Text().DecodeName(lineType, element.LineStyle);
  }
  const std::int64_t number = std::abs(std::int64_t{groups_.Integer(62, kByLayer)});
  const bool byLayer = number >= kByLayer;
  element.Colour = byLayer ? layer.colour : static_cast<std::int32_t>(number);
  if (groups_.TrueColour()) {
    element.RGB = RedLow(*groups_.TrueColour());
  } else if (byLayer && layer.trueColour) {
    element.RGB = RedLow(*layer.trueColour);
  } else {
    element.RGB = colours_.Of(element.Colour);
  }
}

// ---- reporting what is not delivered

// Counts an entity of a type that is no element.
void EntityReader::PassOver(std::string_view name) {
  passedOver_ = ShownName(name);
  type_ = passedOver_;
  insertInPaper_ = false;
  while (NextGroup()) {
    if (source_.scanner.Code() == 67) groups_.Take(source_.scanner);
  }
  if (type_ == "VIEWPORT" && groups_.Integer(67, 0) == 1) return;  // a window on the drawing
  if (IsWanted()) source_.report.Undelivered(type_);
}

// Attributes are where their insert is, whatever they say.
bool EntityReader::IsWanted() {
  const bool part = type_ == "ATTRIB" || type_ == "SEQEND";
  if (!part) insertInPaper_ = groups_.Integer(67, 0) == 1;
  const bool paper = insertInPaper_ || groups_.Integer(67, 0) == 1;
  if (!paper || source_.paperSpace) return true;
  if (type_ != "SEQEND") Warn(WarningKind::PaperSpace, groups_.Place(), "lies in paper space and was left out");
  return false;
}

bool EntityReader::Damaged(const std::string& what) {
  Warn(WarningKind::Damaged, groups_.Place(), what + "; it was skipped", type_);
  return false;
}

void EntityReader::Warn(WarningKind kind, std::int64_t place, const std::string& what, std::string_view subject) {
  source_.report.Warn(kind, source_.scanner.PlaceText(place) + ": " + std::string(type_) + ": " + what, subject);
}

}  // namespace tesselink
