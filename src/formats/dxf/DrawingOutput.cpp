// SPDX-License-Identifier: MIT
#include "formats/dxf/DrawingOutput.h"

#include <cmath>
#include <filesystem>

#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/Report.h"
#include "formats/dxf/ExtendedData.h"

namespace tesselink {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kShownName = 60;
constexpr std::int32_t kGreatestColour = 255, kByLayer = 256;

bool SameVertex(const tEntity& entity, tEntity::Index a, tEntity::Index b) {
  return entity.x(a) == entity.x(b) && entity.Y(a) == entity.Y(b) && entity.Height(a) == entity.Height(b);
}

}  // namespace

const std::string DrawingOutput::kContinuous = "CONTINUOUS";

bool IsInheritedLineType(const std::string& lineType) {
  return EqualsIgnoringCase(lineType, "BYLAYER") || EqualsIgnoringCase(lineType, "BYBLOCK");
}

DrawingOutput::DrawingOutput(const FilterContext& context, const DrawingConventions& conventions)
    : OutputFilter(context),
      conventions_(conventions),
      layers_(conventions.layerNames, conventions.nameSigns),
      lineTypes_(conventions.lineTypeNames, conventions.nameSigns),
      colours_(context.options.programFolder) {}

void DrawingOutput::Create(const std::string& path) {
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
  layers_ = DrawingNames(conventions_.layerNames, conventions_.nameSigns);
  lineTypes_ = DrawingNames(conventions_.lineTypeNames, conventions_.nameSigns);
  lineTypes_.Of(kContinuous);
  patterns_.clear();
  records_.Reset();
  if (conventions_.fullTables) layers_.Of("0");
  extents_ = {};
}

// Of line types that several inputs define the first one's pattern holds.
void DrawingOutput::SourceOpened(InputFilter& source) {
  if (!conventions_.fullTables) return;
  for (const LineType& lineType : source.LineTypes()) patterns_.emplace(UpperCase(lineType.name), lineType);
  states_ = source.LayerStates();
  ++source_;
  if (!options().attributes) return;
  const std::string leftOut = records_.Begin(source);
  if (leftOut.empty()) return;
  report().Warn(
      WarningKind::FieldsLeftOut,
      source.AttributesPath() + ": fields for which the drawing's layer 0 has no room were left out: " + leftOut);
}

void DrawingOutput::WriteRecord() {
  const RecordsOut::Tag& tag = records_.At();
  entities_.Write("1001\r\n").Line(kOwnData).Write("1070\r\n").Integer(tag.table).Write("\r\n1071\r\n");
  entities_.Integer(tag.record).Write("\r\n1070\r\n").Integer(std::max(tag.part, 0)).EndLine();
  for (const TextList* texts : {&records_.Role(), &records_.Values()}) {
    for (const std::string& text : *texts) {
      const std::string_view value = InterimValue(text);
      entities_.Write("1000\r\n").Line(value);
    }
  }
  if (tag.leftOut > 0) Lost(WarningKind::LongRecords, tag.leftOut);
}

void DrawingOutput::Schema(GroupWriter& groups) {
  if (!records_.Any()) return;
  groups.Group(1001, kOwnData).Integer(1070, schema::kVersion);
  for (const std::string& text : records_.Schema()) groups.Group(1000, SchemaText(text));
}

WriteResult DrawingOutput::Write(tEntity& entity) {
  Note(entity);
  return WriteForm(entity);
}

void DrawingOutput::Note(tEntity& entity) {
  NumberColour(entity);
  NoteNames(entity);
  NoteExtents(entity, entity.PointCount());
}

