// SPDX-License-Identifier: MIT
#include "formats/dxf/MultilineEntities.h"

#include <algorithm>

#include "core/element/VertexAlgebra.h"
#include "formats/dxf/EntityGathering.h"
#include "formats/dxf/EntityReporting.h"
#include "formats/dxf/EntityStoring.h"

namespace tesselink {
namespace {

constexpr std::int32_t kClosed = 2;  // group 71

}  // namespace

// Of each line a vertex has a list of numbers: how far along the miter the line runs, then where it is cut.
void GatherMultiline(EntityContext& context) {
  Multiline& lines = context.multiline;
  lines.Clear();
  bool isFirst = false;  // what follows is the first number of a list
  GatherWith(context, [&](int code) {
    const auto coordinate = [&](Vertex& v) { TakeCoordinate(context, v, code); };
    if (code == 11) {
      lines.vertices.push_back({{}, {}, lines.offsets.size()});
      isFirst = false;
    }
    const bool isPoint = code >= 10 && code < 34,
               isOwn = isPoint || code == 41 || code == 42 || code == 74 || code == 75;
    if (!isOwn || lines.vertices.empty()) return isOwn;
    Multiline::At& vertex = lines.vertices.back();
    if (isPoint && code % 10 == 1) {
      coordinate(vertex.place);
    } else if (isPoint && code % 10 == 3) {
      coordinate(vertex.miter);
    } else if (code == 74) {
      lines.offsets.push_back(0);
      isFirst = true;
    } else if (code == 41 && isFirst) {
      lines.offsets.back() = NumberHere(context);
      isFirst = false;
    }
    return true;
  });
}

bool MakeMultiline(EntityContext& context, tEntity& element) {
  const Multiline& lines = context.multiline;
  const std::size_t count = lines.vertices.size();
  if (count < 2) return Damaged(context, "has fewer than two vertices");
  std::size_t wires = lines.offsets.size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t end = i + 1 < count ? lines.vertices[i + 1].offsets : lines.offsets.size();
    wires = std::min(wires, end - lines.vertices[i].offsets);
  }
  if (wires == 0) return Damaged(context, "has a vertex through which no line runs");
  const bool closed = (context.groups.Integer(71, 0) & kClosed) != 0;
  VertexChain& chain = context.chain;
  for (std::size_t wire = 0; wire < wires; ++wire) {
    const std::size_t begin = chain.size();
    for (const Multiline::At& at : lines.vertices) {
      chain.push_back(at.place + lines.offsets[at.offsets + wire] * at.miter);
    }
    if (closed) chain.push_back(Vertex(chain[begin]));
    context.wires.End(chain.size(), closed);
  }
  return StoreWire(context, element);
}

}  // namespace tesselink
