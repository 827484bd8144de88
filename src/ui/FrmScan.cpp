// SPDX-License-Identifier: MIT
#include "ui/FrmScan.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "ui/Named.h"

namespace tesselink {

FrmScan::FrmScan(QWidget* parent) : QDialog(parent), progress_(Named(new QProgressBar, "ProgressBar1")) {
  setObjectName("FrmScan");
  setWindowTitle(tr("Scanning..."));
  progress_->setAccessibleName(tr("Part of the file that was scanned"));
  progress_->setRange(0, 100);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Named(new QLabel(tr("Scanning file for Layers...")), "lblScanning"));
  layout->addWidget(progress_);
  setMinimumWidth(fontMetrics().averageCharWidth() * 40);
}

void FrmScan::ShowProgress(int percent) {
  progress_->setValue(percent);
  if (!isVisible()) show();
}

}  // namespace tesselink
