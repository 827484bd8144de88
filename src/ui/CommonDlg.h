// SPDX-License-Identifier: MIT
// The standard file-open and file-save dialogs.
#pragma once

#include <QObject>
#include <QString>
#include <cstdint>

class QFileDialog;
class QWidget;

namespace tesselink {

/// Keeps the settings of one dialog and returns what was chosen in it; an empty text when it was cancelled.
class CommonDlg final : public QObject {
 public:
  /// Option bits.
  static constexpr std::uint32_t kOverwritePrompt = 0x2;     ///< saving asks before a file is replaced
  static constexpr std::uint32_t kAllowMultiSelect = 0x200;  ///< several files may be opened
  static constexpr std::uint32_t kFileMustExist = 0x1000;    ///< only a file that exists can be opened

  explicit CommonDlg(QWidget* owner);

  QString Filter;       ///< pairs of a description and a pattern, each followed by "|"
  int FilterIndex = 0;  ///< the pair to begin with, counted from 0
  QString DialogTitle;
  std::uint32_t Flags = 0;
  QString FileName;  ///< the name to begin with

  /// The folder to begin in; setting one that does not exist leaves the one before.
  const QString& InitDir() const { return initDir_; }
  void InitDir(const QString& folder);

  /// The chosen path. Where several files may be chosen and were: their folder and their names, separated by NULs.
  QString ShowOpen();
  QString ShowSave();

 private:
  QStringList Show(QFileDialog& dialog);

  QWidget* owner_;
  QString initDir_;
};

}  // namespace tesselink
