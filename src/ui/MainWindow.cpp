// SPDX-License-Identifier: MIT
#include "ui/MainWindow.h"

#include <QByteArray>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <new>
#include <system_error>

#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/run/WrittenFiles.h"
#include "formats/cdf/CodeTables.h"
#include "ui/CommonDlg.h"
#include "ui/FileChoice.h"
#include "ui/Named.h"
#include "ui/QtInteraction.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

constexpr const char* kApplication = "Window";
constexpr const char* kSection = "MainWindow";

QComboBox* FormatBox(const char* name, const QString& meaning) {
  auto* box = Named(new QComboBox, name);
  box->setAccessibleName(meaning);
  return box;
}

QLineEdit* PathBox(const char* name, const QString& meaning) {
  auto* box = Named(new QLineEdit, name);
  box->setAccessibleName(meaning);
  box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 40);
  // Files dropped here are for the window to take.
  box->setAcceptDrops(false);
  return box;
}

QPushButton* BrowseButton(const char* name, const QString& meaning) {
  auto* button = Named(new QPushButton("Browse..."), name);
  button->setAccessibleName(meaning);
  return button;
}

QLabel* LabelFor(QWidget* control, const char* name, const QString& text) {
  auto* label = Named(new QLabel(text), name);
  label->setBuddy(control);
  return label;
}

// Both frames' columns begin at the same places.
void Align(QGridLayout& grid) {
  const QFontMetrics metrics = grid.parentWidget()->fontMetrics();
  grid.setColumnMinimumWidth(0, metrics.horizontalAdvance("Output Format:  "));
  grid.setColumnStretch(1, 1);
}

QStringList Entries(const QComboBox& box) {
  QStringList entries;
  for (int i = 0; i < box.count(); ++i) entries.append(box.itemText(i));
  return entries;
}

// The system's number of an error. What a file holds that cannot be used is an invalid argument.
int NumberOf(const std::exception& error) {
  if (const auto* ofSystem = dynamic_cast<const std::system_error*>(&error)) return ofSystem->code().value();
  const bool memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  return static_cast<int>(memory ? std::errc::not_enough_memory : std::errc::invalid_argument);
}

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
  setWindowTitle("Tesselink File Conversion");
  setAcceptDrops(true);
  dialog_ = Named(new CommonDlg(this), "Dialog");
  controls_ = BuildControls();
  splitter_ = Named(new QSplitter, "Splitter");
  splitter_->setChildrenCollapsible(false);
  splitter_->addWidget(controls_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter_);
  inFormat_->addItems(DropDownEntries(formats_.Inputs()));
  outFormat_->addItems(DropDownEntries(formats_.Outputs()));
  Connect();
  InFormatClick();
  RestoreLook();
  infile_->setFocus();
}

MainWindow::~MainWindow() = default;

QWidget* MainWindow::BuildControls() {
  auto* controls = new QWidget;
  auto* line = Named(new QFrame, "Line");
  line->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
  auto* layout = new QVBoxLayout(controls);
  layout->addWidget(BuildTitle());
  layout->addWidget(line);
  layout->addWidget(BuildInputFrame());
  layout->addWidget(BuildOutputFrame());
  layout->addStretch();
  layout->addWidget(BuildButtons());
  return controls;
}

