// SPDX-License-Identifier: MIT
// Six running bounds over the vertices of a drawing, and over its arcs.
#pragma once

#include "core/element/tEntity.h"

namespace tesselink {

/// The least and greatest coordinates met so far. Before the first vertex each minimum is 1E+20 and each maximum
/// -1E+20, which is also what a file without vertices shows.
struct Extents {
  double minX = 1e20, minY = 1e20, minZ = 1e20;
  double maxX = -1e20, maxY = -1e20, maxZ = -1e20;

  void Add(double x, double y, double z) {
    minX = x < minX ? x : minX;
    minY = y < minY ? y : minY;
    minZ = z < minZ ? z : minZ;
    maxX = x > maxX ? x : maxX;
    maxY = y > maxY ? y : maxY;
    maxZ = z > maxZ ? z : maxZ;
  }

  /// Widens the bounds by every vertex of an element, and by the arcs between them.
  void Add(const tEntity& entity) {
    Add(entity, 0, entity.PointCount() + 1);
    if (!entity.Bulges.empty()) AddArcs(entity);
  }
  /// Widens the bounds by the vertices from one to before another.
  void Add(const tEntity& entity, tEntity::Index begin, tEntity::Index end) {
    if (end - begin == 1) {
      Add(entity.x(begin), entity.Y(begin), entity.Height(begin));
    } else if (end > begin) {
      AddRun(entity, begin, end);
    }
  }
  /// Widens the bounds by others.
  void Add(const Extents& other) {
    if (other.Empty()) return;
    Add(other.minX, other.minY, other.minZ);
    Add(other.maxX, other.maxY, other.maxZ);
  }
  /// Widens the bounds by the arcs of an element with bulges.
  void AddArcs(const tEntity& entity);

  bool Empty() const { return minX > maxX; }

 private:
  void AddRun(const tEntity& entity, tEntity::Index begin, tEntity::Index end);
};

}  // namespace tesselink
