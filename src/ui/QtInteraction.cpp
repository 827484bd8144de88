// SPDX-License-Identifier: MIT
#include "ui/QtInteraction.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>

#include "app/SummaryText.h"
#include "core/run/Filters.h"
#include "core/run/WrittenFiles.h"
#include "ui/CommonDlg.h"
#include "ui/FrmScan.h"
#include "ui/InputBox.h"
#include "ui/Questions.h"
#include "ui/UiText.h"
#include "ui/frmDBFScan.h"
#include "ui/frmProgress.h"

namespace tesselink {
namespace {

constexpr std::chrono::milliseconds kBetweenEvents{15};
// A scan that is over sooner shows no window: it would only flicker.
constexpr int kScanShownAfter = 200;

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Information:
      return QMessageBox::Information;
    case MessageIcon::Question:
      return QMessageBox::Question;
    case MessageIcon::Warning:
      return QMessageBox::Warning;
    case MessageIcon::Critical:
      return QMessageBox::Critical;
    case MessageIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// The answer that changes nothing is the one that a careless key press gives.
void AddButtons(QMessageBox& box, MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      box.setStandardButtons(QMessageBox::Ok);
      break;
    case MessageButtons::YesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      box.setDefaultButton(QMessageBox::No);
      break;
    case MessageButtons::YesNoCancel:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
      box.setDefaultButton(QMessageBox::Cancel);
      break;
  }
}

Answer AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Yes:
      return Answer::Yes;
    case QMessageBox::No:
      return Answer::No;
    case QMessageBox::Cancel:
      return Answer::Cancel;
    default:
      return Answer::Ok;
  }
}

int Percent(std::int64_t position, std::int64_t size) {
  return size > 0 ? static_cast<int>(static_cast<double>(position) / static_cast<double>(size) * 100) : 0;
}

}  // namespace

QtInteraction::QtInteraction(QWidget& window) : window_(window), pace_(kBetweenEvents) {}

QtInteraction::~QtInteraction() = default;

QWidget* QtInteraction::Front() const { return progress_ && progress_->isVisible() ? progress_.get() : &window_; }

