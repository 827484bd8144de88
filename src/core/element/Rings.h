// SPDX-License-Identifier: MIT
// Rings of areas, and which of them lie within others.
#pragma once

#include <cstdint>
#include <span>

#include "core/element/VertexChains.h"

namespace tesselink {

/// Twice the area of a ring that ends on its first vertex; above 0 where it runs counter-clockwise. Seen from that
/// vertex, so that a ring far from the origin loses no digits.
double DoubledArea(std::span<const Vertex> ring);

/// A ring that ends on its first vertex, with what tells quickly where it lies.
struct Ring {
  explicit Ring(std::span<Vertex> ring);
  /// Whether the box of another one is within its own.
  bool MayHold(const Ring& other) const {
    return minX <= other.minX && minY <= other.minY && maxX >= other.maxX && maxY >= other.maxY;
  }
  /// Whether another one, which may touch it, lies within.
  bool Holds(const Ring& other) const;

  std::span<Vertex> vertices;
  double area = 0;  ///< doubled
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
};

/// How many edges are looked at to find out about the rings of one area, so that none takes hours.
inline constexpr std::int64_t kMostEdges = 500'000'000;

}  // namespace tesselink
