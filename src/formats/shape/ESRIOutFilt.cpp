// SPDX-License-Identifier: MIT
#include "formats/shape/ESRIOutFilt.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/element/ColourNames.h"
#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/AttributeTable.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

// Left by what is carried along for the columns of what the drawing itself says.
constexpr int kOwnFields = 12;
constexpr int kOwnBytes = 512;
// Many programs read no more.
constexpr int kMostFields = 255;
constexpr int kRealLength = FormOf(Column::Angle).length;
constexpr std::size_t kLongestProjection = ReadWindow::kCapacity;

constexpr ESRIWriting kClassicShapeWriting{.everyType = false,
                                           .carriesSource = false,
                                           .isUtf8 = false,
                                           .needsTwoPoints = false,
                                           .lostBytes = 1,
                                           .realDecimals = 0,
                                           .wholeDrawings = false};
constexpr ESRIWriting kStandardShapeWriting{.everyType = true,
                                            .carriesSource = true,
                                            .isUtf8 = true,
                                            .needsTwoPoints = true,
                                            .lostBytes = 0,
                                            .realDecimals = 15,
                                            .wholeDrawings = true};

// The values of the option, in the order of the kinds; the last ones belong to the standard dialect.
constexpr std::array<std::string_view, 4> kKindNames{"points", "polylines", ESRIOutFilt::kAreasKind, "multipoints"};
constexpr std::size_t kClassicKinds = 2;

// Twice what a ring surrounds, above 0 where it runs counter-clockwise. Seen from its first vertex, so that a ring far
// from the origin loses no digits.
double SignedArea(const tEntity& entity, const ShapePart& ring) {
  const auto x = entity.AllX(), y = entity.AllY();
  const auto begin = static_cast<std::size_t>(ring.begin), end = static_cast<std::size_t>(ring.end);
  double sum = 0, dx = 0, dy = 0;
  for (std::size_t i = begin + 1; i < end; ++i) {
    const double toX = x[i] - x[begin], toY = y[i] - y[begin];
    sum += dx * toY - toX * dy;
    dx = toX;
    dy = toY;
  }
  return sum;
}

// The file beside the main file, its extension in capitals where the main file's is.
std::string Partner(const std::string& path, const std::string& extension) {
  return FolderOf(path) + StripExtension(FileNameOf(path)) + "." +
         (path.ends_with(".SHP") ? UpperCase(extension) : extension);
}

}  // namespace

std::vector<Companion> ESRIOutFilt::Companions() {
  return {{"SHX"}, {"DBF"}, {"CPG", true}, {"PRJ", true, WarningKind::CoordinateSystem, true}};
}

std::vector<FormatOption> ESRIOutFilt::Options() {
  std::vector<std::string> choices(kKindNames.begin(), kKindNames.end());
  choices.emplace_back(kEachKind);
  return {{.name = std::string(kKindOption),
           .help = "What a shapefile output holds: points (and texts) or\n"
                   "polylines, in the standard dialect also polygons or\n"
                   "multipoints; each: a file for each kind, as OUT-points.shp,\n"
                   "-lines, -areas and -texts; without it, what an input\n"
                   "shapefile holds (standard), else what the first element is",
           .value = "CHOICE",
           .kind = FormatOption::Kind::Choice,
           .choices = choices,
           .standardChoices = {kKindNames.begin() + kClassicKinds, kKindNames.end()}}};
}

ESRIOutFilt::ESRIOutFilt(const FilterContext& context, std::optional<ShapeKind> kind)
    : OutputFilter(context),
      writing_(options().dialect == Dialect::Classic ? kClassicShapeWriting : kStandardShapeWriting),
      files_(writing_.everyType),
      table_(options().dialect),
      carried_(report(), {.longestName = 10, .longestText = 254, .types = kTextTypes}),
      labelsAreas_(!options().labelLayers.empty()),
      onlyKind_(kind) {}

void ESRIOutFilt::CheckName(const std::string& path) {
  if (const std::string extension = ExtensionOf(path); extension == ".shx" || extension == ".dbf") {
    throw Error(path + ": that is the name of a shapefile's " + (extension == ".shx" ? "index" : "table") +
                "; name the output .shp");
  }
}

