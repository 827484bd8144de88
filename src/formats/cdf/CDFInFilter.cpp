// SPDX-License-Identifier: MIT
#include "formats/cdf/CDFInFilter.h"

#include <algorithm>
#include <unordered_set>

#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/LayerCodes.h"
#include "core/run/LineEnds.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

// A pen letter and two coordinates.
constexpr std::size_t kGroup = 31;
constexpr std::size_t kBeforeX = 16;
constexpr char kPenUp = 'U', kPenDown = 'D';

// Columns of a line, counted from 1 and both included, as far as the line has them.
std::string_view Columns(std::string_view line, std::size_t first, std::size_t last) {
  return first > line.size() ? std::string_view() : line.substr(first - 1, last - first + 1);
}

std::string_view CodeOf(std::string_view header) { return Columns(header, 2, 8); }

// Horizontal letter first.
std::int16_t JustificationOf(std::string_view letters) {
  const char horizontal = letters.empty() ? ' ' : letters.front();
  return JustificationOfLetters(horizontal, letters.size() < 2 ? ' ' : letters[1], TextPlacement::kBottom);
}

}  // namespace

constexpr CDFInFilter::Conventions CDFInFilter::kClassic{.lineEndWithin = 20, .pointFile = false, .zeroGivesWay = true};
constexpr CDFInFilter::Conventions CDFInFilter::kStandard{
    .lineEndWithin = std::size_t{1} << 16, .pointFile = true, .zeroGivesWay = false};

std::vector<FormatOption> CDFInFilter::Options() {
  return {{.name = "cdf-map",
           .help = "Where the entity-type list $CDF.MAP lies",
           .value = "FILE",
           .kind = FormatOption::Kind::File},
          {.name = "lngsl",
           .help = "Where the colour list $LNGSL.DAT lies",
           .value = "FILE",
           .kind = FormatOption::Kind::File}};
}

CDFInFilter::CDFInFilter(const FilterContext& context)
    : InputFilter(context),
      conventions_(context.options.dialect == Dialect::Standard ? kStandard : kClassic),
      tables_(context),
      vertices_(conventions_.zeroGivesWay) {}

void CDFInFilter::Open(const std::string& path) {
  filename_ = path;
  reader_ = LineReader();
  pending_ = anyLine_ = closed_ = atPoints_ = false;
  points_ = PointFile();
  code_.clear();
  loneHeader_ = began_ = 0;
  const std::string readable = CheckLineEnds(path, interaction(), conventions_.lineEndWithin);
  if (readable == kOperationCanceled) throw OperationCanceled();
  filename_ = readable;
  reader_ = LineReader(readable);
  const std::string points = PartnerFile(path, "PTS");
  if (points.empty()) return;
  if (!conventions_.pointFile) {
    report().Warn(WarningKind::PointFile, points +
                                              ": the points beside the drawing were not read; the standard dialect (" +
                                              interaction().Naming("dialect", "standard") + ") reads them");
    return;
  }
  points_.Open(points);
  NoteRead(points);
}

std::vector<std::string> CDFInFilter::GetLayerCodes() const {
  std::vector<std::string> codes;
  if (!reader_.IsOpen()) return codes;
  std::unordered_set<std::string> seen;
  LineReader scan(reader_.Path());
  std::string_view line;
  std::string code;
  while (scan.ReadLine(line)) {
    if (!line.starts_with('B')) continue;
    code = CodeOf(line);
    if (seen.insert(code).second) codes.push_back(code);
  }
  return codes;
}

void CDFInFilter::WarnAtLine(WarningKind kind, std::string_view what) {
  report().Warn(kind, PlaceOf(reader_.LineNumber()) + ": " + std::string(what));
}

// Reads on to a line of this format.
bool CDFInFilter::NextLine() {
  while (reader_.ReadLine(line_)) {
    if (line_.empty()) continue;
    kind_ = line_.front();
    if (kind_ == 'C') groups_ = Trimmed(line_.substr(1));
    if (kind_ == 'B' || kind_ == 'D' || (kind_ == 'C' && !groups_.empty())) return anyLine_ = true;
    if (Trimmed(line_).empty()) continue;
    WarnAtLine(WarningKind::OtherLines, kind_ == 'C' ? "a \"C\" line without coordinates was skipped"
                                                     : "a line that begins with none of B, C and D was skipped");
  }
  return false;
}

