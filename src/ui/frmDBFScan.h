// SPDX-License-Identifier: MIT
// What is seen while an attribute table is loaded.
#pragma once

#include <QDialog>

class QProgressBar;

namespace tesselink {

/// A bare progress window: it has no buttons, and neither Escape nor the close box ends what it shows.
class frmDBFScan final : public QDialog {
  Q_OBJECT
 public:
  explicit frmDBFScan(QWidget* parent = nullptr);
  void ShowProgress(int percent);
  void reject() override {}

 private:
  QProgressBar* progress_;
};

}  // namespace tesselink
