#include "formats/dxf/DXFOutFilter.h"

#include <algorithm>

#include "core/element/Justification.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "formats/dxf/DXF2007OutFilter.h"
#include "formats/dxf/DrawingEncoding.h"

namespace tesselink {
namespace {

constexpr std::int32_t kWhite = 7;
constexpr std::string_view kReleaseOption = "release", kR12 = "r12", k2007 = "2007";
constexpr std::string_view kLettersBeyondAscii = "letters beyond ASCII";

constexpr DrawingConventions kClassic{
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
    .trueColours = false,
    .textsAsGiven = true,
    .layerNames = DrawingNames::Rule::AsGiven,
    .lineTypeNames = DrawingNames::Rule::AsGiven,
    .letters = DrawingLetters::Ansi,
};
constexpr DrawingConventions kStandard{
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
    .trueColours = false,
    .textsAsGiven = false,
    .layerNames = DrawingNames::Rule::KeepDistinct,
    .lineTypeNames = DrawingNames::Rule::MergeCase,
    .letters = DrawingLetters::Ansi,
};

}  // namespace

std::vector<FormatOption> DXFOutFilter::Options() {
  return {{.name = std::string(kReleaseOption),
           .help = "Release of a drawing that is written: r12 (AC1009, the\n"
                   "default) or, in the standard dialect, 2007 (AC1021), which\n"
                   "holds areas, true colours, any letters, and names as given",
           .value = "CHOICE",
           .kind = FormatOption::Kind::Choice,
           .choices = {std::string(kR12), std::string(k2007)},
           .standardChoices = {std::string(k2007)}}};
}

std::unique_ptr<OutputFilter> DXFOutFilter::Writer(const FilterContext& context) {
  const FilterOptions& options = context.options;
  if (options.dialect == Dialect::Standard && options.own.Text(kReleaseOption, kR12) == k2007) {
    return std::make_unique<DXF2007OutFilter>(context);
  }
  return std::make_unique<DXFOutFilter>(context);
}

DXFOutFilter::DXFOutFilter(const FilterContext& context)
    : DrawingOutput(context, context.options.dialect == Dialect::Standard ? kStandard : kClassic) {}

WriteResult DXFOutFilter::Write(tEntity& entity) {
  Note(entity);
  if (conventions_.chainsAsStored) NoteMisread(entity);
  return WriteForm(entity);
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
  const bool isDefined = lineType_ == &kContinuous || EqualsIgnoringCase(entity.LineStyle, kContinuous) ||
                         IsInheritedLineType(entity.LineStyle);
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

void DXFOutFilter::NoteNewName(const std::string& name) {
  if (conventions_.layerNames != DrawingNames::Rule::AsGiven) return;
  if (!IsAscii(name)) NoteMissed(kLettersBeyondAscii);
  if (!EncodeName(name, DrawingLetters::Ansi, encoded_)) NoteMissed("layers whose names they refuse");
}

// The lines that most kinds begin with.
void DXFOutFilter::Open(std::string_view type, const tEntity& entity) {
  const std::string& head = Head({});
  entities_.Write("  0\r\n").Line(type).Write(head).Line(" 62").Integer(ColourNumber(entity)).EndLine();
}

void DXFOutFilter::Bulge(const tEntity& entity, std::size_t segment) {
  if (segment >= entity.Bulges.size() || entity.Bulges[segment] == 0) return;
  entities_.Write(" 42\r\n").Number(entity.Bulges[segment]).EndLine();
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
    if (entity.Closed) last = LastStored(entity, 0, last);
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
  entities_.Write("  0\r\nCIRCLE\r\n 62\r\n").Integer(ColourNumber(entity)).EndLine();
  Text("  8", Printable(*layer_));
  Vertex(entity, 0);
  entities_.Line(" 40").Number(entity.Curve().radius).EndLine();
  Text("  6", Printable(*lineType_));
}

void DXFOutFilter::WriteArc(const tEntity& entity) {
  const CurveNumbers arc = entity.Curve();
  Open("ARC", entity);
  Vertex(entity, 0);
  entities_.Line(" 40").Number(arc.radius).EndLine();
  entities_.Line(" 50").Number(arc.start).EndLine();
  entities_.Line(" 51").Number(ArcEnd(arc)).EndLine();
}

void DXFOutFilter::WriteSections() {
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
  header_.Write(kRelease);
  if (!conventions_.textsAsGiven) header_.Write(kCodePage);
  header_.Write(kBase);
  WriteCorners();
  header_.Write(kTables);
  WriteLineTypeTable();
  WriteLayerTable();
  header_.Write(conventions_.fullTables ? kStyles : kNoStyles).Write(kBehindTables);
}

void DXFOutFilter::WriteLineTypeTable() {
  header_.Write("  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n").Integer(std::ssize(lineTypes_.All())).EndLine();
  for (const DrawingNames::Entry& entry : lineTypes_.All()) {
    const LineType& lineType = PatternOf(entry);
    header_.Write("  0\r\nLTYPE\r\n  2\r\n").Write(Printable(entry.name)).Write("\r\n 70\r\n64\r\n  3\r\n");
    header_.Line(Encoded(lineType.description)).Write(" 72\r\n65\r\n 73\r\n");
    header_.Integer(std::ssize(lineType.dashes)).Write("\r\n 40\r\n").Number(LengthOf(lineType)).EndLine();
    for (const double dash : lineType.dashes) header_.Write(" 49\r\n").Number(dash).EndLine();
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::WriteLayerTable() {
  header_.Write("  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n").Integer(std::ssize(layers_.All())).EndLine();
  constexpr int kIsUsed = 64;
  std::int64_t position = 0;
  for (const DrawingNames::Entry& layer : layers_.All()) {
    header_.Write("  0\r\nLAYER\r\n  2\r\n").Write(Printable(layer.name)).Write("\r\n 70\r\n");
    header_.Integer(kIsUsed + FlagsOf(layer.state)).Write("\r\n 62\r\n");
    ++position;
    const std::int64_t colour = conventions_.layerColourIsPosition ? position
                                : layer.colour == 0                ? kWhite
                                                                   : layer.colour;
    header_.Integer(layer.state.isOff ? -colour : colour);
    header_.Write("\r\n  6\r\n").Line(layer.lineType.empty() ? kContinuous : layer.lineType);
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::WriteEnd(FileWriter& output) { output.Write("  0\r\nENDSEC\r\n  0\r\nEOF\r\n"); }

}  // namespace tesselink
