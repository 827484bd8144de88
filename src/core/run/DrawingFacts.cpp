// SPDX-License-Identifier: MIT
#include "core/run/DrawingFacts.h"

namespace tesselink {

void DrawingFacts::Add(const tEntity& entity) {
  if (entity.PointCount() < 0) {
    ++atOrigin;
    return;
  }
  kinds.Add(entity);
  const bool isArea = entity.IsArea || (entity.Lost & kLostArea) != 0;
  if (isArea) ++areas;
  if (!isArea && entity.Closed && IsChain(entity.bType)) ++closed;
  if (!entity.Parts.empty() || (entity.Lost & kLostParts) != 0) ++parts;
  if (entity.HasHeight()) ++heights;
  if (entity.bType == kPoint && !entity.Text.empty() && entity.Text != "NOSTATUS") ++symbols;
}

}  // namespace tesselink
