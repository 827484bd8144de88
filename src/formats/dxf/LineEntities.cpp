// SPDX-License-Identifier: MIT
#include "formats/dxf/LineEntities.h"

#include <array>

#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

// Makes the chain go round three or four corners, named in their order on the way.
bool GoRound(EntityContext& context, const std::array<int, 4>& order) {
  const EntityGroups& groups = context.groups;
  VertexChain& chain = context.chain;
  const bool triangle = !groups.Has(13) || groups.Point(3) == groups.Point(2);
  for (const int corner : order) {
    if (groups.Has(10 + corner) && !(triangle && corner == 3)) chain.push_back(groups.Point(corner));
  }
  if (chain.size() < 3) return Damaged(context, "has fewer than three corners");
  chain.push_back(Vertex(chain.front()));
  return true;
}

}  // namespace

bool MakeLine(EntityContext& context, tEntity& element) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10) || !groups.Has(11)) return Damaged(context, "has no start or no end");
  if (!IsFinite(groups.Point(0)) || !IsFinite(groups.Point(1))) {
    return Damaged(context, "has an end that is no number");
  }
  context.chain.push_back(groups.Point(0));
  context.chain.push_back(groups.Point(1));
  return StoreChain(context, element, kLine);
}

bool MakeFace(EntityContext& context, tEntity& element) {
  element.Closed = true;
  return GoRound(context, {0, 1, 2, 3}) && StoreChain(context, element, kPolyline);
}

// The corners of a solid go across: first, second, fourth, third.
bool MakeSolid(EntityContext& context, tEntity& element) {
  if (!GoRound(context, {0, 1, 3, 2})) return false;
  ToWorld(context, ObjectCoordinates(context.groups.Extrusion()));
  return StoreArea(context, element);
}

}  // namespace tesselink
