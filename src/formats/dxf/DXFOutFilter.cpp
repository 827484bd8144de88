#include "formats/dxf/DXFOutFilter.h"

#include <cmath>
#include <filesystem>

#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Report.h"
#include "formats/dxf/DrawingEncoding.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShownName = 60;
constexpr std::int32_t kGreatestColour = 255, kByLayer = 256, kWhite = 7;

bool SameVertex(const tEntity& entity, tEntity::Index a, tEntity::Index b) {
  return entity.x(a) == entity.x(b) && entity.Y(a) == entity.Y(b) && entity.Height(a) == entity.Height(b);
}

// Line types that no table holds.
const std::string kContinuous = "CONTINUOUS";
constexpr std::string_view kLettersBeyondAscii = "letters beyond ASCII";

bool IsInherited(const std::string& lineType) {
  return EqualsIgnoringCase(lineType, "BYLAYER") || EqualsIgnoringCase(lineType, "BYBLOCK");
}

}  // namespace

constexpr DXFOutFilter::Conventions DXFOutFilter::kClassic{
    .originIsMissing = true,
    .chainsAsStored = true,
    .placementAsByte = true,
    .arcsSkipped = true,
    .bulges = false,
    .degenerateKept = true,
    .heightsInFull = false,
    .layerColourIsPosition = true,
    .fullTables = false,
    .coloursAsGiven = true,
    .textsAsGiven = true,
    .layerNames = DrawingNames::Rule::AsGiven,
    .lineTypeNames = DrawingNames::Rule::AsGiven,
};
constexpr DXFOutFilter::Conventions DXFOutFilter::kStandard{
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
    .textsAsGiven = false,
    .layerNames = DrawingNames::Rule::KeepDistinct,
    .lineTypeNames = DrawingNames::Rule::MergeCase,
};

DXFOutFilter::DXFOutFilter(const FilterContext& context)
    : OutputFilter(context),
      conventions_(context.options.dialect == Dialect::Standard ? kStandard : kClassic),
      colours_(context.options.programFolder),
      layers_(conventions_.layerNames),
      lineTypes_(conventions_.lineTypeNames) {}

void DXFOutFilter::Create(const std::string& path) {
  const std::string folder = FolderOf(path);
  std::error_code error;
  if (!folder.empty() && !fs::is_directory(folder, error)) {
    throw Error(path + ": could not be created: " + folder + " is no folder that exists");
  }
  CheckCreatable(path, true);
  path_ = path;
  headerFile_ = TempFile("DXF");
  entityFile_ = TempFile("DXF");
  header_ = FileWriter(headerFile_.TakeHandle(), headerFile_.Path());
  entities_ = FileWriter(entityFile_.TakeHandle(), entityFile_.Path());
  layers_ = DrawingNames(conventions_.layerNames);
  headLayer_ = nullptr;
  lineTypes_ = DrawingNames(conventions_.lineTypeNames);
  lineTypes_.Of(kContinuous);
  patterns_.clear();
  if (conventions_.fullTables) layers_.Of("0");
  extents_ = {};
}

// Of line types that several inputs define the first one's pattern holds.
void DXFOutFilter::SourceOpened(InputFilter& source) {
  if (!conventions_.fullTables) return;
  for (const LineType& lineType : source.LineTypes()) patterns_.emplace(UpperCase(lineType.name), lineType);
}

WriteResult DXFOutFilter::Write(tEntity& entity) {
  NumberColour(entity);
  NoteNames(entity);
  const tEntity::Index last = entity.PointCount();
  NoteExtents(entity, last);
  if (conventions_.chainsAsStored) NoteMisread(entity);
  if (IsDegenerate(entity, last)) {
    WritePoints(entity, last);
    return WriteResult::Converted;
  }
  switch (entity.bType) {
    case kPoint:
      WritePoints(entity, last);
      break;
    case kLine:
      WriteLines(entity, last);
      break;
    case kPolyline:
      WritePolyline(entity, last);
      break;
    case kText:
      WriteText(entity);
      break;
    case kCircle:
      WriteCircle(entity);
      break;
    case kArc:
      if (conventions_.arcsSkipped) {
        NoteMissed("arcs");
        return WriteResult::Skipped;
      }
      WriteArc(entity);
      break;
    default:
      return WriteResult::Skipped;
  }
  return WriteResult::Written;
}

