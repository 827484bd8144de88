// SPDX-License-Identifier: MIT
#include "ui/frmDBFScan.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace tesselink {

frmDBFScan::frmDBFScan(QWidget* parent) : QDialog(parent), progress_(new QProgressBar) {
  setObjectName("frmDBFScan");
  setWindowTitle(tr("Loading..."));
  // It must not take the keyboard from whoever goes on choosing.
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* text = new QLabel(tr("Loading Database..."));
  text->setObjectName("lblLoading");
  progress_->setObjectName("Progress");
  progress_->setAccessibleName(tr("Records loaded"));
  progress_->setRange(0, 100);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text);
  layout->addWidget(progress_);
  setMinimumWidth(fontMetrics().averageCharWidth() * 40);
}

void frmDBFScan::ShowProgress(int percent) {
  progress_->setValue(percent);
  if (!isVisible()) show();
}

}  // namespace tesselink
