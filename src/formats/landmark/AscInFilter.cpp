// SPDX-License-Identifier: MIT
#include "formats/landmark/AscInFilter.h"

#include <algorithm>

#include "core/element/ColourNames.h"
#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/Interaction.h"
#include "core/run/LineEnds.h"
#include "core/run/Report.h"
#include "core/run/ScanProgress.h"
#include "formats/landmark/LayerColours.h"

namespace tesselink {
namespace {

constexpr std::string_view kVertexKeyword = "XY";
constexpr std::string_view kVectorKeyword = "VECTOR";

std::string_view LastField(std::string_view line) {
  const std::size_t comma = line.rfind(',');
  return comma == std::string_view::npos ? line : line.substr(comma + 1);
}

bool BeginsRecord(std::string_view line) {
  const std::string_view word = Trimmed(line.substr(0, line.find(',')));
  for (const std::string_view keyword : {"TEXT", "LINE", "POLYGON", "VECTOR"}) {
    if (EqualsIgnoringCase(word, keyword)) return true;
  }
  return false;
}

// Vertical letter first, horizontal letter last.
std::int16_t JustificationOf(std::string_view letters) {
  letters = Trimmed(letters);
  if (letters.empty()) return 0;
  return JustificationOfLetters(letters.back(), letters.front(), TextPlacement::kBaseline);
}

}  // namespace

constexpr AscInFilter::Conventions AscInFilter::kClassic{
    .lineEndWithin = 20,
    .keywordByBlanks = true,
    .ownLinePending = true,
    .lastPendingRead = false,
    .zeroGivesWay = true,
    .vectorsOverwrite = true,
    .vectorLayerAsIs = true,
    .quotesHoldCommas = false,
    .layerColours = false,
};
constexpr AscInFilter::Conventions AscInFilter::kStandard{
    .lineEndWithin = std::size_t{1} << 16,
    .keywordByBlanks = false,
    .ownLinePending = false,
    .lastPendingRead = true,
    .zeroGivesWay = false,
    .vectorsOverwrite = false,
    .vectorLayerAsIs = false,
    .quotesHoldCommas = true,
    .layerColours = true,
};

AscInFilter::AscInFilter(const FilterContext& context)
    : InputFilter(context),
      conventions_(context.options.dialect == Dialect::Standard ? kStandard : kClassic),
      vertices_(conventions_.zeroGivesWay) {}

void AscInFilter::Open(const std::string& path) {
  filename_ = path;
  reader_ = LineReader();
  layers_.clear();
  pending_.clear();
  hasPending_ = repeating_ = anyRecord_ = false;
  const std::string readable = CheckLineEnds(path, interaction(), conventions_.lineEndWithin);
  if (readable == kOperationCanceled) throw OperationCanceled();
  filename_ = readable;
  reader_ = LineReader(readable);
  if (options().layersWanted) ScanLayers(readable);
}

void AscInFilter::ScanLayers(const std::string& path) {
  LineReader scan(path);
  ScanProgress progress(interaction());
  std::string_view line;
  while (scan.ReadLine(line)) {
    // Most lines are vertices, whose last field is a number.
    if (!line.empty() && (line.back() < '0' || line.back() > '9')) NoteLayerColour(LastField(line), layers_);
    progress.At(scan.Position(), scan.Size());
  }
  progress.End();
}

double AscInFilter::Progress() const { return Percentage(Loc(), reader_.Size(), kBlock); }

std::string AscInFilter::Where() const { return filename_ + ", line " + std::to_string(reader_.LineNumber()); }

void AscInFilter::WarnAtLine(WarningKind kind, const std::string& what) { report().Warn(kind, Where() + ": " + what); }

void AscInFilter::ThrowAtLine(const std::string& what) const { throw Error(Where() + ": " + what, "GetNextEntity"); }

AscInFilter::Fields AscInFilter::Split(std::string_view line, char separator) {
  Fields fields;
  for (;;) {
    const std::size_t at = line.find(separator);
    const std::string_view field = line.substr(0, at);
    if (fields.count < Fields::kKept) fields.first[fields.count] = field;
    fields.last = field;
    ++fields.count;
    if (at == std::string_view::npos) return fields;
    line.remove_prefix(at + 1);
  }
}

void AscInFilter::Fields::Prepend(std::string_view field) {
  std::copy_backward(first.begin(), first.end() - 1, first.end());
  first[0] = field;
  ++count;
}

// The comma fields of a line whose second one may stand in quotes. The fields behind a text hold none, so that the last
// quote of the line ends it, whatever it holds.
AscInFilter::Fields AscInFilter::SplitQuoted(std::string_view line) {
  const std::size_t begin = line.find(',') + 1;
  const std::size_t open = line.find_first_not_of(' ', begin), close = line.rfind('\'');
  if (begin == 0 || open == std::string_view::npos || line[open] != '\'' || close == open) return Split(line, ',');
  const std::size_t end = line.find_first_not_of(' ', close + 1);
  if (end == std::string_view::npos || line[end] != ',') return Split(line, ',');
  Fields fields = Split(line.substr(end + 1), ',');
  fields.Prepend(line.substr(open, close + 1 - open));
  fields.Prepend(line.substr(0, begin - 1));
  return fields;
}

void AscInFilter::Require(const Fields& fields, std::size_t count) const {
  if (fields.count >= count) return;
  ThrowAtLine("\"" + std::string(Trimmed(fields.first[0]).substr(0, 20)) + "\" has " + std::to_string(fields.count) +
              " fields where at least " + std::to_string(count) + " are needed");
}

double AscInFilter::Lenient(const Fields& fields, std::size_t index) const {
  try {
    return LenientNumber(fields.first[index]);
  } catch (const Error& error) {
    ThrowAtLine(error.what());
  }
}

double AscInFilter::Strict(const Fields& fields, std::size_t index) const {
  try {
    return StrictNumber(fields.first[index]);
  } catch (const Error& error) {
    ThrowAtLine("field " + std::to_string(index + 1) + " of a TEXT record: " + error.what());
  }
}

bool AscInFilter::NextLine(std::string_view& line) {
  if (!hasPending_) return reader_.ReadLine(line);
  // The pending text stays where it is while this record looks at it.
  hasPending_ = false;
  line = pending_;
  return true;
}

bool AscInFilter::Next(tEntity& entity) {
  if (!reader_.IsOpen()) return false;
  entity.Reset();
  repeating_ = false;
  std::string_view line;
  while (NextLine(line)) {
    const Fields fields = Split(line, ',');
    const std::string_view word = Trimmed(fields.first[0]);
    const auto is = [word](std::string_view keyword) { return EqualsIgnoringCase(word, keyword); };
    anyRecord_ = anyRecord_ || BeginsRecord(line);
    if (is("TEXT")) {
      ReadText(entity, conventions_.quotesHoldCommas ? SplitQuoted(line) : fields);
    } else if (is("LINE") || is("POLYGON")) {
      entity.Layer = Trimmed(fields.last);
      entity.bType = kPolyline;
      entity.Closed = is("POLYGON");
      ReadPointLines(entity, line);
      return true;
    } else if (is(kVectorKeyword)) {
      entity.Layer = conventions_.vectorLayerAsIs ? fields.last : Trimmed(fields.last);
      ReadVector(entity, fields);
      entity.bType = kPolyline;
      repeating_ = conventions_.ownLinePending;
    } else if (Eof()) {
      EndRecord(entity, line, false);
      if (!anyRecord_)
        report().Warn(WarningKind::NoRecords, filename_ + ": holds no Landmark record; is it a file of this format?");
      return false;
    } else {
      if (EqualsIgnoringCase(word.substr(0, 2), kVertexKeyword)) {
        WarnAtLine(WarningKind::StrayVertices, "a vertex line outside a record is not read");
      }
      continue;
    }
    EndRecord(entity, line, false);
    return true;
  }
  return false;
}

void AscInFilter::ReadText(tEntity& entity, const Fields& fields) {
  Require(fields, 5);
  std::string_view text = Trimmed(fields.first[1]);
  if (text.starts_with('\'')) text.remove_prefix(1);
  if (text.ends_with('\'')) text.remove_suffix(1);
  entity.Text = text;
  entity.x(0, Strict(fields, 2));
  entity.Y(0, Strict(fields, 3));
  entity.TextSize = RoundHalfEven(Strict(fields, 4));
  entity.bType = kText;
  if (fields.count > 7) entity.TextAng = Strict(fields, 6);
  if (fields.count > 8) entity.TextJust = JustificationOf(fields.first[7]);
  entity.Layer = Trimmed(fields.last);
}

void AscInFilter::ReadVector(tEntity& entity, const Fields& fields) {
  Require(fields, 5);
  entity.x(0, Lenient(fields, 1));
  entity.Y(0, Lenient(fields, 2));
  entity.x(1, Lenient(fields, 3));
  entity.Y(1, Lenient(fields, 4));
}

// Reads point lines until one ends the record; `line` is the record's own line.
void AscInFilter::ReadPointLines(tEntity& entity, std::string_view line) {
  vertices_.Begin();
  bool unread = false;
  while (!unread && !reader_.AtEnd() && reader_.ReadLine(line)) unread = !ReadPointLine(entity, line);
  if (unread && reader_.AtEnd() && !conventions_.lastPendingRead && BeginsRecord(line)) {
    WarnAtLine(WarningKind::LastLine, "a record that begins on the last line, right behind another one, is not read");
  }
  EndRecord(entity, line, unread);
}

// Reads one point line. False for any other line, which ends the record; `line` may then be another form of it.
bool AscInFilter::ReadPointLine(tEntity& entity, std::string_view& line) {
  if (ReadPlainVertex(entity, line)) return true;
  return conventions_.keywordByBlanks ? ReadPointLineByBlanks(entity, line) : ReadPointLineByWord(entity, line);
}

// The form of nearly every line of a drawing: "XY,x,y" with nothing else, which needs no look at blanks. False for any
// other line.
bool AscInFilter::ReadPlainVertex(tEntity& entity, std::string_view line) {
  if (!line.starts_with("XY,")) return false;
  const char* const last = line.data() + line.size();
  double x = 0, y = 0;
  try {
    const char* at = ParseNumber(line.data() + 3, last, x);
    if (at == last || *at != ',') return false;
    if (ParseNumber(at + 1, last, y) != last) return false;
  } catch (const Error& error) {
    ThrowAtLine(error.what());
  }
  AddVertex(entity, x, y);
  return true;
}

void AscInFilter::AddVertex(tEntity& entity, double x, double y) {
  if (!vertices_.Append(entity, x, y)) WarnAtLine(WarningKind::OutOfStep, std::string(VertexAppender::kGaveWay));
}

// A line that has the keyword glued to the rest is rewritten, and `line` is what it became; the word that decides is
// that of the line as read.
bool AscInFilter::ReadPointLineByBlanks(tEntity& entity, std::string_view& line) {
  Fields commas = Split(line, ',');
  const Fields blanks = Split(line, ' ');
  const std::string_view word = blanks.count < 3 ? commas.first[0] : blanks.first[0];
  const bool isVertex = EqualsIgnoringCase(word, kVertexKeyword);
  const bool isVector = EqualsIgnoringCase(word, kVectorKeyword);
  for (const std::string_view keyword : {kVertexKeyword, kVectorKeyword}) {
    if (!line.starts_with(keyword) || commas.first[0] == keyword) continue;
    rewritten_.assign(keyword).append(",").append(line.substr(keyword.size()));
    line = rewritten_;
    commas = Split(line, ',');
    break;
  }
  if (isVector) AddVector(entity, commas);
  if (isVertex) {
    Require(commas, 3);
    const double x = Lenient(commas, 1), y = Lenient(commas, 2);
    AddVertex(entity, x, y);
  }
  return isVertex || isVector;
}

// The first word of the line decides, whatever separates it from the numbers. A VECTOR line with a colour behind its
// numbers is a record of its own; `line` then has a comma behind the keyword.
bool AscInFilter::ReadPointLineByWord(tEntity& entity, std::string_view& line) {
  const std::string_view text = Trimmed(line);
  const std::string_view word = text.substr(0, text.find_first_of(" ,"));
  const bool isVector = EqualsIgnoringCase(word, kVectorKeyword);
  if (!isVector && !EqualsIgnoringCase(word, kVertexKeyword)) return false;
  std::string_view numbers = Trimmed(text.substr(word.size()));
  if (numbers.starts_with(',')) numbers.remove_prefix(1);
  Fields fields = Split(numbers, ',');
  fields.Prepend(word);
  constexpr std::size_t kVectorFields = 5;
  if (isVector && fields.count > kVectorFields && !Trimmed(fields.last).empty()) {
    rewritten_.assign(kVectorKeyword).append(",").append(numbers);
    line = rewritten_;
    return false;
  }
  if (isVector) {
    AddVector(entity, fields);
  } else {
    Require(fields, 3);
    AddVertex(entity, Lenient(fields, 1), Lenient(fields, 2));
  }
  return true;
}

// A VECTOR line within a record.
void AscInFilter::AddVector(tEntity& entity, const Fields& fields) {
  if (conventions_.vectorsOverwrite) {
    ReadVector(entity, fields);
    if (vertices_.Count() > 0)
      WarnAtLine(WarningKind::Overwritten, "a VECTOR line takes the place of its record's first two vertices");
    vertices_.Begin(entity.PointCount() + 1);
    return;
  }
  Require(fields, 5);
  const double x = Lenient(fields, 1), y = Lenient(fields, 2);
  const tEntity::Index last = vertices_.Count() - 1;
  if (vertices_.Count() == 0 || entity.x(last) != x || entity.Y(last) != y) {
    if (vertices_.Count() > 0)
      WarnAtLine(WarningKind::Gaps, "a VECTOR line begins where its record's chain does not end; they were joined");
    AddVertex(entity, x, y);
  }
  AddVertex(entity, Lenient(fields, 3), Lenient(fields, 4));
}

// `unread` tells that the line is none of the record.
void AscInFilter::EndRecord(tEntity& entity, std::string_view line, bool unread) {
  if (conventions_.ownLinePending ? entity.bType != kText : unread) {
    pending_.assign(line.data(), line.size());
    hasPending_ = true;
  }
  entity.CDFCode = codes_.CodeOf(entity.Layer);
  if (conventions_.layerColours) {
    const NamedColour* named = LayerNamedForColour(Trimmed(entity.Layer));
    entity.RGB = ColourOfName(Trimmed(entity.Layer));
    entity.IsBlack = named != nullptr && ColourOf(*named) == 0;
  }
}

}  // namespace tesselink
