// SPDX-License-Identifier: MIT
#include "ui/OutputPanel.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "core/io/Paths.h"
#include "ui/CommonDlg.h"
#include "ui/DialectLine.h"
#include "ui/FileChoice.h"
#include "ui/Named.h"
#include "ui/NoteLine.h"
#include "ui/PathControls.h"
#include "ui/PathNotes.h"
#include "ui/TextPaths.h"
#include "ui/UiText.h"
#include "ui/WindowMemory.h"

namespace tesselink {

namespace {

constexpr const char* kFormat = "OutFormat";
constexpr const char* kFolder = "OutFolder";

}  // namespace

OutputPanel::OutputPanel(const FormatTable& formats, CommonDlg& dialog, WindowMemory& memory, QWidget* parent)
    : QGroupBox(tr("Output Parameters"), parent), formats_(formats), dialog_(dialog), memory_(memory) {
  setObjectName("format");
  BuildControls();
  outFormat_->addItems(DropDownEntries(formats_.Outputs()));
  const QString format = memory_.Get(kFormat);
  if (Shown(formats_.Output(format.toStdString()).entry) == format) Choose(format);
  Connect();
  LookAgain();
}

void OutputPanel::BuildControls() {
  outFormat_ = FormatBox("OutFormat", tr("Output Format"));
  outFile_ = PathBox("OutFile", tr("Output File"));
  browseOut_ = BrowseButton("BrowseOut", tr("Browse..."), tr("Browse for the output file"));
  note_ = new NoteLine("noteOut", tr("About the output file"));
  auto* grid = new QGridLayout(this);
  grid->addWidget(LabelFor(outFormat_, "lblOutFormat", tr("&Output Format:")), 0, 0);
  grid->addWidget(outFormat_, 0, 1, 1, 2);
  grid->addWidget(LabelFor(outFile_, "lblOutFile", tr("O&utput File")), 1, 0);
  grid->addWidget(outFile_, 1, 1);
  grid->addWidget(browseOut_, 1, 2);
  grid->addWidget(note_, 2, 1, 1, 2);
  dialect_ = FormatBox("cboDialect", tr("Dialect"));
  dialect_->addItem(tr("Classic"));
  dialect_->addItem(tr("Standard"));
  dialect_->setToolTip(
      tr("Classic: the conventions that existing files rest on.\n"
         "Standard: files as other programs read and write them."));
  grid->addWidget(LabelFor(dialect_, "lblDialect", tr("&Dialect:")), 3, 0);
  grid->addWidget(dialect_, 3, 1, 1, 2);
  line_ = new DialectLine;
  grid->addWidget(line_, 4, 1, 1, 2);
  AlignColumns(*grid);
}

void OutputPanel::Connect() {
  connect(browseOut_, &QPushButton::clicked, this, &OutputPanel::BrowseOutClick);
  connect(outFormat_, &QComboBox::currentIndexChanged, this, &OutputPanel::FormatChanged);
  connect(outFile_, &QLineEdit::textEdited, this, &OutputPanel::Edited);
  connect(outFile_, &QLineEdit::textChanged, this, &OutputPanel::LookAgain);
  connect(outFile_, &QLineEdit::editingFinished, this, &OutputPanel::CleanText);
  connect(outFile_, &QLineEdit::returnPressed, this, &OutputPanel::applied);
  connect(outFormat_, &QComboBox::currentIndexChanged, this, &OutputPanel::formatChanged);
  connect(dialect_, &QComboBox::currentIndexChanged, this, [this] { emit dialectChanged(ChosenDialect()); });
}

QString OutputPanel::Format() const { return outFormat_->currentText(); }

QString OutputPanel::Path() const { return CleanPath(outFile_->text()); }

const OutputFormat& OutputPanel::Row() const { return formats_.Output(Format().toStdString()); }

// The drop-down gets an entry that it does not begin with.
void OutputPanel::Choose(const QString& entry) {
  if (outFormat_->findText(entry) < 0) outFormat_->addItem(entry);
  outFormat_->setCurrentText(entry);
}

void OutputPanel::SetInput(const QString& path, bool isReadable) {
  input_ = path;
  readable_ = isReadable;
  Propose();
  LookAgain();
}

void OutputPanel::SetOptions(const FilterOptions& options) {
  options_ = options;
  LookAgain();
}

void OutputPanel::Propose() {
  if (!outFile_->text().isEmpty() && outFile_->text() != proposed_) return;
  const std::string input = PathOf(input_);
  const QString kept = memory_.Get(kFolder);
  const QString other = kept.isEmpty() ? QDir::homePath() : kept;
  proposed_ = readable_ ? ProposedOutput(input, PathOf(other), Row(), options_) : QString();
  typedExtension_ = false;
  outFile_->setText(proposed_);
}

void OutputPanel::FormatChanged() {
  Propose();
  const QString path = Path();
  if (!path.isEmpty() && path != proposed_ && !typedExtension_)
    outFile_->setText(WithExtensionOf(Row(), formats_, path));
  LookAgain();
}

void OutputPanel::Edited() {
  const QString path = Path();
  typedExtension_ = !ExtensionOf(path.toStdString()).empty();
  FollowExtension(*outFormat_, path, EntryByExtension(formats_.Outputs(), path));
}

void OutputPanel::CleanText() {
  if (outFile_->text() != Path()) outFile_->setText(Path());
}

void OutputPanel::LookAgain() { note_->Show(PathNotes::OfOutput(Path(), input_, Row(), options_, formats_)); }

bool OutputPanel::Settle() {
  CleanText();
  const std::string path = PathOf(Path());
  if (const QString reason = PathNotes::WhyNoOutput(path); !reason.isEmpty()) {
    QMessageBox box(QMessageBox::Critical, tr("Error"), Path() + "\n\n" + reason, QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
    return false;
  }
  return IsStream(path) || HasExtensionOf(Row(), Path()) || Path() + Format() == keptName_ || SettleExtension();
}

bool OutputPanel::SettleExtension() {
  const QString named = Shown(FileNameOf(PathOf(Path()))), better = WithExtensionOf(Row(), formats_, Path());
  const QString other = EntryByExtension(formats_.Outputs(), Path());
  QMessageBox box(QMessageBox::Question, window()->windowTitle(),
                  tr("%1 does not end in %2, as the names of this format do:\n%3")
                      .arg(named, Shown(Row().Extension()), Shown(Row().Name())),
                  QMessageBox::Cancel, this);
  box.setTextFormat(Qt::PlainText);
  const QString betterName = Shown(FileNameOf(PathOf(better)));
  QPushButton* rename = box.addButton(tr("&Name it %1").arg(betterName), QMessageBox::AcceptRole);
  QPushButton* change = other.isEmpty()
                            ? nullptr
                            : box.addButton(tr("&Write %1").arg(Shown(formats_.Output(other.toStdString()).Name())),
                                            QMessageBox::AcceptRole);
  QPushButton* keep = box.addButton(tr("&Keep %1").arg(named), QMessageBox::AcceptRole);
  box.setDefaultButton(rename);
  box.exec();
  const QAbstractButton* const clicked = box.clickedButton();
  if (clicked == rename) outFile_->setText(better);
  if (change != nullptr && clicked == change) Choose(other);
  if (clicked == keep) keptName_ = Path() + Format();
  return clicked == rename || clicked == keep || (change != nullptr && clicked == change);
}

void OutputPanel::Remember() {
  memory_.Set(kFormat, Format());
  const QString folder = Shown(FolderOf(PathOf(Path())));
  if (!folder.isEmpty()) memory_.Set(kFolder, folder);
}

Dialect OutputPanel::ChosenDialect() const {
  return dialect_->currentIndex() == 0 ? Dialect::Classic : Dialect::Standard;
}

void OutputPanel::SetDialect(Dialect dialect) { dialect_->setCurrentIndex(dialect == Dialect::Classic ? 0 : 1); }

void OutputPanel::BrowseOutClick() {
  const std::string input = PathOf(input_), output = PathOf(Path());
  dialog_.DialogTitle = tr("Browsing...");
  const QStringList listed = EntriesOf(*outFormat_);
  dialog_.Filter =
      FilterList(listed) + tr("All Files (*.*)") + "|*.*|" + FilterList(EntriesBeside(formats_.Outputs(), listed));
  dialog_.FilterIndex = outFormat_->currentIndex();
  dialog_.Flags = CommonDlg::kOverwritePrompt;
  dialog_.FileName = Shown(FileNameOf(output.empty() ? StripExtension(input) : output));
  dialog_.InitDir(memory_.Get(kFolder));
  dialog_.InitDir(Shown(FolderOf(output.empty() ? input : output)));
  if (const QString path = dialog_.ShowSave(); !path.isEmpty()) TakeOutput(path);
}

void OutputPanel::TakeOutput(const QString& path) {
  outFile_->setText(path);
  proposed_.clear();
  typedExtension_ = false;
  FollowExtension(*outFormat_, path, EntryByExtension(formats_.Outputs(), path));
  confirmed_ = path;
}

}  // namespace tesselink