Answer QtInteraction::ShowMessage(const Message& message) {
  const bool repeats = message.topic == Topic::Unread;
  if (repeats && silenced_) return Answer::Ok;
  QMessageBox box(Front());
  box.setIcon(IconOf(message.icon));
  box.setWindowTitle(Shown(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(Shown(message.text));
  box.setInformativeText(Shown(message.details));
  AddButtons(box, message.buttons);
  if (repeats) box.setCheckBox(new QCheckBox("&Don't show again for this run"));
  const Answer answer = AnswerOf(box.exec());
  if (repeats) silenced_ = box.checkBox()->isChecked();
  return answer;
}

std::string QtInteraction::SaveFileName(const SaveFileQuestion& question) {
  CommonDlg dialog(Front());
  dialog.Filter = Shown(question.filter);
  dialog.DialogTitle = Shown(question.title);
  dialog.Flags = CommonDlg::kOverwritePrompt;
  dialog.InitDir(Shown(question.folder));
  for (;;) {
    const QString chosen = dialog.ShowSave();
    if (chosen.isEmpty() || FileAmong(PathOf(chosen), filesOfRun_).empty()) return PathOf(chosen);
    QMessageBox box(QMessageBox::Warning, dialog.DialogTitle,
                    chosen + "\n\nis a file of this conversion. Choose another name.", QMessageBox::Ok, Front());
    box.setTextFormat(Qt::PlainText);
    box.exec();
  }
}

void QtInteraction::SelectFields(FieldSelection& selection) { AskFields(selection, settings_, Front()); }

std::optional<std::vector<std::string>> QtInteraction::MatchLayers(const LayerMatchingQuestion& question) {
  return AskLayers(question, Front());
}

std::size_t QtInteraction::Choose(const ChoiceQuestion& question) { return AskChoice(question, Front()); }

std::string QtInteraction::AskText(const TextQuestion& question) {
  InputBox box(question, Front());
  return box.exec() == QDialog::Accepted ? PathOf(box.Text()) : std::string();
}

TableFields QtInteraction::LocateFields(const TableFieldsQuestion& question) {
  return AskTableFields(question, Front());
}

// The one option that messages speak of and that has a control of its own.
std::string QtInteraction::Naming(std::string_view option, std::string_view value) const {
  if (option == "text-height") return "Height in the dialog \"DBF Fields\"";
  if (option != "dialect") return "the command line's --" + std::string(option) + " " + std::string(value);
  return value == "standard" ? "Dialect: Standard" : "Dialect: Classic";
}

void QtInteraction::ShowScan(const std::string& text, std::int64_t position, std::int64_t size) {
  if (!scanning_.isValid()) scanning_.start();
  if (scanning_.elapsed() < kScanShownAfter) return;
  const int percent = Percent(position, size);
  if (text.starts_with("Loading")) {
    tableScan_->ShowProgress(percent);
  } else {
    fileScan_->ShowProgress(percent);
  }
}

void QtInteraction::HideScan() {
  scanning_.invalidate();
  if (fileScan_) fileScan_->hide();
  if (tableScan_) tableScan_->hide();
}

void QtInteraction::RunStarted() {
  progress_ = std::make_unique<frmProgress>(&window_);
  fileScan_ = std::make_unique<FrmScan>(&window_);
  tableScan_ = std::make_unique<frmDBFScan>(&window_);
  fileScan_->installEventFilter(this);
  tableScan_->installEventFilter(this);
  silenced_ = stalled_ = false;
  percent_ = 0;
  extents_ = {};
  elements_ = 0;
}

void QtInteraction::RunEnded() {
  HideScan();
  fileScan_.reset();
  tableScan_.reset();
}

void QtInteraction::ShowRunProgress(const RunProgress& progress) {
  percent_ = progress.reader.Progress();
  extents_ = progress.extents;
  elements_ = progress.elements;
  if (!progress_->isVisible()) {
    Refresh();
    progress_->show();
  }
  if (!stalled_ && progress.reader.Stalled()) {
    stalled_ = true;
    progress_->ShowHint(Shown(progress.reader.Where() + ": repeats without end. Cancel keeps what was written."));
  }
}

// The progress comes back with the summary, which can be told once the run has completed its files.
void QtInteraction::HoldRunProgress() { progress_->hide(); }

void QtInteraction::Beep() { QApplication::beep(); }

bool QtInteraction::CancelRequested() { return progress_->CancelRequest; }

void QtInteraction::Yield() {
  if (!pace_.Due()) return;
  if (progress_->isVisible()) Refresh();
  QApplication::processEvents();
  pace_.Restart();
}

void QtInteraction::Refresh() { progress_->ShowProgress(percent_, extents_, elements_); }

void QtInteraction::ShowSummary(const RunSummary& summary, const std::string& output) {
  const Report& report = summary.report;
  const bool more = elements_ > 0 || !report.Warnings().empty() || !report.UndeliveredTypes().empty();
  // The message has said it all.
  if (summary.outcome == RunOutcome::Refused || (summary.outcome == RunOutcome::Failed && !more))
    return CloseProgress();
  QStringList lines;
  for (const std::string& line : SummaryLines(summary, output)) lines.append(Shown(line));
  if (summary.outcome == RunOutcome::Done) percent_ = 100;  // a reader may not count what lies behind its last element
  Refresh();
  progress_->ShowSummary(lines.join('\n'),
                         summary.outputs.empty() ? QString() : QFileInfo(Shown(summary.outputs[0])).absolutePath());
  if (summary.outcome == RunOutcome::Cancelled) {
    progress_->exec();
  } else {
    progress_->show();
    progress_->activateWindow();
  }
}

void QtInteraction::TellUnremembered(const Settings& settings) {
  if (unrememberedTold_ || settings.Problem().empty()) return;
  unrememberedTold_ = true;
  QMessageBox box(QMessageBox::Warning, window_.windowTitle(), tr("Your answers are not remembered for the next time."),
                  QMessageBox::Ok, Front());
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(Shown(settings.Problem()));
  box.exec();
}

void QtInteraction::AskCancel() { progress_->AskCancel(); }

void QtInteraction::CloseProgress() {
  if (progress_) progress_->hide();
}

bool QtInteraction::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Close) AskCancel();
  return QObject::eventFilter(watched, event);
}

}  // namespace tesselink
