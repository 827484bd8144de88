// SPDX-License-Identifier: MIT
#include "core/run/Coordinates.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/element/VertexAlgebra.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Module.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/Interaction.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

constexpr const char* kWgs84 = "EPSG:4326";

bool IsDefinition(std::string_view text) {
  return text.find_first_of("[{") != std::string_view::npos || text.find("+proj=") != std::string_view::npos ||
         text.find("+init=") != std::string_view::npos;
}

// As in "EPSG:32039", and the same as a URN.
bool IsCode(std::string_view text) {
  const auto isLetter = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
           c == '.' || c == '+' || c == ':';
  };
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && colon > 1 && colon + 1 < text.size() &&
         std::all_of(text.begin(), text.end(), isLetter);
}

std::string DefinitionIn(const std::string& path) {
  BinaryFile file(path);
  std::string text(std::min(static_cast<std::size_t>(file.Size()), ReadWindow::kCapacity), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  if (constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; text.starts_with(kByteOrderMark)) {
    text.erase(0, kByteOrderMark.size());
  }
  text = CutAtNul(text);
  text.resize(text.find_last_not_of(" \r\n\t") + 1);
  if (text.empty()) throw Error(path + ": is empty, and so names no coordinate system");
  return text;
}

// An angle without the noise of the last digits, which a drawing would show.
double Turned(double angle, double turn) {
  if (std::fabs(turn) < 1e-9) return angle;
  const double turned = std::fmod(angle + turn, 360);
  return turned < 0 && angle >= 0 ? turned + 360 : turned;
}

}  // namespace

std::vector<std::string> SystemFiles(const SystemChoice& choice) {
  std::vector<std::string> files;
  for (const std::string& named : {choice.from, choice.to}) {
    if (!named.empty() && FileExists(named)) files.push_back(named);
  }
  return files;
}

std::string SystemDefinition(const std::string& named) {
  if (FileExists(named)) return DefinitionIn(named);
  if (IsDefinition(named) || IsCode(named)) return named;
  throw Error("\"" + named +
              "\" names no coordinate system and no file; give a code as in EPSG:32039, a .prj or WKT file, or a PROJ "
              "text as in \"+proj=utm +zone=14 +datum=NAD27\"");
}

CoordinateSystems& Coordinates::Systems() {
  if (!systems_) systems_.reset(CreateByModule<CoordinateSystems>(context_.options.moduleFolder, "projection"));
  return *systems_;
}

CoordinateSystem Coordinates::Described(const std::string& definition, const std::string& named) {
  try {
    return Systems().Describe(definition);
  } catch (const Error& error) {
    throw Error(named + ": " + error.what());
  }
}

void Coordinates::Open(const InputFilter& reader, OutputFilter& writer) {
  const SystemWish wish = writer.WishesSystem();
  std::string definition;
  const CoordinateSystem from = SystemOf(reader, wish, definition);
  CoordinateSystem to = from;
  way_ = nullptr;
  const std::string wished = !Choice().to.empty() ? Choice().to : wish == SystemWish::Wgs84 ? kWgs84 : "";
  if (from.IsKnown() && !wished.empty()) {
    target_ = SystemDefinition(wished);
    to = Described(target_, wished);
    if (wish == SystemWish::Wgs84 && !to.isWgs84) {
      throw Error(writer.filename() + ": its format holds longitude and latitude on WGS 84 alone, and no " + to.name);
    }
    way_ = WayFrom(definition, reader.filename());
    step_ = from.isGeographic ? 5e-6 : from.metres > 0 ? 0.5 / from.metres : 1;
  }
  const auto isSame = [&](const CoordinateSystem& other) { return other.name == from.name && other.wkt == from.wkt; };
  if (from.IsKnown() && std::none_of(used_.from.begin(), used_.from.end(), isSame)) used_.from.push_back(from);
  if (used_.from.size() > 1 && context_.options.buildAreas) {
    throw Error(reader.filename() + ": is in " + from.name + " and another input in " + used_.from.front().name +
                "; lines bound areas within one coordinate system. Transform one of them first");
  }
  used_.to = to;
  writer.SourceSystem(to);
}

// A .prj that a person did not name spoils no run that can do without.
CoordinateSystem Coordinates::SystemOf(const InputFilter& reader, SystemWish wish, std::string& definition) {
  const std::string beside = reader.ProjectionPath();
  const bool mustKnow = !Choice().to.empty() || wish == SystemWish::Wgs84;
  if (!Choice().from.empty()) {
    definition = SystemDefinition(Choice().from);
    return Described(definition, Choice().from);
  }
  if (!beside.empty()) {
    try {
      definition = DefinitionIn(beside);
      return Described(definition, beside);
    } catch (const Error& error) {
      if (mustKnow) {
        RefuseUnknown(reader, error.what());
      } else {
        context_.report.Warn(WarningKind::SystemNotRead, error.what());
      }
    }
  } else if (mustKnow) {
    RefuseUnknown(reader, reader.filename() + ": its coordinate system is not known");
  }
  return {};
}

