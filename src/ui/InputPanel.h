// SPDX-License-Identifier: MIT
// The main window's frame "Input Parameters": which file is read, and in which format.
#pragma once

#include <QGroupBox>
#include <QStringList>
#include <string>
#include <vector>

#include "core/run/FormatTable.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tesselink {

class CommonDlg;

class InputPanel final : public QGroupBox {
  Q_OBJECT
 public:
  /// The format table and the dialog must outlive the frame.
  InputPanel(const FormatTable& formats, CommonDlg& dialog, QWidget* parent = nullptr);

  /// Takes files that a person has dropped: one as the input, several as a list of shapefiles where that is chosen.
  void TakeFiles(const QStringList& paths);
  /// Takes shapefiles that become one output.
  void TakeSeveral(const QStringList& paths);
  /// The dialect by which attribute tables are read.
  void SetDialect(Dialect dialect) { dialect_ = dialect; }
  /// The drop-down's text.
  QString Format() const;
  /// The input, or the first of several; empty when none is chosen.
  QString Path() const;
  /// The input, or all of several; none when none is chosen.
  QStringList Paths() const;

 signals:
  /// The paths or their format have changed.
  void inputChanged(const QStringList& paths, const QString& formatEntry);
  /// Files or folders that are none for one conversion.
  void manyChosen(const QStringList& paths);
  /// Return was pressed in the path's box.
  void applied();

 private:
  void BuildControls();
  void Connect();
  bool SeveralFiles() const;
  QStringList FieldsToChooseFrom() const;
  void InFormatClick();
  void ShowFieldNames();
  void BrowseInClick();
  void ForFilesClick();
  void ChooseShapefiles();
  void InfileEdited();
  void TakeOne(const QString& path);
  void TellInput();

  const FormatTable& formats_;
  CommonDlg& dialog_;
  Dialect dialect_ = Dialect::Classic;
  QComboBox* inFormat_;
  QLineEdit* infile_;
  QPushButton *browseIn_, *forFiles_;
  QLabel *selected_, *fields_;
  std::vector<std::string> chosenFiles_;  // the folder, then the names
  QStringList toldPaths_;
  QString toldFormat_;
};

}  // namespace tesselink