bool DXFOutFilter::IsMissing(const tEntity& entity, tEntity::Index i) const {
  return conventions_.originIsMissing && entity.x(i) == 0 && entity.Y(i) == 0 && entity.Z(i) == 0;
}

// Whether the element is but a place, of a kind that must have more.
bool DXFOutFilter::IsDegenerate(const tEntity& entity, tEntity::Index last) const {
  if (conventions_.degenerateKept) return false;
  return (IsChain(entity.bType) && last == 0) || (IsCurve(entity.bType) && !(entity.Rad > 0));
}

// A colour that the element's number does not have gets the number that comes nearest.
void DXFOutFilter::NumberColour(tEntity& entity) {
  const bool isNumbered = entity.Colour > 0 && entity.Colour <= kGreatestColour;
  if ((entity.RGB == 0 && !entity.IsBlack) || (entity.Colour != 0 && !isNumbered)) return;
  try {
    if (isNumbered && colours_.IsColourOf(entity.Colour, entity.RGB)) return;
    if (!conventions_.coloursAsGiven) entity.Colour = colours_.Nearest(entity.RGB);
    if (colours_.Colour(entity.Colour) != entity.RGB) Lost(WarningKind::TrueColours);
  } catch (const Error& error) {
    if (!conventions_.coloursAsGiven) report().Warn(WarningKind::ColourTable, error.what());
  }
}

// A layer has the colour that its elements have by layer; without such, the first one's. Where inputs differ, the first
// one's layers hold, and elements of others keep what they have as their own.
void DXFOutFilter::NoteNames(const tEntity& entity) {
  DrawingNames::Entry& layer = NameIn(layers_, entity.Layer, "layer");
  layer_ = &layer.name;
  const bool isColour = entity.Colour > 0 && entity.Colour <= kGreatestColour;
  byLayer_ =
      entity.ColourFrom == StyleSource::Layer && isColour && !(layer.isInherited && layer.colour != entity.Colour);
  if (byLayer_ || (layer.colour == 0 && isColour)) layer.colour = entity.Colour;
  layer.isInherited = layer.isInherited || byLayer_;
  NoteLineType(entity, layer);
}

void DXFOutFilter::NoteLineType(const tEntity& entity, DrawingNames::Entry& layer) {
  static const std::string kByLayerType("BYLAYER");
  const std::string& given = entity.LineStyle.empty() ? kContinuous : entity.LineStyle;
  const bool asGiven = !conventions_.fullTables || IsInherited(given);
  lineType_ = asGiven ? &given : &NameIn(lineTypes_, given, "line type").name;
  if (asGiven || entity.LineStyleFrom != StyleSource::Layer) return;
  if (layer.lineType.empty()) layer.lineType = *lineType_;
  if (layer.lineType == *lineType_) lineType_ = &kByLayerType;
}

// What other programs read otherwise than it was meant, or not at all.
void DXFOutFilter::NoteMisread(const tEntity& entity) {
  if (extents_.minZ != 0 || extents_.maxZ != 0) NoteHeights(entity);
  if (entity.bType == kPolyline) {
    if (entity.Closed) NoteMissed("that chains are closed");
  } else if (entity.bType == kText) {
    if (PlacementOf(entity.TextJust).up > 0) NoteMissed("the vertical placement of texts");
    if (!IsAscii(entity.Text)) NoteMissed(kLettersBeyondAscii);
  }
  const bool isDefined =
      lineType_ == &kContinuous || EqualsIgnoringCase(entity.LineStyle, kContinuous) || IsInherited(entity.LineStyle);
  if (!isDefined) NoteMissed("undefined line types");
}

// Of a drawing in which there are any.
void DXFOutFilter::NoteHeights(const tEntity& entity) {
  if (!entity.HasHeight()) return;
  if (entity.bType == kPolyline) NoteMissed("elevations of polylines");
  const auto isRounded = [](double z) { return static_cast<double>(static_cast<float>(z)) != z; };
  const bool isTold = (entity.Lost & kLostDigits) != 0;
  if (!isTold && std::any_of(entity.AllZ().begin(), entity.AllZ().end(), isRounded)) Lost(WarningKind::RoundedNumbers);
}

