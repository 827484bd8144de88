// SPDX-License-Identifier: MIT
#include "ui/MainWindow.h"

#include <QByteArray>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "app/GivenAnswers.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/run/WrittenFiles.h"
#include "formats/cdf/CodeTables.h"
#include "ui/CommonDlg.h"
#include "ui/FileChoice.h"
#include "ui/InputPanel.h"
#include "ui/Named.h"
#include "ui/OptionsLink.h"
#include "ui/OptionsPane.h"
#include "ui/OutputPanel.h"
#include "ui/QtInteraction.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Window";
constexpr const char* kSection = "MainWindow";
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
    : formats_(formats), settings_(settings), options_(options), interaction_(std::make_unique<QtInteraction>(*this)) {
  setObjectName("MainWindow");
  setWindowTitle(tr("Tesselink File Conversion"));
  setAcceptDrops(true);
  controls_ = BuildControls();
  splitter_ = Named(new QSplitter, "Splitter");
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(controls_);
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
  auto* dialog = Named(new CommonDlg(this), "Dialog");
  input_ = new InputPanel(formats_, *dialog);
  output_ = new OutputPanel(formats_, *dialog);
  more_ = new OptionsPane(settings_);
  link_ = new OptionsLink(formats_, *input_, *output_, *more_, [this] { return Request(); });
  auto* layout = new QVBoxLayout(controls);
  layout->addWidget(BuildTitle());
  layout->addWidget(line);
  layout->addWidget(input_);
  layout->addWidget(output_);
  layout->addWidget(more_, 1);
  layout->addStretch();
  layout->addWidget(BuildButtons());
  return controls;
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
  apply_ = Named(new QPushButton(tr("&Apply")), "cmdApply");
  cancel_ = Named(new QPushButton(tr("&Cancel")), "cmdCancel");
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addStretch();
  row->addWidget(apply_);
  row->addWidget(cancel_);
  return bar;
}

void MainWindow::Connect() {
  connect(input_, &InputPanel::inputChanged, this, &MainWindow::inputChanged);
  connect(input_, &InputPanel::inputChanged, this, [this] { output_->SetInput(InputPath()); });
  connect(output_, &OutputPanel::dialectChanged, input_, &InputPanel::SetDialect);
  connect(input_, &InputPanel::applied, apply_, &QPushButton::click);
  connect(output_, &OutputPanel::applied, apply_, &QPushButton::click);
  connect(link_, &OptionsLink::readingChanged, this, &MainWindow::readingChanged);
  connect(link_, &OptionsLink::clipWanted, this, &MainWindow::clipWanted);
  connect(apply_, &QPushButton::clicked, this, &MainWindow::Apply);
  connect(cancel_, &QPushButton::clicked, this, &QWidget::close);
  for (QPushButton* button : {apply_, cancel_}) button->setAutoDefault(true);
}

void MainWindow::SetPreview(QWidget* preview) {
  splitter_->addWidget(preview);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  const std::string kept = settings_.Get(kApplication, kSection, "Splitter", "");
  splitter_->restoreState(QByteArray::fromBase64(QByteArray::fromStdString(kept)));
  if (!kept.empty()) return;
  // Room for a drawing, the first time.
  const int unit = fontMetrics().averageCharWidth();
  resize(size().expandedTo(QSize(160 * unit, 80 * unit)));
  splitter_->setSizes({controls_->sizeHint().width(), width()});
}

QStringList MainWindow::InputPaths() const { return input_->Paths(); }

QString MainWindow::InputPath() const { return input_->Path(); }

void MainWindow::TakeFiles(const QStringList& paths) {
  if (!running_ && !paths.isEmpty()) input_->TakeFiles(paths);
}

void MainWindow::TakeDrawing(const DrawingFacts& drawing, const std::vector<std::string>& layers) {
  link_->TakeDrawing(drawing, layers);
}

void MainWindow::TakeClip(const ClipBox& box) { more_->ClipChosen(box); }

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

// Asks before files are replaced, unless the save dialog has. What the run refuses it refuses in its own words.
bool MainWindow::MayReplaceOutput(ConversionRequest& request) {
  const std::string input = PathOf(InputPath());
  try {
    if (!FileExists(input) || request.OutFile.empty() || SameFile(input, request.OutFile)) return true;
  } catch (const Error&) {  // a path that cannot be looked up
    return true;
  }
  QStringList files;
  for (const std::string& file : ReplacedFiles(request.OutFile, formats_.Output(request.OutFormat), request.options)) {
    request.overwrite = true;
    if (Shown(file) != output_->ConfirmedPath()) files.append(Shown(file));
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
  if (!more_->Agrees()) return;
  ConversionRequest request = Request();
  if (!MayReplaceOutput(request)) return;
  interaction_->FilesOfRun(FilesOf(request));
  const Busy busy(*this);
  GivenAnswers answers(more_->Values(), *interaction_);
  const RunSummary summary = ConversionRun(formats_, answers, settings_, FillerFromCodeTables()).Run(request);
  output_->ForgetConfirmed();
  link_->TakeAnswers(answers.All());
  interaction_->ShowSummary(summary, request.OutFile);
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
  }
  emit runningChanged(running);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (running_) {
    event->ignore();
    interaction_->AskCancel();
    return;
  }
  interaction_->CloseProgress();
  KeepLook();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!running_ && !LocalFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  TakeFiles(LocalFiles(*event->mimeData()));
}

void MainWindow::KeepLook() {
  settings_.Set(kApplication, kSection, "Geometry", saveGeometry().toBase64().toStdString());
  settings_.Set(kApplication, kSection, "Splitter", splitter_->saveState().toBase64().toStdString());
  settings_.Set(kApplication, kSection, "Dialect",
                output_->ChosenDialect() == Dialect::Standard ? kStandard : kClassic);
}

void MainWindow::RestoreLook() {
  restoreGeometry(
      QByteArray::fromBase64(QByteArray::fromStdString(settings_.Get(kApplication, kSection, "Geometry", ""))));
  const char* const preset = options_.dialect == Dialect::Standard ? kStandard : kClassic;
  const bool standard = settings_.Get(kApplication, kSection, "Dialect", preset) == kStandard;
  output_->SetDialect(standard ? Dialect::Standard : Dialect::Classic);
}

}  // namespace tesselink
