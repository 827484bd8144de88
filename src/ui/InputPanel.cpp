// SPDX-License-Identifier: MIT
#include "ui/InputPanel.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
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
#include "ui/UiText.h"

namespace tesselink {
namespace {

// The system's number of an error. What a file holds that cannot be used is an invalid argument.
int NumberOf(const std::exception& error) {
  if (const auto* ofSystem = dynamic_cast<const std::system_error*>(&error)) return ofSystem->code().value();
  const bool memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  return static_cast<int>(memory ? std::errc::not_enough_memory : std::errc::invalid_argument);
}

}  // namespace

InputPanel::InputPanel(const FormatTable& formats, CommonDlg& dialog, QWidget* parent)
    : QGroupBox(tr("Input Parameters"), parent), formats_(formats), dialog_(dialog) {
  setObjectName("fIO");
  BuildControls();
  inFormat_->addItems(DropDownEntries(formats_.Inputs()));
  Connect();
  InFormatClick();
  setFocusProxy(infile_);
}

void InputPanel::BuildControls() {
  inFormat_ = FormatBox("InFormat", tr("Input Format"));
  infile_ = PathBox("Infile", tr("Input File"));
  browseIn_ = BrowseButton("BrowseIn", tr("Browse..."), tr("Browse for the input file"));
  forFiles_ = BrowseButton("forFiles", tr("Browse..."), tr("Browse for several shapefiles"));
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
  grid->addWidget(fields_, 2, 1, 1, 2);
  AlignColumns(*grid);
}

void InputPanel::Connect() {
  connect(inFormat_, &QComboBox::currentIndexChanged, this, &InputPanel::InFormatClick);
  connect(browseIn_, &QPushButton::clicked, this, &InputPanel::BrowseInClick);
  connect(forFiles_, &QPushButton::clicked, this, &InputPanel::ForFilesClick);
  connect(infile_, &QLineEdit::textEdited, this, &InputPanel::InfileEdited);
  connect(infile_, &QLineEdit::textChanged, this, &InputPanel::TellInput);
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
  return infile_->text();
}

void InputPanel::InFormatClick() {
  const bool several = SeveralFiles();
  if (several && FileExists(PathOf(infile_->text()))) chosenFiles_ = ChosenFiles({infile_->text()});
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
  dialog_.Filter = FilterList(EntriesOf(*inFormat_)) + "All Files (*.*)|*.*|";
  dialog_.FilterIndex = inFormat_->currentIndex();
  dialog_.Flags = CommonDlg::kAllowMultiSelect | CommonDlg::kFileMustExist;
  dialog_.FileName.clear();
  dialog_.InitDir(Shown(FolderOf(PathOf(infile_->text()))));
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

void InputPanel::InfileEdited() {
  const QString path = infile_->text();
  FollowExtension(*inFormat_, path, EntryByExtension(formats_.Inputs(), path));
}

void InputPanel::TakeOne(const QString& path) {
  const QString entry = EntryByExtension(formats_.Inputs(), path);
  if (SeveralFiles()) {
    inFormat_->setCurrentText(entry.isEmpty() ? Shown(formats_.Inputs()[0].entry) : entry);
  } else {
    FollowExtension(*inFormat_, path, entry);
  }
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
  const auto isShapefile = [](const QString& path) { return ExtensionOf(path.toStdString()) == ".shp"; };
  if (inputs.size() == 1 && !QFileInfo(inputs[0]).isDir()) {
    TakeOne(inputs[0]);
  } else if (SeveralFiles() && std::all_of(inputs.begin(), inputs.end(), isShapefile)) {
    TakeSeveral(inputs);
  } else {
    emit manyChosen(inputs);
  }
}

void InputPanel::TellInput() {
  if (toldPaths_ == Paths() && toldFormat_ == Format()) return;
  toldPaths_ = Paths();
  toldFormat_ = Format();
  emit inputChanged(toldPaths_, toldFormat_);
}

}  // namespace tesselink
