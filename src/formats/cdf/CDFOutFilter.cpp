// SPDX-License-Identifier: MIT
#include "formats/cdf/CDFOutFilter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "core/element/Justification.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

constexpr std::size_t kCoordinate = 15;  // columns
constexpr std::size_t kPointCoordinate = 10;
constexpr std::size_t kCode = 7;
constexpr std::string_view kUnassociated = "09000000";  // marked as open
constexpr const char* kSupport = "https://github.com/tesselink/tesselink/issues";

// The point file beside an output.
std::string PointFileOf(const std::string& path) { return FolderOf(path) + StripExtension(FileNameOf(path)) + ".pts"; }

// The vertices of a curve are this writer's own, so they are rounded to what the columns hold. Cutting would be worse
// than it seems: the nought of a quarter turn comes out as 6.12E-16 with 15 digits, and without its exponent as 6.12.
double RoundedToColumns(double value) {
  const double magnitude = std::fabs(value);
  double scale = 1e12;  // a sign, a digit, the point and 12 decimals
  for (double limit = 10; scale > 1 && magnitude >= limit; limit *= 10) scale /= 10;
  return std::round(value * scale) / scale;
}

// An angle within 0 to 360, so that a whole one has three digits.
double WholeTurn(double degrees) {
  const double turned = std::fmod(degrees, 360);
  return turned < 0 ? turned + 360 : turned;
}

}  // namespace

constexpr CDFOutFilter::Conventions CDFOutFilter::kClassic{
    .numbersCut = true, .defaultOpen = true, .anglesAsTheyAre = true};
constexpr CDFOutFilter::Conventions CDFOutFilter::kStandard{
    .numbersCut = false, .defaultOpen = false, .anglesAsTheyAre = false};

std::vector<FormatOption> CDFOutFilter::Options() {
  return {{.name = "points",
           .help = "Points in a CDF conversion: second-file (default; a\n.pts file beside the output) or ignore",
           .value = "CHOICE",
           .kind = FormatOption::Kind::Choice,
           .choices = {"second-file", "ignore"}}};
}

CDFOutFilter::CDFOutFilter(const FilterContext& context)
    : OutputFilter(context),
      conventions_(context.options.dialect == Dialect::Standard ? kStandard : kClassic),
      texts_(report(), "a code or a text") {}

std::vector<std::string> CDFOutFilter::Outputs() const {
  std::vector<std::string> outputs{filename()};
  if (points_.created) outputs.push_back(points_.path);
  return outputs;
}

void CDFOutFilter::Create(const std::string& path) {
  drawing_ = Target{path, FileWriter(path), true, {}, {}, {}};
  points_ = Target{PointFileOf(path), {}, false, {}, {}, {}};
  texts_.Start(path);
  elements_ = pointNumber_ = 0;
  if (IsStream(path)) pointsIgnored_ = true;  // no file lies beside a stream
}

WriteResult CDFOutFilter::Write(tEntity& entity) {
  ++elements_;
  kind_ = entity.bType;
  SetDefaults(entity);
  switch (kind_) {
    case kCircle:
    case kArc:
      ToChain(entity);
      [[fallthrough]];
    case kLine:
    case kPolyline:
      WriteChain(entity);
      break;
    case kText:
      WriteText(entity);
      break;
    case kPoint:
      if (WritePoints(entity) == WriteResult::Skipped) return WriteResult::Skipped;
      break;
    default:
      throw Error(std::string("Unsuported bType value, please contact ") + kSupport, "WriteEntity");
  }
  if (entity.HasHeight()) Lost(WarningKind::Heights);
  return IsCurve(kind_) ? WriteResult::Converted : WriteResult::Written;
}

void CDFOutFilter::SetDefaults(tEntity& entity) {
  if (entity.TextUnits.empty()) entity.TextUnits = "M";
  if (entity.CDFCode.empty()) entity.CDFCode = conventions_.defaultOpen ? kUnassociated : kUnassociatedCode;
  if (entity.CDFCode.size() == kCode) entity.CDFCode += entity.Closed ? '1' : '0';
}

void CDFOutFilter::ToChain(tEntity& entity) {
  const CurveTolerance tolerance = options().Curves();
  Lost(WarningKind::Curves);
  chain_.clear();
  if (!AppendCurve(chain_, entity, tolerance)) Lost(WarningKind::CoarseCurves);
  entity.ClearVertices();
  tEntity::Index i = 0;
  for (const Vertex& vertex : chain_) {
    entity.x(i, RoundedToColumns(vertex.x));
    entity.Y(i, RoundedToColumns(vertex.y));
    entity.Z(tEntity::Index{i++}, static_cast<float>(vertex.z));
  }
  entity.bType = kPolyline;
}

