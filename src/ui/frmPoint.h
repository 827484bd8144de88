// SPDX-License-Identifier: MIT
// The question what becomes of the points of a drawing whose output cannot hold them.
#pragma once

#include <QDialog>

class QRadioButton;

namespace tesselink {

/// Escape and the close box reject: the run is to be cancelled.
class frmPoint final : public QDialog {
  Q_OBJECT
 public:
  explicit frmPoint(QWidget* parent = nullptr);

  /// Shows the dialog modally; returns a QDialog::DialogCode.
  int Create();
  /// Whether Create has been called.
  bool Created() const { return created_; }
  /// Whether the points go to a second output file; otherwise they are ignored.
  bool SecondFile() const;

 private:
  QRadioButton *secondFile_, *ignore_;
  bool created_ = false;
};

}  // namespace tesselink
