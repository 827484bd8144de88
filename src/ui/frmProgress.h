// SPDX-License-Identifier: MIT
// How far a run has got, and what came of it.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <string>

#include "core/element/Extents.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace tesselink {

class frmProgress final : public QDialog {
  Q_OBJECT
 public:
  explicit frmProgress(QWidget* parent = nullptr);

  /// Whether the person has confirmed a cancel; the run reads it after every element.
  bool CancelRequest = false;

  /// Shows where the run stands. Before the first call the labels hold their initial captions.
  void ShowProgress(double percent, const Extents& extents, std::int64_t elements);
  /// A line for what the person should know while the run goes on; empty for the time that remains.
  void ShowHint(const QString& hint);
  /// What came of the run, and the folder to open; from now on the dialog is closed by its own button.
  void ShowSummary(const QString& summary, const QString& folder);

  /// The question of the cancel button, asked once at a time.
  void AskCancel();
  /// Escape and the close box: while the run goes on they ask, and the dialog stays.
  void reject() override;

 private:
  void BuildControls();
  QWidget* BuildExtents();
  QWidget* BuildButtons();
  void OpenFolder();
  void CopySummary();

  QLabel *minX_, *minY_, *maxX_, *maxY_, *elements_, *remaining_;
  QProgressBar* gauge_;
  QPlainTextEdit* summary_;
  QPushButton *cancel_, *done_, *openFolder_, *copy_;
  QElapsedTimer running_;
  QString hint_, folder_;
  bool asking_ = false;
};

}  // namespace tesselink
