// SPDX-License-Identifier: MIT
#include "formats/dxf/RingNesting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "core/element/Rings.h"

namespace tesselink {
namespace {

struct NestedRing : Ring {
  using Ring::Ring;
  int depth = 0;
};

bool FindDepths(std::vector<NestedRing>& rings) {
  std::int64_t looked = 0;
  for (std::size_t i = 0; i < rings.size(); ++i) {
    for (std::size_t j = 0; j < rings.size(); ++j) {
      const double own = std::fabs(rings[i].area), other = std::fabs(rings[j].area);
      const bool isLarger = other > own || (other == own && j < i);
      if (++looked > kMostEdges) return false;
      if (i == j || !isLarger || !rings[j].MayHold(rings[i])) continue;
      looked += 5 * std::ssize(rings[j].vertices);
      rings[i].depth += rings[j].Holds(rings[i]) ? 1 : 0;
    }
  }
  return true;
}

}  // namespace

bool NestRings(VertexChain& chain, std::vector<Wires::Wire>& rings, int deepest) {
  std::vector<NestedRing> found;
  found.reserve(rings.size());
  for (const Wires::Wire& ring : rings) {
    found.emplace_back(std::span(chain).subspan(ring.begin, ring.end - ring.begin));
  }
  const bool known = FindDepths(found);
  std::size_t size = 0, kept = 0;
  for (NestedRing& ring : found) {
    if (!known) ring.depth = 0;
    if (ring.depth > deepest) continue;
    const bool isHole = ring.depth % 2 == 1;
    if (isHole != (ring.area > 0)) std::reverse(ring.vertices.begin(), ring.vertices.end());
    const auto to = chain.begin() + static_cast<std::ptrdiff_t>(size);
    std::copy(ring.vertices.begin(), ring.vertices.end(), to);
    rings[kept++] = {size, size + ring.vertices.size(), true};
    size += ring.vertices.size();
  }
  rings.resize(kept);
  chain.resize(size);
  return known;
}

}  // namespace tesselink
