// SPDX-License-Identifier: MIT
#include "formats/dxf/DXFOutFilter.h"

#include <algorithm>

#include "core/element/Justification.h"
#include "core/io/CodePages.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/Interaction.h"
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
    .nameSigns = NameSigns::Few,
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
    .nameSigns = NameSigns::Few,
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

AreaPlace DXFOutFilter::PlaceOfAreas(const OptionValues& values) {
  return values.Text(kReleaseOption) == k2007 ? AreaPlace::Beside : AreaPlace::None;
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

void DXFOutFilter::NoteNewName(const DrawingNames::Entry& entry) {
  if (!conventions_.textsAsGiven) {
    pages_.NoteName(entry.name);
    return NoteOtherPage();
  }
  if (!IsAscii(entry.given)) NoteMissed(kLettersBeyondAscii);
  if (!EncodeName(entry.given, conventions_.nameSigns, encoded_)) NoteMissed("layers whose names they refuse");
}

void DXFOutFilter::Create(const std::string& path) {
  pages_ = {};
  utf8From_ = kNever;
  layersInPage_.clear();
  lineTypesInPage_.clear();
  DrawingOutput::Create(path);
}

// Most drawings are in ANSI_1252, as which they begin. From the first letter that another page may have to hold they
// are UTF-8 until the end, when the page is known.
void DXFOutFilter::NoteOtherPage() {
  if (!pages_.NeedOther() || utf8From_ != kNever) return;
  utf8From_ = entities_.Size();
  layers_.ForgetHeads();
}

std::string_view DXFOutFilter::InterimText(std::string_view text) { return utf8From_ == kNever ? InPage(text) : text; }

std::string_view DXFOutFilter::InterimValue(std::string_view value) {
  pages_.NoteText(value);
  NoteOtherPage();
  return InterimText(value);
}

// Most elements have the layer of the one before.
std::string_view DXFOutFilter::Interim(const std::string& name) {
  if (utf8From_ != kNever || conventions_.textsAsGiven || IsAscii(name)) return name;
  if (name != interimName_) {
    interim_ = InPage(name);
    interimName_ = name;
  }
  return interim_;
}

void DXFOutFilter::ChoosePage() {
  for (const DrawingNames::Entry& entry : lineTypes_.All()) pages_.NoteText(Encoded(PatternOf(entry).description));
  for (const std::string& text : Records().Schema()) pages_.NoteText(text);
  NoteOtherPage();
  pages_.Choose();
  SettleNames(layers_, "layer", layersInPage_);
  SettleNames(lineTypes_, "line type", lineTypesInPage_);
}

void DXFOutFilter::SettleNames(DrawingNames& names, const char* what, NamesInPage& settled) {
  for (const DrawingNames::Entry& entry : names.All()) {
    if (IsAscii(entry.name)) continue;
    std::string name = entry.name;
    if (!pages_.FitName(name)) {
      name = names.Distinct(name);
      if (!entry.changed) {
        TellOfName(entry, what,
                   "no code page holds all names: " + pages_.Name() + ", which it is in, lacks letters of this one; " +
                       "release 2007 holds all (" + interaction().Naming("release", "2007") + ")");
      }
    }
    pages_.AppendText(settled[entry.name], name);
  }
}

std::string_view DXFOutFilter::InPage(std::string_view text) {
  if (IsAscii(text) || conventions_.textsAsGiven) return text;
  inPage_.clear();
  pages_.AppendText(inPage_, text);
  return inPage_;
}

std::string_view DXFOutFilter::NameInPage(const NamesInPage& names, std::string_view name) {
  const auto found = names.find(name);
  return found == names.end() ? name : std::string_view(found->second);
}

void DXFOutFilter::AppendEntities(FileWriter& output, const std::string& path) {
  if (utf8From_ == kNever) return DrawingOutput::AppendEntities(output, path);
  BinaryFile entities(path);
  const auto inPage = [this](std::string_view code, std::string_view value) {
    return code == "  8"   ? NameInPage(layersInPage_, value)
           : code == "  6" ? NameInPage(lineTypesInPage_, value)
                           : InPage(value);
  };
  AppendInPage(output, entities, 0, utf8From_, [&](std::string_view code, std::string_view value) {
    decoded_.clear();
    AppendDecoded1252(decoded_, value);
    return inPage(code, decoded_);
  });
  AppendInPage(output, entities, utf8From_, entities.Size(), inPage);
}

// The lines that most kinds begin with, behind those that name the kind.
void DXFOutFilter::Open(std::string_view type, const tEntity& entity) {
  const std::string& head = Head({});
  entities_.Write(type).Write(head).Integer(ColourNumber(entity)).EndLine();
}

void DXFOutFilter::Bulge(const tEntity& entity, std::size_t segment) {
  if (segment >= entity.Bulges.size() || entity.Bulges[segment] == 0) return;
  entities_.Write(" 42\r\n").Number(entity.Bulges[segment]).EndLine();
}

void DXFOutFilter::WritePoints(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i <= last; ++i) {
    if (IsMissing(entity, i)) continue;
    Open("  0\r\nPOINT\r\n", entity);
    Vertex(entity, i);
    Record(entity);
  }
}