void ESRIOutFilt::Create(const std::string& path) {
  CheckName(path);
  shpPath_ = path;
  dbfPath_ = Partner(path, "dbf");
  kind_.reset();
  form_ = {};
  carried_.Reset();
  hasOwnFields_ = true;
  fieldsDeclared_ = false;
  skippedOthers_ = false;
  sources_ = 0;
  system_ = {};
  projection_.clear();
  projectionConflict_.clear();
  losses().Describe(WarningKind::Heights, {}, "the shape types written have no z; elements that lost theirs");
  losses().Describe(WarningKind::OutsideTables, {},
                    std::string(EntryOf(WarningKind::OutsideTables).lost) + "; " +
                        interaction().Naming("attributes", "drop") + " writes those instead");
  for (const WarningKind kind : {WarningKind::CutValues, WarningKind::Bars, WarningKind::ControlCharacters}) {
    if (!CountsInAnother()) losses().Describe(kind, dbfPath_);
  }
  colourName_ = {};
  try {
    created_.clear();
    files_.Create(shpPath_, Partner(path, "shx"), created_);
    table_.filename(dbfPath_);
    created_.push_back(dbfPath_);
    if (!writing_.carriesSource) DeclareFields();
    if (writing_.isUtf8) WriteBeside("cpg", "UTF-8");
  } catch (...) {
    Drop();
    throw;
  }
}

// The first input's attributes make the table, unless they are to be dropped. The fields of what the drawing itself
// says stand behind them where layers and texts were asked for, and alone where no attributes are.
void ESRIOutFilt::SourceOpened(InputFilter& source) {
  if (!writing_.carriesSource) return;
  if (!system_.IsKnown()) CarryProjection(source.ProjectionPath());
  if (sources_ == 0) form_ = source.Form();
  AttributeTable* attributes = options().attributes ? source.Attributes() : nullptr;
  if (!hasOwnFields_ && source.Form().isDrawing && !source.AttributesAreAll()) {
    report().Warn(WarningKind::FieldsLeftOut, source.filename() + ": layers, colours and texts of its elements were " +
                                                  "left out, since the table of the first input has no such fields");
  }
  if (++sources_ > 1 || attributes == nullptr) {
    carried_.Match(attributes, source.AttributesPath());
    return;
  }
  carried_.Declare(*attributes, source.AttributesPath(), [this](const CarriedField& field) {
    const bool hasPlace = std::ssize(carried_.Fields()) + kOwnFields < kMostFields;
    if (!hasPlace || table_.RoomFor(1 + kOwnFields) < field.length + kOwnBytes) return false;
    table_.AddField(field.name, field.length, {&field.type, 1}, field.decimals);
    return true;
  });
  const bool saysMore = source.Layered || form_.isDrawing || labelsAreas_;
  hasOwnFields_ = !carried_.Any() || (saysMore && !source.AttributesAreAll());
}

// Notes what the .prj file of an input says; an empty path stands for an input without one.
void ESRIOutFilt::CarryProjection(const std::string& path) {
  std::string text;
  if (!path.empty()) {
    BinaryFile file(path);
    text.resize(std::min(static_cast<std::size_t>(file.Size()), kLongestProjection));
    text.resize(file.ReadAt(0, text.data(), text.size()));
    text.resize(text.find_last_not_of(" \r\n\t") + 1);
  }
  if (sources_ == 0) {
    projection_ = text;
  } else if (text != projection_ && projectionConflict_.empty()) {
    projectionConflict_ = path.empty() ? "an input without a .prj file" : path;
  }
}

void ESRIOutFilt::DeclareFields() {
  fieldsDeclared_ = true;
  if (!hasOwnFields_) return;
  for (const Column column : {Column::Layer, Column::Code, Column::Number, Column::Name}) AddColumn(column);
  if (!writing_.wholeDrawings) return;
  AddColumn(Column::TrueColour);
  if (form_.lineTypes) AddColumn(Column::LineType);
  if (!form_.blocks) return;
  AddColumn(Column::Block);
  AddColumn(Column::EntityHandle);
}

void ESRIOutFilt::AddColumn(Column column) {
  const ColumnForm& form = FormOf(column);
  const bool isReal = column == Column::Angle || column == Column::Height;
  table_.AddField(carried_.FreeName(std::string(form.name)), form.length, {&form.type, 1},
                  isReal ? writing_.realDecimals : 0);
}