bool CDFInFilter::Next(tEntity& entity) {
  entity.Reset();
  if (!atPoints_ && NextOfDrawing(entity)) return true;
  atPoints_ = points_.IsOpen();
  if (!atPoints_ || !points_.Next(entity, report())) return false;
  entity.CDFCode = kUnassociatedCode;
  tables_.Fill(entity, false);
  return true;
}

bool CDFInFilter::NextOfDrawing(tEntity& entity) {
  for (;; pending_ = false) {
    if (!pending_ && !NextLine()) break;
    if (kind_ == 'B') {
      ReadHeader();
      continue;
    }
    began_ = reader_.LineNumber();
    kind_ == 'C' ? ReadChain(entity) : ReadText(entity);
    if (Trimmed(code_).empty()) {
      WarnAtLine(WarningKind::NoCode, "an element has no entity code; the header before it gives none, or is missing");
    }
    loneHeader_ = 0;
    entity.CDFCode = code_;
    entity.Closed = closed_;
    tables_.Fill(entity, false);
    return true;
  }
  WarnOfLoneHeader();
  if (!anyLine_ && reader_.LineNumber() > 0) {
    report().Warn(WarningKind::NoRecords, filename_ + ": holds no line of a CDF drawing; is it a file of this format?");
  }
  return false;
}

void CDFInFilter::ReadHeader() {
  WarnOfLoneHeader();
  loneHeader_ = reader_.LineNumber();
  code_ = CodeOf(line_);
  closed_ = Columns(line_, 9, 9) == "1";
}

// As a writer leaves one for a text of blanks.
void CDFInFilter::WarnOfLoneHeader() {
  if (loneHeader_ > 0)
    report().Warn(WarningKind::LoneHeaders, PlaceOf(loneHeader_) + ": a header without an element behind it");
  loneHeader_ = 0;
}

// The line's groups and those of the lines that go on with the pen down.
void CDFInFilter::ReadChain(tEntity& entity) {
  entity.bType = kPolyline;
  vertices_.Begin();
  do {
    if (!ReadGroups(entity)) {
      pending_ = true;
      return;
    }
    pending_ = NextLine();
  } while (pending_ && kind_ == 'C' && groups_.front() != kPenUp);
}

// A line's first group counts however short it is, a further one with all its columns. False when a group with the pen
// up is left: it begins the next element, and is the first of what is left.
bool CDFInFilter::ReadGroups(tEntity& entity) {
  if (groups_.size() <= kBeforeX) {
    WarnAtLine(WarningKind::ShortGroups, "a vertex has no x, which was read as 0; x stands behind the 15 columns of y");
  }
  do {
    const double y = Number(Columns(groups_, 2, 16)), x = Number(Columns(groups_, 17, 31));
    AddVertex(entity, x, y);
    if (groups_.front() != kPenUp && groups_.front() != kPenDown) {
      WarnAtLine(WarningKind::PenLetters,
                 "coordinates behind another letter than U and D were read as those of a vertex");
    }
    groups_.remove_prefix(std::min(kGroup, groups_.size()));
    if (groups_.empty()) return true;
    if (groups_.front() == kPenUp) return false;
  } while (groups_.size() >= kGroup);
  WarnAtLine(WarningKind::EndsOfLines, "what stands behind the last coordinates of a line was not read");
  return true;
}

void CDFInFilter::AddVertex(tEntity& entity, double x, double y) {
  if (!vertices_.Append(entity, x, y)) WarnAtLine(WarningKind::OutOfStep, VertexAppender::kGaveWay);
}

void CDFInFilter::ReadText(tEntity& entity) {
  entity.bType = kText;
  entity.Y(0, Number(Columns(line_, 2, 16)));
  entity.x(0, Number(Columns(line_, 17, 31)));
  entity.TextUnits = Trimmed(Columns(line_, 32, 32));
  entity.TextSize = RoundHalfEven(Number(Columns(line_, 33, 37)));
  entity.TextAng = Number(Columns(line_, 38, 40));
  entity.TextJust = JustificationOf(Columns(line_, 42, 43));
  entity.Text = Trimmed(Columns(line_, 47, line_.size()));
  pending_ = false;
}

// Leniently; a number on its own between blanks, as nearly all are, needs no second look.
double CDFInFilter::Number(std::string_view field) const {
  const char* first = field.data();
  const char* const last = first + field.size();
  while (first != last && *first == ' ') ++first;
  try {
    double value = 0;
    return ParseNumber(first, last, value) == last ? value : LenientNumber(field);
  } catch (const Error& error) {
    throw Error(PlaceOf(reader_.LineNumber()) + ": " + error.what(), "GetNextEntity");
  }
}

}  // namespace tesselink
