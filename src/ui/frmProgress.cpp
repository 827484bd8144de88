// SPDX-License-Identifier: MIT
#include "ui/frmProgress.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "app/SummaryText.h"
#include "core/io/Paths.h"
#include "core/run/ConversionRun.h"
#include "ui/Launcher.h"
#include "ui/Named.h"
#include "ui/ResultPage.h"
#include "ui/UiText.h"
#include "ui/UiWording.h"

namespace tesselink {
namespace {

constexpr qint64 kSettled = 1000;  // milliseconds

QLabel* Value(const char* name, const char* initial, const QString& meaning) {
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
  setWindowTitle(tr("Progress..."));
  BuildControls();
}

void frmProgress::BuildControls() {
  gauge_ = Named(new QProgressBar, "Gauge");
  gauge_->setRange(0, 100);
  gauge_->setAccessibleName(tr("Part of the input that was read"));
  elements_ = Named(new QLabel, "lblElements");
  file_ = Named(new QLabel, "lblFile");
  file_->setWordWrap(true);
  file_->setTextFormat(Qt::PlainText);
  file_->hide();
  remaining_ = Named(new QLabel, "lblRemaining");
  remaining_->setWordWrap(true);
  remaining_->setTextFormat(Qt::PlainText);
  result_ = Named(new ResultPage, "Result");
  result_->hide();
  extents_ = BuildExtents();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(result_, 1);
  layout->addWidget(extents_);
  layout->addWidget(gauge_);
  layout->addWidget(file_);
  layout->addWidget(elements_);
  layout->addWidget(remaining_);
  layout->addWidget(BuildButtons());
  // Labels that change all the time must not have the window's size worked out anew each time.
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  resize(sizeHint().expandedTo({fontMetrics().averageCharWidth() * 80, 0}));
}

QWidget* frmProgress::BuildExtents() {
  minX_ = Value("MinX", "99999999999", tr("Minimum X"));
  minY_ = Value("MinY", "999999999999", tr("Minimum Y"));
  maxX_ = Value("MaxX", "-99999999999", tr("Maximum X"));
  maxY_ = Value("MaxY", "-999999999999", tr("Maximum Y"));
  auto* extents = Named(new QWidget, "Extents");
  auto* grid = new QGridLayout(extents);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(Named(new QLabel(tr("Minimum X :")), "lblMinX"), 0, 0);
  grid->addWidget(minX_, 0, 1);
  grid->addWidget(Named(new QLabel(tr("Maximum X :")), "lblMaxX"), 0, 2);
  grid->addWidget(maxX_, 0, 3);
  grid->addWidget(Named(new QLabel(tr("Minimum Y :")), "lblMinY"), 1, 0);
  grid->addWidget(minY_, 1, 1);
  grid->addWidget(Named(new QLabel(tr("Maximum Y :")), "lblMaxY"), 1, 2);
  grid->addWidget(maxY_, 1, 3);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return extents;
}

QWidget* frmProgress::BuildButtons() {
  openFolder_ = Named(new QPushButton(tr("&Open Folder")), "cmdOpenFolder");
  copy_ = Named(new QPushButton(tr("Co&py Summary")), "cmdCopy");
  again_ = Named(new QPushButton(tr("Convert Again in &Standard")), "cmdAgain");
  again_->setToolTip(tr("The standard dialect keeps more of this drawing."));
  cancel_ = Named(new QPushButton(tr("&Cancel")), "cmdCancel");
  done_ = Named(new QPushButton(tr("&Done")), "cmdDone");
  connect(openFolder_, &QPushButton::clicked, this, [this] { OpenUrl(UrlOf(FolderOf(FullPath(written_))), this); });
  connect(copy_, &QPushButton::clicked, this, &frmProgress::CopySummary);
  connect(again_, &QPushButton::clicked, this, &frmProgress::standardWanted);
  connect(cancel_, &QPushButton::clicked, this, &frmProgress::AskCancel);
  connect(done_, &QPushButton::clicked, this, &QDialog::accept);
  for (QPushButton* button : {openFolder_, copy_, again_, done_}) button->hide();
  for (QPushButton* button : {openFolder_, copy_, again_, cancel_}) button->setAutoDefault(false);
  auto* buttons = new QWidget;
  auto* row = new QHBoxLayout(buttons);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(openFolder_);
  row->addWidget(copy_);
  row->addStretch();
  row->addWidget(again_);
  row->addWidget(cancel_);
  row->addWidget(done_);
  return buttons;
}

void frmProgress::ShowExtents(const Extents& extents) {
  if (extents.Empty()) return;
  isAnyRead_ = true;
  SetExtent(minX_, extents.minX);
  SetExtent(minY_, extents.minY);
  SetExtent(maxX_, extents.maxX);
  SetExtent(maxY_, extents.maxY);
}

void frmProgress::ShowProgress(const Standing& standing) {
  // What was asked before the first element took a person's time, not the run's.
  if (!watch_.IsStarted()) watch_.Start();
  ShowExtents(standing.extents);
  gauge_->setValue(static_cast<int>(standing.percent));
  file_->setText(standing.file);
  file_->setVisible(!standing.file.isEmpty());
  elements_->setText(tr("%1 read").arg(Shown(Elements(standing.elements, kUiWording))));
  remaining_->setText(hint_.isEmpty() ? Shown(RemainingText(watch_.Elapsed(), standing.whole, kUiWording)) : hint_);
}

void frmProgress::ShowHint(const QString& hint) {
  hint_ = hint;
  remaining_->setText(hint);
  resize(size().expandedTo(QSize(width(), layout()->totalHeightForWidth(width()))));
}

void frmProgress::ShowResult(RunOutcome outcome, const RunAccount& account, const QStringList& folders) {
  for (QWidget* widget : std::initializer_list<QWidget*>{remaining_, gauge_, file_}) widget->hide();
  extents_->setVisible(isAnyRead_);
  elements_->setVisible(isAnyRead_);
  written_ = account.files.empty() ? std::string() : account.files[0];
  result_->Show(outcome, account, folders);
  result_->show();
  openFolder_->setVisible(!written_.empty() && HasLauncher());
  copy_->show();
  cancel_->hide();
  done_->show();
  const int unit = fontMetrics().height();
  const QMargins margins = layout()->contentsMargins();
  const int ofButtons = copy_->parentWidget()->layout()->minimumSize().width() + margins.left() + margins.right();
  const QSize wanted = size().expandedTo(sizeHint()).expandedTo({0, 26 * unit});
  resize(wanted.boundedTo(screen()->availableSize() * 9 / 10).expandedTo({ofButtons, 0}));
  Place();
  done_->setDefault(true);
  done_->setFocus();
}

void frmProgress::showEvent(QShowEvent* event) {
  if (!shown_.isValid()) shown_.start();
  QDialog::showEvent(event);
}

// On the screen. A window that has only just come has not been put anywhere by the person, and its place may not be
// known yet: a window manager would be told that it lies in the corner.
void frmProgress::Place() {
  const QRect room = screen()->availableGeometry();
  QPoint corner = pos();
  int title = 0;
  if (const QWidget* parent = parentWidget(); parent != nullptr) {
    title = parent->geometry().top() - parent->frameGeometry().top();
    if (!shown_.isValid() || !shown_.hasExpired(kSettled)) {
      corner = parent->frameGeometry().center() - QPoint(width() / 2, (height() + title) / 2);
    }
  }
  corner.setX(std::max(room.left(), std::min(corner.x(), room.right() - width())));
  corner.setY(std::max(room.top(), std::min(corner.y(), room.bottom() - height() - title)));
  move(corner);
}

void frmProgress::OfferStandard() { again_->show(); }

void frmProgress::AskCancel() {
  if (asking_) return;
  asking_ = true;
  const Stopwatch::Pause waiting(&watch_);
  QWidget* front = isVisible() ? this : parentWidget();
  CancelRequest = QMessageBox::question(front, tr("Cancel"), tr("Are you sure you want to cancel?"),
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

void frmProgress::CopySummary() { QGuiApplication::clipboard()->setText(result_->Text()); }

}  // namespace tesselink
