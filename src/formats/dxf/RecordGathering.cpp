// SPDX-License-Identifier: MIT
#include "formats/dxf/RecordGathering.h"

#include <utility>

#include "formats/dxf/EntityGroups.h"

namespace tesselink {
namespace {

RecordMark::Role RoleOf(std::string_view word) {
  using Role = RecordMark::Role;
  return word == role::kChain             ? Role::Chain
         : word == role::kRing            ? Role::Ring
         : word == role::kPoint           ? Role::Point
         : word == role::kOfGroup         ? Role::OfGroup
         : word.starts_with(role::kLabel) ? Role::Label
                                          : Role::None;
}

bool IsRing(const tEntity& element) { return element.Closed && element.PointCount() > 1 && element.IsPlain(); }

bool SamePlace(const tEntity& element, tEntity::Index a, tEntity::Index b) {
  return element.x(a) == element.x(b) && element.Y(a) == element.Y(b);
}

// Ends the last part of an area on the vertex that it began with, once. A ring that ends above or below its beginning
// had to be closed in the drawing, where that is another place.
void CloseLastPart(tEntity& area) {
  const tEntity::Index first = area.PartBegin(area.PartCount() - 1), last = area.PointCount();
  if (last > first + 1 && SamePlace(area, first, last - 1) && area.Height(first) != area.Height(last - 1)) {
    area.RemoveLastVertex();
    return;
  }
  if (SamePlace(area, first, last)) return;
  area.x(last + 1, area.x(first));
  area.Y(last + 1, area.Y(first));
  area.Height(last + 1, area.Height(first));
}

}  // namespace

// Records of several tables, and inserts, have numbers of their own.
std::int64_t RecordGathering::NumberOf(const RecordMark& mark) {
  const bool isNew = mark.role == RecordMark::Role::Insert || !mark.SameRecord(numbered_);
  if (isNew) ++number_;
  numbered_ = mark;
  return table_.Tables() == 1 && mark.record > 0 ? mark.record : number_;
}

RecordMark RecordGathering::MarkOf(tEntity& element, const EntityGroups& groups, DrawingTable::Row& row) {
  const ExtendedData& own = groups.Own();
  const RecordMark none{.place = groups.Place()};
  if (!own.HasRecord()) return none;
  const std::string& role = own.Texts().front();
  const RecordMark mark{RoleOf(role), own.Table(), own.Record(), own.Part(), groups.Place()};
  if (mark.role == RecordMark::Role::None || mark.record < 1) return none;
  element.IsLabel = mark.role == RecordMark::Role::Label;
  element.WasArea = mark.role == RecordMark::Role::Ring && !element.IsArea;
  if (element.IsLabel) table_.Decode(std::string_view(role).substr(role::kLabel.size()), label_);
  element.Record = NumberOf(mark);
  table_.Fill(row, mark.table, own.Texts().subspan(1));
  return mark;
}

RecordMark RecordGathering::MarkOfInsert(bool isAttribute, const EntityGroups& groups) {
  if (!isAttribute) return {.role = RecordMark::Role::Insert, .place = groups.Place()};
  table_.DecodeName(groups.Name(), tag_);
  return {.role = RecordMark::Role::OfInsert};
}

bool RecordGathering::Add(tEntity& element, const RecordMark& mark) {
  using Role = RecordMark::Role;
  if (isWaiting_ && Join(element, mark)) return false;
  const bool wasWaiting = std::exchange(isWaiting_, true);
  std::swap(waiting_, element);
  std::swap(row_, nextRow_);
  if (wasWaiting) std::swap(table_.Current(), nextRow_);
  place_ = mark_.place;
  mark_ = mark;
  if (mark.role == Role::Insert) {
    table_.Clear(row_);
    waiting_.Record = NumberOf(mark);
  } else if (waiting_.WasArea && IsRing(waiting_)) {
    waiting_.IsArea = true;
    waiting_.WasArea = false;
    CloseLastPart(waiting_);
  }
  return wasWaiting;
}

void RecordGathering::Finish(tEntity& element) {
  isWaiting_ = false;
  std::swap(waiting_, element);
  std::swap(table_.Current(), row_);
  place_ = mark_.place;
  mark_ = {};
}

// Whether the element belongs to what waits.
bool RecordGathering::Join(tEntity& element, const RecordMark& mark) {
  using Role = RecordMark::Role;
  if (mark.role == Role::OfInsert) {
    if (mark_.role != Role::Insert) return false;
    TakeTag(element);
    return true;
  }
  if (mark.role == Role::None || mark_.role == Role::None || !mark.SameRecord(mark_)) return false;
  if (mark.role == Role::Label) {
    if (!IsItsLabel(element)) {
      element.Record = 0;  // what it says now is no value of the record
      return false;
    }
    ++labels_;
    return true;
  }
  const bool goesOn = mark.role == mark_.role && mark.part == mark_.part + 1 && element.bType == waiting_.bType;
  const bool bothRings = waiting_.IsArea && IsRing(element);
  if (!goesOn || mark.role == Role::Point || (mark.role == Role::Ring && !bothRings)) return false;
  Append(element);
  mark_.part = mark.part;
  return true;
}

bool RecordGathering::IsItsLabel(const tEntity& element) const { return element.Text == label_; }

void RecordGathering::Append(tEntity& element) {
  const tEntity::Index begin = waiting_.PointCount() + 1;
  if (IsChain(element.bType)) waiting_.Parts.push_back(begin);
  for (tEntity::Index i = element.PointCount(); i >= 0; --i) {
    waiting_.x(begin + i, element.x(i));
    waiting_.Y(begin + i, element.Y(i));
    waiting_.Height(begin + i, element.Height(i));
  }
  if (waiting_.IsArea) CloseLastPart(waiting_);
  waiting_.Lost |= element.Lost;
}

void RecordGathering::TakeTag(const tEntity& element) {
  if (table_.Set(row_, tag_, element.Text)) return;
  constexpr std::size_t kShown = 200;
  if (unknownTags_.size() < kShown) unknownTags_ += (unknownTags_.empty() ? "" : ", ") + tag_;
}

}  // namespace tesselink