void CDFOutFilter::WriteHeader(const tEntity& entity) { drawing_.file.Write("B").Line(texts_.Of(entity.CDFCode)); }

void CDFOutFilter::WriteChain(const tEntity& entity) {
  if (entity.Closed && (entity.CDFCode.size() <= kCode || entity.CDFCode[kCode] != '1'))
    Lost(WarningKind::ClosedUnmarked);
  WriteHeader(entity);
  char line[4 + 2 * kCoordinate] = {'C', 'U'};
  line[2 + 2 * kCoordinate] = '\r';
  line[3 + 2 * kCoordinate] = '\n';
  const tEntity::Index last = entity.PointCount();
  tEntity::Index i = 0;
  do {
    PutRightAligned(line + 2, entity.Y(i));
    PutRightAligned(line + 2 + kCoordinate, entity.x(i));
    drawing_.file.Write({line, sizeof line});
    line[1] = 'D';
  } while (++i <= last);
}

// The number is made behind as many blanks as there are columns; they end where it ends.
void CDFOutFilter::PutRightAligned(char* columns, double value) {
  char text[kCoordinate + kNumberTextSize];
  std::memset(text, ' ', kCoordinate);
  char* const number = text + kCoordinate;
  auto length = static_cast<std::size_t>(FormatNumber(number, value) - number);
  const bool whole = length <= kCoordinate && std::isfinite(value);
  if (!whole) length = Fit(number, length, value, kCoordinate);
  std::memcpy(columns, text + length, kCoordinate);
  if (!whole) NoteNumber(drawing_, value, {number, length});
}

void CDFOutFilter::WriteText(const tEntity& entity) {
  WriteHeader(entity);
  const char unit = texts_.Of(entity.TextUnits).front();
  const std::string_view text = texts_.Of(entity.Text);
  if (Trimmed(text).empty()) {
    Lost(WarningKind::BlankTexts);
    return;
  }
  const double size = RoundHalfEven(entity.TextSize);
  if (size != entity.TextSize) Lost(WarningKind::Sizes);
  line_.fill(' ');
  line_[0] = 'D';
  PutNumber(drawing_, 2, 16, entity.Y(0));
  PutNumber(drawing_, 17, 31, entity.x(0));
  line_[31] = unit;
  PutNumber(drawing_, 33, 37, size);
  PutNumber(drawing_, 38, 40, conventions_.anglesAsTheyAre ? entity.TextAng : WholeTurn(entity.TextAng));
  line_[40] = 'H';
  PutText(drawing_, 42, 43, JustificationLetters(entity.TextJust));
  PutNumber(drawing_, 44, 46, static_cast<double>(text.size()));
  PutText(drawing_, 47, line_.size(), text);
  drawing_.file.Line({line_.data(), line_.size()});
}

WriteResult CDFOutFilter::WritePoints(const tEntity& entity) {
  if (!pointsIgnored_) pointsIgnored_ = interaction().Choose({"points", {"second-file", "ignore"}}) == 1;
  if (*pointsIgnored_) return WriteResult::Skipped;
  if (!points_.created) CreatePoints();
  const tEntity::Index last = entity.PointCount();
  tEntity::Index i = 0;
  do {
    line_.fill(' ');
    label_.assign("DXF Point (").append(texts_.Of(entity.Text.empty() ? entity.Layer : entity.Text)).append(") ");
    label_.append(std::to_string(++pointNumber_));
    PutText(points_, 1, 40, label_);
    if (!PutNumber(points_, 41, 50, entity.x(i)) || !PutNumber(points_, 54, 63, entity.Y(i))) {
      --pointNumber_;
      return WriteResult::Skipped;
    }
    points_.file.Line(Trimmed({line_.data(), line_.size()}));
  } while (++i <= last);
  return WriteResult::Written;
}

void CDFOutFilter::CreatePoints() {
  if (SameFile(points_.path, drawing_.path)) {
    throw Error(points_.path + ": the points need a file of this name beside the output; give the output another one");
  }
  points_.file = FileWriter(points_.path);
  points_.created = true;
}

// Columns are counted from 1, both included.
void CDFOutFilter::PutText(Target& target, std::size_t first, std::size_t last, std::string_view text) {
  const std::string_view kept = text.substr(0, last - first + 1);
  std::copy(kept.begin(), kept.end(), line_.begin() + static_cast<std::ptrdiff_t>(first - 1));
  if (kept.size() == text.size() || target.texts.count++ > 0) return;
  target.texts.first = Element() + ", \"" + texts_.Shown(text) + "\", became \"" + texts_.Shown(kept) + "\"";
}

