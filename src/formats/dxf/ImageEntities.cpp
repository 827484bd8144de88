// SPDX-License-Identifier: MIT
#include "formats/dxf/ImageEntities.h"

#include "core/element/VertexAlgebra.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

// Makes the chain the ring around what is seen. It holds the clip so far, in pixels from the centre of the upper left
// one, y downwards: two corners of a rectangle, or a polygon; nothing where the whole image is seen.
bool GoRound(EntityContext& context) {
  const EntityGroups& groups = context.groups;
  if (!groups.Has(10) || !groups.Has(11) || !groups.Has(12) || !groups.Has(13)) {
    return Damaged(context, "has no place or no size");
  }
  const Vertex &corner = groups.Point(0), &u = groups.Point(1), &v = groups.Point(2), &size = groups.Point(3);
  VertexChain& chain = context.chain;
  if (chain.empty()) chain.assign({{-0.5, -0.5, 0}, {size.x - 0.5, size.y - 0.5, 0}});
  if (chain.size() == 2) {
    const Vertex first = chain[0], second = chain[1];
    chain.assign({first, {second.x, first.y, 0}, second, {first.x, second.y, 0}});
  }
  if (chain.size() < 3) return Damaged(context, "has a clip of fewer than two corners");
  if (!(chain.front() == chain.back())) chain.push_back(Vertex(chain.front()));
  for (Vertex& at : chain) at = corner + (at.x + 0.5) * u + (size.y - at.y - 0.5) * v;
  context.lost |= kLostPicture;
  return true;
}

}  // namespace

void GatherImage(EntityContext& context) {
  VertexChain& clip = context.chain;
  bool isClipped = true;
  GatherWith(context, [&](int code) {
    if (code == 14) {
      clip.push_back({NumberHere(context), 0, 0});
    } else if (code == 24 && !clip.empty()) {
      clip.back().y = NumberHere(context);
    } else if (code == 280) {
      isClipped = context.source.scanner.Integer().value_or(1) != 0;
    } else {
      return false;
    }
    return true;
  });
  if (!isClipped) clip.clear();
}

bool MakeImage(EntityContext& context, tEntity& element) {
  element.Closed = true;
  return GoRound(context) && StoreChain(context, element, kPolyline);
}

bool MakeWipeout(EntityContext& context, tEntity& element) { return GoRound(context) && StoreArea(context, element); }

}  // namespace tesselink
