// SPDX-License-Identifier: MIT
#include "core/run/CarriedFields.h"

#include <algorithm>

#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/AttributeTable.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

void Add(std::string& list, const std::string& name) { list += (list.empty() ? "" : ", ") + name; }

std::string NameOf(const AttributeTable& table, int field) { return AsUtf8(table.GetFieldName(field)); }

}  // namespace

FieldContent ContentOf(char type, int length) {
  constexpr std::string_view kNumbers = "NFI+OY";
  constexpr int kDouble = 8;
  if (kNumbers.find(type) != std::string_view::npos) return FieldContent::Number;
  // Of another length it is a place in a memo file.
  if (type == 'B' && length == kDouble) return FieldContent::Number;
  return type == 'D' ? FieldContent::Date : type == 'L' ? FieldContent::Logical : FieldContent::Text;
}

void CarriedFields::Reset() {
  fields_.clear();
  table_ = nullptr;
  cutValues_ = 0;
}

void CarriedFields::Declare(AttributeTable& table, const std::string& path, const Taker& take) {
  table_ = &table;
  std::string leftOut, renamed;
  for (int i = 0; i <= table.NumFields(); ++i) {
    const std::string name = NameOf(table, i);
    const char type = table.FieldType(i);
    const bool isWidened = type == 'C' && rules_.longestText > 0;
    const int length = isWidened ? std::min(table.FieldWidth(i), rules_.longestText) : table.FieldLength(i);
    CarriedField field{FreeName(name), name, type, length, table.FieldDecimals(i), i};
    if (length <= 0 || !Takes(type) || !take(field)) {
      Add(leftOut, name);
      continue;
    }
    if (field.name != name) Add(renamed, name + " (now " + field.name + ")");
    fields_.push_back(std::move(field));
  }
  if (!leftOut.empty())
    report_.Warn(WarningKind::FieldsLeftOut, path + ": fields that could not be carried along: " + leftOut);
  if (!renamed.empty()) report_.Warn(WarningKind::FieldsRenamed, path + ": fields under another name: " + renamed);
}

void CarriedFields::Match(AttributeTable* table, const std::string& path) {
  table_ = table;
  for (CarriedField& field : fields_) field.source = -1;
  if (table == nullptr) return;
  std::string leftOut;
  for (int i = 0; i <= table->NumFields(); ++i) {
    const std::string name = NameOf(*table, i);
    const char type = table->FieldType(i);
    const FieldContent content = ContentOf(type, table->FieldLength(i));
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const CarriedField& field) {
      const FieldContent wanted = ContentOf(field.type, field.length);
      return field.source == -1 && EqualsIgnoringCase(field.sourceName, name) && Takes(type) &&
             (content == wanted || wanted == FieldContent::Text);
    });
    if (found == fields_.end()) {
      Add(leftOut, name);
    } else {
      found->source = i;
    }
  }
  if (leftOut.empty()) return;
  report_.Warn(WarningKind::FieldsLeftOut,
               path + ": the first input has no such fields, so they were left out: " + leftOut);
}

std::string CarriedFields::FreeName(const std::string& name) const {
  std::string free(CutUtf8(name, rules_.longestName));
  const auto isTaken = [&] {
    const auto is = [&](const std::string& other) { return EqualsIgnoringCase(other, free); };
    return std::any_of(fields_.begin(), fields_.end(), [&](const CarriedField& field) { return is(field.name); }) ||
           std::any_of(rules_.reserved.begin(), rules_.reserved.end(), is);
  };
  for (int i = 1; free.empty() || isTaken(); ++i) {
    const std::string ending = "_" + std::to_string(i);
    free = std::string(CutUtf8(name, rules_.longestName - ending.size())) + ending;
  }
  return free;
}

void CarriedFields::Values(std::int64_t row, std::vector<std::string_view>& values) {
  row_.clear();
  ends_.clear();
  for (const CarriedField& field : fields_) {
    if (field.source >= 0 && row >= 0) row_ += Fitting(table_->GetFieldData(field.source, row), field);
    ends_.push_back(row_.size());
  }
  std::size_t begin = 0;
  for (const std::size_t end : ends_) {
    values.push_back(std::string_view(row_).substr(begin, end - begin));
    begin = end;
  }
}

// A number that does not fit says something else when it is cut, so it is left out.
std::string_view CarriedFields::Fitting(std::string_view value, const CarriedField& field) {
  const auto room = static_cast<std::size_t>(field.length);
  if (value.size() <= room || rules_.longestText == 0) return value;
  ++cutValues_;
  return field.type == 'C' ? CutUtf8(value, room) : std::string_view();
}

}  // namespace tesselink
