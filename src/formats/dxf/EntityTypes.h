// SPDX-License-Identifier: MIT
// The table of the entity types that are read.
#pragma once

#include <string_view>

namespace tesselink {

class tEntity;
struct EntityContext;

/// How a type is read: its groups are gathered, up to the next entity that is no part of it, then an element is made of
/// them. A type that is delivered as several elements leaves them as wires; the first is delivered at once.
struct EntityType {
  std::string_view name;
  void (*gather)(EntityContext&);
  bool (*make)(EntityContext&, tEntity&);  ///< false when there is no element; null for a type that never makes one
  bool ofInsert = false;                   ///< belongs to the insert before it
  bool ofWhole = false;                    ///< read only where the whole drawing is wanted; else counted
};

/// The type of a name; null when it is not read.
const EntityType* EntityTypeOf(std::string_view name);

}  // namespace tesselink
