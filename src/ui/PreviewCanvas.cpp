// SPDX-License-Identifier: MIT
#include "ui/PreviewCanvas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QWheelEvent>
#include <chrono>
#include <cmath>
#include <utility>

namespace tesselink {
namespace {

constexpr std::chrono::milliseconds kSlice{12};
constexpr double kFitMargin = 16;
constexpr double kZoomStep = 1.25;
constexpr double kPanStep = 40;

}  // namespace

PreviewCanvas::PreviewCanvas(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(120, 120);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::OpenHandCursor);
  connect(&drawing_, &QTimer::timeout, this, &PreviewCanvas::DrawSlice);
}

void PreviewCanvas::SetPicture(const Picture* picture) {
  picture_ = picture;
  shown_ = {};
  shownRequest_.reset();
  hidden_.clear();
  renderer_.Forget();
  Fit();
}

void PreviewCanvas::PictureGrew() {
  if (fitted_) {
    Fit();
  } else {
    ViewChanged();
  }
}

void PreviewCanvas::SetHiddenLayers(std::vector<bool> hidden) {
  hidden_ = std::move(hidden);
  ViewChanged();
}

void PreviewCanvas::SetEmptyText(const QString& text) {
  emptyText_ = text;
  update();
}

void PreviewCanvas::SetPaused(bool paused) {
  paused_ = paused;
  ViewChanged();
}

RenderRequest PreviewCanvas::Request() const {
  return {view_, devicePixelRatioF(), palette().color(QPalette::Base), hidden_};
}

bool PreviewCanvas::IsCurrent() const {
  return !HasSomething() || (shownRequest_ == Request() && renderer_.Fits(*picture_, *shownRequest_) &&
                             renderer_.Complete(*picture_) && !drawing_.isActive());
}

void PreviewCanvas::Fit() {
  fitted_ = true;
  view_ = PictureView::Fit(picture_ == nullptr ? Extents() : picture_->View(), width(), height(), kFitMargin);
  ViewChanged();
}

void PreviewCanvas::ZoomIn() { Zoom(rect().center(), kZoomStep); }
void PreviewCanvas::ZoomOut() { Zoom(rect().center(), 1 / kZoomStep); }

void PreviewCanvas::Zoom(QPointF at, double factor) {
  fitted_ = false;
  view_.ZoomAbout({at.x(), at.y()}, factor);
  ViewChanged();
}

void PreviewCanvas::Pan(double right, double down) {
  fitted_ = false;
  view_.Pan(right, down);
  ViewChanged();
}

void PreviewCanvas::ViewChanged() {
  update();
  if (HasSomething() && isVisible() && !paused_) {
    drawing_.start(0);
  } else {
    drawing_.stop();
  }
}

void PreviewCanvas::DrawSlice() {
  const RenderRequest request = Request();
  if (!renderer_.Fits(*picture_, request)) renderer_.Begin(*picture_, request);
  const bool whole = renderer_.Draw(*picture_, kSlice);
  if (whole) drawing_.stop();
  if (!whole && shownRequest_) return;
  shown_ = renderer_.Image();
  if (whole) shownRequest_ = request;
  update();
}

void PreviewCanvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().base());
  if (!HasSomething()) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
  } else if (!shown_.isNull()) {
    const PictureView& of = shownRequest_ ? shownRequest_->view : renderer_.View();
    const ScreenPoint corner = view_.ToScreen(of.ToDrawing({0, 0}));
    const double ratio = view_.scale / of.scale;
    painter.drawImage(QRectF(corner.x, corner.y, of.width * ratio, of.height * ratio), shown_);
  }
  if (hasFocus()) {
    QStyleOptionFocusRect option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
}

void PreviewCanvas::resizeEvent(QResizeEvent*) {
  if (fitted_) {
    Fit();
    return;
  }
  view_.width = width();
  view_.height = height();
  ViewChanged();
}

void PreviewCanvas::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) ViewChanged();
  QWidget::changeEvent(event);
}

void PreviewCanvas::showEvent(QShowEvent*) { ViewChanged(); }

void PreviewCanvas::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120;
  Zoom(event->position(), std::pow(kZoomStep, event->angleDelta().y() / kNotch));
  event->accept();
}

void PreviewCanvas::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  dragged_ = event->position();
  setCursor(Qt::ClosedHandCursor);
}

void PreviewCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (!dragged_) return;
  const QPointF moved = event->position() - *dragged_;
  dragged_ = event->position();
  if (!moved.isNull()) Pan(moved.x(), moved.y());
}

void PreviewCanvas::mouseReleaseEvent(QMouseEvent*) {
  dragged_.reset();
  setCursor(Qt::OpenHandCursor);
}

void PreviewCanvas::mouseDoubleClickEvent(QMouseEvent*) { Fit(); }

void PreviewCanvas::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:  // the key of the plus without Shift
      return ZoomIn();
    case Qt::Key_Minus:
      return ZoomOut();
    case Qt::Key_F:
      return Fit();
    case Qt::Key_Left:
      return Pan(kPanStep, 0);
    case Qt::Key_Right:
      return Pan(-kPanStep, 0);
    case Qt::Key_Up:
      return Pan(0, kPanStep);
    case Qt::Key_Down:
      return Pan(0, -kPanStep);
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace tesselink
