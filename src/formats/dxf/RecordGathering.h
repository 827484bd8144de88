// SPDX-License-Identifier: MIT
// Entities that stand for one record of an attribute table, as one element again.
#pragma once

#include <cstdint>
#include <string>

#include "core/element/tEntity.h"
#include "formats/dxf/DrawingTable.h"

namespace tesselink {

class EntityGroups;

/// What an entity is of a record.
struct RecordMark {
  enum class Role : std::uint8_t { None, Chain, Ring, Point, OfGroup, Label, Insert, OfInsert };
  Role role = Role::None;
  std::int32_t table = 0, record = 0, part = 0;
  std::int64_t place = 0;  ///< of the entity in the drawing

  bool SameRecord(const RecordMark& other) const { return table == other.table && record == other.record; }
};

/// Takes the elements of a drawing one behind the other. Parts of a record that follow one another, by their numbers,
/// become one element; a text that only says what was written for its record is left out, and so are attributes of an
/// insert, which become values of its row. What is copied or taken apart stays an element of its own.
class RecordGathering {
 public:
  /// The table outlives this.
  explicit RecordGathering(DrawingTable& table) : table_(table) { waiting_.CountOrigin(true); }

  /// Marks an element by the entity that it comes from, and fills a row. Without whole records that is all.
  RecordMark MarkOf(tEntity& element, const EntityGroups& groups, DrawingTable::Row& row);
  /// Marks an insert that came as a point, or one of its attributes.
  RecordMark MarkOfInsert(bool isAttribute, const EntityGroups& groups);
  /// Takes an element, which is used up, with the row that MarkOf filled. True when another one is complete, which
  /// takes the element's place.
  bool Add(tEntity& element, const RecordMark& mark);
  /// Whether an element waits for what may belong to it.
  bool IsWaiting() const { return isWaiting_; }
  /// Hands it out.
  void Finish(tEntity& element);
  /// Where the entity of the element that was handed out last begins.
  std::int64_t Place() const { return place_; }
  /// The row for the next element.
  DrawingTable::Row& NextRow() { return nextRow_; }
  /// Texts that were left out, and tags for which there is no column.
  std::int64_t LabelsLeftOut() const { return labels_; }
  const std::string& UnknownTags() const { return unknownTags_; }

 private:
  bool Join(tEntity& element, const RecordMark& mark);
  bool IsItsLabel(const tEntity& element) const;
  void Append(tEntity& element);
  void TakeTag(const tEntity& element);
  std::int64_t NumberOf(const RecordMark& mark);

  DrawingTable& table_;
  tEntity waiting_;
  RecordMark mark_;  // of what waits
  DrawingTable::Row row_, nextRow_;
  bool isWaiting_ = false;
  std::string label_, tag_;  // of the element marked last
  RecordMark numbered_;
  std::int64_t number_ = 0, place_ = 0;
  std::int64_t labels_ = 0;
  std::string unknownTags_;
};

}  // namespace tesselink
