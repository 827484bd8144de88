// SPDX-License-Identifier: MIT
// LEADER: a line from a note to what it is about.
#pragma once

namespace tesselink {

class tEntity;
struct DimensionStyle;
struct EntityContext;

/// Gathers the line, with its hook below the note where the note stands on it.
void GatherLeader(EntityContext& context);
/// Its line or spline, without the head of its arrow.
bool MakeLeader(EntityContext& context, tEntity& element);

/// What an entity says of its dimension style otherwise, in extended data: the value of a code follows the code.
class StyleOverride {
 public:
  explicit StyleOverride(EntityContext& context) : context_(context) {}
  /// Takes the scanner's group into the style; false where it is no extended data.
  bool Take(int code, DimensionStyle& style);

 private:
  EntityContext& context_;
  bool isWithin_ = false;
  int wanted_ = 0;  // the code whose value follows
};

}  // namespace tesselink
