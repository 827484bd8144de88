// SPDX-License-Identifier: MIT
#include "formats/FeatureOutFilter.h"

namespace tesselink {

bool FeatureOutFilter::TakeGeometry(const tEntity& entity, FeatureKind kind) {
  if (!geometry_.Take(entity, kind)) return false;
  if (geometry_.AreHolesGuessed()) Lost(WarningKind::Rings);
  if (entity.Closed && IsChain(entity.bType) && !entity.IsArea) Lost(WarningKind::ClosedMarks);
  if (options().dialect == Dialect::Classic && (entity.Lost & (kLostArea | kLostParts)) != 0) {
    NoteMissed("that rings are areas, and which parts are one shape");
  }
  return true;
}

}  // namespace tesselink
