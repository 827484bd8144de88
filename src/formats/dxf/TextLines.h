// SPDX-License-Identifier: MIT
// The lines of a text, delivered one by one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/element/VertexChains.h"

namespace tesselink {

class tEntity;
struct EntityContext;

/// The columns in which a text stands; there are none where the width is 0.
struct TextColumns {
  double width = 0, gutter = 0;
  std::vector<double> heights;  ///< of each column; further ones are as high as the last. 0 takes all lines
  std::size_t count = 0;        ///< 0: as many as the lines take
  bool isReversed = false;      ///< the first one stands last

  void Clear();
  double Height(std::size_t column) const {
    return heights.empty() ? 0 : heights[column < heights.size() ? column : heights.size() - 1];
  }
};

/// Where a text stands as a whole.
struct TextBlock {
  Vertex place;             ///< of the attachment point
  Vertex normal{0, 0, 1};   ///< of its plane
  double angle = 0;         ///< degrees
  double size = 0;          ///< of the letters
  double spacing = 1;       ///< from line to line, 5/3 of the size being 1
  double width = 0;         ///< at which CAD breaks lines; 0 where it does not
  int across = 0, row = 0;  ///< the attachment point: 0 is left or top, 1 the middle, 2 right or bottom
};

/// Lines that are still to be delivered.
struct TextLines {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::string text;                 ///< with a line feed between two lines, a carriage return between two columns
  std::size_t at = kNone;           ///< where the next one begins
  Vertex place, step;               ///< of the next one, and from one to the next
  Vertex first, aside;              ///< of the first one in the first column, and from a column to the next
  std::size_t column = 0, row = 0;  ///< of the next one
  double angle = 0, size = 0;
  std::int16_t just = 0;
  TextColumns columns;

  bool HasNext() const { return at != kNone && at <= text.size(); }
  /// The next line; what follows is then next.
  std::string_view Take();
  void GoTo(std::size_t column);
};

/// Begins to deliver the lines that stand in the context.
void BeginLines(EntityContext& context, const TextBlock& block);
/// The next line that is not blank, or the last one; false when there is none left.
bool StoreTextLine(EntityContext& context, tEntity& element);

}  // namespace tesselink
