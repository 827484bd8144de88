// SPDX-License-Identifier: MIT
// The console as the person whom a run asks: every answer comes from the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/LayerOptions.h"
#include "cli/Arguments.h"
#include "cli/ProgressBar.h"
#include "core/run/Nobody.h"

namespace tesselink {

class ConsoleInteraction final : public Nobody {
 public:
  ConsoleInteraction(const ReadingOptions& options, bool showProgress);

  // The bar.
  void ShowScan(const std::string& text, std::int64_t position, std::int64_t size) override;
  void HideScan() override;
  void RunEnded() override;
  void ShowRunProgress(const RunProgress& progress) override;
  bool CancelRequested() override;
  /// What lies before a repetition without end is wanted in any case.
  bool WantsPart() override { return !wholeOnly_ || stalled_; }

  // The questions.
  Answer ShowMessage(const Message& message) override;
  std::string SaveFileName(const SaveFileQuestion& question) override;
  void SelectFields(FieldSelection& selection) override;
  std::optional<std::vector<std::string>> MatchLayers(const LayerMatchingQuestion& question) override;
  std::size_t Choose(const ChoiceQuestion& question) override;
  std::string AskText(const TextQuestion& question) override;
  TableFields LocateFields(const TableFieldsQuestion& question) override;
  std::string Naming(std::string_view option, std::string_view value) const override;

  /// A cancelled run then leaves nothing.
  void WantWholeOnly() { wholeOnly_ = true; }
  /// For a list of layers to be edited: collects what is known of them, and matches nothing.
  void ProposeCodes() { proposing_ = true; }
  const std::vector<std::string>& ProposedCodes() const { return proposedCodes_; }
  /// Whether codes were asked for and no layer was there to get one.
  bool LayersLeftUnmatched() const { return layerOptions_.Wanted() && !proposing_ && reportedLayers_.empty(); }
  /// The layers that the reader reported.
  const std::vector<std::string>& ReportedLayers() const { return reportedLayers_; }
  /// Where the input began to repeat without end; empty when it did not.
  const std::string& StalledAt() const { return stalledAt_; }
  /// The messages shown, each text once, with how often it came.
  const std::vector<std::pair<std::string, std::int64_t>>& Notices() const { return notices_; }

 private:
  ReadingOptions options_;
  LayerOptions layerOptions_;
  std::optional<ProgressBar> bar_;
  bool wholeOnly_ = false;
  bool stalled_ = false;
  std::string stalledAt_;
  bool proposing_ = false;
  std::vector<std::string> reportedLayers_, proposedCodes_;
  std::vector<std::pair<std::string, std::int64_t>> notices_;
};

}  // namespace tesselink
