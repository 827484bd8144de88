// SPDX-License-Identifier: MIT
// The window as the person whom a run asks.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <memory>

#include "core/run/ConversionRun.h"
#include "core/run/Interaction.h"
#include "core/run/Settings.h"
#include "ui/Pace.h"
#include "ui/frmProgress.h"

class QWidget;

namespace tesselink {

class FrmScan;
class frmDBFScan;

/// Message boxes, dialogs and progress windows over a window. Events are handled while a run goes on; the owner sees to
/// it that none of them touches the run's inputs.
class QtInteraction final : public QObject, public Interaction {
  Q_OBJECT
 public:
  explicit QtInteraction(QWidget& window);
  ~QtInteraction() override;

  Answer ShowMessage(const Message& message) override;
  std::string SaveFileName(const SaveFileQuestion& question) override;
  void SelectFields(FieldSelection& selection) override;
  std::optional<std::vector<std::string>> MatchLayers(const LayerMatchingQuestion& question) override;
  std::size_t Choose(const ChoiceQuestion& question) override;
  std::string AskText(const TextQuestion& question) override;
  TableFields LocateFields(const TableFieldsQuestion& question) override;
  std::string Naming(std::string_view option, std::string_view value) const override;
  void ShowScan(const std::string& text, std::int64_t position, std::int64_t size) override;
  void HideScan() override;
  void RunStarted() override;
  void RunEnded() override;
  void ShowRunProgress(const RunProgress& progress) override;
  void HoldRunProgress() override;
  void Beep() override;
  bool CancelRequested() override;
  bool WantsPart() override { return true; }
  void Yield() override;

  /// Where answers are kept for the next time; the settings must outlive this.
  void RememberIn(Settings& settings) { settings_ = &settings; }
  /// The files that the next run reads and writes, whose names no copy may take.
  void FilesOfRun(std::vector<std::string> files) { filesOfRun_ = std::move(files); }
  /// What the next run reads, in its order.
  void InputsOfRun(const std::vector<std::string>& inputs);
  /// The account of the run that has just ended; after a cancel it returns when the person has closed it.
  /// `offersStandard`: whether to offer that it be run again in the standard dialect.
  void ShowSummary(const RunSummary& summary, bool offersStandard);
  /// Tells, once, when answers of a run could not be remembered.
  void TellUnremembered(const Settings& settings);
  /// The question of the progress window's cancel button.
  void AskCancel();
  /// Closes what is left of the last run.
  void CloseProgress();

 signals:
  /// The run that has just ended is to be run again in the standard dialect.
  void standardWanted();

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  QWidget* Front() const;
  Stopwatch* Watch() const;
  void Refresh();

  QWidget& window_;
  Settings* settings_ = nullptr;
  std::unique_ptr<frmProgress> progress_;
  std::unique_ptr<FrmScan> fileScan_;
  std::unique_ptr<frmDBFScan> tableScan_;
  Pace pace_;
  QElapsedTimer scanning_, refreshed_;
  std::vector<std::string> filesOfRun_;
  bool silenced_ = false;  // messages about records that are not read
  bool stalled_ = false;   // the input repeats without end
  bool unrememberedTold_ = false;

  struct Input {
    std::string path;
    double size = 0;  // of the whole, in percent
  };
  std::vector<Input> inputs_;
  std::size_t current_ = 0;
  Standing standing_;
};

}  // namespace tesselink
