// SPDX-License-Identifier: MIT
// Gathering the groups of an entity.
#pragma once

#include "formats/dxf/EntityContext.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {

/// Goes on to the entity's next group; false at the next entity and at the end of the file.
inline bool NextGroup(EntityContext& context) {
  if (context.source.scanner.Next()) return context.source.scanner.Code() != 0;
  context.atEnd = true;
  return false;
}

/// Whether the entity that follows is of a type.
inline bool IsAt(const EntityContext& context, std::string_view type) {
  return !context.atEnd && context.source.scanner.Keyword() == type;
}

/// The value of the scanner's group as a number, noted when it is none.
inline double NumberHere(EntityContext& context) { return context.groups.NumberOf(context.source.scanner); }

/// Takes a coordinate by its code: 10 to 19 is x, 20 to 29 y, 30 to 39 z.
inline void TakeCoordinate(EntityContext& context, Vertex& v, int code) {
  (code < 20 ? v.x : code < 30 ? v.y : v.z) = NumberHere(context);
}

/// Hands every group's code to `own`, which tells whether it takes it, and to the common groups what it does not take.
/// Left out are lists that an application put in braces, and the object that newer releases embed behind code 101: both
/// use the same codes in other meanings. What is embedded may be handed to a function of its own.
template <typename Own, typename Embedded>
void GatherWith(EntityContext& context, const Own& own, const Embedded& embeddedGroup) {
  bool braces = false, embedded = false;
  while (NextGroup(context)) {
    const int code = context.source.scanner.Code();
    if (code == 101) {
      embedded = true;
    } else if (code == 102) {
      braces = context.source.scanner.Text().starts_with('{');
    } else if (embedded) {
      embeddedGroup(code);
    } else if (!braces && !own(code)) {
      context.groups.Take(context.source.scanner);
    }
  }
}

template <typename Own>
void GatherWith(EntityContext& context, const Own& own) {
  GatherWith(context, own, [](int) {});
}

/// Gathers the common groups, which is all that most types need.
void GatherCommon(EntityContext& context);

}  // namespace tesselink