void DXFOutFilter::NoteRefusedName(const std::string& name) {
  if (!IsAscii(name)) NoteMissed(kLettersBeyondAscii);
  if (!EncodeName(name, encoded_)) NoteMissed("layers whose names they refuse");
}

DrawingNames::Entry& DXFOutFilter::NameIn(DrawingNames& names, const std::string& name, const char* what) {
  DrawingNames::Entry& entry = names.Of(name);
  if (std::exchange(entry.isTold, true)) return entry;
  if (conventions_.layerNames == DrawingNames::Rule::AsGiven) NoteRefusedName(name);
  if (entry.changed) {
    report().Warn(WarningKind::Names,
                  path_ + ": the " + what + " \"" + name.substr(0, kShownName) +
                      "\" has another name there; names hold up to 240 letters, digits, $, -, _ and blanks within, "
                      "and differ in more than letter case");
  }
  return entry;
}

void DXFOutFilter::NoteExtents(const tEntity& entity, tEntity::Index last) {
  Extents widened = extents_;  // in registers rather than in memory
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) {
      Lost(WarningKind::OriginVertices);
      NoteMissed("vertices at the origin");
    } else {
      widened.Add(entity.x(i), entity.Y(i), entity.Height(i));
    }
  }
  extents_ = widened;
  if (!entity.Bulges.empty()) extents_.AddArcs(entity);
}

// Values are lines of their own: a line end within one would shift everything behind it.
const std::string& DXFOutFilter::Printable(const std::string& value) {
  const std::string& clean = WithoutLineBreaks(value, printable_);
  if (&clean != &value) {
    report().Warn(WarningKind::ControlCharacters, path_ + ": control characters in a layer or a text became blanks");
  }
  return clean;
}

std::string_view DXFOutFilter::Encoded(const std::string& text) {
  const std::string& printable = Printable(text);
  if (conventions_.textsAsGiven) return printable;
  EncodeText(printable, encoded_);
  return encoded_;
}

void DXFOutFilter::Text(std::string_view code, std::string_view value) { entities_.Line(code).Line(value); }

// The lines that most kinds begin with.
void DXFOutFilter::Open(std::string_view type, const tEntity& entity) {
  const bool isSame = layer_ == headLayer_ && *lineType_ == headLineType_;
  if (!isSame) BuildHead();
  entities_.Write("  0\r\n").Line(type).Write(head_);
  Colour(entity);
}

// The lines that name layer and line type serve further elements, unless something in them is to be told of each.
void DXFOutFilter::BuildHead() {
  const std::string& layer = Printable(*layer_);
  const bool isLayerAsGiven = &layer == layer_;
  head_.assign("  8\r\n").append(layer).append("\r\n  6\r\n");
  const std::string& lineType = Printable(*lineType_);
  head_.append(lineType).append("\r\n");
  headLayer_ = isLayerAsGiven && &lineType == lineType_ ? layer_ : nullptr;
  headLineType_ = *lineType_;
}

void DXFOutFilter::Colour(const tEntity& entity) {
  std::int32_t colour = byLayer_ ? kByLayer : entity.Colour;
  if (!conventions_.coloursAsGiven && (colour < 0 || colour > kByLayer)) {
    report().Warn(WarningKind::ColourNumbers,
                  path_ + ": the number " + std::to_string(colour) +
                      " is no colour of a drawing; such elements have the colour of their layer");
    colour = kByLayer;
  }
  entities_.Line(" 62").Integer(colour).EndLine();
}

void DXFOutFilter::Vertex(const tEntity& entity, tEntity::Index index, bool second) {
  entities_.Write(second ? " 11\r\n" : " 10\r\n").Number(entity.x(index));
  entities_.Write(second ? "\r\n 21\r\n" : "\r\n 20\r\n").Number(entity.Y(index));
  entities_.Write(second ? "\r\n 31\r\n" : "\r\n 30\r\n");
  Height(entities_, entity.Height(index)).EndLine();
}

void DXFOutFilter::Bulge(const tEntity& entity, std::size_t segment) {
  if (segment >= entity.Bulges.size() || entity.Bulges[segment] == 0) return;
  entities_.Write(" 42\r\n").Number(entity.Bulges[segment]).EndLine();
}

FileWriter& DXFOutFilter::Height(FileWriter& file, double value) const {
  return conventions_.heightsInFull ? file.Number(value) : file.Single(static_cast<float>(value));
}

