// SPDX-License-Identifier: MIT
#include "ui/CommonDlg.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include "ui/FileChoice.h"

namespace tesselink {
namespace {

// Names typed without an extension get that of the chosen filter.
void CompleteNames(QFileDialog& dialog, const QString& nameFilter) {
  const QString pattern = PatternOf(nameFilter);
  dialog.setDefaultSuffix(pattern.startsWith("*.") ? pattern.mid(2) : QString());
}

}  // namespace

CommonDlg::CommonDlg(QWidget* owner) : QObject(owner), owner_(owner) {}

void CommonDlg::InitDir(const QString& folder) {
  if (!folder.isEmpty() && QFileInfo(folder).isDir()) initDir_ = folder;
}

QString CommonDlg::ShowOpen() {
  QFileDialog dialog(owner_, DialogTitle, initDir_);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  const bool several = (Flags & kAllowMultiSelect) != 0;
  const bool existing = (Flags & kFileMustExist) != 0;
  dialog.setFileMode(several    ? QFileDialog::ExistingFiles
                     : existing ? QFileDialog::ExistingFile
                                : QFileDialog::AnyFile);
  const QStringList chosen = Show(dialog);
  return several && chosen.size() > 1 ? JoinedByNuls(chosen) : chosen.value(0);
}

QString CommonDlg::ShowSave() {
  QFileDialog dialog(owner_, DialogTitle, initDir_);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, (Flags & kOverwritePrompt) == 0);
  connect(&dialog, &QFileDialog::filterSelected, &dialog,
          [&dialog](const QString& nameFilter) { CompleteNames(dialog, nameFilter); });
  CompleteNames(dialog, NameFilters(Filter).value(FilterIndex));
  return Show(dialog).value(0);
}

QStringList CommonDlg::Show(QFileDialog& dialog) {
  dialog.setObjectName(objectName());
  const QStringList filters = NameFilters(Filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(FilterIndex));
  if (!FileName.isEmpty()) dialog.selectFile(FileName);
  if (dialog.exec() != QDialog::Accepted) return {};
  QStringList chosen = dialog.selectedFiles();
  for (QString& path : chosen) path = QDir::toNativeSeparators(path);
  return chosen;
}

}  // namespace tesselink
