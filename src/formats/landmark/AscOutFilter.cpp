// SPDX-License-Identifier: MIT
#include "formats/landmark/AscOutFilter.h"

#include <algorithm>
#include <cmath>

#include "core/element/ColourNames.h"
#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/grid/cUTM.h"

namespace tesselink {
namespace {

// The digits that the system's own angle arithmetic has.
constexpr double kPi = 3.14159265358979;
constexpr double kStep = 31.4159265358979 / 180;  // 10 degrees
constexpr std::int64_t kShortestHeader = 8;

bool LooksGeographic(const tEntity& entity) {
  return entity.x(0) >= -180 && entity.x(0) <= 180 && entity.Y(0) >= -90 && entity.Y(0) <= 90;
}

// A field of a line: a comma or a control character would break it.
std::string HeaderText(const std::string& text) {
  const bool breaks =
      std::any_of(text.begin(), text.end(), [](char c) { return c == ',' || static_cast<unsigned char>(c) < ' '; });
  return breaks ? "a comma or a control character has no place there" : "";
}

std::string FiniteNumber(const std::string& text) {
  try {
    StrictNumber(text);
    return {};
  } catch (const Error& error) {
    return error.what();
  }
}

}  // namespace

constexpr AscOutFilter::Conventions AscOutFilter::kClassic{
    .separator = ", ",
    .closedAsLine = true,
    .horizontalFirst = true,
    .endsByFirstZero = true,
    .ownCurves = true,
};
constexpr AscOutFilter::Conventions AscOutFilter::kStandard{
    .separator = ",",
    .closedAsLine = false,
    .horizontalFirst = false,
    .endsByFirstZero = false,
    .ownCurves = false,
};

std::vector<FormatOption> AscOutFilter::Options() {
  return {
      {.name = "units", .help = "Units in the header of a Landmark output (M)", .value = "TEXT", .check = HeaderText},
      {.name = "map-scale",
       .help = "Map scale in the header of a Landmark output (1)",
       .value = "NUMBER",
       .check = FiniteNumber}};
}

AscOutFilter::AscOutFilter(const FilterContext& context)
    : OutputFilter(context),
      conventions_(context.options.dialect == Dialect::Standard ? kStandard : kClassic),
      texts_(report(), "a text") {}

void AscOutFilter::Create(const std::string& path) {
  file_ = FileWriter(path);
  path_ = path;
  texts_.Start(path);
}

WriteResult AscOutFilter::Write(tEntity& entity) {
  if (file_.Size() < kShortestHeader) WriteHeader();
  WriteResult result = WriteResult::Skipped;
  if (IsCurve(entity.bType)) {
    if (entity.HasHeight()) Lost(WarningKind::Heights);
    ToChain(entity);
    result = WriteResult::Converted;
  } else if (entity.bType >= kLine && entity.bType <= kText) {
    result = WriteResult::Written;
  }
  if (result != WriteResult::Skipped) {
    if (result == WriteResult::Written && entity.HasHeight()) Lost(WarningKind::Heights);
    entity.bType == kText ? WriteText(entity) : WriteLine(entity);
  }
  entity.ClearVertices();
  return result;
}

void AscOutFilter::WriteHeader() {
  constexpr std::size_t kNameLetters = 8;
  const std::string name = StripExtension(FileNameOf(path_));
  file_.Write("METAFILE,").Write(Trimmed(texts_.OfName(name, kNameLetters))).Write(",");
  file_.Write(texts_.OfName(options().own.Text("units", "M")));
  file_.Write(",").Number(options().own.Number("map-scale", 1)).Line(",0,0");
}

void AscOutFilter::WriteLine(const tEntity& entity) {
  if (conventions_.separator != ",") NoteMissed("the vertices behind \"XY, \"");
  const bool polygon = entity.Closed && !conventions_.closedAsLine;
  file_.Write(polygon ? "POLYGON" : "LINE").Write(", , , , ,").Line(ColourName(entity.RGB));
  const tEntity::Index last = conventions_.endsByFirstZero ? entity.XCount() : entity.PointCount();
  for (tEntity::Index i = 0; i <= last; ++i) {
    file_.Write("XY").Write(conventions_.separator).Number(entity.x(i));
    file_.Write(conventions_.separator).Number(entity.Y(i)).EndLine();
  }
}

std::string AscOutFilter::Justification(std::int16_t code) const {
  std::string letters = JustificationLetters(code);
  if (!conventions_.horizontalFirst) std::swap(letters[0], letters[1]);
  return letters;
}

void AscOutFilter::WriteText(const tEntity& entity) {
  file_.Write("TEXT, '")
      .Write(texts_.Of(entity.Text))
      .Write("',")
      .Number(entity.x(0))
      .Write(",")
      .Number(entity.Y(0))
      .Write(",");
  const double size = RoundHalfEven(entity.TextSize);
  if (size != entity.TextSize) Lost(WarningKind::Sizes);
  file_.Number(size).Write(",,").Number(entity.TextAng).Write(",");
  file_.Write(Justification(entity.TextJust)).Write(",,").Line(ColourName(entity.RGB));
}

// The centre in metres, and the radius as far as it reaches along the parallel, in the centre's zone.
void AscOutFilter::ToMetres(tEntity& entity) {
  const double lon = entity.x(0), lat = entity.Y(0);
  cUTM utm;
  utm.ChooseZone(lat, lon);
  utm.Lat(lat);
  utm.Lon(lon + static_cast<double>(entity.Rad));
  const double edgeX = utm.x(), edgeY = utm.Y();
  utm.Lat(lat);
  utm.Lon(lon);
  entity.x(0, utm.x());
  entity.Y(0, utm.Y());
  entity.Rad = static_cast<float>(std::hypot(edgeX - entity.x(0), edgeY - entity.Y(0)));
  Lost(WarningKind::GeographicCircles);
}

void AscOutFilter::ToChain(tEntity& entity) {
  Lost(WarningKind::Curves);
  if (LooksGeographic(entity)) ToMetres(entity);
  ToSteps(entity);
  entity.bType = kPolyline;
}

// A vertex every 10 degrees, and a closing one for which the end's number of degrees is taken as radians: the system's
// own way.
void AscOutFilter::ToSteps(tEntity& entity) {
  const double cx = entity.x(0), cy = entity.Y(0), radius = static_cast<double>(entity.Rad);
  const double start = entity.bType == kCircle ? 0 : static_cast<double>(entity.AngStart);
  const double end = entity.bType == kCircle ? 360 : static_cast<double>(entity.AngEnd);
  entity.ClearVertices();
  tEntity::Index i = 0;
  const auto append = [&](double angle) {
    entity.x(i, cx + radius * std::cos(angle));
    entity.Y(i++, cy + radius * std::sin(angle));
  };
  constexpr tEntity::Index kMostVertices = 100000;  // angles come from files and may be anything
  for (double angle = start * kPi / 180; angle <= end * kPi / 180 && i < kMostVertices; angle += kStep) append(angle);
  if (i == kMostVertices)
    report().Warn(WarningKind::LongArc, path_ + ": an arc of more than 2,000 turns was cut short");
  append(end);
}

void AscOutFilter::Complete() { file_.Close(); }

void AscOutFilter::Drop() noexcept {
  file_.Discard();
  RemoveWritten(path_);
}

}  // namespace tesselink
