// SPDX-License-Identifier: MIT
// Many drawings at once, each an output of its own: a face of the command line's `batch`.
#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <string>
#include <vector>

#include "core/run/FormatTable.h"
#include "ui/GrowingFile.h"
#include "ui/Stopwatch.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableView;

namespace tesselink {

class EngineCall;
class QueueModel;

class QueueWindow final : public QWidget {
  Q_OBJECT
 public:
  /// The program is that of the command line; empty where it was not found. The format table must outlive the window.
  QueueWindow(const FormatTable& formats, std::string program, QWidget* parent = nullptr);
  ~QueueWindow() override;

  /// Takes files, and all drawings below folders.
  void Add(const QStringList& paths);
  /// The output's format, by its entry, and the dialect to begin with.
  void Preset(const QString& formatEntry, Dialect dialect);
  /// Whether nothing runs; otherwise the person is asked, and the window closes once the run has ended.
  bool MayClose();

 signals:
  /// The shapefiles of the list are to become one output instead.
  void oneOutputWanted(const QStringList& shapefiles);

 private:
  QWidget* BuildList();
  QWidget* BuildOutput();
  QWidget* BuildButtons();
  QPushButton* Button(const char* name, const QString& text, void (QueueWindow::*pressed)());
  void Connect();

  void AddFiles();
  void AddFolder();
  void Remove();
  void ChooseFolder();
  void JoinToOne();
  void CopyCommand();
  void SaveReport();
  void OpenInto();
  void Begin();
  void AskCancel();

  std::vector<std::string> Arguments() const;
  QStringList Excluded() const;
  void AddInputs(std::vector<std::string>& arguments, const QStringList& excluded) const;
  std::string ReportPath() const;
  void PlanSoon();
  void MakePlan();
  void TakePlan(int exitCode, const QByteArray& output, const QString& errors);
  void Follow();
  void TakeEnd(int exitCode, const QString& errors);
  void ShowProgress();
  void ShowState();
  void ShowDetails();
  bool IsRunning() const;

  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

  const FormatTable& formats_;
  const std::string program_;
  QTemporaryDir folder_;
  GrowingFile report_, begun_;
  EngineCall *planning_, *run_;
  QueueModel* model_;
  QTableView* list_;
  QPlainTextEdit* details_;
  QLineEdit* into_;
  QComboBox *format_, *dialect_;
  QCheckBox* replace_;
  QLabel *notes_, *progress_;
  QProgressBar* gauge_;
  QPushButton *addFiles_, *addFolder_, *remove_, *browse_, *join_, *copy_, *save_, *openInto_, *start_, *cancel_,
      *close_;
  QStringList given_;       // files and folders, as the person has named them
  QStringList removed_;     // files of these folders
  QStringList unreadable_;  // of what was named
  QString savedReport_;
  QString trouble_;  // what stands against a start
  QTimer planSoon_;
  Stopwatch watch_;
  bool isPlanned_ = false, isAsked_ = false, closesAtEnd_ = false;
  int toDo_ = 0;  // of the run
};

}  // namespace tesselink
