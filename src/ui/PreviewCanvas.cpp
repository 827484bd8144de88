// SPDX-License-Identifier: MIT
#include "ui/PreviewCanvas.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <QStyleHints>
#include <QWheelEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "ui/Pace.h"

namespace tesselink {
namespace {

constexpr double kFitMargin = 16;
constexpr double kZoomStep = 1.25;
constexpr double kPanStep = 40;

}  // namespace

PreviewCanvas::PreviewCanvas(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(120, 120);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setCursor(Qt::OpenHandCursor);
  connect(&drawing_, &QTimer::timeout, this, &PreviewCanvas::DrawSlice);
}

void PreviewCanvas::SetPicture(const Picture* picture) {
  picture_ = picture;
  shown_ = {};
  shownRequest_.reset();
  hidden_.clear();
  renderer_.Forget();
  overlay_ = {.clip = overlay_.clip};
  emit Measured();
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

void PreviewCanvas::SetLost(std::uint32_t kinds) {
  lost_ = kinds;
  ViewChanged();
}

void PreviewCanvas::SetChosen(std::uint32_t element) {
  overlay_.element = element;
  update();
}

void PreviewCanvas::SetClip(const std::optional<ClipBox>& clip) {
  overlay_.clip = clip;
  update();
}

void PreviewCanvas::SetMode(Mode mode) {
  if (mode_ == mode) return;
  if (clipBegin_) SetClip(clipBefore_);
  clipBegin_.reset();
  mode_ = mode;
  overlay_.chain.clear();
  overlay_.chainEnd.reset();
  setCursor(mode == Mode::Look ? Qt::OpenHandCursor : Qt::CrossCursor);
  update();
  emit ModeChanged();
  emit Measured();
}

RenderRequest PreviewCanvas::Request() const {
  return {view_, devicePixelRatioF(), palette().color(QPalette::Base), hidden_, lost_};
}

bool PreviewCanvas::IsCurrent() const {
  return !HasSomething() || (shownRequest_ == Request() && renderer_.Fits(*picture_, *shownRequest_) &&
                             renderer_.Complete(*picture_) && !drawing_.isActive());
}

void PreviewCanvas::Fit() {
  fitted_ = true;
  view_ = PictureView::Fit(picture_ == nullptr ? Extents() : picture_->View(), width(), height(), kFitMargin);
  ViewChanged();
  emit ViewMoved(view_);
}

void PreviewCanvas::Follow(const PictureView& other) {
  fitted_ = false;
  view_.centre = other.centre;
  view_.scale = other.scale;
  ViewChanged();
}

void PreviewCanvas::ZoomIn() { Zoom(rect().center(), kZoomStep); }
void PreviewCanvas::ZoomOut() { Zoom(rect().center(), 1 / kZoomStep); }

void PreviewCanvas::Zoom(QPointF at, double factor) {
  fitted_ = false;
  view_.ZoomAbout({at.x(), at.y()}, factor);
  ViewChanged();
  emit ViewMoved(view_);
}

void PreviewCanvas::Pan(double right, double down) {
  fitted_ = false;
  view_.Pan(right, down);
  ViewChanged();
  emit ViewMoved(view_);
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
    overlay_.Paint(painter, view_, *picture_, palette());
  }
  if (hasFocus()) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
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
  pressed_ = dragged_ = event->position();
  dragging_ = false;
  if (mode_ == Mode::Look) setCursor(Qt::ClosedHandCursor);
}

void PreviewCanvas::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  overlay_.crosshair = false;
  if (dragged_) {
    const int far = QGuiApplication::styleHints()->startDragDistance();
    const bool begins = !dragging_ && (at - *pressed_).manhattanLength() >= far;
    dragging_ = dragging_ || begins;
    if (begins && mode_ == Mode::Clip) DragClip(view_.ToDrawing({pressed_->x(), pressed_->y()}));
    if (dragging_ && mode_ != Mode::Clip) Pan(at.x() - dragged_->x(), at.y() - dragged_->y());
    if (dragging_) dragged_ = at;
  }
  Point(at);
}

void PreviewCanvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  const QPointF at = event->position();
  pressed_.reset();
  dragged_.reset();
  if (mode_ == Mode::Look) setCursor(Qt::OpenHandCursor);
  if (!dragging_) return Act(at);
  dragging_ = false;
  if (mode_ == Mode::Clip) {
    Point(at);
    EndClip();
  }
}

