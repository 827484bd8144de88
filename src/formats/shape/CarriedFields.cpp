#include "formats/shape/CarriedFields.h"

#include <algorithm>

#include "core/io/Text.h"
#include "core/io/Utf8.h"
#include "core/run/AttributeTable.h"
#include "core/run/Report.h"
#include "formats/shape/DBFOutFilter.h"
#include "formats/shape/TableValues.h"

namespace tesselink {
namespace {

constexpr std::size_t kLongestName = 10;
constexpr int kLongestText = 254;
// Left for the fields that hold what the drawing itself says.
constexpr int kOwnFields = 12;
constexpr int kOwnBytes = 512;

bool IsNumber(char type) { return type == 'N' || type == 'F'; }

void Add(std::string& list, const std::string& name) { list += (list.empty() ? "" : ", ") + name; }

}  // namespace

void CarriedFields::Reset() {
  fields_.clear();
  table_ = nullptr;
  cutValues_ = 0;
}

void CarriedFields::Declare(AttributeTable& table, const std::string& path, DBFOutFilter& output) {
  table_ = &table;
  std::string leftOut, renamed;
  for (int i = 0; i <= table.NumFields(); ++i) {
    const std::string name = table.GetFieldName(i);
    const char type = table.FieldType(i);
    const int length = type == 'C' ? std::min(table.FieldWidth(i), kLongestText) : table.FieldLength(i);
    const bool fits = length > 0 && output.RoomFor(1 + kOwnFields) >= length + kOwnBytes;
    if (!IsTextType(type) || !fits) {
      Add(leftOut, name);
      continue;
    }
    fields_.push_back({FreeName(name), name, type, length, i});
    if (fields_.back().name != name) Add(renamed, name + " (now " + fields_.back().name + ")");
    output.AddField(fields_.back().name, length, {&type, 1}, table.FieldDecimals(i));
  }
  if (!leftOut.empty())
    report_.Warn(WarningKind::FieldsLeftOut, path + ": fields that could not be carried along: " + leftOut);
  if (!renamed.empty()) report_.Warn(WarningKind::FieldsRenamed, path + ": fields under another name: " + renamed);
}

// Whether values of a type may stand in a field.
bool CarriedFields::Serves(const Field& field, char sourceType) const {
  return field.type == sourceType || (IsNumber(field.type) && IsNumber(sourceType)) ||
         (field.type == 'C' && IsTextType(sourceType));
}

void CarriedFields::Match(AttributeTable* table, const std::string& path) {
  table_ = table;
  for (Field& field : fields_) field.source = -1;
  if (table == nullptr) return;
  std::string leftOut;
  for (int i = 0; i <= table->NumFields(); ++i) {
    const std::string name = table->GetFieldName(i);
    const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) {
      return field.source == -1 && EqualsIgnoringCase(field.sourceName, name) && Serves(field, table->FieldType(i));
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
  std::string free(CutUtf8(name, kLongestName));
  const auto isTaken = [&](const Field& field) { return EqualsIgnoringCase(field.name, free); };
  for (int i = 1; free.empty() || std::any_of(fields_.begin(), fields_.end(), isTaken); ++i) {
    const std::string ending = "_" + std::to_string(i);
    free = std::string(CutUtf8(name, kLongestName - ending.size())) + ending;
  }
  return free;
}

void CarriedFields::Values(std::int64_t row, std::vector<std::string_view>& values) {
  row_.clear();
  ends_.clear();
  for (const Field& field : fields_) {
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
std::string_view CarriedFields::Fitting(std::string_view value, const Field& field) {
  const auto room = static_cast<std::size_t>(field.length);
  if (value.size() <= room) return value;
  ++cutValues_;
  return field.type == 'C' ? CutUtf8(value, room) : std::string_view();
}

}  // namespace tesselink