WriteResult DrawingOutput::WriteForm(tEntity& entity) {
  const tEntity::Index last = entity.PointCount();
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

// Whether the element is but a place, of a kind that must have more.
bool DrawingOutput::IsDegenerate(const tEntity& entity, tEntity::Index last) const {
  if (conventions_.degenerateKept) return false;
  return (IsChain(entity.bType) && last == 0) || (IsCurve(entity.bType) && !(entity.Rad > 0));
}

tEntity::Index DrawingOutput::LastStored(const tEntity& entity, tEntity::Index first, tEntity::Index last) {
  const bool repeats = last > first + 1 && SameVertex(entity, first, last) && !SameVertex(entity, first, last - 1);
  return repeats ? last - 1 : last;
}

// A colour that the element's number does not have gets the number that comes nearest.
void DrawingOutput::NumberColour(tEntity& entity) {
  trueColour_ = kNoColour;
  const bool isNumbered = entity.Colour > 0 && entity.Colour <= kGreatestColour;
  if ((entity.RGB == 0 && !entity.IsBlack) || (entity.Colour != 0 && !isNumbered)) return;
  if (conventions_.trueColours) trueColour_ = entity.RGB;
  try {
    if (isNumbered && colours_.IsColourOf(entity.Colour, entity.RGB)) {
      trueColour_ = kNoColour;
      return;
    }
    if (!conventions_.coloursAsGiven) entity.Colour = colours_.Nearest(entity.RGB);
    if (colours_.Colour(entity.Colour) == entity.RGB) {
      trueColour_ = kNoColour;
    } else if (!conventions_.trueColours) {
      Lost(WarningKind::TrueColours);
    }
  } catch (const Error& error) {
    if (!conventions_.coloursAsGiven) report().Warn(WarningKind::ColourTable, error.what());
  }
}

// A layer has the colour that its elements have by layer; without such, the first one's. Where inputs differ, the first
// one's layers hold, and elements of others keep what they have as their own.
void DrawingOutput::NoteNames(const tEntity& entity) {
  DrawingNames::Entry& layer = NameIn(layers_, entity.Layer, "layer");
  layer_ = &layer;
  const bool isColour = entity.Colour > 0 && entity.Colour <= kGreatestColour;
  const bool differs = layer.colour != entity.Colour || layer.trueColour != trueColour_;
  byLayer_ = entity.ColourFrom == StyleSource::Layer && isColour && !(layer.isInherited && differs);
  if (byLayer_ || (layer.colour == 0 && isColour)) {
    layer.colour = entity.Colour;
    layer.trueColour = trueColour_;
  }
  if (byLayer_) trueColour_ = kNoColour;
  layer.isInherited = layer.isInherited || byLayer_;
  if (layer.source != source_) NoteState(entity, layer);
  NoteLineType(entity, layer);
}

// A layer that one input shows and another does not is shown.
void DrawingOutput::NoteState(const tEntity& entity, DrawingNames::Entry& layer) {
  const auto found =
      std::find_if(states_.begin(), states_.end(), [&](const LayerState& state) { return state.name == entity.Layer; });
  const LayerState state = found == states_.end() ? LayerState() : *found;
  const bool isFirst = std::exchange(layer.source, source_) == 0;
  layer.state.isOff = state.isOff && (isFirst || layer.state.isOff);
  layer.state.isFrozen = state.isFrozen && (isFirst || layer.state.isFrozen);
  layer.state.isLocked = state.isLocked && (isFirst || layer.state.isLocked);
}

void DrawingOutput::NoteLineType(const tEntity& entity, DrawingNames::Entry& layer) {
  static const std::string kByLayerType("BYLAYER");
  const std::string& given = entity.LineStyle.empty() ? kContinuous : entity.LineStyle;
  const bool asGiven = !conventions_.fullTables || IsInheritedLineType(given);
  lineType_ = asGiven ? &given : &NameIn(lineTypes_, given, "line type").name;
  if (asGiven || entity.LineStyleFrom != StyleSource::Layer) return;
  if (layer.lineType.empty()) layer.lineType = *lineType_;
  if (layer.lineType == *lineType_) lineType_ = &kByLayerType;
}

DrawingNames::Entry& DrawingOutput::NameIn(DrawingNames& names, const std::string& name, const char* what) {
  DrawingNames::Entry& entry = names.Of(name);
  if (std::exchange(entry.isTold, true)) return entry;
  NoteNewName(entry);
  if (entry.changed) TellOfName(entry, what, NameRule(conventions_.nameSigns));
  return entry;
}

void DrawingOutput::TellOfName(const DrawingNames::Entry& entry, const char* what, std::string_view why) {
  report().Warn(WarningKind::Names, path_ + ": the " + what + " \"" + entry.given.substr(0, kShownName) +
                                        "\" has another name there; " + std::string(why));
}

void DrawingOutput::NoteExtents(const tEntity& entity, tEntity::Index last) {
  const bool isOffOrigin = entity.x(0) != 0;
  if (last == 0 && isOffOrigin) {  // as most points
    mayMiss_ = false;
    return extents_.Add(entity.x(0), entity.Y(0), entity.Height(0));
  }
  Extents box;
  box.Add(entity, 0, last + 1);
  // Most drawings lie far from the origin, so that no vertex needs to be looked at by itself.
  mayMiss_ = conventions_.originIsMissing && box.minX <= 0 && box.maxX >= 0 && box.minY <= 0 && box.maxY >= 0;
  if (!mayMiss_) extents_.Add(box);
  for (tEntity::Index i = 0; mayMiss_ && i <= last; ++i) {
    if (IsMissing(entity, i)) {
      Lost(WarningKind::OriginVertices);
      NoteMissed("vertices at the origin");
    } else {
      extents_.Add(entity.x(i), entity.Y(i), entity.Height(i));
    }
  }
  if (!entity.Bulges.empty()) extents_.AddArcs(entity);
}

// Values are lines of their own: a line end within one would shift everything behind it.
const std::string& DrawingOutput::Printable(const std::string& value) {
  const std::string& clean = WithoutLineBreaks(value, printable_);
  if (&clean != &value) {
    report().Warn(WarningKind::ControlCharacters, path_ + ": control characters in a layer or a text became blanks");
  }
  return clean;
}

std::string_view DrawingOutput::Encoded(const std::string& text) {
  const std::string& printable = Printable(text);
  if (conventions_.textsAsGiven) return printable;
  EncodeText(printable, encoded_);
  return encoded_;
}

const std::string& DrawingOutput::Head(std::string_view before) {
  if (!layer_->head.empty() && IsSame(layer_->headLineType, *lineType_)) return layer_->head;
  const std::string& layer = Printable(layer_->name);
  const bool isLayerAsGiven = &layer == &layer_->name;
  head_.assign(before).append("  8\r\n").append(Interim(layer)).append("\r\n  6\r\n");
  const std::string& lineType = Printable(*lineType_);
  head_.append(Interim(lineType)).append("\r\n 62\r\n");
  if (!isLayerAsGiven || &lineType != lineType_) return head_;
  layer_->headLineType = *lineType_;
  return layer_->head = head_;
}

void DrawingOutput::Text(std::string_view code, std::string_view value) { entities_.Line(code).Line(value); }

std::int32_t DrawingOutput::ColourNumber(const tEntity& entity) {
  const std::int32_t colour = byLayer_ ? kByLayer : entity.Colour;
  if (conventions_.coloursAsGiven || (colour >= 0 && colour <= kByLayer)) return colour;
  report().Warn(WarningKind::ColourNumbers,
                path_ + ": the number " + std::to_string(colour) +
                    " is no colour of a drawing; such elements have the colour of their layer");
  return kByLayer;
}

// Codes of a length that is known are copied without a call.
template <bool isSecond>
void DrawingOutput::WriteVertex(const tEntity& entity, tEntity::Index index) {
  constexpr std::string_view kX = isSecond ? " 11\r\n" : " 10\r\n";
  constexpr std::string_view kY = isSecond ? "\r\n 21\r\n" : "\r\n 20\r\n";
  constexpr std::string_view kZ = isSecond ? "\r\n 31\r\n" : "\r\n 30\r\n";
  entities_.Write(kX).Number(entity.x(index)).Write(kY).Number(entity.Y(index)).Write(kZ);
  Height(entities_, entity.Height(index)).EndLine();
}

void DrawingOutput::Vertex(const tEntity& entity, tEntity::Index index, bool second) {
  second ? WriteVertex<true>(entity, index) : WriteVertex<false>(entity, index);
}

double DrawingOutput::ArcEnd(const CurveNumbers& arc) {
  return arc.end > 360 && arc.end - arc.start < 360 ? arc.end - 360 : arc.end;
}

void DrawingOutput::RequireOpen(const char* member) const {
  if (headerFile_.Path().empty()) throw Error("File Name not yet entered", member);
}

void DrawingOutput::WriteHead() {
  RequireOpen("WriteHead");
  WriteSections();
}

void DrawingOutput::WriteCorners() {
  const auto corner = [this](std::string_view name, double x, double y, double z) {
    header_.Line("  9").Line(name);
    header_.Line(" 10").Number(x).EndLine().Line(" 20").Number(y).EndLine();
    Height(header_.Line(" 30"), z).EndLine();
  };
  corner("$EXTMIN", extents_.minX, extents_.minY, extents_.minZ);
  corner("$EXTMAX", extents_.maxX, extents_.maxY, extents_.maxZ);
}

const LineType& DrawingOutput::PatternOf(const DrawingNames::Entry& lineType) const {
  static const LineType kSolid{{}, "Solid Line", {}};
  const auto known = patterns_.find(UpperCase(lineType.given));
  return known == patterns_.end() ? kSolid : known->second;
}

double DrawingOutput::LengthOf(const LineType& lineType) {
  double length = 0;
  for (const double dash : lineType.dashes) length += std::fabs(dash);
  return length;
}

void DrawingOutput::Merge(const std::string& headerPath, const std::string& entityPath) {
  RequireOpen("Merge");
  RemoveFile(path_);
  FileWriter output(path_);
  try {
    output.Append(headerPath);
    AppendEntities(output, entityPath);
    WriteEnd(output);
    output.Close();
  } catch (...) {
    output.Discard();
    RemoveWritten(path_);
    throw;
  }
}

void DrawingOutput::Complete() {
  WriteHead();
  header_.Close();
  entities_.Close();
  Merge(headerFile_.Path(), entityFile_.Path());
  Drop();
}

void DrawingOutput::Drop() noexcept {
  header_.Discard();
  entities_.Discard();
  headerFile_ = TempFile();
  entityFile_ = TempFile();
}

}  // namespace tesselink
