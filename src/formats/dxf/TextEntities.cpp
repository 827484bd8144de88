#include "formats/dxf/TextEntities.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/element/Justification.h"
#include "core/element/VertexAlgebra.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

constexpr double kDegrees = 180 / std::numbers::pi;

// Group 72 of a TEXT.
enum Horizontal : std::int32_t { kAligned = 3, kMiddle = 4, kFit = 5 };

constexpr int kBaseline = TextPlacement::kBaseline, kBottom = TextPlacement::kBottom, kCentre = TextPlacement::kCentre,
              kTop = TextPlacement::kTop;

// The justification code of groups 72 and 73. Besides 0 to 3, group 73 may hold the code's own 16, 32 or 48.
std::int16_t JustificationOf(std::int32_t horizontal, std::int32_t vertical, int baseline) {
  const int across = horizontal == 1 || horizontal == kMiddle ? 1 : horizontal == 2 ? 2 : 0;
  const int up = vertical == 2 || vertical == kCentre || horizontal == kMiddle ? kCentre
                 : vertical == 3 || vertical == kTop                           ? kTop
                 : vertical == 1 || vertical == kBottom                        ? kBottom
                                                                               : baseline;
  return JustificationCode({across, up});
}

void StoreHeight(const EntityContext& context, tEntity& element) {
  const double height = context.groups.Number(40, 0);
  element.TextSize = std::isfinite(height) ? height : 0;
  if (!std::isfinite(element.TextAng)) element.TextAng = 0;
}

bool IsBlank(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
}

// Whether the font may be too wide for the width at which lines are broken: most have letters of more than half their
// height.
bool MayBeBroken(std::string_view text, double letters) {
  double letter = 0;
  for (const char c : text) {
    const bool begins = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    letter = c == '\n' ? 0 : letter + (begins ? 1 : 0);
    if (letter > letters) return true;
  }
  return false;
}

// Lines stand 5/3 of the height apart, times the factor of the text; the place is that of the first line, of the middle
// or of the last line. What is blank behind the last letter counts as lines, but none are made of it.
void BeginLines(EntityContext& context, const tEntity& element, int row) {
  TextLines& lines = context.lines;
  const EntityGroups& groups = context.groups;
  const double given = groups.Number(44, 1), width = groups.Number(41, 0);
  const double apart = element.TextSize * 5 / 3 * (std::isfinite(given) && given > 0 ? given : 1);
  const double angle = element.TextAng / kDegrees;
  const Vertex up = Cross(ObjectCoordinates(groups.Extrusion()).Normal(), {std::cos(angle), std::sin(angle), 0});
  const auto count = static_cast<double>(std::count(lines.text.begin(), lines.text.end(), '\n'));
  if (width > 0 && MayBeBroken(lines.text, 2 * width / element.TextSize)) context.lost |= kLostBreaks;
  while (!lines.text.empty() && IsBlank({&lines.text.back(), 1})) lines.text.pop_back();
  lines.step = -apart * up;
  lines.place = groups.Point(0) + 0.5 * row * count * apart * up;
  lines.angle = element.TextAng;
  lines.size = element.TextSize;
  lines.just = element.TextJust;
  lines.at = 0;
}

bool MakePlacedText(EntityContext& context, tEntity& element, std::int32_t vertical) {
  const EntityGroups& groups = context.groups;
  const std::int32_t horizontal = groups.Integer(72, 0);
  const bool stretched = horizontal == kAligned || horizontal == kFit;
  const bool second = groups.Has(11) && (!groups.Has(10) || (!stretched && (horizontal != 0 || vertical != 0)));
  if (!second && !groups.Has(10)) return Damaged(context, "has no location");
  const ObjectCoordinates plane(groups.Extrusion());
  const Drawing& drawing = context.source.drawing;
  double angle = drawing.TextAngle(groups.Number(50, 0));
  if (stretched && groups.Has(10) && groups.Has(11)) {
    const Vertex from = groups.Point(0), to = groups.Point(1);
    if (!(from == to)) angle = std::atan2(to.y - from.y, to.x - from.x) * kDegrees;
  }
  NoteLetters(context);
  if (drawing.Text().DecodeText(groups.Text(), element.Text)) context.lost |= kLostFormats;
  element.TextAng = plane.AngleToWorld(angle);
  element.TextJust = JustificationOf(horizontal, vertical, kBaseline);
  if (!context.source.baselines && PlacementOf(element.TextJust).up == kBaseline) {
    element.TextJust = JustificationOf(horizontal, vertical, kBottom);
    context.lost |= kLostBaseline;
  }
  StoreHeight(context, element);
  return StorePoint(context, element, kText, plane.ToWorld(groups.Point(second ? 1 : 0)));
}

}  // namespace