void DXFOutFilter::WritePoints(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) continue;
    Open("POINT", entity);
    Vertex(entity, i);
  }
}

void DXFOutFilter::WriteLines(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i < last; ++i) {
    if (IsMissing(entity, i)) continue;
    Open("LINE", entity);
    Vertex(entity, i);
    Vertex(entity, i + 1, true);
  }
}

void DXFOutFilter::WritePolyline(const tEntity& entity, tEntity::Index last) {
  Open("POLYLINE", entity);
  const bool inSpace = !conventions_.chainsAsStored && !entity.IsLevel();
  if (!conventions_.chainsAsStored) {
    WritePolylineForm(entity, inSpace);
    // The vertex that closes the chain goes without saying.
    if (entity.Closed && last > 1 && SameVertex(entity, 0, last) && !SameVertex(entity, 0, last - 1)) --last;
  }
  vertexHead_.assign("  0\r\nVERTEX\r\n  8\r\n").append(Printable(*layer_)).append("\r\n");
  const bool hasBulges = !entity.Bulges.empty();
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) continue;
    entities_.Write(vertexHead_);
    Vertex(entity, i);
    if (hasBulges) Bulge(entity, static_cast<std::size_t>(i));
    if (inSpace) entities_.Write(" 70\r\n32\r\n");
  }
  Text("  0", "SEQEND");
}

// That vertices follow, the height of a flat chain behind two numbers without a meaning, and the flags.
void DXFOutFilter::WritePolylineForm(const tEntity& entity, bool inSpace) {
  constexpr int kClosed = 1, kInSpace = 8;
  entities_.Write(" 66\r\n1\r\n 10\r\n0\r\n 20\r\n0\r\n 30\r\n");
  Height(entities_, inSpace ? 0 : entity.Height(0)).EndLine();
  entities_.Line(" 70").Integer((entity.Closed ? kClosed : 0) + (inSpace ? kInSpace : 0)).EndLine();
}

void DXFOutFilter::WriteText(const tEntity& entity) {
  auto [across, up] = PlacementOf(entity.TextJust);
  if (!conventions_.placementAsByte) {
    across = across > 2 ? 0 : across;
    up = up > 48 ? 0 : up / 16;
  }
  Open("TEXT", entity);
  Vertex(entity, 0);
  // A text at its left on its baseline has no alignment point.
  if (conventions_.placementAsByte || across != 0 || up != 0) Vertex(entity, 0, true);
  entities_.Line(" 40").Number(entity.TextSize).EndLine();
  Text("  1", Encoded(entity.Text));
  entities_.Line(" 50").Number(entity.TextAng).EndLine();
  entities_.Line(" 72").Integer(across).EndLine();
  entities_.Line(" 73").Integer(up).EndLine();
}

void DXFOutFilter::WriteCircle(const tEntity& entity) {
  Text("  0", "CIRCLE");
  Colour(entity);
  Text("  8", Printable(*layer_));
  Vertex(entity, 0);
  entities_.Line(" 40").Number(entity.Curve().radius).EndLine();
  Text("  6", Printable(*lineType_));
}

// The end of an arc through 0 degrees counts from there again.
void DXFOutFilter::WriteArc(const tEntity& entity) {
  const auto [radius, start, end] = entity.Curve();
  Open("ARC", entity);
  Vertex(entity, 0);
  entities_.Line(" 40").Number(radius).EndLine();
  entities_.Line(" 50").Number(start).EndLine();
  entities_.Line(" 51").Number(end > 360 && end - start < 360 ? end - 360 : end).EndLine();
}

void DXFOutFilter::RequireOpen(const char* member) const {
  if (headerFile_.Path().empty()) throw Error("File Name not yet entered", member);
}