void PreviewCanvas::mouseDoubleClickEvent(QMouseEvent*) {
  if (mode_ == Mode::Look) Fit();
}

void PreviewCanvas::leaveEvent(QEvent*) {
  overlay_.chainEnd.reset();
  update();
  emit Measured();
  emit Pointed(std::nullopt);
}

void PreviewCanvas::focusOutEvent(QFocusEvent* event) {
  overlay_.crosshair = false;
  QWidget::focusOutEvent(event);
}

// The pointer, or the middle by keys, is at a place.
void PreviewCanvas::Point(QPointF at) {
  if (!HasSomething()) return;
  const PicturePoint place = view_.ToDrawing({at.x(), at.y()});
  if (mode_ == Mode::Measure && !overlay_.chain.empty()) {
    overlay_.chainEnd = place;
    emit Measured();
  }
  if (clipBegin_) DragClip(place);
  update();
  emit Pointed(place);
}

// A click, or Return in the middle.
void PreviewCanvas::Act(QPointF at) {
  if (!HasSomething()) return;
  constexpr double kReach = 6;
  const PicturePoint place = view_.ToDrawing({at.x(), at.y()});
  if (mode_ == Mode::Look) emit PlaceChosen(place, kReach / view_.scale);
  if (mode_ == Mode::Measure) AddToChain(place);
  if (mode_ != Mode::Clip) return;
  const bool ends = clipBegin_.has_value();
  DragClip(place);
  if (ends) EndClip();
}

void PreviewCanvas::AddToChain(PicturePoint at) {
  overlay_.chain.push_back(at);
  overlay_.chainEnd.reset();
  update();
  emit Measured();
}

// The first place is a corner, every other the opposite one.
void PreviewCanvas::DragClip(PicturePoint to) {
  if (!clipBegin_) {
    clipBegin_ = to;
    clipBefore_ = overlay_.clip;
  }
  const auto [minX, maxX] = std::minmax(clipBegin_->x, to.x);
  const auto [minY, maxY] = std::minmax(clipBegin_->y, to.y);
  SetClip(ClipBox{minX, minY, maxX, maxY});
}

void PreviewCanvas::EndClip() {
  const ClipBox box = *overlay_.clip;
  clipBegin_.reset();
  SetMode(Mode::Look);
  emit ClipChosen(box);
}

// One step back: the measured chain first, then the mode.
void PreviewCanvas::Escape() {
  if (mode_ != Mode::Measure || overlay_.chain.empty()) return SetMode(Mode::Look);
  overlay_.chain.clear();
  overlay_.chainEnd.reset();
  update();
  emit Measured();
}

void PreviewCanvas::keyPressEvent(QKeyEvent* event) {
  if (KeyMoves(event->key())) {
    overlay_.crosshair = HasSomething();
    return Point(QRectF(rect()).center());
  }
  if (!KeyActs(event->key())) QWidget::keyPressEvent(event);
}

bool PreviewCanvas::KeyMoves(int key) {
  switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:  // the key of the plus without Shift
      return ZoomIn(), true;
    case Qt::Key_Minus:
      return ZoomOut(), true;
    case Qt::Key_F:
      return Fit(), true;
    case Qt::Key_Left:
      return Pan(kPanStep, 0), true;
    case Qt::Key_Right:
      return Pan(-kPanStep, 0), true;
    case Qt::Key_Up:
      return Pan(0, kPanStep), true;
    case Qt::Key_Down:
      return Pan(0, -kPanStep), true;
    default:
      return false;
  }
}

bool PreviewCanvas::KeyActs(int key) {
  switch (key) {
    case Qt::Key_M:
      SetMode(mode_ == Mode::Measure ? Mode::Look : Mode::Measure);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      Act(QRectF(rect()).center());
      return true;
    case Qt::Key_Backspace:
      if (overlay_.chain.empty()) return false;
      overlay_.chain.pop_back();
      Point(QRectF(rect()).center());
      emit Measured();
      return true;
    case Qt::Key_Escape:
      if (mode_ == Mode::Look) return false;
      Escape();
      return true;
    default:
      return false;
  }
}

}  // namespace tesselink
