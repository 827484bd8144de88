// SPDX-License-Identifier: MIT
// MULTILEADER: a note of a text or a block, with lines to what it is about.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/element/VertexChains.h"
#include "formats/dxf/TextLines.h"

namespace tesselink {

class tEntity;
struct EntityContext;

/// What is gathered of a multileader; the vertices of its lines lie in a chain, one line behind the other.
struct Multileader {
  /// Lines that end at the same point.
  struct Leader {
    Vertex end, landing{1, 0, 0};  ///< the landing leads from there to the note
    double length = 1;             ///< of the landing
    bool hasLanding = false;       ///< its direction is given
    bool isVertical = false;       ///< the lines end above or below the note, without a landing
    std::size_t lines = 0;         ///< where its own end
  };
  std::vector<Leader> leaders;
  std::vector<std::size_t> lines;  ///< where each one ends

  bool hasText = false, hasBlock = false;
  std::string text;
  TextBlock place;  ///< of the text
  Vertex along;     ///< the direction of the text

  std::uint64_t record = 0;  ///< the handle of the block
  Vertex blockPlace, blockNormal{0, 0, 1}, blockScale{1, 1, 1};
  double blockRotation = 0;     ///< radians
  std::int64_t attributes = 0;  ///< of the block, that have a text

  std::int32_t type = 1;  ///< of the lines
  bool showsLanding = true;

  void Clear();
};

void GatherMultileader(EntityContext& context);
/// Its lines, then its text line by line, then what its block draws. Heads of arrows are left out.
bool MakeMultileader(EntityContext& context, tEntity& element);

}  // namespace tesselink
