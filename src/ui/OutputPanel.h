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
class NoteLine;
class WindowMemory;

class OutputPanel final : public QGroupBox {
  Q_OBJECT
 public:
  /// The format table, the dialog and the memory must outlive the frame.
  OutputPanel(const FormatTable& formats, CommonDlg& dialog, WindowMemory& memory, QWidget* parent = nullptr);

  /// The input beside which an output is looked for and, if it can be read, proposed while the person has named none.
  void SetInput(const QString& path, bool isReadable);
  /// The options of the next run, by which its files are known.
  void SetOptions(const FilterOptions& options);
  /// Looks anew at what the path names, for files come and go.
  void LookAgain();
  /// Settles what cannot be an output, or does not look like one of the format, with the person. False: no run.
  bool Settle();
  void Remember();

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
  const OutputFormat& Row() const;
  void Choose(const QString& entry);
  void Propose();
  void FormatChanged();
  void Edited();
  void CleanText();
  bool SettleExtension();
  void BrowseOutClick();
  void TakeOutput(const QString& path);

  const FormatTable& formats_;
  CommonDlg& dialog_;
  WindowMemory& memory_;
  FilterOptions options_;
  QComboBox *outFormat_, *dialect_;
  QLineEdit* outFile_;
  QPushButton* browseOut_;
  DialectLine* line_;
  NoteLine* note_;
  QString input_, confirmed_;
  QString proposed_;       // what the box holds as long as the person has named nothing
  QString keptName_;       // with the format, where the person wants a name that looks like another one's
  bool readable_ = false;  // the input
  bool typedExtension_ = false;
};

}  // namespace tesselink
