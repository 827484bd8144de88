// SPDX-License-Identifier: MIT
// Attributes on their way into a drawing: extended data of its entities, and of layer 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/Filters.h"

namespace tesselink {

class AttributeTable;

/// How layer 0 tells of tables: "table FORM NAME", behind it "field TYPE LENGTH DECIMALS NAME" for each of its fields.
namespace schema {
inline constexpr std::string_view kTable = "table", kField = "field";
inline constexpr std::int32_t kVersion = 1;

/// A form as a word, as in "points" or "areas-z"; and back, of which an unknown word says nothing.
std::string WordOf(const ElementForm& form);
ElementForm FormOf(std::string_view word);
}  // namespace schema

/// Texts whose memory is used again.
class TextList {
 public:
  void Clear() { count_ = 0; }
  void Truncate(std::size_t count) { count_ = count; }
  std::size_t Count() const { return count_; }
  /// A further text, which is empty.
  std::string& Add() {
    if (count_ == texts_.size()) texts_.emplace_back();
    texts_[count_].clear();
    return texts_[count_++];
  }
  const std::string* begin() const { return texts_.data(); }
  const std::string* end() const { return texts_.data() + count_; }

 private:
  std::vector<std::string> texts_;
  std::size_t count_ = 0;
};

/// The attributes of the inputs of a run, for writers of drawings. Texts are as EncodeValue has them, in pieces that an
/// entity can hold; further pieces begin with "=".
class RecordsOut {
 public:
  /// Forgets all inputs.
  void Reset();
  /// Turns to an input, whose table is declared where it has one; one without attributes where it has records. Fields
  /// for which layer 0 has no room are left out; these are returned, as a list.
  std::string Begin(InputFilter& source);
  /// Whether any input had a table.
  bool Any() const { return tables_ > 0; }

  /// What an entity that is written next says of its record.
  struct Tag {
    std::int32_t table = 0, record = 0, part = 0;
    int leftOut = 0;  ///< values for which an entity has no room
  };
  /// Whether an element stands for a record; then its tag, its role and its values are at hand.
  bool Take(const tEntity& entity);
  const Tag& At() const { return tag_; }
  const TextList& Role() const { return role_; }
  const TextList& Values() const { return values_; }
  /// What layer 0 tells.
  const TextList& Schema() const { return schema_; }

 private:
  struct Field {
    int number;        // in its table
    std::string name;  // as it stands before values
  };
  bool Declare(AttributeTable& table, int field);
  void TakeValues(std::int64_t row);
  std::string_view RoleOf(const tEntity& entity) const;

  std::int32_t tables_ = 0;
  AttributeTable* table_ = nullptr;  // of the input at hand
  bool hasRecords_ = false;
  ElementForm form_;
  std::vector<Field> fields_;
  TextList schema_, role_, values_;
  std::size_t schemaBytes_ = 0;
  Tag tag_;
  std::int64_t record_ = 0;  // that the values are of
  std::string encoded_, text_;
};

}  // namespace tesselink