void DXFOutFilter::WriteHead() {
  RequireOpen("WriteHead");
  constexpr std::string_view kRelease = "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1009\r\n";
  constexpr std::string_view kCodePage = "  9\r\n$DWGCODEPAGE\r\n  3\r\nANSI_1252\r\n";
  constexpr std::string_view kBase = "  9\r\n$INSBASE\r\n 10\r\n0\r\n 20\r\n0\r\n 30\r\n0\r\n";
  constexpr std::string_view kTables = "  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nTABLES\r\n";
  constexpr std::string_view kNoStyles = "  0\r\nTABLE\r\n  2\r\nSTYLE\r\n 70\r\n0\r\n  0\r\nENDTAB\r\n";
  constexpr std::string_view kStyles =
      "  0\r\nTABLE\r\n  2\r\nSTYLE\r\n 70\r\n1\r\n  0\r\nSTYLE\r\n  2\r\nSTANDARD\r\n 70\r\n0\r\n 40\r\n0\r\n"
      " 41\r\n1\r\n 50\r\n0\r\n 71\r\n0\r\n 42\r\n1\r\n  3\r\ntxt\r\n  4\r\n\r\n  0\r\nENDTAB\r\n";
  constexpr std::string_view kBehindTables =
      "  0\r\nENDSEC\r\n"
      "  0\r\nSECTION\r\n  2\r\nBLOCKS\r\n  0\r\nENDSEC\r\n"
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n";
  const auto corner = [this](std::string_view name, double x, double y, double z) {
    header_.Line("  9").Line(name);
    header_.Line(" 10").Number(x).EndLine().Line(" 20").Number(y).EndLine();
    Height(header_.Line(" 30"), z).EndLine();
  };
  header_.Write(kRelease);
  if (!conventions_.textsAsGiven) header_.Write(kCodePage);
  header_.Write(kBase);
  corner("$EXTMIN", extents_.minX, extents_.minY, extents_.minZ);
  corner("$EXTMAX", extents_.maxX, extents_.maxY, extents_.maxZ);
  header_.Write(kTables);
  WriteLineTypeTable();
  WriteLayerTable();
  header_.Write(conventions_.fullTables ? kStyles : kNoStyles).Write(kBehindTables);
}

// A line type whose pattern is not known is a solid line.
void DXFOutFilter::WriteLineTypeTable() {
  static const LineType kSolid{{}, "Solid Line", {}};
  header_.Write("  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n").Integer(std::ssize(lineTypes_.All())).EndLine();
  for (const DrawingNames::Entry& entry : lineTypes_.All()) {
    const auto known = patterns_.find(UpperCase(entry.given));
    const LineType& lineType = known == patterns_.end() ? kSolid : known->second;
    double length = 0;
    for (const double dash : lineType.dashes) length += std::fabs(dash);
    header_.Write("  0\r\nLTYPE\r\n  2\r\n").Write(Printable(entry.name)).Write("\r\n 70\r\n64\r\n  3\r\n");
    header_.Line(Encoded(lineType.description)).Write(" 72\r\n65\r\n 73\r\n");
    header_.Integer(std::ssize(lineType.dashes)).Write("\r\n 40\r\n").Number(length).EndLine();
    for (const double dash : lineType.dashes) header_.Write(" 49\r\n").Number(dash).EndLine();
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::WriteLayerTable() {
  header_.Write("  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n").Integer(std::ssize(layers_.All())).EndLine();
  std::int64_t position = 0;
  for (const DrawingNames::Entry& layer : layers_.All()) {
    header_.Write("  0\r\nLAYER\r\n  2\r\n").Write(Printable(layer.name)).Write("\r\n 70\r\n64\r\n 62\r\n");
    ++position;
    header_.Integer(conventions_.layerColourIsPosition ? position : layer.colour == 0 ? kWhite : layer.colour);
    header_.Write("\r\n  6\r\n").Line(layer.lineType.empty() ? kContinuous : layer.lineType);
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::Merge(const std::string& headerPath, const std::string& entityPath) {
  RequireOpen("Merge");
  RemoveFile(path_);
  FileWriter output(path_);
  try {
    output.Append(headerPath);
    output.Append(entityPath);
    output.Write("  0\r\nENDSEC\r\n  0\r\nEOF\r\n");
    output.Close();
  } catch (...) {
    output.Discard();
    RemoveWritten(path_);
    throw;
  }
}

void DXFOutFilter::Complete() {
  WriteHead();
  header_.Close();
  entities_.Close();
  Merge(headerFile_.Path(), entityFile_.Path());
  Drop();
}

void DXFOutFilter::Drop() noexcept {
  header_.Discard();
  entities_.Discard();
  headerFile_ = TempFile();
  entityFile_ = TempFile();
}

}  // namespace tesselink
