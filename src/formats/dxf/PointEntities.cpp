// SPDX-License-Identifier: MIT
#include "formats/dxf/PointEntities.h"

#include <cmath>

#include "formats/dxf/Drawing.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"
#include "formats/dxf/TextEntities.h"

namespace tesselink {

bool MakePoint(EntityContext& context, tEntity& element) {
  if (!context.groups.Has(10)) return Damaged(context, "has no location");
  if (context.source.symbolsOfPoints) element.Text = "NOSTATUS";
  return StorePoint(context, element, kPoint, context.groups.Point(0));
}

bool MakeShape(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10)) return Damaged(context, "has no location");
  const ObjectCoordinates plane(groups.Extrusion());
  const double rotation = groups.Number(50, 0), size = groups.Number(40, 1);
  context.source.drawing.Text().DecodeName(groups.Name(), element.Text);
  element.TextAng = std::isfinite(rotation) ? plane.AngleToWorld(rotation) : 0;
  element.TextSize = std::isfinite(size) && size != 0 ? size : 1;
  NoteLetters(context);
  return StorePoint(context, element, kPoint, plane.ToWorld(groups.Point(0)));
}

}  // namespace tesselink
