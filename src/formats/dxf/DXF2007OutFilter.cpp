// SPDX-License-Identifier: MIT
#include "formats/dxf/DXF2007OutFilter.h"

#include <algorithm>
#include <optional>

#include "core/element/Justification.h"
#include "core/io/Utf8.h"
#include "formats/dxf/DrawingSections.h"
#include "formats/dxf/ExtendedData.h"

namespace tesselink {
namespace {

constexpr DrawingConventions k2007{
    .originIsMissing = false,
    .chainsAsStored = false,
    .placementAsByte = false,
    .arcsSkipped = false,
    .bulges = true,
    .degenerateKept = false,
    .heightsInFull = true,
    .layerColourIsPosition = false,
    .fullTables = true,
    .coloursAsGiven = false,
    .trueColours = true,
    .textsAsGiven = false,
    .layerNames = DrawingNames::Rule::KeepDistinct,
    .lineTypeNames = DrawingNames::Rule::MergeCase,
    .nameSigns = NameSigns::Most,
};

constexpr std::int32_t kWhite = 7;

// Of a colour with red in its low byte.
std::int32_t RedFirst(std::int32_t rgb) { return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | (rgb >> 16 & 0xFF); }

}  // namespace

DXF2007OutFilter::DXF2007OutFilter(const FilterContext& context) : DrawingOutput(context, k2007) {
  commonHead_ = "330\r\n1F\r\n100\r\nAcDbEntity\r\n";
}

void DXF2007OutFilter::Create(const std::string& path) {
  DrawingOutput::Create(path);
  next_ = objects::kFirstFree;
  textsBeyondAscii_ = false;
}

// The lines that name an entity.
void DXF2007OutFilter::Begin(std::string_view type, Handle owner) {
  entities_.Write("  0\r\n").Line(type).Write("  5\r\n");
  WriteHandle(entities_, next_++).EndLine();
  if (owner == kNoHandle) return;
  WriteHandle(entities_.Write("330\r\n"), owner)
      .Write("\r\n100\r\nAcDbEntity\r\n  8\r\n")
      .Line(Printable(layer_->name));
}

// The lines that most kinds begin with. A boundary knows the HATCH that it bounds.
void DXF2007OutFilter::Open(std::string_view type, const tEntity& entity, std::string_view subclass,
                            const EntityTies& ties) {
  Begin(type);
  if (ties.hatch != kNoHandle) {
    WriteHandle(entities_.Write("102\r\n{ACAD_REACTORS\r\n330\r\n"), ties.hatch).Write("\r\n102\r\n}\r\n");
  }
  entities_.Write(Head(commonHead_)).Integer(ColourNumber(entity)).EndLine();
  if (trueColour_ != kNoColour) entities_.Write("420\r\n").Integer(RedFirst(trueColour_)).EndLine();
  if (ties.transparency != 0) entities_.Write("440\r\n").Integer(ties.transparency).EndLine();
  if ((entity.Lost & kLostHiding) != 0) entities_.Write(" 60\r\n1\r\n");
  entities_.Write("100\r\n").Line(subclass);
}

void DXF2007OutFilter::WritePoint(const tEntity& entity, tEntity::Index at) {
  Open("POINT", entity, "AcDbPoint");
  Vertex(entity, at);
  Record(entity);
}

void DXF2007OutFilter::WritePoints(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i <= last; ++i) WritePoint(entity, i);
}

void DXF2007OutFilter::WriteLines(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i < last; ++i) {
    Open("LINE", entity, "AcDbLine");
    Vertex(entity, i);
    Vertex(entity, i + 1, true);
    Record(entity);
  }
}

void DXF2007OutFilter::WritePolyline(const tEntity& entity, tEntity::Index last) {
  if (entity.IsArea) return WriteArea(entity);
  const Run chain{0, entity.Closed ? LastStored(entity, 0, last) : last};
  if (entity.IsLevel()) {
    WriteFlatChain(entity, chain, entity.Closed, kNoHandle);
  } else {
    WriteChainInSpace(entity, chain);
  }
}

bool DXF2007OutFilter::HasBulges(const tEntity& entity, const Run& chain) {
  const tEntity::Index end = std::min(chain.last + 1, std::ssize(entity.Bulges));
  const auto at = [&](tEntity::Index i) { return entity.Bulges.begin() + i; };
  return chain.first < end && std::any_of(at(chain.first), at(end), [](double bulge) { return bulge != 0; });
}

void DXF2007OutFilter::FlatVertices(const tEntity& entity, const Run& chain, bool bulges, bool everyBulge) {
  for (tEntity::Index i = chain.first; i <= chain.last; ++i) {
    entities_.Write(" 10\r\n").Number(entity.x(i)).Write("\r\n 20\r\n").Number(entity.Y(i)).EndLine();
    if (!bulges) continue;
    const auto at = static_cast<std::size_t>(i);
    const double bulge = at < entity.Bulges.size() ? entity.Bulges[at] : 0;
    if (everyBulge || bulge != 0) entities_.Write(" 42\r\n").Number(bulge).EndLine();
  }
}

