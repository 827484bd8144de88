// SPDX-License-Identifier: MIT
// The main window's frame "Output Parameters": which file is written, in which format and by which conventions.
#pragma once

#include <QGroupBox>
#include <QString>

#include "core/run/FormatTable.h"

class QComboBox;
class QLineEdit;
class QPushButton;

namespace tesselink {

class CommonDlg;
class DialectLine;

class OutputPanel final : public QGroupBox {
  Q_OBJECT
 public:
  /// The format table and the dialog must outlive the frame.
  OutputPanel(const FormatTable& formats, CommonDlg& dialog, QWidget* parent = nullptr);

  /// The input beside which an output is looked for.
  void SetInput(const QString& path) { input_ = path; }
  /// The drop-down's text.
  QString Format() const;
  QString Path() const;
  Dialect ChosenDialect() const;
  void SetDialect(Dialect dialect);
  /// The file that is to be replaced, as the person has said in the save dialog since the last run.
  const QString& ConfirmedPath() const { return confirmed_; }
  void ForgetConfirmed() { confirmed_.clear(); }
  /// What the dialect does, below it.
  DialectLine& Line() { return *line_; }

 signals:
  void dialectChanged(Dialect dialect);
  void formatChanged();
  /// Return was pressed in the path's box.
  void applied();

 private:
  void BuildControls();
  void Connect();
  void BrowseOutClick();
  void TakeOutput(const QString& path);

  const FormatTable& formats_;
  CommonDlg& dialog_;
  QComboBox *outFormat_, *dialect_;
  QLineEdit* outFile_;
  QPushButton* browseOut_;
  DialectLine* line_;
  QString input_, confirmed_;
};

}  // namespace tesselink