QWidget* MainWindow::BuildTitle() {
  auto* bar = Named(new QWidget, "Title");
  auto* title = Named(new QLabel("Tesselink File Converter"), "lblTitle");
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

QGroupBox* MainWindow::BuildInputFrame() {
  auto* frame = Named(new QGroupBox("Input Parameters"), "fIO");
  inFormat_ = FormatBox("InFormat", "Input Format");
  infile_ = PathBox("Infile", "Input File");
  browseIn_ = BrowseButton("BrowseIn", "Browse for the input file");
  forFiles_ = BrowseButton("forFiles", "Browse for several shapefiles");
  selected_ = Named(new QLabel, "lblSelected");
  fields_ = Named(new QLabel, "lblFields");
  fields_->setWordWrap(true);
  fields_->setTextFormat(Qt::PlainText);
  auto* grid = new QGridLayout(frame);
  grid->addWidget(LabelFor(inFormat_, "lblInFormat", "&Input Format:"), 0, 0);
  grid->addWidget(inFormat_, 0, 1, 1, 2);
  grid->addWidget(LabelFor(infile_, "lblInfile", "Input &File"), 1, 0);
  grid->addWidget(infile_, 1, 1);
  grid->addWidget(selected_, 1, 1);
  grid->addWidget(browseIn_, 1, 2);
  grid->addWidget(forFiles_, 1, 2);
  grid->addWidget(fields_, 2, 1, 1, 2);
  Align(*grid);
  return frame;
}

QGroupBox* MainWindow::BuildOutputFrame() {
  auto* frame = Named(new QGroupBox("Output Parameters"), "format");
  outFormat_ = FormatBox("OutFormat", "Output Format");
  outFile_ = PathBox("OutFile", "Output File");
  browseOut_ = BrowseButton("BrowseOut", "Browse for the output file");
  auto* grid = new QGridLayout(frame);
  grid->addWidget(LabelFor(outFormat_, "lblOutFormat", "&Output Format:"), 0, 0);
  grid->addWidget(outFormat_, 0, 1, 1, 2);
  grid->addWidget(LabelFor(outFile_, "lblOutFile", "O&utput File"), 1, 0);
  grid->addWidget(outFile_, 1, 1);
  grid->addWidget(browseOut_, 1, 2);
  dialect_ = FormatBox("cboDialect", "Dialect");
  dialect_->addItems({"Classic", "Standard"});
  dialect_->setToolTip(
      "Classic: the conventions that existing files rest on.\nStandard: files as other programs read and write them.");
  grid->addWidget(LabelFor(dialect_, "lblDialect", "&Dialect:"), 2, 0);
  grid->addWidget(dialect_, 2, 1, 1, 2);
  Align(*grid);
  return frame;
}

QWidget* MainWindow::BuildButtons() {
  auto* bar = Named(new QWidget, "Buttons");
  apply_ = Named(new QPushButton("&Apply"), "cmdApply");
  cancel_ = Named(new QPushButton("&Cancel"), "cmdCancel");
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addStretch();
  row->addWidget(apply_);
  row->addWidget(cancel_);
  return bar;
}

void MainWindow::Connect() {
  connect(inFormat_, &QComboBox::currentIndexChanged, this, &MainWindow::InFormatClick);
  connect(browseIn_, &QPushButton::clicked, this, &MainWindow::BrowseInClick);
  connect(forFiles_, &QPushButton::clicked, this, &MainWindow::ForFilesClick);
  connect(browseOut_, &QPushButton::clicked, this, &MainWindow::BrowseOutClick);
  connect(infile_, &QLineEdit::textEdited, this, &MainWindow::InfileEdited);
  connect(infile_, &QLineEdit::textChanged, this, &MainWindow::TellInput);
  connect(outFile_, &QLineEdit::textEdited, this, [this](const QString& path) {
    FollowExtension(*outFormat_, path, EntryByExtension(formats_.Outputs(), path));
  });
  connect(apply_, &QPushButton::clicked, this, &MainWindow::Apply);
  connect(cancel_, &QPushButton::clicked, this, &QWidget::close);
  for (QLineEdit* box : {infile_, outFile_}) connect(box, &QLineEdit::returnPressed, apply_, &QPushButton::click);
  for (QPushButton* button : {browseIn_, forFiles_, browseOut_, apply_, cancel_}) button->setAutoDefault(true);
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

Dialect MainWindow::ChosenDialect() const {
  return dialect_->currentIndex() == 0 ? Dialect::Classic : Dialect::Standard;
}

bool MainWindow::SeveralFiles() const { return formats_.Input(inFormat_->currentText().toStdString()).severalFiles; }

QStringList MainWindow::InputPaths() const {
  if (!SeveralFiles() || chosenFiles_.size() < 2)
    return InputPath().isEmpty() ? QStringList() : QStringList{InputPath()};
  QStringList paths;
  for (std::size_t i = 1; i < chosenFiles_.size(); ++i) paths.append(Shown(JoinPath(chosenFiles_[0], chosenFiles_[i])));
  return paths;
}

QString MainWindow::InputPath() const {
  if (SeveralFiles() && chosenFiles_.size() > 1) return Shown(JoinPath(chosenFiles_[0], chosenFiles_[1]));
  return infile_->text();
}

void MainWindow::InFormatClick() {
  const bool several = SeveralFiles();
  if (several && FileExists(PathOf(infile_->text()))) chosenFiles_ = ChosenFiles({infile_->text()});
  infile_->setVisible(!several);
  browseIn_->setVisible(!several);
  forFiles_->setVisible(several);
  selected_->setVisible(several);
  selected_->setText(QString::number(chosenFiles_.empty() ? 0 : chosenFiles_.size() - 1) + " files selected");
  fields_->hide();
  if (several) ShowFieldNames();
  TellInput();
}

// The fields that there will be to choose from. Throws Error when the table cannot be read.
QStringList MainWindow::FieldsToChooseFrom() const {
  const std::string table = PartnerFile(PathOf(InputPath()), "DBF");
  return table.empty() ? QStringList() : FieldNames(table, ChosenDialect());
}

void MainWindow::ShowFieldNames() {
  try {
    const QStringList names = FieldsToChooseFrom();
    if (names.isEmpty()) return;
    fields_->setText("Fields: " + names.join(", "));
  } catch (const std::exception& error) {
    fields_->setText(Shown(error.what()));
  }
  fields_->show();
}

void MainWindow::BrowseInClick() {
  dialog_->DialogTitle = "Browsing...";
  dialog_->Filter = FilterList(Entries(*inFormat_)) + "All Files (*.*)|*.*|";
  dialog_->FilterIndex = inFormat_->currentIndex();
  dialog_->Flags = CommonDlg::kFileMustExist;
  dialog_->FileName.clear();
  dialog_->InitDir(Shown(FolderOf(PathOf(infile_->text()))));
  if (const QString path = dialog_->ShowOpen(); !path.isEmpty()) TakeOne(path);
}

void MainWindow::BrowseOutClick() {
  const std::string input = PathOf(InputPath()), output = PathOf(outFile_->text());
  dialog_->DialogTitle = "Browsing...";
  const QStringList listed = Entries(*outFormat_);
  dialog_->Filter = FilterList(listed) + "All Files (*.*)|*.*|" + FilterList(EntriesBeside(formats_.Outputs(), listed));
  dialog_->FilterIndex = outFormat_->currentIndex();
  dialog_->Flags = CommonDlg::kOverwritePrompt;
  dialog_->FileName = Shown(FileNameOf(output.empty() ? StripExtension(input) : output));
  dialog_->InitDir(Shown(FolderOf(output.empty() ? input : output)));
  if (const QString path = dialog_->ShowSave(); !path.isEmpty()) TakeOutput(path);
}

void MainWindow::ForFilesClick() {
  try {
    ChooseShapefiles();
  } catch (const std::exception& error) {
    QMessageBox box(QMessageBox::Critical, "Error",
                    "Error " + QString::number(NumberOf(error)) + ": " + Shown(error.what()), QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
  }
}

void MainWindow::ChooseShapefiles() {
  dialog_->DialogTitle = "Select Shape File Directory...";
  dialog_->Filter = "ESRI Shapefiles (*.shp)|*.shp|All Files (*.*)...|*.*";
  dialog_->FilterIndex = 0;
  dialog_->Flags = CommonDlg::kAllowMultiSelect | CommonDlg::kFileMustExist;
  dialog_->FileName.clear();
  dialog_->InitDir(Shown(FolderOf(PathOf(InputPath()))));
  const QString chosen = dialog_->ShowOpen();
  if (chosen.isEmpty()) return;
  const QStringList paths = SplitAtNuls(chosen);
  if (paths.size() == 1) {
    inFormat_->setCurrentText("ESRI Shapefile (*.shp)");
    infile_->setText(paths[0]);
  } else {
    TakeSeveral(paths);
    FieldsToChooseFrom();
  }
}

void MainWindow::InfileEdited() {
  const QString path = infile_->text();
  FollowExtension(*inFormat_, path, EntryByExtension(formats_.Inputs(), path));
}

void MainWindow::TakeOne(const QString& path) {
  const QString entry = EntryByExtension(formats_.Inputs(), path);
  if (SeveralFiles()) {
    inFormat_->setCurrentText(entry.isEmpty() ? Shown(formats_.Inputs()[0].entry) : entry);
  } else {
    FollowExtension(*inFormat_, path, entry);
  }
  infile_->setText(path);
}

void MainWindow::TakeSeveral(const QStringList& paths) {
  const auto& rows = formats_.Inputs();
  const auto several = std::find_if(rows.begin(), rows.end(), [](const InputFormat& row) { return row.severalFiles; });
  if (several == rows.end()) return;
  chosenFiles_ = ChosenFiles(paths);
  infile_->setText(Shown(chosenFiles_[0]));
  inFormat_->setCurrentText(Shown(several->entry));
  InFormatClick();
}

void MainWindow::TakeOutput(const QString& path) {
  FollowExtension(*outFormat_, path, EntryByExtension(formats_.Outputs(), path));
  outFile_->setText(path);
  confirmedOutput_ = path;
}

void MainWindow::TakeFiles(const QStringList& paths) {
  if (running_ || paths.isEmpty()) return;
  const QStringList inputs = InputsAmong(formats_.Inputs(), paths);
  const auto isShapefile = [](const QString& path) { return ExtensionOf(path.toStdString()) == ".shp"; };
  if (inputs.size() == 1) {
    TakeOne(inputs[0]);
  } else if (std::all_of(inputs.begin(), inputs.end(), isShapefile)) {
    TakeSeveral(inputs);
  } else {
    QMessageBox::information(this, windowTitle(), "Several files are taken at once when all of them are shapefiles.");
  }
}

void MainWindow::TellInput() {
  if (toldPaths_ == InputPaths() && toldFormat_ == inFormat_->currentText()) return;
  toldPaths_ = InputPaths();
  toldFormat_ = inFormat_->currentText();
  emit inputChanged(toldPaths_, toldFormat_);
}

ConversionRequest MainWindow::Request() const {
  ConversionRequest request;
  for (const QString& path : InputPaths()) request.inputs.push_back(PathOf(path));
  request.OutFile = PathOf(outFile_->text());
  request.InFormat = inFormat_->currentText().toStdString();
  request.OutFormat = outFormat_->currentText().toStdString();
  request.options = options_;
  request.options.dialect = ChosenDialect();
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
    if (Shown(file) != confirmedOutput_) files.append(Shown(file));
  }
  if (files.isEmpty()) return true;
  QMessageBox box(
      QMessageBox::Warning, windowTitle(),
      files.join('\n') + "\n\n" + (files.size() == 1 ? "exists already. Replace it?" : "exist already. Replace them?"),
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
  ConversionRequest request = Request();
  if (!MayReplaceOutput(request)) return;
  interaction_->FilesOfRun(FilesOf(request));
  const Busy busy(*this);
  const RunSummary summary = ConversionRun(formats_, *interaction_, settings_, FillerFromCodeTables()).Run(request);
  confirmedOutput_.clear();
  interaction_->TellUnremembered(settings_);
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
  settings_.Set(kApplication, kSection, "Dialect", dialect_->currentText().toStdString());
}

void MainWindow::RestoreLook() {
  restoreGeometry(
      QByteArray::fromBase64(QByteArray::fromStdString(settings_.Get(kApplication, kSection, "Geometry", ""))));
  const char* const preset = options_.dialect == Dialect::Standard ? "Standard" : "Classic";
  dialect_->setCurrentText(Shown(settings_.Get(kApplication, kSection, "Dialect", preset)));
}

}  // namespace tesselink
