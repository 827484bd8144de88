// SPDX-License-Identifier: MIT
#include "cli/ConsoleInteraction.h"

#include <algorithm>

#include "cli/Console.h"
#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "core/run/Filters.h"

namespace tesselink {
namespace {

// A message box's lines as one line.
std::string OneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c == '\r') continue;
    if (c != '\n') {
      line += c;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  return line;
}

}  // namespace

ConsoleInteraction::ConsoleInteraction(const ReadingOptions& options, bool showProgress)
    : options_(options), layerOptions_(options.layerCodes, options.smartAssign) {
  if (showProgress) bar_.emplace();
}

Answer ConsoleInteraction::ShowMessage(const Message& message) {
  switch (message.topic) {
    case Topic::LineEnds:
      return options_.lineEnds == LineEndsChoice::Replace ? Answer::Yes : Answer::No;
    case Topic::RunFailed:  // told by the command, with what the output holds
      return Answer::Ok;
    case Topic::Notice:
    case Topic::Unread:
      break;
  }
  const std::string line = OneLine(message.text);
  const auto known = std::find_if(notices_.begin(), notices_.end(), [&](const auto& n) { return n.first == line; });
  if (known != notices_.end()) {
    ++known->second;
  } else {
    if (bar_) bar_->Erase();
    PrintNotice(line);
    notices_.emplace_back(line, 1);
  }
  return Answer::Ok;
}

std::string ConsoleInteraction::SaveFileName(const SaveFileQuestion&) { return options_.lineEndsCopy; }

void ConsoleInteraction::SelectFields(FieldSelection& selection) {
  selection.Answer({options_.layerField, options_.textField, options_.look});
}

std::optional<std::vector<std::string>> ConsoleInteraction::MatchLayers(const LayerMatchingQuestion& question) {
  reportedLayers_ = question.layers;
  if (proposing_) proposedCodes_ = layerOptions_.Proposal(question);
  if (proposing_ || !layerOptions_.Wanted()) return std::nullopt;
  return layerOptions_.Codes(question);
}

std::size_t ConsoleInteraction::Choose(const ChoiceQuestion& question) {
  const auto given = std::find(question.answers.begin(), question.answers.end(), options_.own.Text(question.option));
  return given == question.answers.end() ? question.preset : static_cast<std::size_t>(given - question.answers.begin());
}

std::string ConsoleInteraction::AskText(const TextQuestion& question) {
  const std::string option = question.subject == "$LNGSL.DAT" ? "--lngsl" : "--cdf-map";
  throw Error("could not locate " + question.subject + "; give its place with " + option + " FILE");
}

TableFields ConsoleInteraction::LocateFields(const TableFieldsQuestion& question) {
  TableFields fields;
  fields.table = options_.own.Text("table", question.suggestedTable);
  std::string missing;
  const auto need = [&missing](const std::string& value, std::string_view option, const char* placeholder) {
    if (value.empty()) missing.append(missing.empty() ? "--" : ", --").append(option).append(placeholder);
  };
  for (const std::string_view field : question.fields) {
    fields.fields.push_back(options_.own.Text(field));
    need(fields.fields.back(), field, " NAME");
  }
  need(fields.table, "table", " FILE.dbf");
  if (!missing.empty()) {
    throw Error("the output needs " + std::string(question.what) + ", and the names of its fields; give " + missing);
  }
  return fields;
}

std::string ConsoleInteraction::Naming(std::string_view option, std::string_view value) const {
  return "--" + Nobody::Naming(option, value);
}

void ConsoleInteraction::ShowScan(const std::string& text, std::int64_t position, std::int64_t size) {
  if (bar_ && size > 0) bar_->ShowScan(text, static_cast<double>(position) / static_cast<double>(size) * 100);
}

void ConsoleInteraction::HideScan() {
  if (bar_) bar_->End();
}

void ConsoleInteraction::RunEnded() {
  if (bar_) bar_->End();
}

void ConsoleInteraction::ShowRunProgress(const RunProgress& progress) {
  if (progress.reader.Stalled()) {
    stalled_ = true;
    stalledAt_ = progress.reader.Where();
  }
  if (bar_) bar_->ShowElements(progress.elements, progress.reader.Progress());
}

bool ConsoleInteraction::CancelRequested() { return stalled_ || Interrupted(); }

}  // namespace tesselink