void DXF2007OutFilter::WriteFlatChain(const tEntity& entity, const Run& chain, bool closed, Handle hatch) {
  Open("LWPOLYLINE", entity, "AcDbPolyline", {.hatch = hatch});
  entities_.Write(" 90\r\n").Integer(chain.Count()).Write("\r\n 70\r\n").Integer(closed ? 1 : 0);
  entities_.Write("\r\n 38\r\n").Number(entity.Height(chain.first)).EndLine();
  FlatVertices(entity, chain, !entity.Bulges.empty(), false);
  if (hatch == kNoHandle) return Record(entity);
  WriteHandle(entities_.Write("1001\r\n").Line(kOwnData).Write("1005\r\n"), hatch).EndLine();
}

void DXF2007OutFilter::WriteChainInSpace(const tEntity& entity, const Run& chain) {
  constexpr int kClosed = 1, kInSpace = 8;
  const Handle polyline = next_;
  Open("POLYLINE", entity, "AcDb3dPolyline");
  entities_.Write(" 66\r\n1\r\n 10\r\n0\r\n 20\r\n0\r\n 30\r\n0\r\n 70\r\n");
  entities_.Integer(kInSpace + (entity.Closed ? kClosed : 0)).EndLine();
  Record(entity);
  for (tEntity::Index i = chain.first; i <= chain.last; ++i) {
    Begin("VERTEX", polyline);
    entities_.Write("100\r\nAcDbVertex\r\n100\r\nAcDb3dPolylineVertex\r\n");
    Vertex(entity, i);
    entities_.Write(" 70\r\n32\r\n");
  }
  Begin("SEQEND", polyline);
}

DXF2007OutFilter::Run DXF2007OutFilter::RingOf(const tEntity& entity, std::size_t part) {
  const tEntity::Index begin = entity.PartBegin(part), end = entity.PartEnd(part);
  return {begin, LastStored(entity, begin, end - 1)};
}

bool DXF2007OutFilter::Surrounds(const tEntity& entity, const Run& ring) {
  return ring.Count() > 2 || (ring.Count() == 2 && HasBulges(entity, ring));
}

// The boundaries lie behind the HATCH, and so above its filling; their handles follow its own.
void DXF2007OutFilter::WriteArea(const tEntity& entity) {
  std::int64_t paths = 0;
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    if (Surrounds(entity, RingOf(entity, part))) ++paths;
  }
  const Handle hatch = next_;
  if (paths > 0) {
    WriteHatch(entity, paths);
  } else {
    Lost(WarningKind::Areas);
  }
  for (const bool surrounding : {true, false}) {
    for (std::size_t part = 0; part < entity.PartCount(); ++part) {
      const Run ring = RingOf(entity, part);
      if (ring.Count() < 1 || Surrounds(entity, ring) != surrounding) continue;
      if (ring.Count() == 1) {
        WritePoint(entity, ring.first);
      } else {
        WriteFlatChain(entity, ring, true, surrounding ? hatch : kNoHandle);
      }
    }
  }
}

// Filled so lightly that what lies beneath is seen, by programs that know of it.
void DXF2007OutFilter::WriteHatch(const tEntity& entity, std::int64_t paths) {
  constexpr std::int32_t kByValue = 0x02000000, kOpacity = 76;  // of 255
  Handle boundary = next_ + 1;
  Open("HATCH", entity, "AcDbHatch", {.transparency = kByValue + kOpacity});
  entities_.Write(" 10\r\n0\r\n 20\r\n0\r\n 30\r\n").Number(entity.Height(0));
  entities_.Write("\r\n210\r\n0\r\n220\r\n0\r\n230\r\n1\r\n  2\r\nSOLID\r\n 70\r\n1\r\n 71\r\n1\r\n 91\r\n")
      .Integer(paths);
  entities_.EndLine();
  for (std::size_t part = 0; part < entity.PartCount(); ++part) {
    const Run ring = RingOf(entity, part);
    if (Surrounds(entity, ring)) WritePath(entity, ring, boundary++);
  }
  entities_.Write(" 75\r\n0\r\n 76\r\n1\r\n 98\r\n0\r\n");
  Record(entity);
}

// An odd number of paths around a point makes it one of the area, so that all may have the same flags: an outer
// polyline that comes of an entity.
void DXF2007OutFilter::WritePath(const tEntity& entity, const Run& ring, Handle boundary) {
  const bool bulges = HasBulges(entity, ring);
  entities_.Write(" 92\r\n7\r\n 72\r\n").Integer(bulges ? 1 : 0).Write("\r\n 73\r\n1\r\n 93\r\n").Integer(ring.Count());
  entities_.EndLine();
  FlatVertices(entity, ring, bulges, true);
  WriteHandle(entities_.Write(" 97\r\n1\r\n330\r\n"), boundary).EndLine();
}