WriteResult ESRIOutFilt::Write(tEntity& entity) {
  const bool isPoint = IsPointOrText(entity.bType);
  if (!kind_) ChooseKind(LikelyKind(entity));
  if (entity.IsNull() && writing_.everyType) {
    files_.AddNull();
    AddRow(entity);
    return WriteResult::Written;
  }
  if (HoldsPoints() ? !isPoint : !IsChain(entity.bType)) {
    skippedOthers_ = true;
    return WriteResult::Skipped;
  }
  if (!writing_.everyType && entity.HasHeight()) Lost(WarningKind::Heights);
  if (!writing_.carriesSource) NoteMissed("the attributes of its table");
  return isPoint ? WritePoints(entity) : WriteChain(entity);
}

std::string ESRIOutFilt::HintOfSkipped() const {
  if (!skippedOthers_) return {};
  const std::string each = interaction().Naming(kKindOption, kEachKind) + " writes a file for each kind";
  return writing_.everyType ? each : interaction().Naming("dialect", "standard") + " with " + each;
}

// That of the input where it says one that holds the element, else the element's own.
ShapeKind ESRIOutFilt::LikelyKind(const tEntity& entity) const {
  using Shape = ElementForm::Shape;
  if (IsPointOrText(entity.bType))
    return form_.shape == Shape::PointGroups ? ShapeKind::MultiPoint : ShapeKind::PointsOrText;
  return entity.IsArea || (entity.IsNull() && form_.shape == Shape::Areas) ? ShapeKind::Polygon : ShapeKind::Polyline;
}

void ESRIOutFilt::ChooseKind(ShapeKind likely) {
  const std::size_t count = writing_.everyType ? kKindNames.size() : kClassicKinds;
  const ChoiceQuestion question{
      kKindOption, {kKindNames.begin(), kKindNames.begin() + count}, static_cast<std::size_t>(likely)};
  kind_ = onlyKind_ ? *onlyKind_ : static_cast<ShapeKind>(interaction().Choose(question));
  if (!fieldsDeclared_) DeclareFields();
  files_.Hold(*kind_, form_.heights, form_.measures);
  if (!hasOwnFields_ || !HasTextField()) return;
  AddColumn(Column::Text);
  if (!HoldsPoints()) return;
  for (const Column column : {Column::Angle, Column::Height}) AddColumn(column);
  if (writing_.wholeDrawings) AddColumn(Column::Placement);
}

bool ESRIOutFilt::HasTextField() const {
  return *kind_ == ShapeKind::PointsOrText || *kind_ == ShapeKind::MultiPoint ||
         (*kind_ == ShapeKind::Polygon && labelsAreas_);
}

// There was no element to ask at.
void ESRIOutFilt::ChooseKindOfNothing() {
  constexpr std::array<ShapeKind, 5> kKinds{ShapeKind::Polyline, ShapeKind::PointsOrText, ShapeKind::MultiPoint,
                                            ShapeKind::Polyline, ShapeKind::Polygon};
  ChooseKind(kKinds[static_cast<std::size_t>(form_.shape)]);
}

WriteResult ESRIOutFilt::WritePoints(const tEntity& entity) {
  const tEntity::Index last = entity.bType == kText ? 0 : entity.PointCount();
  if (*kind_ == ShapeKind::MultiPoint) {
    const ShapePart all{0, last + 1};
    files_.AddShape(entity, {&all, 1});
    AddRow(entity);
    return WriteResult::Written;
  }
  if (last > 0) Lost(WarningKind::PointGroups);
  for (tEntity::Index i = 0; i <= last; ++i) {
    files_.AddPoint(entity, i);
    AddRow(entity);
  }
  return WriteResult::Written;
}

WriteResult ESRIOutFilt::WriteChain(const tEntity& entity) {
  if (!FindParts(entity)) {
    skippedOthers_ = skippedOthers_ || (*kind_ == ShapeKind::Polygon && entity.PointCount() > 0);
    return WriteResult::Skipped;
  }
  if (*kind_ == ShapeKind::Polygon) OrientRings(entity);
  if (*kind_ == ShapeKind::Polyline && (entity.IsArea || entity.Closed)) {
    Lost(entity.IsArea ? WarningKind::Areas : WarningKind::ClosedMarks);
  }
  files_.AddShape(entity, parts_);
  AddRow(entity);
  return WriteResult::Written;
}

