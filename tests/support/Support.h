// SPDX-License-Identifier: MIT
// What the tests share: a folder of their own, a person who answers from a script, settings in memory, and a rig that
// reads or writes with one filter.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/element/VertexChains.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/run/FieldSelection.h"
#include "core/run/Filters.h"
#include "core/run/Nobody.h"
#include "core/run/Pump.h"
#include "core/run/Report.h"
#include "core/run/Settings.h"
#include "support/MemorySettings.h"

namespace tesselink {

/// A folder that vanishes with the test.
class Folder {
 public:
  Folder() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".XXXXXX";
    std::replace(name.begin(), name.end(), '/', '_');
    std::string pattern = (std::filesystem::temp_directory_path() / name).string();
    std::replace(pattern.begin() + 1, pattern.end(), ' ', '_');
    path_ = mkdtemp(pattern.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }

  std::string Path(const std::string& name) const { return path_ + "/" + name; }
  std::string Put(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }
  static std::string Get(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

/// Answers from a script and notes what it was asked.
class ScriptedInteraction final : public Nobody {
 public:
  std::vector<Message> messages;
  std::vector<std::string> calls;
  std::vector<std::string> layersOffered;
  Answer answer = Answer::Ok;
  std::string saveName;
  std::vector<std::string> fieldsOffered;
  std::string layerField, textField{FieldSelection::kNone};
  std::optional<std::vector<std::string>> codes;
  std::int64_t cancelAfter = -1;                            ///< elements; -1: never
  std::map<std::string, std::size_t, std::less<>> choices;  ///< by option; else what is preset
  std::map<std::string, int, std::less<>> choiceQuestions;
  std::vector<TextQuestion> textQuestions;
  std::vector<std::string> textAnswers;  ///< one for each input box; then the box throws
  TableFields tableFields;
  int fieldQuestions = 0, beeps = 0, held = 0;

  Answer ShowMessage(const Message& message) override {
    messages.push_back(message);
    return answer;
  }
  std::string SaveFileName(const SaveFileQuestion&) override { return saveName; }
  void SelectFields(FieldSelection& selection) override {
    ++fieldQuestions;
    fieldsOffered = selection.Choices();
    selection.Choose(layerField);
    selection.Continue();
    selection.Choose(textField);
    selection.Continue();
  }
  std::optional<std::vector<std::string>> MatchLayers(const LayerMatchingQuestion& question) override {
    layersOffered = question.layers;
    calls.push_back("match " + question.heading + " for " + question.application);
    return codes;
  }
  std::size_t Choose(const ChoiceQuestion& question) override {
    ++choiceQuestions[std::string(question.option)];
    const auto chosen = choices.find(question.option);
    return chosen == choices.end() ? question.preset : chosen->second;
  }
  std::string AskText(const TextQuestion& question) override {
    textQuestions.push_back(question);
    if (textAnswers.empty()) throw Error("nobody answers \"" + question.title + "\"");
    const std::string typed = textAnswers.front();
    textAnswers.erase(textAnswers.begin());
    return typed;
  }
  TableFields LocateFields(const TableFieldsQuestion& question) override {
    calls.push_back("grid fields, " + question.suggestedTable);
    return tableFields;
  }
  void RunStarted() override { calls.push_back("started"); }
  void RunEnded() override { calls.push_back("ended"); }
  void ShowRunProgress(const RunProgress& progress) override { elements_ = progress.elements; }
  void HoldRunProgress() override { ++held; }
  void Beep() override { ++beeps; }
  bool CancelRequested() override { return cancelAfter >= 0 && elements_ >= cancelAfter; }

 private:
  std::int64_t elements_ = 0;
};

/// Everything a filter is handed.
struct Rig {
  Folder folder;
  ScriptedInteraction person;
  MemorySettings settings;
  Report report;
  FilterContext context{person, settings, report};

  /// Every element that a reader delivers, up to `most` calls.
  std::vector<tEntity> ReadAll(InputFilter& reader, int most = 100) {
    std::vector<tEntity> elements;
    Pump pump(context.options.dialect);
    for (int i = 0; i < most && pump.Next(reader); ++i) {
      if (pump.Delivered()) elements.push_back(pump.Element());
    }
    return elements;
  }
  const Warning* WarningOf(const std::string& kind) const {
    for (const Warning& warning : report.Warnings()) {
      if (warning.kind == kind) return &warning;
    }
    return nullptr;
  }
};

/// The message of the Error that an action throws; empty when it throws none.
inline std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    return error.what();
  }
  return {};
}

/// An element of some kind, and on some layer.
inline tEntity Element(std::int16_t kind, const VertexChain& vertices, const std::string& layer = "") {
  tEntity entity;
  entity.bType = kind;
  entity.Layer = layer;
  for (tEntity::Index i = 0; const Vertex& at : vertices) {
    entity.x(i, at.x);
    entity.Y(i, at.y);
    entity.Z(i++, static_cast<float>(at.z));
  }
  return entity;
}

/// Values that belong together, to be compared as one text; blanks separate them.
template <typename... Values>
std::string Row(const Values&... values) {
  std::ostringstream row;
  row.precision(15);
  ((row << values << ' '), ...);
  return row.str().substr(0, row.str().size() - 1);
}

/// Whether a text holds another one; both are shown when it does not.
inline testing::AssertionResult Holds(const std::string& text, const std::string& part) {
  if (text.find(part) != std::string::npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << '"' << text << "\" holds no \"" << part << '"';
}

/// "description (source)" of the Error that an action throws, or "canceled", which a line-end question nobody answers
/// is.
inline std::string WordsOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    return std::string(error.what()) + " (" + error.Source() + ")";
  } catch (const OperationCanceled&) {
    return "canceled";
  }
  return "no error";
}

inline std::string XY(const tEntity& entity) {
  std::string text;
  for (tEntity::Index i = 0; i <= entity.PointCount(); ++i) {
    text += (i > 0 ? " " : "") + NumberText(entity.x(i)) + "," + NumberText(entity.Y(i));
  }
  return text;
}

}  // namespace tesselink
