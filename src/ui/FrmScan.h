// SPDX-License-Identifier: MIT
// What is seen while a file is looked through for its layers.
#pragma once

#include <QDialog>

class QProgressBar;

namespace tesselink {

/// A bare progress window: it has no buttons, and neither Escape nor the close box ends what it shows.
class FrmScan final : public QDialog {
  Q_OBJECT
 public:
  explicit FrmScan(QWidget* parent = nullptr);
  void ShowProgress(int percent);
  void reject() override {}

 private:
  QProgressBar* progress_;
};

}  // namespace tesselink