// Ballpark figures may be written for an output that says what they are, not for a system that was asked for.
void Coordinates::RefuseUnknown(const InputFilter& reader, const std::string& why) {
  const std::string naming = context_.interaction.Naming("from-crs", "SYSTEM");
  if (!Choice().to.empty()) throw Error(why + "; name it by " + naming);
  if (!Choice().allowBallpark) {
    throw Error(why + ", and the output holds longitude and latitude alone; name it by " + naming + ", or let " +
                context_.interaction.Naming("allow-ballpark", "") + " write the coordinates as they stand");
  }
  context_.report.Warn(WarningKind::UnknownSystem, reader.filename() +
                                                       ": its coordinate system is not known; the coordinates were "
                                                       "written as they stand, as if they were longitude and latitude");
}

CoordinateOperation* Coordinates::WayFrom(const std::string& definition, const std::string& named) {
  for (const auto& [from, way] : ways_) {
    if (from == definition) return way.get();
  }
  try {
    ways_.emplace_back(definition, Systems().Between(definition, target_, Choice().allowBallpark));
  } catch (const Error& error) {
    throw Error(named + ": " + error.what());
  }
  return ways_.back().second.get();
}

Coordinates::Placed Coordinates::Place(tEntity& entity, const InputFilter& reader) {
  if (way_ == nullptr || entity.IsNull()) return Placed::Whole;
  try {
    const bool drawn = (IsCurve(entity.bType) || !entity.Bulges.empty()) && !PlaceCurves(entity);
    if (entity.TextAng != 0 || entity.TextSize != 0 || entity.bType == kText) PlaceText(entity);
    const auto [x, y, z] = entity.Vertices();
    if (!way_->Transform(x, y, way_->ChangesHeights() ? z : std::span<double>())) return Placed::Nowhere;
    return drawn ? Placed::Drawn : Placed::Whole;
  } catch (const Error& error) {
    throw Error(reader.Where() + ": " + error.what() + "; " + context_.interaction.Naming("allow-ballpark", "") +
                " takes the next best operation that is there");
  }
}

// Curves of an output that has none are drawn here as well, within a tolerance that is given in the input's units.
bool Coordinates::PlaceCurves(tEntity& entity) {
  coarse_ = false;
  const auto similarity = way_->SimilarityAt(entity.x(0), entity.Y(0));
  const CurveTolerance tolerance = context_.options.Curves();
  if (IsCurve(entity.bType)) {
    if (similarity && holding_.curves) {
      const auto [radius, start, end] = entity.Curve();
      entity.Curve({radius * similarity->scale, Turned(start, similarity->turn), Turned(end, similarity->turn)});
      return true;
    }
    coarse_ = !DrawCurve(entity, chain_, tolerance);
    return false;
  }
  if (similarity && holding_.bulges) return true;
  coarse_ = !DrawBulges(entity, chain_, tolerance);
  return false;
}

// By two short ways from the text's place: along its line, and up from it.
void Coordinates::PlaceText(tEntity& entity) {
  const double x = entity.x(0), y = entity.Y(0), angle = entity.TextAng / kDegrees;
  double turn = 0, scale = 1;
  if (const auto similarity = way_->SimilarityAt(x, y)) {
    turn = similarity->turn;
    scale = similarity->scale;
  } else {
    const double ahead = step_ * std::cos(angle), aside = step_ * std::sin(angle);
    std::array<double, 3> xs{x, x + ahead, x - aside}, ys{y, y + aside, y + ahead};
    if (!way_->Probe(xs, ys)) return;
    turn = std::remainder(std::atan2(ys[1] - ys[0], xs[1] - xs[0]) * kDegrees - entity.TextAng, 360);
    scale = std::hypot(xs[2] - xs[0], ys[2] - ys[0]) / step_;
  }
  entity.TextAng = Turned(entity.TextAng, turn);
  entity.TextSize *= scale;
}

void Coordinates::CountDrawn(Losses& losses) const {
  losses.Add(WarningKind::Curves);
  if (coarse_) losses.Add(WarningKind::CoarseCurves);
}

void Coordinates::CountAtEnd(Losses& losses) const {
  for (const auto& [from, way] : ways_) {
    if (!way) continue;
    losses.Add(WarningKind::OutsideArea, way->OutsideArea());
    for (const OperationUse& use : way->Uses()) losses.Add(WarningKind::Ballpark, use.isBallpark ? use.count : 0);
  }
}

SystemsUsed Coordinates::Used() const {
  SystemsUsed used = used_;
  for (const auto& [from, way] : ways_) {
    if (!way) continue;
    for (OperationUse& use : way->Uses()) used.operations.push_back(std::move(use));
  }
  return used;
}

}  // namespace tesselink
