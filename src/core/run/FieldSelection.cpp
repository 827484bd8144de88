// SPDX-License-Identifier: MIT
#include "core/run/FieldSelection.h"

#include <algorithm>
#include <unordered_set>

#include "core/io/Errors.h"
#include "core/io/Text.h"
#include "core/run/LabelFields.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

std::vector<std::string> StoredNames(const AttributeTable& table) {
  std::vector<std::string> names;
  for (int i = 0; i <= table.NumFields(); ++i) names.push_back(table.GetFieldName(i));
  return names;
}

}  // namespace

std::vector<std::string> FieldSelection::PreparedNames(const AttributeTable& table) {
  std::vector<std::string> names;
  for (const std::string& stored : StoredNames(table)) {
    std::string name = UpperCase(Trimmed(stored));
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(std::move(name));
  }
  return names;
}

void FieldSelection::Create(AttributeTable& table) {
  table_ = &table;
  names_ = offered_ == Names::Prepared ? PreparedNames(table) : StoredNames(table);
  if (step_ == Step::Done) return;
  step_ = Step::LayerField;
  layerField_.clear();
  textField_.clear();
  look_ = {};
}

std::vector<std::string> FieldSelection::Choices() const {
  std::vector<std::string> choices = names_;
  if (step_ != Step::LayerField) choices.emplace_back(kNone);
  return choices;
}

void FieldSelection::Choose(std::string_view field) {
  if (step_ == Step::LayerField) layerField_ = field;
  if (step_ == Step::TextField) textField_ = field;
}

void FieldSelection::Answer(const FieldChoice& choice) {
  Choose(choice.layer);
  Continue();
  Choose(choice.text.empty() ? kNone : std::string_view(choice.text));
  Choose(choice.look);
  Continue();
}

std::string FieldSelection::Problem() const {
  if (table_ == nullptr) return {};
  try {
    Report unheeded;
    const LabelFields labels(*this, *table_, "the table", unheeded);
    return {};
  } catch (const Error& error) {
    return error.what();
  }
}

std::string FieldSelection::EntriesField() const {
  if (step_ != Step::TextField) return layerField_;
  return TextWanted() ? textField_ : std::string();
}

std::vector<std::string> FieldSelection::Entries(const std::function<void(std::int64_t)>& progress) const {
  std::vector<std::string> entries;
  const std::string name = EntriesField();
  if (table_ == nullptr || name.empty()) return entries;
  const int field = table_->GetFieldNum(name);
  const std::int64_t records = table_->NumRecs();
  std::unordered_set<std::string> seen;
  std::string value, previous;
  for (std::int64_t i = 0; i < records; ++i) {
    if (progress) progress(i);
    value.assign(table_->GetFieldData(field, i));
    if (i > 0 && value == previous) continue;
    if (seen.insert(value).second) entries.push_back(value);
    previous = value;
  }
  return entries;
}

void FieldSelection::Continue() {
  if (step_ == Step::LayerField) {
    step_ = Step::TextField;
    textField_.clear();
  } else {
    step_ = Step::Done;
  }
}

}  // namespace tesselink
