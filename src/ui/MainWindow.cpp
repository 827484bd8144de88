// SPDX-License-Identifier: MIT
#include "ui/MainWindow.h"

#include <QByteArray>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "app/DialectGain.h"
#include "app/GivenAnswers.h"
#include "app/ProgramFolder.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/run/FilesRead.h"
#include "core/run/WrittenFiles.h"
#include "formats/cdf/CodeTables.h"
#include "ui/CommonDlg.h"
#include "ui/DropHint.h"
#include "ui/FileChoice.h"
#include "ui/Help.h"
#include "ui/InputPanel.h"
#include "ui/Named.h"
#include "ui/OptionsLink.h"
#include "ui/OptionsPane.h"
#include "ui/OutputPanel.h"
#include "ui/QtInteraction.h"
#include "ui/QueueWindow.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr const char* kGeometry = "Geometry";
constexpr const char* kSplitter = "Splitter";
constexpr const char* kDialect = "Dialect";
constexpr int kAroundWindow = 48;  // pixels that the frame of a window may take
constexpr const char* kClassic = "Classic";
constexpr const char* kStandard = "Standard";

}  // namespace

// Blocks the window for as long as it lives, however the run ends.
class MainWindow::Busy {
 public:
  explicit Busy(MainWindow& window) : window_(window), focus_(window.focusWidget()) { window_.SetRunning(true); }
  ~Busy() {
    window_.SetRunning(false);
    if (focus_) focus_->setFocus();
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  MainWindow& window_;
  QPointer<QWidget> focus_;
};

MainWindow::MainWindow(const FormatTable& formats, Settings& settings, const FilterOptions& options)
    : formats_(formats),
      settings_(settings),
      memory_(settings),
      options_(options),
      interaction_(std::make_unique<QtInteraction>(*this)) {
  setObjectName("MainWindow");
  interaction_->RememberIn(settings_);
  setWindowTitle(tr("Tesselink File Conversion"));
  setAcceptDrops(true);
  controls_ = BuildControls();
  splitter_ = Named(new QSplitter, "Splitter");
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(controls_);
  dropHint_ = new DropHint(this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter_);
  Connect();
  RestoreLook();
  input_->setFocus();
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::BuildControls() {
  auto* controls = new QWidget;
  auto* line = Named(new QFrame, "Line");
  line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
  auto* layout = new QVBoxLayout(controls);
  layout->addWidget(BuildTitle());
  layout->addWidget(line);
  layout->addWidget(BuildFrames(), 1);
  layout->addWidget(BuildButtons());
  return controls;
}

// Both frames, which scroll where a screen is too low for them.
QWidget* MainWindow::BuildFrames() {
  auto* dialog = Named(new CommonDlg(this), "Dialog");
  auto* frames = new QWidget;
  input_ = new InputPanel(formats_, *dialog, memory_);
  output_ = new OutputPanel(formats_, *dialog, memory_);
  more_ = new OptionsPane(settings_);
  link_ = new OptionsLink(formats_, *input_, *output_, *more_, settings_, [this] { return Request(); });
  auto* layout = new QVBoxLayout(frames);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(input_);
  layout->addWidget(output_);
  layout->addWidget(more_, 1);
  layout->addStretch();
  auto* scroll = Named(new QScrollArea, "Scroll");
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidgetResizable(true);
  scroll->setWidget(frames);
  scroll->setMinimumWidth(frames->minimumSizeHint().width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  return scroll;
}

QWidget* MainWindow::BuildTitle() {
  auto* bar = Named(new QWidget, "Title");
  auto* title = Named(new QLabel(tr("Tesselink File Converter")), "lblTitle");
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * 1.5);
  font.setBold(true);
  title->setFont(font);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(title);
  row->addStretch();
  row->addWidget(Named(new QLabel("2001"), "lblYear"), 0, Qt::AlignBottom);
  return bar;
}

QWidget* MainWindow::BuildButtons() {
  auto* bar = Named(new QWidget, "Buttons");
  many_ = Named(new QPushButton(tr("Ma&ny Files...")), "cmdMany");
  apply_ = Named(new QPushButton(tr("&Apply")), "cmdApply");
  cancel_ = Named(new QPushButton(tr("&Cancel")), "cmdCancel");
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(BuildHelp());
  row->addWidget(many_);
  row->addStretch();
  row->addWidget(apply_);
  row->addWidget(cancel_);
  return bar;
}

QPushButton* MainWindow::BuildHelp() {
  auto* button = Named(new QPushButton(tr("&Help")), "cmdHelp");
  auto* menu = Named(new QMenu(button), "helpMenu");
  connect(menu->addAction(tr("&Using this window") + "\tF1"), &QAction::triggered, this, &MainWindow::ShowHelp);
  connect(menu->addAction(tr("&About Tesselink")), &QAction::triggered, this, [this] { AboutBox(this).exec(); });
  button->setMenu(menu);
  return button;
}

// A key of the whole window, which rests with the other controls during a run.
void MainWindow::AddKey(const QKeySequence& key, const std::function<void()>& does) {
  connect(new QShortcut(key, this), &QShortcut::activated, this, [this, does] {
    if (!running_) does();
  });
}

void MainWindow::Connect() {
  AddKey(QKeySequence(Qt::CTRL | Qt::Key_O), [this] { input_->Browse(); });
  AddKey(QKeySequence(Qt::CTRL | Qt::Key_R), [this] { input_->ShowRecent(); });
  AddKey(QKeySequence(Qt::Key_F1), [this] { ShowHelp(); });
  connect(input_, &InputPanel::inputChanged, this, [this](const QStringList& paths, const QString& format) {
    emit inputChanged(input_->IsReadable() ? paths : QStringList(), format);
  });
  connect(input_, &InputPanel::inputChanged, this, [this] { output_->SetInput(InputPath(), input_->IsReadable()); });
  connect(output_, &OutputPanel::dialectChanged, this, [this](Dialect dialect) {
    input_->SetDialect(dialect);
    output_->SetOptions(Request().options);
  });
  connect(input_, &InputPanel::applied, apply_, &QPushButton::click);
  connect(output_, &OutputPanel::applied, apply_, &QPushButton::click);
  connect(more_, &OptionsPane::changed, this, [this] { output_->SetOptions(Request().options); });
  connect(link_, &OptionsLink::readingChanged, this, &MainWindow::readingChanged);
  connect(link_, &OptionsLink::clipWanted, this, &MainWindow::clipWanted);
  connect(link_, &OptionsLink::lostChanged, this, &MainWindow::lostChanged);
  connect(apply_, &QPushButton::clicked, this, &MainWindow::Apply);
  connect(interaction_.get(), &QtInteraction::standardWanted, this, &MainWindow::ConvertAgain);
  connect(input_, &InputPanel::manyChosen, this, &MainWindow::ShowQueue);
  connect(many_, &QPushButton::clicked, this, [this] { ShowQueue({}); });
  connect(cancel_, &QPushButton::clicked, this, &QWidget::close);
  for (QPushButton* button : {many_, apply_, cancel_}) button->setAutoDefault(true);
}

void MainWindow::SetPreview(QWidget* preview) {
  splitter_->addWidget(preview);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  const QString kept = memory_.Get(kSplitter);
  splitter_->restoreState(QByteArray::fromBase64(kept.toLatin1()));
  if (!kept.isEmpty()) return;
  // Room for a drawing, the first time, as far as the screen has it.
  const int unit = fontMetrics().averageCharWidth();
  const QSize room = screen()->availableSize() - QSize(kAroundWindow, kAroundWindow);
  resize(size().expandedTo(QSize(160 * unit, 80 * unit)).boundedTo(room));
  splitter_->setSizes({controls_->sizeHint().width(), width()});
}

QStringList MainWindow::InputPaths() const { return input_->Paths(); }

QString MainWindow::InputPath() const { return input_->Path(); }

void MainWindow::TakeFiles(const QStringList& paths) {
  if (!running_ && !paths.isEmpty()) input_->TakeFiles(paths);
}

void MainWindow::ShowQueue(const QStringList& paths) {
  if (queue_ == nullptr) {
    queue_ = new QueueWindow(formats_, CommandProgram(), this);
    connect(queue_, &QueueWindow::oneOutputWanted, input_, &InputPanel::TakeSeveral);
    queue_->Preset(output_->Format(), output_->ChosenDialect());
  }
  queue_->Add(paths);
  queue_->show();
  queue_->activateWindow();
}

void MainWindow::SetCounts(const PictureCounts& counts, bool ended) { input_->SetCounts(counts, ended); }
void MainWindow::SetHindrance(const QString& reason) { input_->SetHindrance(reason); }
void MainWindow::TakeDrawing(const DrawingFacts& drawing, const std::vector<std::string>& layers) {
  link_->TakeDrawing(drawing, layers);
}

void MainWindow::TakeClip(const ClipBox& box) { more_->ClipChosen(box); }

void MainWindow::SetChoosingClip(bool waits) { more_->SetChoosingClip(waits); }

ConversionRequest MainWindow::Request() const {
  ConversionRequest request;
  for (const QString& path : InputPaths()) request.inputs.push_back(PathOf(path));
  request.OutFile = PathOf(output_->Path());
  request.InFormat = input_->Format().toStdString();
  request.OutFormat = output_->Format().toStdString();
  request.options = options_;
  request.options.dialect = output_->ChosenDialect();
  more_->ApplyTo(request);
  return request;
}

// Whether the run will refuse it before anything is read, in its own words.
bool MainWindow::IsRefused(const ConversionRequest& request) const {
  FilesRead read;
  for (const std::string& input : request.inputs) read.Add(input, formats_.Input(request.InFormat).companions);
  try {
    return !FileExists(PathOf(InputPath())) || request.OutFile.empty() || read.Holds(request.OutFile);
  } catch (const Error&) {  // a path that cannot be looked up
    return true;
  }
}

// Asks before files are replaced, unless the save dialog has or they are those of a run's own.
bool MainWindow::MayReplaceOutput(ConversionRequest& request, const std::vector<std::string>& own) {
  QStringList files;
  for (const std::string& file : ReplacedFiles(request.OutFile, formats_.Output(request.OutFormat), request.options)) {
    request.overwrite = true;
    const bool isOwn = std::find(own.begin(), own.end(), file) != own.end();
    if (!isOwn && Shown(file) != output_->ConfirmedPath()) files.append(Shown(file));
  }
  if (files.isEmpty()) return true;
  QMessageBox box(QMessageBox::Warning, windowTitle(),
                  files.join('\n') + "\n\n" +
                      (files.size() == 1 ? tr("exists already. Replace it?") : tr("exist already. Replace them?")),
                  QMessageBox::Yes | QMessageBox::No, this);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

// What a run reads and writes.
std::vector<std::string> MainWindow::FilesOf(const ConversionRequest& request) const {
  std::vector<std::string> files = WrittenFiles(request.OutFile, formats_.Output(request.OutFormat), request.options);
  files.insert(files.end(), request.inputs.begin(), request.inputs.end());
  return files;
}

void MainWindow::Apply() {
  if (running_) return;
  input_->CleanText();
  ConversionRequest request = Request();
  if (!IsRefused(request)) {
    if (!more_->Agrees()) return;
    if (!output_->Settle()) return;
    request = Request();
    if (!MayReplaceOutput(request)) return;
  }
  Run(request, more_->Values());
  if (closesAfterRun_) close();
}

// The last run in the standard dialect. What was answered then is not asked again.
void MainWindow::ConvertAgain() {
  if (running_) return;
  ConversionRequest request = lastRequest_;
  request.options.dialect = Dialect::Standard;
  if (Request().inputs == request.inputs) output_->SetDialect(Dialect::Standard);
  if (!MayReplaceOutput(request, lastOutputs_)) return;
  Run(request, OptionValues(lastAnswers_), CodesByLayer(lastCodes_));  // which the run itself is about to change
  if (closesAfterRun_) close();
}

void MainWindow::Run(const ConversionRequest& request, const OptionValues& given, const CodesByLayer& codes) {
  interaction_->FilesOfRun(FilesOf(request));
  interaction_->InputsOfRun(request.inputs);
  const Busy busy(*this);
  closesAfterRun_ = false;
  GivenAnswers answers(given, *interaction_, codes);
  const RunSummary summary = ConversionRun(formats_, answers, settings_, FillerFromCodeTables()).Run(request);
  output_->ForgetConfirmed();
  // The person may have chosen something else before the last run was run again.
  if (Request().inputs == request.inputs) {
    // A run that ended before its questions says nothing of what was answered before.
    if (summary.outcome == RunOutcome::Done || summary.read.Total() > 0) {
      link_->TakeAnswers(answers.All());
      memory_.AddRecent({InputPaths(), input_->Format()});
    }
    QStringList made;
    for (const std::string& file : summary.outputs) made.append(Shown(file));
    emit outputMade(made, Shown(request.OutFormat));
  }
  interaction_->TellUnremembered(settings_);
  lastRequest_ = request;
  lastAnswers_ = answers.All();
  lastCodes_ = answers.Codes();
  lastOutputs_ = summary.outputs;
  const bool offersStandard =
      request.options.dialect == Dialect::Classic && StandardKeepsMore(summary, formats_.Output(request.OutFormat));
  interaction_->ShowSummary(summary, offersStandard);
}

void MainWindow::ShowHelp() {
  if (help_ == nullptr) help_ = new HelpWindow(this);
  help_->show();
  help_->raise();
  help_->activateWindow();
}

void MainWindow::SetRunning(bool running) {
  running_ = running;
  for (QWidget* control : controls_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (control->objectName() != "Line") control->setEnabled(!running);
  }
  if (running) {
    setCursor(Qt::WaitCursor);
  } else {
    unsetCursor();
    input_->LookAgain();
    output_->LookAgain();
  }
  emit runningChanged(running);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (running_) {
    event->ignore();
    interaction_->AskCancel();
    closesAfterRun_ = interaction_->CancelRequested();
    return;
  }
  if (queue_ != nullptr && !queue_->MayClose()) return event->ignore();
  interaction_->CloseProgress();
  KeepLook();
}

// Wherever the keyboard is during a run.
void MainWindow::keyPressEvent(QKeyEvent* event) {
  if (running_ && event->key() == Qt::Key_Escape) {
    interaction_->AskCancel();
  } else {
    QWidget::keyPressEvent(event);
  }
}

// Other programs delete, move and make files meanwhile.
void MainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && !running_) {
    input_->LookAgain();
    output_->LookAgain();
  }
  QWidget::changeEvent(event);
}

// Whatever the other program proposes, its files stay where they are.
void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (running_ || LocalFiles(*event->mimeData()).isEmpty()) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  dropHint_->SetActive(true);
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent*) { dropHint_->SetActive(false); }

void MainWindow::dropEvent(QDropEvent* event) {
  dropHint_->SetActive(false);
  event->setDropAction(Qt::CopyAction);
  event->accept();
  TakeFiles(LocalFiles(*event->mimeData()));
}

void MainWindow::KeepLook() {
  memory_.Set(kGeometry, saveGeometry().toBase64());
  memory_.Set(kSplitter, splitter_->saveState().toBase64());
  memory_.Set(kDialect, output_->ChosenDialect() == Dialect::Standard ? kStandard : kClassic);
  input_->Remember();
  output_->Remember();
}

void MainWindow::RestoreLook() {
  restoreGeometry(QByteArray::fromBase64(memory_.Get(kGeometry).toLatin1()));
  const QString kept = memory_.Get(kDialect);
  const bool standard = kept.isEmpty() ? options_.dialect == Dialect::Standard : kept == kStandard;
  output_->SetDialect(standard ? Dialect::Standard : Dialect::Classic);
  output_->SetOptions(Request().options);
}

}  // namespace tesselink