// False where the columns hold nothing that reads as a number of that size: fewer digits may round it up beyond what a
// number can be.
bool CDFOutFilter::PutNumber(Target& target, std::size_t first, std::size_t last, double value) {
  char text[kNumberTextSize];
  auto length = static_cast<std::size_t>(FormatNumber(text, value) - text);
  const std::size_t width = last - first + 1;
  const bool whole = length <= width && std::isfinite(value);
  if (!whole) length = Fit(text, length, value, width);
  if (length == 0) return false;
  std::copy_n(text, length, line_.begin() + static_cast<std::ptrdiff_t>(first - 1));
  if (!whole) NoteNumber(target, value, {text, length});
  return true;
}

// Makes the text of a number at most as long as its columns and returns its length; 0 where that cannot be.
std::size_t CDFOutFilter::Fit(char* text, std::size_t length, double value, std::size_t width) const {
  if (conventions_.numbersCut || !std::isfinite(value)) return std::min(length, width);
  char shorter[kNumberTextSize];
  const auto fits = [&](const std::to_chars_result& made) {
    return made.ec == std::errc() && static_cast<std::size_t>(made.ptr - shorter) <= width;
  };
  const auto take = [&](const char* end) {
    std::transform(static_cast<const char*>(shorter), end, text, [](char c) { return c == 'e' ? 'E' : c; });
    return static_cast<std::size_t>(end - shorter);
  };
  for (int decimals = static_cast<int>(width); decimals >= 0; --decimals) {
    const auto made = std::to_chars(shorter, shorter + sizeof shorter, value, std::chars_format::fixed, decimals);
    if (fits(made)) return take(made.ptr);
  }
  for (int digits = static_cast<int>(width); digits > 0; --digits) {
    const auto made = std::to_chars(shorter, shorter + sizeof shorter, value, std::chars_format::general, digits);
    double read = 0;
    if (!fits(made)) continue;
    return std::from_chars(shorter, made.ptr, read).ec == std::errc() ? take(made.ptr) : 0;
  }
  return std::min(length, width);
}

// A number that its columns shortened: in the last digits of a coordinate, or so that it reads as another one.
void CDFOutFilter::NoteNumber(Target& target, double value, std::string_view kept) {
  const std::string number = NumberText(value);
  const std::size_t width = kept.size();
  const bool onlyDigits = number.find_first_not_of("-.0123456789") == std::string::npos;
  const bool near = std::fabs(LenientNumber(kept) - value) <= 0.5;
  const bool whole =
      conventions_.numbersCut ? onlyDigits && width >= kPointCoordinate && number.find('.') <= width : near;
  Loss& loss = whole ? target.digits : target.numbers;
  if (conventions_.numbersCut && !whole) NoteMissed("numbers that their columns cut");
  if (loss.count++ > 0) return;
  loss.first = Element() + ": " + number + " was written as \"" + std::string(kept) + "\"";
  if (!whole) loss.first += ", which reads as " + NumberText(LenientNumber(kept));
}

std::string CDFOutFilter::Element() const {
  return "in element " + std::to_string(elements_) + " (" + std::string(KindCounts::NameOf(kind_)) + ")";
}

void CDFOutFilter::Complete() {
  drawing_.file.Close();
  points_.file.Close();
  WarnOfLosses(drawing_, "");
  WarnOfLosses(points_, "of points");
}

void CDFOutFilter::WarnOfLosses(const Target& target, std::string_view subject) {
  const auto warn = [&](WarningKind kind, const std::string& what, const Loss& loss) {
    if (loss.count == 0) return;
    report().Warn(kind, target.path + ": " + what + ": " + std::to_string(loss.count) + ", the first one " + loss.first,
                  subject);
  };
  warn(WarningKind::CutDigits, "coordinates that lost digits behind the point, for which the columns have no room",
       target.digits);
  warn(WarningKind::CutNumbers, "numbers that became others, for the columns do not hold them", target.numbers);
  warn(WarningKind::CutTexts, "texts that the columns cut", target.texts);
}

void CDFOutFilter::Drop() noexcept {
  for (Target* target : {&drawing_, &points_}) {
    target->file.Discard();
    if (target->created) RemoveWritten(target->path);
    target->created = false;
  }
}

}  // namespace tesselink
