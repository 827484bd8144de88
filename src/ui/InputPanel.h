// SPDX-License-Identifier: MIT
// The main window's frame "Input Parameters": which file is read, and in which format.
#pragma once

#include <QGroupBox>
#include <QStringList>
#include <string>
#include <vector>

#include "core/run/FormatTable.h"
#include "ui/NoteLine.h"
#include "ui/PathNotes.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;

namespace tesselink {

class CommonDlg;
class WindowMemory;
struct RecentInput;

class InputPanel final : public QGroupBox {
  Q_OBJECT
 public:
  /// The format table, the dialog and the memory must outlive the frame.
  InputPanel(const FormatTable& formats, CommonDlg& dialog, WindowMemory& memory, QWidget* parent = nullptr);

  /// Takes files that a person has dropped: one as the input, several as a list of shapefiles where that is chosen.
  void TakeFiles(const QStringList& paths);
  /// Takes shapefiles that become one output.
  void TakeSeveral(const QStringList& paths);
  /// The dialect by which attribute tables are read.
  void SetDialect(Dialect dialect) { dialect_ = dialect; }
  /// Whether nothing is known that keeps the input from being read.
  bool IsReadable() const { return !Path().isEmpty() && problem_.text.isEmpty(); }
  /// What reading the input has shown so far.
  void SetCounts(const PictureCounts& counts, bool ended);
  void SetHindrance(const QString& reason);
  /// Looks anew at what the paths name, for files come and go.
  void LookAgain();
  /// Puts the path that was meant in the place of what was pasted or typed.
  void CleanText();
  /// Opens the dialog of the button that browses, or the menu of recent inputs.
  void Browse();
  void ShowRecent();
  void Remember();

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
  void TakeRecent(const RecentInput& input);
  void FillRecent();
  void FollowName(const QString& path);
  void TellInput();
  void Tell(const Note& problem);
  void ShowNote();

  const FormatTable& formats_;
  CommonDlg& dialog_;
  WindowMemory& memory_;
  Dialect dialect_ = Dialect::Classic;
  QComboBox* inFormat_;
  QLineEdit* infile_;
  QPushButton *browseIn_, *forFiles_, *recent_;
  QMenu* recentMenu_;
  NoteLine* note_;
  QLabel *selected_, *fields_;
  std::vector<std::string> chosenFiles_;  // the folder, then the names
  QStringList toldPaths_;
  QString toldFormat_;
  Note problem_;  // with the input as it was looked at last
  InputFacts facts_;
};

}  // namespace tesselink
