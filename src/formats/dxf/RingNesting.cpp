#include "formats/dxf/RingNesting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

// Edges that are looked at, so that no drawing takes hours.
constexpr std::int64_t kMostEdges = 500'000'000;

struct Ring {
  std::span<Vertex> vertices;
  double area = 0;  // twice; above 0 where it runs counter-clockwise
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
  int depth = 0;

  bool MayHold(const Ring& other) const {
    return minX <= other.minX && minY <= other.minY && maxX >= other.maxX && maxY >= other.maxY;
  }
};

Ring RingOf(std::span<Vertex> vertices) {
  const Vertex& first = vertices.front();
  Ring ring{vertices, DoubledArea(vertices), first.x, first.y, first.x, first.y};
  for (const Vertex& b : vertices) {
    ring.minX = std::min(ring.minX, b.x);
    ring.minY = std::min(ring.minY, b.y);
    ring.maxX = std::max(ring.maxX, b.x);
    ring.maxY = std::max(ring.maxY, b.y);
  }
  return ring;
}

bool Holds(const Ring& ring, double x, double y) {
  bool inside = false;
  for (std::size_t i = 1; i < ring.vertices.size(); ++i) {
    const Vertex &a = ring.vertices[i - 1], &b = ring.vertices[i];
    if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
}

// Rings may touch: most of some points on the inner one tell.
bool Holds(const Ring& outer, const Ring& inner) {
  constexpr std::array<double, 5> kAlong{0.07, 0.29, 0.51, 0.73, 0.91};
  int inside = 0;
  const std::size_t edges = inner.vertices.size() - 1;
  for (const double along : kAlong) {
    const double at = along * static_cast<double>(edges);
    const auto edge = std::min(static_cast<std::size_t>(at), edges - 1);
    const double t = at - static_cast<double>(edge);
    const Vertex &a = inner.vertices[edge], &b = inner.vertices[edge + 1];
    inside += Holds(outer, a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)) ? 1 : 0;
  }
  return inside > static_cast<int>(kAlong.size() / 2);
}

bool FindDepths(std::vector<Ring>& rings) {
  std::int64_t looked = 0;
  for (std::size_t i = 0; i < rings.size(); ++i) {
    for (std::size_t j = 0; j < rings.size(); ++j) {
      const double own = std::fabs(rings[i].area), other = std::fabs(rings[j].area);
      const bool isLarger = other > own || (other == own && j < i);
      if (++looked > kMostEdges) return false;
      if (i == j || !isLarger || !rings[j].MayHold(rings[i])) continue;
      looked += 5 * std::ssize(rings[j].vertices);
      rings[i].depth += Holds(rings[j], rings[i]) ? 1 : 0;
    }
  }
  return true;
}

}  // namespace

double DoubledArea(std::span<const Vertex> ring) {
  const Vertex& first = ring.front();
  double area = 0;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const Vertex a = ring[i - 1] - first, b = ring[i] - first;
    area += a.x * b.y - b.x * a.y;
  }
  return area;
}

bool NestRings(VertexChain& chain, std::vector<Wires::Wire>& rings, int deepest) {
  std::vector<Ring> found;
  found.reserve(rings.size());
  for (const Wires::Wire& ring : rings) {
    found.push_back(RingOf(std::span(chain).subspan(ring.begin, ring.end - ring.begin)));
  }
  const bool known = FindDepths(found);
  std::size_t size = 0, kept = 0;
  for (Ring& ring : found) {
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
