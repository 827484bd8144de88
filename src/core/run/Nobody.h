// SPDX-License-Identifier: MIT
// The person who is not there.
#pragma once

#include "core/run/Interaction.h"

namespace tesselink {

/// Answers so that nothing happens to any file, and shows nothing. Where there is no such answer, as for the place of a
/// missing file, Error is thrown. Faces and tests override what they mean.
class Nobody : public Interaction {
 public:
  Answer ShowMessage(const Message& message) override;
  std::string SaveFileName(const SaveFileQuestion&) override { return {}; }
  /// Chooses no field.
  void SelectFields(FieldSelection& selection) override;
  std::optional<std::vector<std::string>> MatchLayers(const LayerMatchingQuestion&) override { return std::nullopt; }
  std::size_t Choose(const ChoiceQuestion& question) override { return question.preset; }
  std::string AskText(const TextQuestion& question) override;
  TableFields LocateFields(const TableFieldsQuestion&) override { return {}; }
  std::string Naming(std::string_view option, std::string_view value) const override;
  void ShowScan(const std::string&, std::int64_t, std::int64_t) override {}
  void HideScan() override {}
  void RunStarted() override {}
  void RunEnded() override {}
  void ShowRunProgress(const RunProgress&) override {}
  void HoldRunProgress() override {}
  void Beep() override {}
  bool CancelRequested() override { return false; }
  bool WantsPart() override { return true; }
  void Yield() override {}
};

}  // namespace tesselink