void DXF2007OutFilter::WriteText(const tEntity& entity) {
  auto [across, up] = PlacementOf(entity.TextJust);
  across = across > 2 ? 0 : across;
  up = up > 48 ? 0 : up / 16;
  Open("TEXT", entity, "AcDbText");
  Vertex(entity, 0);
  entities_.Write(" 40\r\n").Number(entity.TextSize).EndLine();
  const std::string_view text = Encoded(entity.Text);
  textsBeyondAscii_ = textsBeyondAscii_ || !IsAscii(text);
  Text("  1", text);
  entities_.Write(" 50\r\n").Number(entity.TextAng).Write("\r\n 72\r\n").Integer(across).EndLine();
  // A text at its left on its baseline has no alignment point.
  if (across != 0 || up != 0) Vertex(entity, 0, true);
  entities_.Write("100\r\nAcDbText\r\n 73\r\n").Integer(up).EndLine();
  Record(entity);
}

void DXF2007OutFilter::WriteCircle(const tEntity& entity) {
  Open("CIRCLE", entity, "AcDbCircle");
  Vertex(entity, 0);
  entities_.Write(" 40\r\n").Number(entity.Curve().radius).EndLine();
  Record(entity);
}

void DXF2007OutFilter::WriteArc(const tEntity& entity) {
  const CurveNumbers arc = entity.Curve();
  Open("ARC", entity, "AcDbCircle");
  Vertex(entity, 0);
  entities_.Write(" 40\r\n").Number(arc.radius).Write("\r\n100\r\nAcDbArc\r\n 50\r\n").Number(arc.start).EndLine();
  entities_.Write(" 51\r\n").Number(ArcEnd(arc)).EndLine();
  Record(entity);
}

void DXF2007OutFilter::WriteSections() {
  WriteHeader();
  WriteTablesBegin(header_, extents_);
  WriteLineTypeTable();
  WriteLayerTable();
  WriteTablesEnd(header_);
}

bool DXF2007OutFilter::HasLettersBeyondAscii() const {
  const auto isBeyond = [](const DrawingNames::Entry& entry) { return !IsAscii(entry.name); };
  return textsBeyondAscii_ || std::any_of(layers_.All().begin(), layers_.All().end(), isBeyond) ||
         std::any_of(lineTypes_.All().begin(), lineTypes_.All().end(), isBeyond);
}

// The release is UTF-8 whatever the code page, but some programs go by that. Where it makes no difference it is one
// that every program knows.
void DXF2007OutFilter::WriteHeader() {
  const Handle seed = next_ + layers_.All().size() + lineTypes_.All().size();
  GroupWriter groups(header_);
  groups.Groups("0 SECTION|2 HEADER|9 $ACADVER|1 AC1021|9 $DWGCODEPAGE");
  groups.Group(3, HasLettersBeyondAscii() ? "ANSI_65001" : "ANSI_1252").Groups("9 $INSBASE|10 0|20 0|30 0");
  WriteCorners();
  groups.Group(9, "$HANDSEED").Object(5, seed);
}

void DXF2007OutFilter::WriteLineTypeTable() {
  constexpr std::string_view kRecord = "AcDbLinetypeTableRecord";
  GroupWriter groups(header_);
  const auto begin = [&](Handle handle, std::string_view name, std::string_view description) {
    BeginRow(groups, "LTYPE", handle, objects::kLineTypes, std::string(kRecord));
    groups.Group(2, name).Integer(70, 0).Group(3, description).Integer(72, 65);
  };
  BeginTable(groups, "LTYPE", objects::kLineTypes, std::ssize(lineTypes_.All()) + 2);
  begin(0x14, "ByBlock", {});
  groups.Groups("73 0|40 0");
  begin(0x15, "ByLayer", {});
  groups.Groups("73 0|40 0");
  for (const DrawingNames::Entry& entry : lineTypes_.All()) {
    const LineType& lineType = PatternOf(entry);
    begin(next_++, entry.name, Encoded(lineType.description));
    groups.Integer(73, std::ssize(lineType.dashes)).Number(40, LengthOf(lineType));
    for (const double dash : lineType.dashes) groups.Number(49, dash).Integer(74, 0);
  }
  groups.Groups("0 ENDTAB");
}

void DXF2007OutFilter::WriteLayerTable() {
  GroupWriter groups(header_);
  BeginTable(groups, "LAYER", objects::kLayers, std::ssize(layers_.All()));
  for (const DrawingNames::Entry& layer : layers_.All()) {
    BeginRow(groups, "LAYER", next_++, objects::kLayers, "AcDbLayerTableRecord");
    const std::int32_t colour = layer.colour == 0 ? kWhite : layer.colour;
    groups.Group(2, layer.name).Integer(70, FlagsOf(layer.state)).Integer(62, layer.state.isOff ? -colour : colour);
    if (layer.trueColour != kNoColour) groups.Integer(420, RedFirst(layer.trueColour));
    groups.Group(6, layer.lineType.empty() ? kContinuous : layer.lineType).Object(390, objects::kPlotStyle);
    if (layer.name == "0") Schema(groups);
  }
  groups.Groups("0 ENDTAB");
}

void DXF2007OutFilter::WriteEnd(FileWriter& output) { WriteObjects(output); }

}  // namespace tesselink