void DXFOutFilter::WriteLines(const tEntity& entity, tEntity::Index last) {
  for (tEntity::Index i = 0; i < last; ++i) {
    if (IsMissing(entity, i)) continue;
    Open("  0\r\nLINE\r\n", entity);
    Vertex(entity, i);
    Vertex(entity, i + 1, true);
    Record(entity);
  }
}

void DXFOutFilter::WritePolyline(const tEntity& entity, tEntity::Index last) {
  Open("  0\r\nPOLYLINE\r\n", entity);
  const bool inSpace = !conventions_.chainsAsStored && !entity.IsLevel();
  if (!conventions_.chainsAsStored) {
    WritePolylineForm(entity, inSpace);
    if (entity.Closed) last = LastStored(entity, 0, last);
  }
  Record(entity);
  vertexHead_.assign("  0\r\nVERTEX\r\n  8\r\n").append(Interim(Printable(layer_->name))).append("\r\n");
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
  if (!conventions_.textsAsGiven) {
    pages_.NoteText(Encoded(entity.Text));
    NoteOtherPage();
  }
  Open("  0\r\nTEXT\r\n", entity);
  Vertex(entity, 0);
  // A text at its left on its baseline has no alignment point.
  if (conventions_.placementAsByte || across != 0 || up != 0) Vertex(entity, 0, true);
  entities_.Line(" 40").Number(entity.TextSize).EndLine();
  Text("  1", conventions_.textsAsGiven ? Encoded(entity.Text) : InterimText(encoded_));
  entities_.Line(" 50").Number(entity.TextAng).EndLine();
  entities_.Line(" 72").Integer(across).EndLine();
  entities_.Line(" 73").Integer(up).EndLine();
  Record(entity);
}

void DXFOutFilter::WriteCircle(const tEntity& entity) {
  entities_.Write("  0\r\nCIRCLE\r\n 62\r\n").Integer(ColourNumber(entity)).EndLine();
  Text("  8", Interim(Printable(layer_->name)));
  Vertex(entity, 0);
  entities_.Line(" 40").Number(entity.Curve().radius).EndLine();
  Text("  6", Interim(Printable(*lineType_)));
  Record(entity);
}

void DXFOutFilter::WriteArc(const tEntity& entity) {
  const CurveNumbers arc = entity.Curve();
  Open("  0\r\nARC\r\n", entity);
  Vertex(entity, 0);
  entities_.Line(" 40").Number(arc.radius).EndLine();
  entities_.Line(" 50").Number(arc.start).EndLine();
  entities_.Line(" 51").Number(ArcEnd(arc)).EndLine();
  Record(entity);
}

void DXFOutFilter::WriteSections() {
  constexpr std::string_view kRelease = "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1009\r\n";
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
  if (!conventions_.textsAsGiven) {
    ChoosePage();
    header_.Write("  9\r\n$DWGCODEPAGE\r\n  3\r\n").Line(pages_.Name());
  }
  header_.Write(kBase);
  WriteCorners();
  header_.Write(kTables);
  WriteLineTypeTable();
  WriteLayerTable();
  if (Records().Any()) {
    GroupWriter(header_).Groups("0 TABLE|2 APPID|70 1|0 APPID|2 TESSELINK|70 0|0 ENDTAB");
  }
  header_.Write(conventions_.fullTables ? kStyles : kNoStyles).Write(kBehindTables);
}

void DXFOutFilter::WriteLineTypeTable() {
  header_.Write("  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n").Integer(std::ssize(lineTypes_.All())).EndLine();
  for (const DrawingNames::Entry& entry : lineTypes_.All()) {
    const LineType& lineType = PatternOf(entry);
    header_.Write("  0\r\nLTYPE\r\n  2\r\n")
        .Write(NameInPage(lineTypesInPage_, Printable(entry.name)))
        .Write("\r\n 70\r\n64\r\n  3\r\n");
    header_.Line(InPage(Encoded(lineType.description))).Write(" 72\r\n65\r\n 73\r\n");
    header_.Integer(std::ssize(lineType.dashes)).Write("\r\n 40\r\n").Number(LengthOf(lineType)).EndLine();
    for (const double dash : lineType.dashes) header_.Write(" 49\r\n").Number(dash).EndLine();
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::WriteLayerTable() {
  header_.Write("  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n").Integer(std::ssize(layers_.All())).EndLine();
  constexpr int kIsUsed = 64;
  std::int64_t position = 0;
  GroupWriter groups(header_);
  for (const DrawingNames::Entry& layer : layers_.All()) {
    header_.Write("  0\r\nLAYER\r\n  2\r\n")
        .Write(NameInPage(layersInPage_, Printable(layer.name)))
        .Write("\r\n 70\r\n");
    header_.Integer(kIsUsed + FlagsOf(layer.state)).Write("\r\n 62\r\n");
    ++position;
    const std::int64_t colour = conventions_.layerColourIsPosition ? position
                                : layer.colour == 0                ? kWhite
                                                                   : layer.colour;
    header_.Integer(layer.state.isOff ? -colour : colour).Write("\r\n  6\r\n");
    header_.Line(layer.lineType.empty() ? std::string_view(kContinuous) : NameInPage(lineTypesInPage_, layer.lineType));
    if (layer.name == "0") Schema(groups);
  }
  header_.Write("  0\r\nENDTAB\r\n");
}

void DXFOutFilter::WriteEnd(FileWriter& output) { output.Write("  0\r\nENDSEC\r\n  0\r\nEOF\r\n"); }

}  // namespace tesselink