// The style of a TEXT gives it the font alone; slant and width of its letters it has itself.
void NoteLetters(EntityContext& context) {
  constexpr std::int32_t kMirrored = 2 | 4;
  const EntityGroups& groups = context.groups;
  const double slant = groups.Number(51, 0), width = groups.Number(41, 1);
  context.lost |= context.source.drawing.LostByStyle(groups.Style()) & kLostFont;
  if (slant != 0 || (groups.Integer(71, 0) & kMirrored) != 0) context.lost |= kLostSlant;
  if (width != 1 || groups.Integer(72, 0) == kFit) context.lost |= kLostLetterWidth;
}

bool MakeText(EntityContext& context, tEntity& element) {
  return MakePlacedText(context, element, context.groups.Integer(73, 0));
}

bool MakeAttrib(EntityContext& context, tEntity& element) {
  constexpr std::int32_t kInvisible = 1;
  if ((context.groups.Integer(70, 0) & kInvisible) != 0) context.lost |= kLostHiding;
  return MakePlacedText(context, element, context.groups.Integer(74, 0));
}

bool MakeMText(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10)) return Damaged(context, "has no location");
  const std::int32_t attachment = groups.Integer(71, 1);
  const int place = attachment >= 1 && attachment <= 9 ? attachment - 1 : 0;
  const Vertex& direction = groups.Point(1);
  const Drawing& drawing = context.source.drawing;
  if (groups.Has(11) && (direction.x != 0 || direction.y != 0)) {
    element.TextAng = std::atan2(direction.y, direction.x) * kDegrees;
  } else {
    // A direction that is not given is that of the map, whatever the plane.
    const double angle = drawing.TextAngle(groups.Number(50, 0));
    element.TextAng = groups.Has(50) ? ObjectCoordinates(groups.Extrusion()).AngleToWorld(angle) : angle;
  }
  element.TextJust = JustificationCode({place % 3, kTop - 16 * (place / 3)});
  StoreHeight(context, element);
  context.lost |= drawing.LostByStyle(groups.Style());
  std::string& text = context.source.whole ? context.lines.text : element.Text;
  if (drawing.Text().DecodeMText(groups.Text(), text, context.source.whole ? '\n' : ' ')) context.lost |= kLostFormats;
  if (!context.source.whole) return StorePoint(context, element, kText, groups.Point(0));
  BeginLines(context, element, place / 3);
  return StoreTextLine(context, element);
}

bool StoreTextLine(EntityContext& context, tEntity& element) {
  TextLines& lines = context.lines;
  while (lines.HasNext()) {
    const std::size_t end = std::min(lines.text.find('\n', lines.at), lines.text.size());
    element.Text.assign(lines.text, lines.at, end - lines.at);
    const Vertex place = lines.place;
    lines.at = end + 1;
    lines.place = lines.place + lines.step;
    if (IsBlank(element.Text) && lines.HasNext()) continue;
    element.TextAng = lines.angle;
    element.TextSize = lines.size;
    element.TextJust = lines.just;
    if (StorePoint(context, element, kText, place)) return true;
    lines.at = TextLines::kNone;  // the others lie nowhere either
  }
  return false;
}

}  // namespace tesselink
