// SPDX-License-Identifier: MIT
// A person some of whose answers have been given before the run.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/LayerOptions.h"
#include "core/run/Interaction.h"
#include "core/run/Options.h"

namespace tesselink {

/// Answers by values of options, and hands every other question on. What the person answers is noted as values of the
/// same options, codes of layers as such.
class GivenAnswers final : public Interaction {
 public:
  /// The person must outlive this. Throws Error for a list of codes that cannot be read.
  /// `codes`: those of an earlier run; taken as long as they say something of every layer.
  GivenAnswers(OptionValues values, Interaction& person, CodesByLayer codes = {});

  /// What was given, and what was answered since.
  const OptionValues& All() const { return values_; }
  const CodesByLayer& Codes() const { return codes_; }

  Answer ShowMessage(const Message& message) override;
  std::string SaveFileName(const SaveFileQuestion& question) override;
  void SelectFields(FieldSelection& selection) override;
  std::optional<std::vector<std::string>> MatchLayers(const LayerMatchingQuestion& question) override;
  std::size_t Choose(const ChoiceQuestion& question) override;
  TableFields LocateFields(const TableFieldsQuestion& question) override;

  std::string AskText(const TextQuestion& question) override { return person_.AskText(question); }
  std::string Naming(std::string_view option, std::string_view value) const override {
    return person_.Naming(option, value);
  }
  void ShowScan(const std::string& text, std::int64_t position, std::int64_t size) override {
    person_.ShowScan(text, position, size);
  }
  void HideScan() override { person_.HideScan(); }
  void RunStarted() override { person_.RunStarted(); }
  void RunEnded() override { person_.RunEnded(); }
  void ShowRunProgress(const RunProgress& progress) override { person_.ShowRunProgress(progress); }
  void HoldRunProgress() override { person_.HoldRunProgress(); }
  void Beep() override { person_.Beep(); }
  bool CancelRequested() override { return person_.CancelRequested(); }
  bool WantsPart() override { return person_.WantsPart(); }
  void Yield() override { person_.Yield(); }

 private:
  OptionValues values_;
  Interaction& person_;
  LayerOptions layers_;
  CodesByLayer codes_;
  bool asksCopy_ = false;  // of the file with bare line feeds
};

}  // namespace tesselink
