// SPDX-License-Identifier: MIT
#include "formats/dxf/TextEntities.h"

#include <algorithm>
#include <cmath>

#include "core/element/Justification.h"
#include "core/element/VertexAlgebra.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

// Columns of an MTEXT: so many, or as many as the text fills.
enum Columns : std::int32_t { kStatic = 1, kDynamic = 2 };

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

bool MakePlacedText(EntityContext& context, tEntity& element, std::int32_t vertical, const std::string& text) {
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
  if (drawing.Text().DecodeText(text, element.Text)) context.lost |= kLostFormats;
  element.TextAng = plane.AngleToWorld(angle);
  element.TextJust = JustificationOf(horizontal, vertical, kBaseline);
  if (!context.source.baselines && PlacementOf(element.TextJust).up == kBaseline) {
    element.TextJust = JustificationOf(horizontal, vertical, kBottom);
    context.lost |= kLostBaseline;
  }
  StoreHeight(context, element);
  return StorePoint(context, element, kText, plane.ToWorld(groups.Point(second ? 1 : 0)));
}

bool MakeAttribute(EntityContext& context, tEntity& element, const std::string& text) {
  constexpr std::int32_t kInvisible = 1;
  if ((context.groups.Integer(70, 0) & kInvisible) != 0) context.lost |= kLostHiding;
  return MakePlacedText(context, element, context.groups.Integer(74, 0), text);
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
  return MakePlacedText(context, element, context.groups.Integer(73, 0), context.groups.Text());
}

bool MakeAttrib(EntityContext& context, tEntity& element) {
  return MakeAttribute(context, element, context.groups.Text());
}

bool MakeTag(EntityContext& context, tEntity& element) {
  return MakeAttribute(context, element, context.groups.Name());
}

void GatherAttrib(EntityContext& context) { GatherAttribute(context, -1); }

// Newer releases use codes of its text again, for what becomes of it when it has several lines.
void GatherAttribute(EntityContext& context, int passed) {
  bool isAttribute = false;
  GatherWith(context, [&](int code) {
    if (code == 100)
      isAttribute = context.source.whole && context.source.scanner.Keyword().starts_with("AcDbAttribute");
    const bool isPlace = code < 40 && (code % 10 == 0 || code % 10 == 1) && code >= 10;
    return code == passed || (isAttribute && (isPlace || code == 71 || code == 72));
  });
}

// Columns that stand in the text itself are embedded; older drawings have an MTEXT for each.
void GatherMText(EntityContext& context) {
  const GroupScanner& scanner = context.source.scanner;
  TextColumns& columns = context.lines.columns;
  columns.Clear();
  std::int32_t kind = 0, count = 0;
  bool isAutomatic = false;
  double height = 0, width = 0;
  const auto own = [](int) { return false; };
  GatherWith(context, own, [&](int code) {
    const double value = std::isfinite(scanner.Number()) ? scanner.Number() : 0;
    if (code == 41) height = value;
    if (code == 44) width = value;
    if (code == 45) columns.gutter = value;
    if (code == 46) columns.heights.push_back(value);
    if (code == 71) kind = scanner.Integer().value_or(0);
    if (code == 72) count = scanner.Integer().value_or(0);
    if (code == 73) isAutomatic = value != 0;
    if (code == 74) columns.isReversed = value != 0;
  });
  if (kind != kStatic && kind != kDynamic) return;
  columns.width = width;
  columns.count = kind == kStatic || !isAutomatic ? static_cast<std::size_t>(std::max(count, 0)) : 0;
  if (kind == kStatic || isAutomatic || columns.heights.empty()) columns.heights.assign(1, height);
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
  const DrawingText& decoding = drawing.Text();
  const char columnBreak = context.lines.columns.width > 0 ? '\r' : '\n';
  const bool formats = context.source.whole ? decoding.DecodeMText(groups.Text(), context.lines.text, '\n', columnBreak)
                                            : decoding.DecodeMText(groups.Text(), element.Text, ' ', ' ');
  if (formats) context.lost |= kLostFormats;
  if (!context.source.whole) return StorePoint(context, element, kText, groups.Point(0));
  BeginLines(context, {.place = groups.Point(0),
                       .normal = groups.Extrusion(),
                       .angle = element.TextAng,
                       .size = element.TextSize,
                       .spacing = groups.Number(44, 1),
                       .width = groups.Number(41, 0),
                       .across = place % 3,
                       .row = place / 3});
  return StoreTextLine(context, element);
}

}  // namespace tesselink
