// The part of EntityReader that makes texts.
#include <cmath>
#include <numbers>

#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReader.h"

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

bool EntityReader::MakeText(tEntity& element) { return MakePlacedText(element, groups_.Integer(73, 0)); }

bool EntityReader::MakeAttrib(tEntity& element) { return MakePlacedText(element, groups_.Integer(74, 0)); }

bool EntityReader::MakePlacedText(tEntity& element, std::int32_t vertical) {
  const std::int32_t horizontal = groups_.Integer(72, 0);
  const bool stretched = horizontal == kAligned || horizontal == kFit;
  const bool second = groups_.Has(11) && (!groups_.Has(10) || (!stretched && (horizontal != 0 || vertical != 0)));
  if (!second && !groups_.Has(10)) return Damaged("has no location");
  const ObjectCoordinates plane(groups_.Extrusion());
  double angle = source_.drawing.TextAngle(groups_.Number(50, 0));
  if (stretched && groups_.Has(10) && groups_.Has(11)) {
    const Vertex from = groups_.Point(0), to = groups_.Point(1);
    if (!(from == to)) angle = std::atan2(to.y - from.y, to.x - from.x) * kDegrees;
  }
  source_.drawing.Text().DecodeText(groups_.Text(), element.Text);
  element.TextAng = plane.AngleToWorld(angle);
  element.TextJust = JustificationOf(horizontal, vertical, source_.baselines ? 0 : kBottom);
  FinishText(element);
  return StorePoint(element, kText, plane.ToWorld(groups_.Point(second ? 1 : 0)));
}

bool EntityReader::MakeMText(tEntity& element) {
  if (!groups_.Has(10)) return Damaged("has no location");
  const std::int32_t attachment = groups_.Integer(71, 1);
  const int place = attachment >= 1 && attachment <= 9 ? attachment - 1 : 0;
  const Vertex& direction = groups_.Point(1);
  if (groups_.Has(11) && (direction.x != 0 || direction.y != 0)) {
    element.TextAng = std::atan2(direction.y, direction.x) * kDegrees;
  } else {
    // A direction that is not given is that of the map, whatever the plane.
    const double angle = source_.drawing.TextAngle(groups_.Number(50, 0));
    element.TextAng = groups_.Has(50) ? ObjectCoordinates(groups_.Extrusion()).AngleToWorld(angle) : angle;
  }
  source_.drawing.Text().DecodeMText(groups_.Text(), element.Text);
  element.TextJust = static_cast<std::int16_t>(kTop - 16 * (place / 3) + place % 3);
  FinishText(element);
  return StorePoint(element, kText, groups_.Point(0));
}

void EntityReader::FinishText(tEntity& element) {
  const double height = groups_.Number(40, 0);
  element.TextSize = std::isfinite(height) ? height : 0;
  if (!std::isfinite(element.TextAng)) element.TextAng = 0;
}

}  // namespace tesselink
