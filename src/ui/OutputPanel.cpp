// SPDX-License-Identifier: MIT
#include "ui/OutputPanel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/io/Paths.h"
#include "ui/CommonDlg.h"
#include "ui/DialectLine.h"
#include "ui/FileChoice.h"
#include "ui/PathControls.h"
#include "ui/UiText.h"

namespace tesselink {

OutputPanel::OutputPanel(const FormatTable& formats, CommonDlg& dialog, QWidget* parent)
    : QGroupBox(tr("Output Parameters"), parent), formats_(formats), dialog_(dialog) {
  setObjectName("format");
  BuildControls();
  outFormat_->addItems(DropDownEntries(formats_.Outputs()));
  Connect();
}

void OutputPanel::BuildControls() {
  outFormat_ = FormatBox("OutFormat", tr("Output Format"));
  outFile_ = PathBox("OutFile", tr("Output File"));
  browseOut_ = BrowseButton("BrowseOut", tr("Browse..."), tr("Browse for the output file"));
  auto* grid = new QGridLayout(this);
  grid->addWidget(LabelFor(outFormat_, "lblOutFormat", tr("&Output Format:")), 0, 0);
  grid->addWidget(outFormat_, 0, 1, 1, 2);
  grid->addWidget(LabelFor(outFile_, "lblOutFile", tr("O&utput File")), 1, 0);
  grid->addWidget(outFile_, 1, 1);
  grid->addWidget(browseOut_, 1, 2);
  dialect_ = FormatBox("cboDialect", tr("Dialect"));
  dialect_->addItem(tr("Classic"));
  dialect_->addItem(tr("Standard"));
  dialect_->setToolTip(
      tr("Classic: the conventions that existing files rest on.\n"
         "Standard: files as other programs read and write them."));
  grid->addWidget(LabelFor(dialect_, "lblDialect", tr("&Dialect:")), 2, 0);
  grid->addWidget(dialect_, 2, 1, 1, 2);
  line_ = new DialectLine;
  grid->addWidget(line_, 3, 1, 1, 2);
  AlignColumns(*grid);
}

void OutputPanel::Connect() {
  connect(browseOut_, &QPushButton::clicked, this, &OutputPanel::BrowseOutClick);
  connect(outFile_, &QLineEdit::textEdited, this, [this](const QString& path) {
    FollowExtension(*outFormat_, path, EntryByExtension(formats_.Outputs(), path));
  });
  connect(outFile_, &QLineEdit::returnPressed, this, &OutputPanel::applied);
  connect(outFormat_, &QComboBox::currentIndexChanged, this, &OutputPanel::formatChanged);
  connect(dialect_, &QComboBox::currentIndexChanged, this, [this] { emit dialectChanged(ChosenDialect()); });
}

QString OutputPanel::Format() const { return outFormat_->currentText(); }

QString OutputPanel::Path() const { return outFile_->text(); }

Dialect OutputPanel::ChosenDialect() const {
  return dialect_->currentIndex() == 0 ? Dialect::Classic : Dialect::Standard;
}

void OutputPanel::SetDialect(Dialect dialect) { dialect_->setCurrentIndex(dialect == Dialect::Classic ? 0 : 1); }

void OutputPanel::BrowseOutClick() {
  const std::string input = PathOf(input_), output = PathOf(Path());
  dialog_.DialogTitle = tr("Browsing...");
  const QStringList listed = EntriesOf(*outFormat_);
  dialog_.Filter = FilterList(listed) + "All Files (*.*)|*.*|" + FilterList(EntriesBeside(formats_.Outputs(), listed));
  dialog_.FilterIndex = outFormat_->currentIndex();
  dialog_.Flags = CommonDlg::kOverwritePrompt;
  dialog_.FileName = Shown(FileNameOf(output.empty() ? StripExtension(input) : output));
  dialog_.InitDir(Shown(FolderOf(output.empty() ? input : output)));
  if (const QString path = dialog_.ShowSave(); !path.isEmpty()) TakeOutput(path);
}

void OutputPanel::TakeOutput(const QString& path) {
  FollowExtension(*outFormat_, path, EntryByExtension(formats_.Outputs(), path));
  outFile_->setText(path);
  confirmed_ = path;
}

}  // namespace tesselink
