// SPDX-License-Identifier: MIT
#include "ui/QtInteraction.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>

#include "app/SummaryText.h"
#include "core/io/Paths.h"
#include "core/io/System.h"
#include "core/run/Filters.h"
#include "core/run/WrittenFiles.h"
#include "ui/CommonDlg.h"
#include "ui/FrmScan.h"
#include "ui/InputBox.h"
#include "ui/OptionNaming.h"
#include "ui/Questions.h"
#include "ui/UiText.h"
#include "ui/UiWording.h"
#include "ui/frmDBFScan.h"

namespace tesselink {
namespace {

constexpr std::chrono::milliseconds kBetweenEvents{15};
constexpr std::int64_t kBetweenRefreshes = 100;  // milliseconds
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

Stopwatch* QtInteraction::Watch() const { return progress_ ? progress_->Watch() : nullptr; }

QWidget* QtInteraction::Front() const { return progress_ && progress_->isVisible() ? progress_.get() : &window_; }

Answer QtInteraction::ShowMessage(const Message& message) {
  const bool repeats = message.topic == Topic::Unread;
  if (repeats && silenced_) return Answer::Ok;
  const Stopwatch::Pause waiting(Watch());
  QMessageBox box(Front());
  box.setIcon(IconOf(message.icon));
  box.setWindowTitle(InWindowLanguage(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(InWindowLanguage(message.text, message.subject));
  box.setInformativeText(Shown(message.details));
  AddButtons(box, message.buttons);
  if (repeats) box.setCheckBox(new QCheckBox(tr("&Don't show again for this run")));
  const Answer answer = AnswerOf(box.exec());
  if (repeats) silenced_ = box.checkBox()->isChecked();
  return answer;
}

std::string QtInteraction::SaveFileName(const SaveFileQuestion& question) {
  const Stopwatch::Pause waiting(Watch());
  CommonDlg dialog(Front());
  dialog.Filter = Shown(question.filter);
  dialog.DialogTitle = InWindowLanguage(question.title);
  dialog.Flags = CommonDlg::kOverwritePrompt;
  dialog.InitDir(Shown(question.folder));
  for (;;) {
    const QString chosen = dialog.ShowSave();
    if (chosen.isEmpty() || FileAmong(PathOf(chosen), filesOfRun_).empty()) return PathOf(chosen);
    QMessageBox box(QMessageBox::Warning, dialog.DialogTitle,
                    tr("%1\n\nis a file of this conversion. Choose another name.").arg(chosen), QMessageBox::Ok,
                    Front());
    box.setTextFormat(Qt::PlainText);
    box.exec();
  }
}

void QtInteraction::SelectFields(FieldSelection& selection) {
  const Stopwatch::Pause waiting(Watch());
  AskFields(selection, settings_, Front());
}

std::optional<std::vector<std::string>> QtInteraction::MatchLayers(const LayerMatchingQuestion& question) {
  const Stopwatch::Pause waiting(Watch());
  return AskLayers(question, Front());
}

std::size_t QtInteraction::Choose(const ChoiceQuestion& question) {
  const Stopwatch::Pause waiting(Watch());
  return AskChoice(question, Front());
}

std::string QtInteraction::AskText(const TextQuestion& question) {
  const Stopwatch::Pause waiting(Watch());
  InputBox box(question, Front());
  return box.exec() == QDialog::Accepted ? PathOf(box.Text()) : std::string();
}

TableFields QtInteraction::LocateFields(const TableFieldsQuestion& question) {
  const Stopwatch::Pause waiting(Watch());
  return AskTableFields(question, Front());
}

std::string QtInteraction::Naming(std::string_view option, std::string_view value) const {
  return OptionInWords(option, value).toStdString();
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
  standing_ = {};
  current_ = 0;
}

void QtInteraction::RunEnded() {
  HideScan();
  fileScan_.reset();
  tableScan_.reset();
}

void QtInteraction::ShowRunProgress(const RunProgress& progress) {
  standing_.percent = progress.reader.Progress();
  standing_.extents = progress.extents;
  standing_.elements = progress.elements;
  while (current_ + 1 < inputs_.size() && inputs_[current_].path != progress.input) ++current_;
  if (!progress_->isVisible()) {
    Refresh();
    progress_->show();
  }
  if (!stalled_ && progress.reader.Stalled()) {
    stalled_ = true;
    progress_->ShowHint(
        tr("%1: repeats without end. Cancel keeps what was written.").arg(Shown(progress.reader.Where())));
  }
}

// The progress comes back with the summary, which can be told once the run has completed its files.
void QtInteraction::HoldRunProgress() { progress_->hide(); }

void QtInteraction::Beep() { QApplication::beep(); }

bool QtInteraction::CancelRequested() { return progress_->CancelRequest; }

void QtInteraction::Yield() {
  if (!pace_.Due()) return;
  // To draw the window takes a sixth of the time between two looks at the events.
  if (progress_->isVisible() && refreshed_.hasExpired(kBetweenRefreshes)) Refresh();
  QApplication::processEvents();
  pace_.Restart();
}

void QtInteraction::InputsOfRun(const std::vector<std::string>& inputs) {
  inputs_.clear();
  double all = 0;
  for (const std::string& input : inputs) {
    sys::Status status;
    const double size = sys::StatusOf(input, status) ? static_cast<double>(status.size) : 0;
    inputs_.push_back({input, size});
    all += size;
  }
  for (Input& input : inputs_) input.size = all > 0 ? 100 * input.size / all : 0;
}

void QtInteraction::Refresh() {
  refreshed_.start();
  standing_.whole = standing_.percent;
  if (inputs_.size() > 1) {
    const Input& current = inputs_[current_];
    standing_.whole = current.size * standing_.percent / 100;
    for (std::size_t i = 0; i < current_; ++i) standing_.whole += inputs_[i].size;
    standing_.file = tr("File %1 of %2: %3 (%4 % of the whole)")
                         .arg(current_ + 1)
                         .arg(inputs_.size())
                         .arg(Shown(FileNameOf(current.path)))
                         .arg(static_cast<int>(standing_.whole));
  }
  progress_->ShowProgress(standing_);
}

void QtInteraction::ShowSummary(const RunSummary& summary, bool offersStandard) {
  const Report& report = summary.report;
  const bool more = standing_.elements > 0 || !report.Warnings().empty() || !report.UndeliveredTypes().empty();
  // The message has said it all.
  if (summary.outcome == RunOutcome::Refused || (summary.outcome == RunOutcome::Failed && !more))
    return CloseProgress();
  if (summary.outcome == RunOutcome::Done) standing_.percent = 100;  // not all readers count what lies at the end
  Refresh();
  QStringList folders;
  for (const std::string& file : filesOfRun_) {
    const QString folder = Shown(FolderOf(file));
    if (folder.size() > 1 && !folders.contains(folder)) folders.append(folder);
  }
  if (offersStandard) {
    progress_->OfferStandard();
    // The next run has a window of its own, and must not take this one's place before its button is done.
    connect(progress_.get(), &frmProgress::standardWanted, this, &QtInteraction::standardWanted, Qt::QueuedConnection);
  }
  progress_->ShowResult(summary.outcome, AccountOf(summary, kUiWording), folders);
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
