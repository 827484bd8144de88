// SPDX-License-Identifier: MIT
#include "app/GivenAnswers.h"

#include <algorithm>

#include "app/FieldValues.h"

namespace tesselink {

GivenAnswers::GivenAnswers(OptionValues values, Interaction& person, CodesByLayer codes)
    : values_(std::move(values)),
      person_(person),
      layers_(values_.Text("layer-codes"), values_.Has("smart-assign")),
      codes_(std::move(codes)) {}

Answer GivenAnswers::ShowMessage(const Message& message) {
  if (message.topic != Topic::LineEnds) return person_.ShowMessage(message);
  if (values_.Has("line-ends")) return values_.Text("line-ends") == "replace" ? Answer::Yes : Answer::No;
  const Answer answer = person_.ShowMessage(message);
  if (answer == Answer::Yes) values_.Set("line-ends", "replace");
  asksCopy_ = answer == Answer::No;
  return answer;
}

std::string GivenAnswers::SaveFileName(const SaveFileQuestion& question) {
  constexpr std::string_view kCopy = "copy=";
  if (!asksCopy_) {
    const std::string given = values_.Text("line-ends");
    return given.starts_with(kCopy) ? given.substr(kCopy.size()) : std::string();
  }
  const std::string chosen = person_.SaveFileName(question);
  values_.Set("line-ends", chosen.empty() ? "keep" : std::string(kCopy) + chosen);
  return chosen;
}

void GivenAnswers::SelectFields(FieldSelection& selection) {
  if (const FieldChoice given = FieldsOf(values_);
      !given.layer.empty() || !given.text.empty() || !given.look.colour.empty()) {
    selection.Answer(given);
    return;
  }
  person_.SelectFields(selection);
  NoteFields(selection.Chosen(), values_);
}

std::optional<std::vector<std::string>> GivenAnswers::MatchLayers(const LayerMatchingQuestion& question) {
  if (layers_.Wanted()) return layers_.Codes(question);
  const auto isKnown = [this](const std::string& layer) { return codes_.contains(layer); };
  if (!codes_.empty() && std::all_of(question.layers.begin(), question.layers.end(), isKnown)) {
    std::vector<std::string> codes;
    for (const std::string& layer : question.layers) codes.push_back(codes_[layer]);
    return codes;
  }
  const auto codes = person_.MatchLayers(question);
  for (std::size_t i = 0; codes && i < codes->size() && i < question.layers.size(); ++i) {
    codes_[question.layers[i]] = (*codes)[i];
  }
  return codes;
}

std::size_t GivenAnswers::Choose(const ChoiceQuestion& question) {
  const auto given = std::find(question.answers.begin(), question.answers.end(), values_.Text(question.option));
  if (given != question.answers.end()) return static_cast<std::size_t>(given - question.answers.begin());
  const std::size_t chosen = person_.Choose(question);
  values_.Set(std::string(question.option), std::string(question.answers[chosen]));
  return chosen;
}

TableFields GivenAnswers::LocateFields(const TableFieldsQuestion& question) {
  const auto isGiven = [&](std::string_view field) { return values_.Has(field); };
  TableFields fields{values_.Text("table", question.suggestedTable), {}};
  if (!fields.table.empty() && std::all_of(question.fields.begin(), question.fields.end(), isGiven)) {
    for (const std::string_view field : question.fields) fields.fields.push_back(values_.Text(field));
    return fields;
  }
  fields = person_.LocateFields(question);
  if (fields.fields.size() != question.fields.size()) return fields;
  values_.Set("table", fields.table);
  for (std::size_t i = 0; i < fields.fields.size(); ++i) {
    values_.Set(std::string(question.fields[i]), fields.fields[i]);
  }
  return fields;
}

}  // namespace tesselink
