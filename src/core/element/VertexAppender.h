// SPDX-License-Identifier: MIT
// The vertices of a chain that is being read, and what becomes of a first coordinate of 0.
#pragma once

#include <string_view>

#include "core/element/tEntity.h"

namespace tesselink {

/// Stores the vertices of a chain one behind the other. Where zero gives way, it goes by the last coordinate of each
/// array: one whose only element is exactly 0 counts as empty, and what comes next takes its place; vertices are lost,
/// or x and y no longer belong together.
class VertexAppender {
 public:
  /// What a person is told when that happens.
  static constexpr std::string_view kGaveWay =
      "an x or a y of exactly 0 in a chain's first vertex gives way to that of the next one";

  explicit VertexAppender(bool zeroGivesWay) : zeroGivesWay_(zeroGivesWay) {}

  /// Begins behind vertices that the chain has already.
  void Begin(tEntity::Index stored = 0) { count_ = stored; }
  /// How many were given, those at the beginning included.
  tEntity::Index Count() const { return count_; }
  /// False when the vertex did not get a place of its own.
  bool Append(tEntity& entity, double x, double y) {
    const tEntity::Index place = count_++;
    const tEntity::Index atX = zeroGivesWay_ ? entity.XCount() + 1 : place;
    const tEntity::Index atY = zeroGivesWay_ ? entity.YCount() + 1 : place;
    entity.x(atX, x);
    entity.Y(atY, y);
    return atX == place && atY == place;
  }

 private:
  bool zeroGivesWay_;
  tEntity::Index count_ = 0;
};

}  // namespace tesselink
