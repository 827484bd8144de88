// SPDX-License-Identifier: MIT
// The attributes of an input on their way into an output.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

class AttributeTable;
class Report;

/// What an output's fields may be.
struct FieldRules {
  std::size_t longestName = 1000;          ///< bytes
  int longestText = 0;                     ///< bytes; 0: values are not cut, whatever their length
  std::string_view types = {};             ///< the type letters that go along; empty: every one
  std::vector<std::string> reserved = {};  ///< names that no field may have, letter case aside
};

/// A field of the output with values from the input.
struct CarriedField {
  std::string name;        ///< in the output
  std::string sourceName;  ///< in the first input
  char type;               ///< the letter of the first input's table
  int length;              ///< bytes
  int decimals;
  int source;  ///< in the current input's table; -1 for none
};

/// What a field's values are, whatever letter its table has for it.
enum class FieldContent { Text, Number, Date, Logical };
FieldContent ContentOf(char type, int length);

/// Takes the fields of the first input's table, types and lengths included, in their order. Further inputs fill them by
/// name; what else these have is left out with a warning. Fields of texts are as wide as those need in UTF-8.
class CarriedFields {
 public:
  /// Adds a field to the output. False for one that it has no room for.
  using Taker = std::function<bool(const CarriedField&)>;

  CarriedFields(Report& report, FieldRules rules) : report_(report), rules_(std::move(rules)) {}

  /// Forgets all inputs.
  void Reset();
  /// Declares the fields of the first input's table.
  void Declare(AttributeTable& table, const std::string& path, const Taker& take);
  /// Turns to a further input; nullptr for one without a table.
  void Match(AttributeTable* table, const std::string& path);
  bool Any() const { return !fields_.empty(); }
  const std::vector<CarriedField>& Fields() const { return fields_; }
  /// A name for a field that the output does not have yet: the name itself, or with "_1" and so on behind it.
  std::string FreeName(const std::string& name) const;
  /// Puts the values of a row, counted from 0, first into a list. They hold until the next call.
  void Values(std::int64_t row, std::vector<std::string_view>& values);
  /// Values too long for their fields so far.
  std::int64_t CutValues() const { return cutValues_; }

 private:
  bool Takes(char type) const { return rules_.types.empty() || rules_.types.find(type) != std::string_view::npos; }
  std::string_view Fitting(std::string_view value, const CarriedField& field);

  Report& report_;
  const FieldRules rules_;
  std::vector<CarriedField> fields_;
  AttributeTable* table_ = nullptr;
  std::string row_;
  std::vector<std::size_t> ends_;
  std::int64_t cutValues_ = 0;
};

}  // namespace tesselink
