// SPDX-License-Identifier: MIT
#include "ui/frmProgress.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "app/SummaryText.h"
#include "core/run/ConversionRun.h"
#include "ui/Named.h"

namespace tesselink {
namespace {

QLabel* Value(const char* name, const char* initial, const char* meaning) {
  auto* label = Named(new QLabel(initial), name);
  label->setAccessibleName(meaning);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance("-999999999999"));
  return label;
}

void SetExtent(QLabel* label, double value) { label->setText(QString::fromStdString(ExtentLabel(value))); }

}  // namespace

frmProgress::frmProgress(QWidget* parent) : QDialog(parent) {
  setObjectName("frmProgress");
  setWindowTitle("Progress...");
  BuildControls();
}

void frmProgress::BuildControls() {
  gauge_ = Named(new QProgressBar, "Gauge");
  gauge_->setRange(0, 100);
  gauge_->setAccessibleName("Part of the input that was read");
  elements_ = Named(new QLabel, "lblElements");
  remaining_ = Named(new QLabel, "lblRemaining");
  remaining_->setWordWrap(true);
  remaining_->setTextFormat(Qt::PlainText);
  summary_ = Named(new QPlainTextEdit, "Summary");
  summary_->setAccessibleName("Summary");
  summary_->setReadOnly(true);
  summary_->setTabChangesFocus(true);
  summary_->hide();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(BuildExtents());
  layout->addWidget(gauge_);
  layout->addWidget(elements_);
  layout->addWidget(remaining_);
  layout->addWidget(summary_, 1);
  layout->addWidget(BuildButtons());
  // Labels that change all the time must not have the window's size worked out anew each time.
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  resize(sizeHint().expandedTo({fontMetrics().averageCharWidth() * 80, 0}));
}

QWidget* frmProgress::BuildExtents() {
  minX_ = Value("MinX", "99999999999", "Minimum X");
  minY_ = Value("MinY", "999999999999", "Minimum Y");
  maxX_ = Value("MaxX", "-99999999999", "Maximum X");
  maxY_ = Value("MaxY", "-999999999999", "Maximum Y");
  auto* extents = new QWidget;
  auto* grid = new QGridLayout(extents);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(Named(new QLabel("Minimum X :"), "lblMinX"), 0, 0);
  grid->addWidget(minX_, 0, 1);
  grid->addWidget(Named(new QLabel("Maximum X :"), "lblMaxX"), 0, 2);
  grid->addWidget(maxX_, 0, 3);
  grid->addWidget(Named(new QLabel("Minimum Y :"), "lblMinY"), 1, 0);
  grid->addWidget(minY_, 1, 1);
  grid->addWidget(Named(new QLabel("Maximum Y :"), "lblMaxY"), 1, 2);
  grid->addWidget(maxY_, 1, 3);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return extents;
}

QWidget* frmProgress::BuildButtons() {
  openFolder_ = Named(new QPushButton("&Open Folder"), "cmdOpenFolder");
  copy_ = Named(new QPushButton("Co&py Summary"), "cmdCopy");
  cancel_ = Named(new QPushButton("&Cancel"), "cmdCancel");
  done_ = Named(new QPushButton("&Done"), "cmdDone");
  connect(openFolder_, &QPushButton::clicked, this, &frmProgress::OpenFolder);
  connect(copy_, &QPushButton::clicked, this, &frmProgress::CopySummary);
  connect(cancel_, &QPushButton::clicked, this, &frmProgress::AskCancel);
  connect(done_, &QPushButton::clicked, this, &QDialog::accept);
  for (QPushButton* button : {openFolder_, copy_, done_}) button->hide();
  for (QPushButton* button : {openFolder_, copy_, cancel_}) button->setAutoDefault(false);
  auto* buttons = new QWidget;
  auto* row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(openFolder_);
  row->addWidget(copy_);
  row->addStretch();
  row->addWidget(cancel_);
  row->addWidget(done_);
  return buttons;
}

void frmProgress::ShowProgress(double percent, const Extents& extents, std::int64_t elements) {
  // What was asked before the first element took a person's time, not the run's.
  if (!running_.isValid()) running_.start();
  if (!extents.Empty()) {
    SetExtent(minX_, extents.minX);
    SetExtent(minY_, extents.minY);
    SetExtent(maxX_, extents.maxX);
    SetExtent(maxY_, extents.maxY);
  }
  gauge_->setValue(static_cast<int>(percent));
  elements_->setText(QString::fromStdString(Elements(elements) + " read"));
  const auto elapsed = std::chrono::milliseconds(running_.elapsed());
  remaining_->setText(hint_.isEmpty() ? QString::fromStdString(RemainingText(elapsed, percent)) : hint_);
}

void frmProgress::ShowHint(const QString& hint) {
  hint_ = hint;
  remaining_->setText(hint);
  resize(size().expandedTo(QSize(width(), layout()->totalHeightForWidth(width()))));
}

void frmProgress::ShowSummary(const QString& summary, const QString& folder) {
  folder_ = folder;
  remaining_->hide();
  summary_->setPlainText(summary);
  summary_->show();
  openFolder_->setVisible(!folder.isEmpty());
  copy_->show();
  cancel_->hide();
  done_->show();
  resize(size().expandedTo(sizeHint()));
  done_->setDefault(true);
  done_->setFocus();
}

void frmProgress::AskCancel() {
  if (asking_) return;
  asking_ = true;
  QWidget* front = isVisible() ? this : parentWidget();
  CancelRequest = QMessageBox::question(front, "Cancel", "Are you sure you want to cancel?",
                                        QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
  asking_ = false;
}

void frmProgress::reject() {
  if (done_->isVisible()) {
    QDialog::reject();
  } else {
    AskCancel();
  }
}

void frmProgress::OpenFolder() { QDesktopServices::openUrl(QUrl::fromLocalFile(folder_)); }

void frmProgress::CopySummary() { QGuiApplication::clipboard()->setText(summary_->toPlainText()); }

}  // namespace tesselink
