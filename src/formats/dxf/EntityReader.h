// SPDX-License-Identifier: MIT
// Drawing entities to elements, by the table of entity types.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/element/tEntity.h"
#include "formats/dxf/EntityContext.h"

namespace tesselink {

struct EntityType;

/// Reads the entities of an ENTITIES section. What it cannot deliver it counts or warns of, with type and place.
class EntityReader {
 public:
  explicit EntityReader(EntitySource source) : context_(std::move(source)) {}

  /// Reads the entity that begins at the scanner's group of code 0 and goes on to the next such group, or to the end of
  /// the file. False when the entity is no element, or is not delivered.
  bool Read(tEntity& element);
  /// Delivers the next wire of the entity that was read last, or the next line of its text; false when there is none
  /// left.
  bool NextWire(tEntity& element);
  bool HasWires() const { return context_.wires.HasNext() || context_.lines.HasNext(); }
  /// Whether the entity read last is an attribute that stands at each place of an array of inserts.
  bool IsOfArray() const { return context_.inArray && isOfInsert_; }
  /// The array whose attributes may follow; a single place when there is none.
  const BlockPlace& Array() const { return context_.inArray ? context_.array : alone_; }
  /// Attributes that are read first belong to an insert at these places.
  void BeginWithin(const BlockPlace& array) {
    context_.inArray = array.Count() > 1;
    context_.array = array;
  }
  /// Whether the entity read last belongs to an insert, and the groups that it had.
  bool IsOfInsert() const { return isOfInsert_; }
  const EntityGroups& Groups() const { return context_.groups; }
  /// Whether it is an insert.
  bool IsInsert() const { return context_.type == "INSERT"; }
  /// What the entity read last draws by a block, if anything; the element that it was read into has its attributes.
  const BlockInsert* ToDraw() const { return context_.toDraw ? &context_.insert : nullptr; }
  /// Sets how far the chains of curves may depart from them, and whether any that depended on it was read since.
  void Tolerance(const CurveTolerance& tolerance) {
    context_.source.tolerance = tolerance;
    context_.curved = false;
  }
  bool DependsOnTolerance() const { return context_.curved; }
  /// What inserts that came as points would have drawn.
  const BlockTally& Undrawn() const { return context_.undrawn; }
  /// The colour that is by layer on a layer, red in the low byte.
  std::int32_t RgbOf(const DrawingLayer& layer);
  /// Whether the file ended within or behind the entity read last.
  bool AtEnd() const { return context_.atEnd; }
  /// The place where the entity read last begins.
  std::int64_t Place() const { return context_.groups.Place(); }

 private:
  void PassOver(std::string_view name);
  bool IsWanted(const EntityType* type);

  EntityContext context_;
  const BlockPlace alone_ = {};
  bool insertInPaper_ = false;
  bool isOfInsert_ = false;  // what was read last belongs to an insert
};

}  // namespace tesselink
