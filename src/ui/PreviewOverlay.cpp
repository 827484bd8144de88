// SPDX-License-Identifier: MIT
#include "ui/PreviewOverlay.h"

#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QPolygonF>
#include <cmath>

namespace tesselink {
namespace {

constexpr std::size_t kMostVertices = 20'000;  // of the element that is shown as chosen

QPointF Place(const PictureView& view, PicturePoint at) {
  const ScreenPoint place = view.ToScreen(at);
  return {place.x, place.y};
}

double Distance(PicturePoint a, PicturePoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

// A line that is seen on whatever lies below.
void StrokeTwice(QPainter& painter, const QPalette& palette, const QPolygonF& line, Qt::PenStyle style) {
  painter.setPen(QPen(palette.color(QPalette::Base), 3));
  painter.drawPolyline(line);
  painter.setPen(QPen(palette.color(QPalette::Text), 1, style));
  painter.drawPolyline(line);
}

}  // namespace

double PreviewOverlay::Length() const {
  double length = 0;
  for (std::size_t i = 1; i < chain.size(); ++i) length += Distance(chain[i - 1], chain[i]);
  if (!chain.empty() && chainEnd) length += Distance(chain.back(), *chainEnd);
  return length;
}

double PreviewOverlay::LastLeg() const {
  if (!chain.empty() && chainEnd) return Distance(chain.back(), *chainEnd);
  return chain.size() < 2 ? 0 : Distance(chain[chain.size() - 2], chain.back());
}

void PreviewOverlay::Paint(QPainter& painter, const PictureView& view, const Picture& picture,
                           const QPalette& palette) const {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  if (element != 0) {
    painter.setPen(QPen(palette.color(QPalette::Highlight), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    PaintElement(painter, view, picture);
  }
  if (clip) {
    const QRectF box(Place(view, {clip->minX, clip->maxY}), Place(view, {clip->maxX, clip->minY}));
    StrokeTwice(painter, palette, QPolygonF(box), Qt::DashLine);
  }
  if (!chain.empty()) {
    QPolygonF line;
    for (const PicturePoint at : chain) line.append(Place(view, at));
    for (const QPointF& at : line)
      painter.fillRect(QRectF(at.x() - 3, at.y() - 3, 6, 6), palette.color(QPalette::Text));
    if (chainEnd) line.append(Place(view, *chainEnd));
    StrokeTwice(painter, palette, line, Qt::SolidLine);
  }
  if (crosshair) {
    constexpr double kArm = 10;
    const double x = view.width / 2, y = view.height / 2;
    StrokeTwice(painter, palette, {{x - kArm, y}, {x + kArm, y}}, Qt::SolidLine);
    StrokeTwice(painter, palette, {{x, y - kArm}, {x, y + kArm}}, Qt::SolidLine);
  }
}

void PreviewOverlay::PaintElement(QPainter& painter, const PictureView& view, const Picture& picture) const {
  constexpr double kMargin = 8;
  ChainTracer tracer(view, 1, kMargin);
  std::size_t vertices = 0;
  for (std::size_t i = 0; i < picture.MarkCount() && vertices < kMostVertices; ++i) {
    if (picture.Mark(i).element != element) continue;
    const auto all = picture.Vertices(i);
    const auto some = all.first(std::min(all.size(), kMostVertices));
    vertices += some.size();
    tracer.Trace(some, [&painter](std::span<const ScreenPoint> piece) {
      QPolygonF line;
      for (const ScreenPoint at : piece) line.append(QPointF(at.x, at.y));
      line.size() == 1 ? painter.drawEllipse(line[0], kMargin, kMargin) : painter.drawPolyline(line);
    });
  }
  for (const PictureText& text : picture.Texts()) {
    if (text.element == element) painter.drawEllipse(Place(view, text.at), kMargin, kMargin);
  }
}

}  // namespace tesselink
