// SPDX-License-Identifier: MIT
#include "ui/QueueWindow.h"

#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <algorithm>

#include "app/ShellText.h"
#include "app/SummaryText.h"
#include "core/io/Paths.h"
#include "ui/EngineCall.h"
#include "ui/FileChoice.h"
#include "ui/Launcher.h"
#include "ui/QueueModel.h"
#include "ui/UiText.h"
#include "ui/UiWording.h"

namespace tesselink {
namespace {

constexpr int kBeforePlan = 250;  // milliseconds in which a person may type on
constexpr qsizetype kShownNotes = 3;
constexpr int kExitCancelled = 130;

// Whether a file is this one, or lies in this folder.
bool IsIn(const QString& file, const QString& given) {
  return file == given || file.startsWith(given.endsWith('/') ? given : given + '/');
}

QStringList Texts(const QJsonValue& array) {
  QStringList texts;
  for (const QJsonValue text : array.toArray()) texts.append(text.toString());
  return texts;
}

}  // namespace

bool QueueWindow::IsRunning() const { return run_->IsRunning(); }

std::string QueueWindow::ReportPath() const { return PathOf(folder_.filePath("batch.jsonl")); }

void QueueWindow::Add(const QStringList& paths) {
  if (IsRunning()) return;
  for (const QString& path : paths) {
    const QString whole = QFileInfo(path).isAbsolute() ? path : QFileInfo(path).absoluteFilePath();
    if (!given_.contains(whole)) given_.append(whole);
    removed_.removeIf([&whole](const QString& file) { return IsIn(file, whole); });
  }
  if (into_->text().isEmpty() && !given_.isEmpty()) {
    into_->setText(Shown(FolderOf(given_[0].toStdString())) + "converted");
  }
  model_->Show(given_);
  PlanSoon();
}

void QueueWindow::Preset(const QString& formatEntry, Dialect dialect) {
  format_->setCurrentText(formatEntry);
  dialect_->setCurrentIndex(dialect == Dialect::Classic ? 0 : 1);
}

void QueueWindow::AddFiles() {
  QStringList entries;
  for (const InputFormat& format : formats_.Inputs()) entries.append("*" + Shown(format.Extension()));
  entries.removeDuplicates();
  Add(QFileDialog::getOpenFileNames(this, tr("Add Files"), {},
                                    tr("All drawings") + " (" + entries.join(' ') + ");;" + tr("All Files") + " (*)"));
}

void QueueWindow::AddFolder() {
  if (const QString folder = QFileDialog::getExistingDirectory(this, tr("Add a Folder")); !folder.isEmpty()) {
    Add({folder});
  }
}

// A folder of which no file is left goes too.
void QueueWindow::Remove() {
  QSet<QString> marked;
  for (const QModelIndex& index : list_->selectionModel()->selectedRows()) {
    marked.insert(model_->Rows()[index.row()].input);
  }
  model_->Remove(marked);
  QStringList left;
  for (const QueueRow& row : model_->Rows()) left.append(row.input);
  given_.removeIf([&left](const QString& given) {
    return std::none_of(left.begin(), left.end(), [&given](const QString& input) { return IsIn(input, given); });
  });
  for (const QString& file : marked) {
    const auto holdsIt = [&file](const QString& given) { return IsIn(file, given); };
    if (std::any_of(given_.begin(), given_.end(), holdsIt)) removed_.append(file);
  }
  removed_.removeIf([this](const QString& file) {
    return std::none_of(given_.begin(), given_.end(), [&file](const QString& given) { return IsIn(file, given); });
  });
  PlanSoon();
}

// What is not to be converted: what was removed, and what the plan leaves out.
QStringList QueueWindow::Excluded() const {
  QStringList files = removed_;
  for (const QueueRow& row : model_->Rows()) {
    if (row.state == QueueState::LeftOut && !unreadable_.contains(row.input)) files.append(row.input);
  }
  return files;
}

// The inputs that can be read, and what is not to be taken from their folders, as far as it is still there.
void QueueWindow::AddInputs(std::vector<std::string>& arguments, const QStringList& excluded) const {
  for (const QString& file : excluded) {
    if (FileExists(PathOf(file))) arguments.insert(arguments.end(), {"--exclude", PathOf(file)});
  }
  for (const QString& given : given_) {
    if (!unreadable_.contains(given)) arguments.push_back(PathOf(given));
  }
}

void QueueWindow::ChooseFolder() {
  const QString folder = QFileDialog::getExistingDirectory(this, tr("Folder of the Outputs"), into_->text());
  if (!folder.isEmpty()) into_->setText(folder);
}

void QueueWindow::JoinToOne() {
  QStringList shapefiles;
  for (const QueueRow& row : model_->Rows()) shapefiles.append(row.input);
  emit oneOutputWanted(shapefiles);
  close();
}

std::vector<std::string> QueueWindow::Arguments() const {
  const OutputFormat& format = formats_.Output(format_->currentText().toStdString());
  const char* const dialect = dialect_->currentIndex() == 0 ? "classic" : "standard";
  std::vector<std::string> arguments{"batch",  "--dialect",          dialect, "--to", format.key,
                                     "--into", PathOf(into_->text())};
  if (replace_->isChecked()) arguments.emplace_back("--overwrite");
  return arguments;
}

void QueueWindow::CopyCommand() {
  std::string command = "tesselink";
  std::vector<std::string> arguments = Arguments();
  if (!savedReport_.isEmpty()) arguments.insert(arguments.end(), {"--report", PathOf(savedReport_), "--resume"});
  AddInputs(arguments, Excluded());
  for (const std::string& argument : arguments) command += " " + ShellQuotedAsUtf8(argument);
  QGuiApplication::clipboard()->setText(QString::fromStdString(command));
}

void QueueWindow::SaveReport() {
  const QString path = QFileDialog::getSaveFileName(this, tr("Save Report"), into_->text() + "/batch.jsonl",
                                                    tr("Reports of batches") + " (*.jsonl)");
  if (path.isEmpty()) return;
  QFile::remove(path);
  if (QFile::copy(Shown(ReportPath()), path)) {
    savedReport_ = path;
  } else {
    QMessageBox::warning(this, windowTitle(), tr("%1 could not be written.").arg(path));
  }
}

void QueueWindow::OpenInto() { OpenUrl(UrlOf(FullPath(PathOf(into_->text()))), this); }

void QueueWindow::PlanSoon() {
  isPlanned_ = false;
  trouble_ = tr("Looking at the files...");
  planSoon_.start(kBeforePlan);
  ShowState();
}

// Names, collisions and what must not be replaced: all that is for the batch to say.
void QueueWindow::MakePlan() {
  if (IsRunning() || program_.empty() || given_.isEmpty() || into_->text().isEmpty()) return ShowState();
  if (planning_->IsRunning()) return planSoon_.start(kBeforePlan);
  std::vector<std::string> arguments = Arguments();
  arguments.insert(arguments.end(), {"--dry-run", "--json"});
  if (QFileInfo::exists(Shown(ReportPath()))) {
    arguments.insert(arguments.end(), {"--report", ReportPath(), "--resume"});
  }
  unreadable_.clear();
  for (const QString& given : given_) {
    if (!QFileInfo(given).isDir() && !WhyNotReadable(PathOf(given)).empty()) unreadable_.append(given);
  }
  AddInputs(arguments, removed_);
  if (unreadable_.size() == given_.size()) return TakePlan(0, R"({"files": []})", {});
  planning_->Start(program_, arguments);
}

void QueueWindow::TakePlan(int, const QByteArray& output, const QString& errors) {
  if (planSoon_.isActive() || IsRunning()) return;  // another plan is on its way
  const QJsonObject plan = QJsonDocument::fromJson(output).object();
  const QStringList collisions = Texts(plan["collisions"]), existing = Texts(plan["existing"]);
  QStringList against = plan.isEmpty() ? errors.split('\n') : collisions + existing;
  if (!plan.isEmpty()) model_->TakePlan(plan, unreadable_);
  if (!plan.isEmpty() && model_->rowCount() == 0) against.append(tr("No drawings were found there."));
  const auto more = against.size() - kShownNotes;
  if (more > 0) against = against.first(kShownNotes) << tr("and %1 more like these").arg(more);
  if (!collisions.isEmpty()) {
    against.append(tr("Two drawings cannot become one file. The second one is left out."));
  } else if (!existing.isEmpty()) {
    against.append(tr("Choose another folder, or tick \"Replace files that exist\". What is read is never replaced."));
  }
  trouble_ = against.join('\n');
  notes_->setToolTip(Texts(plan["notes"]).join('\n'));
  isPlanned_ = !plan.isEmpty() && model_->Count(QueueState::LeftOut) < model_->rowCount();
  ShowState();
}

void QueueWindow::Begin() {
  if (!isPlanned_ || IsRunning()) return;
  std::vector<std::string> arguments = Arguments();
  arguments.insert(arguments.end(), {"--report", ReportPath(), "--resume", "--no-progress", "--json"});
  AddInputs(arguments, Excluded());
  report_.SkipToEnd();
  begun_.Rewind();
  isAsked_ = false;
  model_->BeginRun();
  toDo_ = static_cast<int>(model_->Rows().size());
  for (const QueueState state : {QueueState::LeftOut, QueueState::DoneBefore, QueueState::Done}) {
    toDo_ -= model_->Count(state);
  }
  watch_.Start();
  gauge_->show();
  progress_->show();
  run_->Start(program_, arguments);
  ShowProgress();
  ShowState();
}

// What was begun stands in the file beside the report as long as the batch runs.
void QueueWindow::Follow() {
  for (const QByteArray& line : begun_.NewLines())
    model_->TakeBegun(QJsonDocument::fromJson(line).array().at(0).toString());
  for (const QByteArray& line : report_.NewLines()) model_->TakeResult(QJsonDocument::fromJson(line).object());
  ShowProgress();
}

void QueueWindow::ShowProgress() {
  const int left = model_->Count(QueueState::Waiting) + model_->Count(QueueState::Converting);
  const int ended = std::max(0, toDo_ - left);
  const double percent = toDo_ > 0 ? 100.0 * ended / toDo_ : 0;
  gauge_->setValue(static_cast<int>(percent));
  QString text = tr("%1 of %2 files").arg(ended).arg(toDo_);
  const int failed = model_->Count(QueueState::Failed) + model_->Count(QueueState::Incomplete);
  if (failed > 0) text += ", " + tr("%1 failed").arg(failed);
  const QString remaining = Shown(RemainingText(watch_.Elapsed(), percent, kUiWording));
  progress_->setText(remaining.isEmpty() ? text : text + ", " + remaining);
  ShowDetails();
}

void QueueWindow::TakeEnd(int exitCode, const QString& errors) {
  Follow();
  model_->EndRun();
  const int all = static_cast<int>(model_->Rows().size());
  const int good = model_->Count(QueueState::Done) + model_->Count(QueueState::DoneBefore);
  const int failed = model_->Count(QueueState::Failed) + model_->Count(QueueState::Incomplete);
  QString figures = tr("%1 of %2 files converted, %3 failed").arg(good).arg(all).arg(failed);
  if (const int left = model_->Count(QueueState::LeftOut); left > 0) figures += ", " + tr("%1 left out").arg(left);
  const bool isWrong = exitCode == 1 || exitCode == 2 || exitCode < 0;
  const QString ending = exitCode == kExitCancelled ? tr("Cancelled") : isWrong ? tr("Failed") : tr("Done");
  progress_->setText(isWrong ? ending + ": " + errors : ending + ": " + figures);
  gauge_->setValue(good == all ? 100 : gauge_->value());
  if (closesAtEnd_) {
    close();
  } else {
    ShowDetails();
    ShowState();
  }
}

void QueueWindow::AskCancel() {
  if (!IsRunning() || isAsked_) return;
  const Stopwatch::Pause waiting(&watch_);
  const auto answer = QMessageBox::question(this, tr("Cancel"), tr("Are you sure you want to cancel?"),
                                            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  if (answer != QMessageBox::Yes || !IsRunning()) return;
  isAsked_ = true;
  run_->AskToEnd();
  ShowState();
}

bool QueueWindow::MayClose() {
  if (!IsRunning()) return true;
  AskCancel();
  closesAtEnd_ = isAsked_;
  return !IsRunning();
}

void QueueWindow::closeEvent(QCloseEvent* event) {
  if (!MayClose()) event->ignore();
}

void QueueWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (IsRunning() || LocalFiles(*event->mimeData()).isEmpty()) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void QueueWindow::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  Add(LocalFiles(*event->mimeData()));
}

void QueueWindow::ShowState() {
  const bool running = IsRunning(), any = !given_.isEmpty();
  for (QWidget* widget :
       std::initializer_list<QWidget*>{addFiles_, addFolder_, into_, browse_, format_, dialect_, replace_}) {
    widget->setEnabled(!running);
  }
  const auto& rows = model_->Rows();
  const bool areShapefiles =
      std::all_of(rows.begin(), rows.end(), [](const auto& row) { return IsShapefile(row.input); });
  remove_->setEnabled(!running && any);
  join_->setVisible(rows.size() > 1 && areShapefiles);
  join_->setEnabled(!running);
  copy_->setEnabled(any);
  save_->setEnabled(!running && QFileInfo::exists(Shown(ReportPath())));
  openInto_->setVisible(HasLauncher() && QFileInfo(into_->text()).isDir());
  start_->setEnabled(!running && isPlanned_);
  cancel_->setVisible(running);
  cancel_->setEnabled(!isAsked_);
  cancel_->setText(isAsked_ ? tr("Cancelling...") : tr("&Cancel"));
  QString notes = trouble_;
  if (program_.empty()) {
    notes =
        tr("The program \"tesselink\", which converts many files, is not installed beside this window. Install the "
           "package \"tesselink\".");
  } else if (!any) {
    notes = tr("Add drawings or folders, or drop them here.");
  } else if (into_->text().isEmpty()) {
    notes = tr("Choose the folder of the outputs.");
  }
  ShowDetails();
  notes_->setText(notes);
  notes_->setVisible(!running && !notes.isEmpty());
}

void QueueWindow::ShowDetails() {
  const QModelIndex current = list_->currentIndex();
  const QString text =
      current.isValid() && current.row() < model_->rowCount() ? model_->Details(current.row()) : QString();
  if (details_->toPlainText() != text) details_->setPlainText(text);
}

}  // namespace tesselink
