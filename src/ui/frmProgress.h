// SPDX-License-Identifier: MIT
// How far a run has got, and what came of it.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <cstdint>
#include <string>

#include "app/SummaryText.h"
#include "core/element/Extents.h"
#include "ui/Stopwatch.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace tesselink {

class ResultPage;

/// Where a run stands: in the file that is being read, and in all files.
struct Standing {
  double percent = 0;  ///< of the file
  Extents extents;
  std::int64_t elements = 0;
  QString file = {};  ///< which of several; empty for one
  double whole = 0;   ///< percent of all files
};

class frmProgress final : public QDialog {
  Q_OBJECT
 public:
  explicit frmProgress(QWidget* parent = nullptr);

  /// Whether the person has confirmed a cancel; the run reads it after every element.
  bool CancelRequest = false;

  /// Shows where the run stands. Before the first call the labels hold their initial captions.
  void ShowProgress(const Standing& standing);
  /// A line for what the person should know while the run goes on; empty for the time that remains.
  void ShowHint(const QString& hint);
  /// What came of the run, whose files lie in these folders; from now on the dialog is closed by its own button.
  void ShowResult(RunOutcome outcome, const RunAccount& account, const QStringList& folders);
  /// Offers, below the result that is about to be shown, to convert again in the other dialect.
  void OfferStandard();
  /// The time that the run has taken; it is stopped while a question waits for its answer.
  Stopwatch* Watch() { return &watch_; }

  /// The question of the cancel button, asked once at a time.
  void AskCancel();
  /// Escape and the close box: while the run goes on they ask, and the dialog stays.
  void reject() override;
  void showEvent(QShowEvent* event) override;

 signals:
  /// What was offered is wanted.
  void standardWanted();

 private:
  void BuildControls();
  QWidget* BuildExtents();
  QWidget* BuildButtons();
  void ShowExtents(const Extents& extents);
  void CopySummary();
  void Place();

  QLabel *minX_, *minY_, *maxX_, *maxY_, *elements_, *file_, *remaining_;
  QProgressBar* gauge_;
  QWidget* extents_;
  ResultPage* result_;
  QPushButton *cancel_, *done_, *openFolder_, *copy_, *again_;
  Stopwatch watch_;
  QElapsedTimer shown_;
  QString hint_;
  std::string written_;  // a file of the folder to open
  bool asking_ = false, isAnyRead_ = false;
};

}  // namespace tesselink
