// SPDX-License-Identifier: MIT
#include "core/element/Rings.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/element/VertexAlgebra.h"

namespace tesselink {
namespace {

bool IsWithin(std::span<const Vertex> ring, double x, double y) {
  bool inside = false;
  for (std::size_t i = 1; i < ring.size(); ++i) {
    const Vertex &a = ring[i - 1], &b = ring[i];
    if ((a.y > y) != (b.y > y) && x < a.x + (y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
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

Ring::Ring(std::span<Vertex> ring) : vertices(ring), area(DoubledArea(ring)) {
  minX = maxX = ring.front().x;
  minY = maxY = ring.front().y;
  for (const Vertex& vertex : ring) {
    minX = std::min(minX, vertex.x);
    minY = std::min(minY, vertex.y);
    maxX = std::max(maxX, vertex.x);
    maxY = std::max(maxY, vertex.y);
  }
}

// Most of some points on the inner one tell, for a single one may lie where they touch.
bool Ring::Holds(const Ring& other) const {
  constexpr std::array<double, 5> kAlong{0.07, 0.29, 0.51, 0.73, 0.91};
  int inside = 0;
  const std::size_t edges = other.vertices.size() - 1;
  for (const double along : kAlong) {
    const double at = along * static_cast<double>(edges);
    const auto edge = std::min(static_cast<std::size_t>(at), edges - 1);
    const double t = at - static_cast<double>(edge);
    const Vertex &a = other.vertices[edge], &b = other.vertices[edge + 1];
    inside += IsWithin(vertices, a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)) ? 1 : 0;
  }
  return inside > static_cast<int>(kAlong.size() / 2);
}

}  // namespace tesselink
