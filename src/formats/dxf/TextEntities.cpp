// The part of EntityReader that makes texts.
#include <cmath>
#include <numbers>

#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReader.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

constexpr double kDegrees = 180 / std::numbers::pi;

// Group 72 of a TEXT.
enum Horizontal : std::int32_t { kAligned = 3, kMiddle = 4, kFit = 5 };

constexpr int kBottom = 16, kCentre = 32, kTop = 48;

// The justification code of groups 72 and 73. Besides 0 to 3, group 73 may hold the code's own 16, 32 or 48.
std::int16_t JustificationOf(std::int32_t horizontal, std::int32_t vertical, int baseline) {
  const int across = horizontal == 1 || horizontal == kMiddle ? 1 : horizontal == 2 ? 2 : 0;
  const int up = vertical == 2 || vertical == kCentre || horizontal == kMiddle ? kCentre
                 : vertical == 3 || vertical == kTop                           ? kTop
                 : vertical == 1 || vertical == kBottom                        ? kBottom
                                                                               : baseline;
  return static_cast<std::int16_t>(up + across);
}

}  // namespace

bool EntityReader::MakeText(tEntity& element) { return MakePlacedText(element, context_.groups.Integer(73, 0)); }

bool EntityReader::MakeAttrib(tEntity& element) { return MakePlacedText(element, context_.groups.Integer(74, 0)); }

bool EntityReader::MakePlacedText(tEntity& element, std::int32_t vertical) {
  const std::int32_t horizontal = context_.groups.Integer(72, 0);
  const bool stretched = horizontal == kAligned || horizontal == kFit;
  const bool second =
      context_.groups.Has(11) && (!context_.groups.Has(10) || (!stretched && (horizontal != 0 || vertical != 0)));
  if (!second && !context_.groups.Has(10)) return Damaged(context_, "has no location");
  const ObjectCoordinates plane(context_.groups.Extrusion());
  double angle = context_.source.drawing.TextAngle(context_.groups.Number(50, 0));
  if (stretched && context_.groups.Has(10) && context_.groups.Has(11)) {
    const Vertex from = context_.groups.Point(0), to = context_.groups.Point(1);
    if (!(from == to)) angle = std::atan2(to.y - from.y, to.x - from.x) * kDegrees;
  }
  context_.source.drawing.Text().DecodeText(context_.groups.Text(), element.Text);
  element.TextAng = plane.AngleToWorld(angle);
  element.TextJust = JustificationOf(horizontal, vertical, context_.source.baselines ? 0 : kBottom);
  FinishText(element);
  return StorePoint(context_, element, kText, plane.ToWorld(context_.groups.Point(second ? 1 : 0)));
}

bool EntityReader::MakeMText(tEntity& element) {
  if (!context_.groups.Has(10)) return Damaged(context_, "has no location");
  const std::int32_t attachment = context_.groups.Integer(71, 1);
  const int place = attachment >= 1 && attachment <= 9 ? attachment - 1 : 0;
  const Vertex& direction = context_.groups.Point(1);
  if (context_.groups.Has(11) && (direction.x != 0 || direction.y != 0)) {
    element.TextAng = std::atan2(direction.y, direction.x) * kDegrees;
  } else {
    // A direction that is not given is that of the map, whatever the plane.
    const double angle = context_.source.drawing.TextAngle(context_.groups.Number(50, 0));
    element.TextAng =
        context_.groups.Has(50) ? ObjectCoordinates(context_.groups.Extrusion()).AngleToWorld(angle) : angle;
  }
  context_.source.drawing.Text().DecodeMText(context_.groups.Text(), element.Text);
  element.TextJust = static_cast<std::int16_t>(kTop - 16 * (place / 3) + place % 3);
  FinishText(element);
  return StorePoint(context_, element, kText, context_.groups.Point(0));
}

void EntityReader::FinishText(tEntity& element) {
  const double height = context_.groups.Number(40, 0);
  element.TextSize = std::isfinite(height) ? height : 0;
  if (!std::isfinite(element.TextAng)) element.TextAng = 0;
}

}  // namespace tesselink