// The parts that a chain has in the file. False for one that the file cannot hold. What says that it is an area is
// taken for one as it is; a chain surrounds one where it ends on its first vertex, or is marked as closed.
bool ESRIOutFilt::FindParts(const tEntity& entity) {
  const bool ofRings = *kind_ == ShapeKind::Polygon;
  parts_.clear();
  for (std::size_t i = 0; i < entity.PartCount(); ++i) {
    ShapePart part{entity.PartBegin(i), entity.PartEnd(i)};
    const bool meets = entity.x(part.begin) == entity.x(part.end - 1) && entity.Y(part.begin) == entity.Y(part.end - 1);
    part.closes = (entity.Closed || entity.IsArea) && !meets;
    constexpr std::int64_t kLeastRing = 4;
    if (ofRings && !entity.IsArea && (!(meets || part.closes) || part.Count() < kLeastRing)) return false;
    parts_.push_back(part);
  }
  return !writing_.needsTwoPoints || ofRings || entity.PointCount() > 0;
}

// Outer rings run clockwise and surround more than the holes in them do. Where all rings together run the other way,
// each of them does: the source had none in mind, or the opposite one.
void ESRIOutFilt::OrientRings(const tEntity& entity) {
  double area = 0;
  for (const ShapePart& ring : parts_) area += SignedArea(entity, ring);
  if (!(area > 0)) return;
  for (ShapePart& ring : parts_) ring.reversed = true;
  if (entity.IsArea) Lost(WarningKind::RingsTurned);
}

void ESRIOutFilt::AddRow(const tEntity& entity) {
  values_.clear();
  // A label that stands beside its shape in one file leaves the values of its record's row to that.
  carried_.Values(entity.IsLabel && !onlyKind_ ? -1 : entity.Record - 1, values_);
  if (hasOwnFields_) {
    AddOwnValues(entity);
  } else {
    CountUnsaid(entity);
  }
  table_.AddRecord(values_);
}

// What an element of a drawing has and no attribute of its record says.
void ESRIOutFilt::CountUnsaid(const tEntity& entity) {
  constexpr std::int32_t kWhite = 0xFFFFFF;  // what has no colour is drawn in
  const bool hasColour = entity.Colour > 0 && entity.RGB != 0 && entity.RGB != kWhite;
  if (entity.Record == 0) return Lost(WarningKind::OutsideTables);
  if (entity.Layer != "0" && std::find(values_.begin(), values_.end(), entity.Layer) == values_.end()) {
    Lost(WarningKind::Layers);
  }
  if (hasColour) Lost(WarningKind::Colours);
}

void ESRIOutFilt::AddOwnValues(const tEntity& entity) {
  if (colourName_.empty() || colour_ != entity.RGB) {
    colour_ = entity.RGB;
    colourName_ = ColourName(colour_);
  }
  const char* const numberEnd = FormatInteger(number_.data(), entity.Colour);
  values_.push_back(Fitting(entity.Layer, Column::Layer));
  values_.push_back(Fitting(entity.CDFCode, Column::Code));
  values_.emplace_back(number_.data(), static_cast<std::size_t>(numberEnd - number_.data()));
  values_.push_back(colourName_);
  if (writing_.wholeDrawings) AddLooks(entity);
  if (HasTextField()) AddTextValues(entity);
}

