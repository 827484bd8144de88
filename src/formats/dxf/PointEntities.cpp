#include "formats/dxf/PointEntities.h"

#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {

bool MakePoint(EntityContext& context, tEntity& element) {
  if (!context.groups.Has(10)) return Damaged(context, "has no location");
  if (context.source.symbolsOfPoints) element.Text = "NOSTATUS";
  return StorePoint(context, element, kPoint, context.groups.Point(0));
}

}  // namespace tesselink
