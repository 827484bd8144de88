#include "formats/dxf/PointEntities.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/run/Report.h"
#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {

bool MakePoint(EntityContext& context, tEntity& element) {
  if (!context.groups.Has(10)) return Damaged(context, "has no location");
  element.Text = "NOSTATUS";
  return StorePoint(context, element, kPoint, context.groups.Point(0));
}

// A block inserted as an array has a vertex for each of its places.
bool MakeInsert(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10)) return Damaged(context, "has no insertion point");
  const ObjectCoordinates plane(groups.Extrusion());
  const double rotation = groups.Number(50, 0), angle = rotation * std::numbers::pi / 180;
  std::int64_t columns = std::max(groups.Integer(70, 1), 1), rows = std::max(groups.Integer(71, 1), 1);
  constexpr std::int64_t kMostPlaces = 65536;
  if (columns * rows > kMostPlaces) {
    Warn(context, WarningKind::Arrays,
         "an array of " + std::to_string(columns) + " by " + std::to_string(rows) + " was read as its first insertion");
    columns = rows = 1;
  }
  const double stepX = groups.Number(44, 0), stepY = groups.Number(45, 0);
  for (std::int64_t i = 0; i < columns * rows; ++i) {
    const std::int64_t column = i % columns, row = i / columns;
    const double x = static_cast<double>(column) * stepX, y = static_cast<double>(row) * stepY;
    Vertex at = groups.Point(0);
    if (i > 0) {
      at.x += x * std::cos(angle) - y * std::sin(angle);
      at.y += x * std::sin(angle) + y * std::cos(angle);
    }
    context.chain.push_back(plane.ToWorld(at));
  }
  context.source.drawing.Text().DecodeName(groups.Name(), element.Text);
  element.TextAng = std::isfinite(rotation) ? plane.AngleToWorld(rotation) : 0;
  if (!StoreChain(context, element, kPoint)) return false;
  TellBlockNotDrawn(context, element.Text);
  return true;
}

}  // namespace tesselink