void ESRIOutFilt::AddLooks(const tEntity& entity) {
  const bool hasColour = entity.RGB != 0 || entity.IsBlack;
  if (hasColour) trueColour_ = HexOfColour(entity.RGB);
  values_.emplace_back(trueColour_.data(), hasColour ? trueColour_.size() : 0);
  if (form_.lineTypes) {
    values_.push_back(Fitting(entity.LineStyle, Column::LineType));
  } else if (!entity.LineStyle.empty() && !EqualsIgnoringCase(entity.LineStyle, "CONTINUOUS")) {
    Lost(WarningKind::LineTypes);
  }
  if (!form_.blocks) return;
  values_.push_back(Fitting(entity.Block, Column::Block));
  char* end = handle_.data();
  if (entity.Handle != 0) end = std::to_chars(end, end + handle_.size(), entity.Handle, 16).ptr;
  std::transform(handle_.data(), end, handle_.data(), [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
  values_.emplace_back(handle_.data(), static_cast<std::size_t>(end - handle_.data()));
}

void ESRIOutFilt::AddTextValues(const tEntity& entity) {
  values_.push_back(Fitting(entity.Text, Column::Text));
  if (!HoldsPoints()) return;
  values_.push_back(Real(entity.TextAng, angle_));
  values_.push_back(Real(entity.TextSize, height_));
  if (!writing_.wholeDrawings) return;
  placement_.clear();
  if (entity.bType == kText) placement_ = LettersWithBaseline(entity.TextJust);
  values_.push_back(placement_);
}

// A number as its field is declared: in full where it fits, with the decimals that the field announces.
std::string_view ESRIOutFilt::Real(double value, std::span<char> buffer) const {
  const auto text = [&](const char* end) {
    return std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  };
  if (writing_.realDecimals == 0) return text(FormatNumber(buffer.data(), value));
  if (!std::isfinite(value)) return {};
  char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
  if (end - buffer.data() > kRealLength) return text(FormatNumber(buffer.data(), value));
  char* const point = std::find(buffer.data(), end, '.');
  if (point == end) *end++ = '.';
  while (end - point <= writing_.realDecimals && end - buffer.data() < kRealLength) *end++ = '0';
  return text(end);
}

// A value as a column of text can hold it.
std::string_view ESRIOutFilt::Fitting(const std::string& value, Column column) {
  const auto room = static_cast<std::size_t>(FormOf(column).length - writing_.lostBytes);
  std::string& fitted = fitted_[static_cast<std::size_t>(column)];
  const bool controls = &WithoutLineBreaks(value, fitted) != &value;
  std::string_view text = controls ? fitted : value;
  if (writing_.isUtf8) {
    std::size_t none = 0;  // nothing is named here, so there is none
    const std::string_view utf8 = encoding_.AsUtf8(text, decoded_, none);
    if (utf8.data() == decoded_.data()) text = fitted = decoded_;
  }
  const bool bars = !writing_.isUtf8 && text.find('|') != std::string_view::npos;
  const bool cut = text.size() > room;
  if (cut) Lost(WarningKind::CutValues);
  if (bars) Lost(WarningKind::Bars);
  if (controls) Lost(WarningKind::ControlCharacters);
  text = writing_.isUtf8 ? CutUtf8(text, room) : text.substr(0, room);
  if (!bars) return text;
  fitted.assign(text);
  std::replace(fitted.begin(), fitted.end(), '|', ' ');
  return fitted;
}

void ESRIOutFilt::WriteHead() {
  if (!files_.AreOpen()) throw Error("File Name not yet entered", "WriteHead");
  files_.WriteHeaders();
}

void ESRIOutFilt::Complete() {
  if (!kind_) ChooseKindOfNothing();
  WriteHead();
  files_.Close();
  table_.Release();
  CompleteProjection();
  Lost(WarningKind::CutValues, carried_.CutValues());
}

void ESRIOutFilt::WriteBeside(const std::string& extension, const std::string& text) {
  const std::string path = Partner(shpPath_, extension);
  FileWriter file(path);
  created_.push_back(path);
  file.Write(text);
  file.Close();
}

void ESRIOutFilt::CompleteProjection() {
  if (system_.IsKnown() && system_.esriWkt.empty()) {
    report().Warn(WarningKind::ProjectionNotCarried, shpPath_ + ": no .prj file can name " + system_.name);
  } else if (system_.IsKnown()) {
    WriteBeside("prj", system_.esriWkt);
  } else if (!projectionConflict_.empty()) {
    report().Warn(WarningKind::CoordinateSystems,
                  projectionConflict_ + ": the inputs do not agree in their coordinate systems; none was written");
  } else if (!projection_.empty()) {
    WriteBeside("prj", projection_);
  }
}

void ESRIOutFilt::Drop() noexcept {
  files_.Discard();
  table_.Discard();
  for (const std::string& path : created_) RemoveWritten(path);
  created_.clear();
}

}  // namespace tesselink
