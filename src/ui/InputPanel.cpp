// SPDX-License-Identifier: MIT
#include "ui/InputPanel.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <new>
#include <system_error>

#include "core/io/Paths.h"
#include "ui/CommonDlg.h"
#include "ui/FileChoice.h"
#include "ui/Named.h"
#include "ui/PathControls.h"
#include "ui/TextPaths.h"
#include "ui/UiText.h"
#include "ui/WindowMemory.h"

namespace tesselink {
namespace {

constexpr const char* kFormat = "InFormat";
constexpr const char* kFolder = "InFolder";

// The system's number of an error. What a file holds that cannot be used is an invalid argument.
int NumberOf(const std::exception& error) {
  if (const auto* ofSystem = dynamic_cast<const std::system_error*>(&error)) return ofSystem->code().value();
  const bool memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  return static_cast<int>(memory ? std::errc::not_enough_memory : std::errc::invalid_argument);
}

}  // namespace

InputPanel::InputPanel(const FormatTable& formats, CommonDlg& dialog, WindowMemory& memory, QWidget* parent)
    : QGroupBox(tr("Input Parameters"), parent), formats_(formats), dialog_(dialog), memory_(memory) {
  setObjectName("fIO");
  BuildControls();
  inFormat_->addItems(DropDownEntries(formats_.Inputs()));
  inFormat_->setCurrentIndex(std::max(inFormat_->findText(memory_.Get(kFormat)), 0));
  Connect();
  InFormatClick();
  setFocusProxy(infile_);
}

void InputPanel::BuildControls() {
  inFormat_ = FormatBox("InFormat", tr("Input Format"));
  infile_ = PathBox("Infile", tr("Input File"));
  browseIn_ = BrowseButton("BrowseIn", tr("Browse..."), tr("Browse for the input file"), "Ctrl+O");
  forFiles_ = BrowseButton("forFiles", tr("Browse..."), tr("Browse for several shapefiles"), "Ctrl+O");
  recent_ = BrowseButton("cmdRecent", tr("&Recent"), tr("Inputs of the last conversions"), "Ctrl+R");
  recentMenu_ = Named(new QMenu(recent_), "recentMenu");
  recent_->setMenu(recentMenu_);
  note_ = new NoteLine("noteIn", tr("About the input file"));
  selected_ = Named(new QLabel, "lblSelected");
  fields_ = Named(new QLabel, "lblFields");
  fields_->setWordWrap(true);
  fields_->setTextFormat(Qt::PlainText);
  auto* grid = new QGridLayout(this);
  grid->addWidget(LabelFor(inFormat_, "lblInFormat", tr("&Input Format:")), 0, 0);
  grid->addWidget(inFormat_, 0, 1, 1, 2);
  grid->addWidget(LabelFor(infile_, "lblInfile", tr("Input &File")), 1, 0);
  grid->addWidget(infile_, 1, 1);
  grid->addWidget(selected_, 1, 1);
  grid->addWidget(browseIn_, 1, 2);
  grid->addWidget(forFiles_, 1, 2);
  grid->addWidget(note_, 2, 1);
  grid->addWidget(recent_, 2, 2, Qt::AlignTop);
  grid->addWidget(fields_, 3, 1, 1, 2);
  AlignColumns(*grid);
}

void InputPanel::Connect() {
  connect(inFormat_, &QComboBox::currentIndexChanged, this, &InputPanel::InFormatClick);
  connect(browseIn_, &QPushButton::clicked, this, &InputPanel::BrowseInClick);
  connect(forFiles_, &QPushButton::clicked, this, &InputPanel::ForFilesClick);
  connect(infile_, &QLineEdit::textEdited, this, &InputPanel::InfileEdited);
  connect(infile_, &QLineEdit::textChanged, this, &InputPanel::TellInput);
  connect(infile_, &QLineEdit::editingFinished, this, &InputPanel::CleanText);
  connect(note_, &NoteLine::acted, this, [this] {
    inFormat_->setCurrentText(
        PathNotes::FormatByContent(PathOf(Path()), formats_.Input(Format().toStdString()), formats_));
  });
  connect(recentMenu_, &QMenu::aboutToShow, this, &InputPanel::FillRecent);
  connect(infile_, &QLineEdit::returnPressed, this, &InputPanel::applied);
}

QString InputPanel::Format() const { return inFormat_->currentText(); }

bool InputPanel::SeveralFiles() const { return formats_.Input(Format().toStdString()).severalFiles; }

QStringList InputPanel::Paths() const {
  if (!SeveralFiles() || chosenFiles_.size() < 2) return Path().isEmpty() ? QStringList() : QStringList{Path()};
  QStringList paths;
  for (std::size_t i = 1; i < chosenFiles_.size(); ++i) paths.append(Shown(JoinPath(chosenFiles_[0], chosenFiles_[i])));
  return paths;
}

QString InputPanel::Path() const {
  if (SeveralFiles() && chosenFiles_.size() > 1) return Shown(JoinPath(chosenFiles_[0], chosenFiles_[1]));
  return CleanPath(infile_->text());
}

void InputPanel::InFormatClick() {
  const bool several = SeveralFiles();
  if (const QString path = CleanPath(infile_->text()); several && IsShapefile(path) && FileExists(PathOf(path))) {
    chosenFiles_ = ChosenFiles({path});
  }
  infile_->setVisible(!several);
  browseIn_->setVisible(!several);
  forFiles_->setVisible(several);
  selected_->setVisible(several);
  selected_->setText(tr("%1 files selected").arg(chosenFiles_.empty() ? 0 : chosenFiles_.size() - 1));
  fields_->hide();
  if (several) ShowFieldNames();
  TellInput();
}

// The fields that there will be to choose from. Throws Error when the table cannot be read.
QStringList InputPanel::FieldsToChooseFrom() const {
  const std::string table = PartnerFile(PathOf(Path()), "DBF");
  return table.empty() ? QStringList() : FieldNames(table, dialect_);
}

void InputPanel::ShowFieldNames() {
  try {
    const QStringList names = FieldsToChooseFrom();
    if (names.isEmpty()) return;
    fields_->setText(tr("Fields: %1").arg(names.join(", ")));
  } catch (const std::exception& error) {
    fields_->setText(Shown(error.what()));
  }
  fields_->show();
}

void InputPanel::BrowseInClick() {
  dialog_.DialogTitle = tr("Browsing...");
  const QStringList entries = EntriesOf(*inFormat_);
  dialog_.Filter = FilterList(entries) + tr("All Files (*.*)") + "|*.*|" + FilterOfAll(tr("All drawings"), entries);
  dialog_.FilterIndex = inFormat_->currentIndex();
  dialog_.Flags = CommonDlg::kAllowMultiSelect | CommonDlg::kFileMustExist;
  dialog_.FileName.clear();
  dialog_.InitDir(memory_.Get(kFolder));
  dialog_.InitDir(Shown(FolderOf(PathOf(Path()))));
  if (const QString chosen = dialog_.ShowOpen(); !chosen.isEmpty()) TakeFiles(SplitAtNuls(chosen));
}

void InputPanel::ForFilesClick() {
  try {
    ChooseShapefiles();
  } catch (const std::exception& error) {
    QMessageBox box(QMessageBox::Critical, tr("Error"),
                    tr("Error %1: %2").arg(NumberOf(error)).arg(Shown(error.what())), QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
  }
}

void InputPanel::ChooseShapefiles() {
  dialog_.DialogTitle = tr("Select Shape File Directory...");
  dialog_.Filter = "ESRI Shapefiles (*.shp)|*.shp|All Files (*.*)...|*.*";
  dialog_.FilterIndex = 0;
  dialog_.Flags = CommonDlg::kAllowMultiSelect | CommonDlg::kFileMustExist;
  dialog_.FileName.clear();
  dialog_.InitDir(memory_.Get(kFolder));
  dialog_.InitDir(Shown(FolderOf(PathOf(Path()))));
  const QString chosen = dialog_.ShowOpen();
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

void InputPanel::InfileEdited() { FollowName(Path()); }

// The format is that of the name's extension; a name that tells none is taken for what the file holds.
void InputPanel::FollowName(const QString& path) {
  QString entry = EntryByExtension(formats_.Inputs(), path);
  if (entry.isEmpty())
    entry = PathNotes::FormatByContent(PathOf(path), formats_.Input(Format().toStdString()), formats_);
  FollowExtension(*inFormat_, path, entry);
}

void InputPanel::TakeOne(const QString& path) {
  if (SeveralFiles()) inFormat_->setCurrentText(Shown(formats_.Inputs()[0].entry));
  FollowName(path);
  infile_->setText(path);
}

void InputPanel::TakeSeveral(const QStringList& paths) {
  const auto& rows = formats_.Inputs();
  const auto several = std::find_if(rows.begin(), rows.end(), [](const InputFormat& row) { return row.severalFiles; });
  if (several == rows.end()) return;
  chosenFiles_ = ChosenFiles(paths);
  infile_->setText(Shown(chosenFiles_[0]));
  inFormat_->setCurrentText(Shown(several->entry));
  InFormatClick();
}

void InputPanel::TakeFiles(const QStringList& paths) {
  const QStringList inputs = InputsAmong(formats_.Inputs(), paths);
  if (inputs.size() == 1 && !QFileInfo(inputs[0]).isDir()) {
    TakeOne(inputs[0]);
  } else if (SeveralFiles() && std::all_of(inputs.begin(), inputs.end(), IsShapefile)) {
    TakeSeveral(inputs);
  } else {
    emit manyChosen(inputs);
  }
}

void InputPanel::Browse() { (SeveralFiles() ? forFiles_ : browseIn_)->click(); }

void InputPanel::ShowRecent() {
  if (recent_->isEnabled()) recent_->showMenu();
}

void InputPanel::FillRecent() {
  recentMenu_->clear();
  const std::vector<RecentInput> recent = memory_.Recent();
  for (std::size_t i = 0; i < recent.size(); ++i) {
    const std::string first = PathOf(recent[i].paths[0]);
    QString name = Shown(FileNameOf(first));
    if (recent[i].paths.size() > 1) name = tr("%1 and %2 more").arg(name).arg(recent[i].paths.size() - 1);
    const QString text = name + QStringLiteral("  \u2013  ") + Shown(FolderOf(first));
    QAction* action = recentMenu_->addAction(QString("&%1  ").arg((i + 1) % 10) + QString(text).replace('&', "&&"));
    connect(action, &QAction::triggered, this, [this, input = recent[i]] { TakeRecent(input); });
  }
  if (recent.empty()) {
    recentMenu_->addAction(tr("No conversions yet"))->setEnabled(false);
    return;
  }
  recentMenu_->addSeparator();
  connect(recentMenu_->addAction(tr("&Forget these")), &QAction::triggered, this, [this] { memory_.ForgetRecent(); });
}

void InputPanel::TakeRecent(const RecentInput& input) {
  if (input.paths.size() > 1) {
    TakeSeveral(input.paths);
  } else {
    TakeOne(input.paths[0]);
    if (inFormat_->findText(input.format) >= 0) inFormat_->setCurrentText(input.format);
  }
}

void InputPanel::Remember() {
  memory_.Set(kFormat, Format());
  const QString folder = Shown(FolderOf(PathOf(Path())));
  if (!folder.isEmpty()) memory_.Set(kFolder, folder);
}

void InputPanel::CleanText() {
  if (infile_->text() != CleanPath(infile_->text())) infile_->setText(CleanPath(infile_->text()));
}

void InputPanel::TellInput() {
  if (toldPaths_ == Paths() && toldFormat_ == Format()) return;
  facts_ = {};
  Tell(PathNotes::ProblemOfInputs(Paths(), formats_.Input(Format().toStdString()), formats_));
}

void InputPanel::Tell(const Note& problem) {
  toldPaths_ = Paths();
  toldFormat_ = Format();
  problem_ = problem;
  ShowNote();
  emit inputChanged(toldPaths_, toldFormat_);
}

void InputPanel::SetCounts(const PictureCounts& counts, bool ended) {
  facts_.counts = counts;
  facts_.hasEnded = ended && !Paths().isEmpty();
  ShowNote();
}

void InputPanel::SetHindrance(const QString& reason) {
  facts_.problem = reason;
  ShowNote();
}

void InputPanel::LookAgain() {
  const Note problem = PathNotes::ProblemOfInputs(Paths(), formats_.Input(Format().toStdString()), formats_);
  // Something to see has come, or gone.
  if (problem.text.isEmpty() != problem_.text.isEmpty()) return Tell(problem);
  problem_ = problem;
  ShowNote();
}

void InputPanel::ShowNote() {
  const bool plain = problem_.text.isEmpty();
  note_->Show(plain ? PathNotes::OfInputs(Paths(), formats_.Input(Format().toStdString()), facts_) : problem_);
}

}  // namespace tesselink
