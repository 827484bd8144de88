// The attributes of the input on their way into the table beside a shapefile.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tesselink {

class AttributeTable;
class DBFOutFilter;
class Report;

/// Takes the fields of the first input's table, types and lengths included, in their order. Further inputs fill them by
/// name; what else these have is left out with a warning. Values are UTF-8, and fields as wide as that needs.
class CarriedFields {
 public:
  explicit CarriedFields(Report& report) : report_(report) {}

  /// Forgets all inputs.
  void Reset();
  /// Declares the fields of the first input's table.
  void Declare(AttributeTable& table, const std::string& path, DBFOutFilter& output);
  /// Turns to a further input; nullptr for one without a table.
  void Match(AttributeTable* table, const std::string& path);
  bool Any() const { return !fields_.empty(); }
  /// A name for a field that the output does not have yet: the name itself, or with "_1" and so on behind it.
  std::string FreeName(const std::string& name) const;
  /// Puts the values of a row, counted from 0, first into a list. They hold until the next call.
  void Values(std::int64_t row, std::vector<std::string_view>& values);
  /// Values too long for their fields so far.
  std::int64_t CutValues() const { return cutValues_; }

 private:
  struct Field {
    std::string name;  // in the output
    std::string sourceName;
    char type;
    int length;
    int source;  // in the current input's table; -1 for none
  };
  bool Serves(const Field& field, char sourceType) const;
  std::string_view Fitting(std::string_view value, const Field& field);

  Report& report_;
  std::vector<Field> fields_;
  AttributeTable* table_ = nullptr;
  std::string row_;
  std::vector<std::size_t> ends_;
  std::int64_t cutValues_ = 0;
};

}  // namespace tesselink
