// SPDX-License-Identifier: MIT
#include "ui/DropHint.h"

#include <QPainter>

namespace tesselink {
namespace {

constexpr int kFrame = 4;
constexpr int kShade = 60;  // of 255

}  // namespace

DropHint::DropHint(QWidget* parent) : QWidget(parent) {
  setObjectName("dropHint");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void DropHint::SetActive(bool active) {
  if (active) {
    setGeometry(parentWidget()->rect());
    raise();
  }
  setVisible(active);
}

void DropHint::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor shade = palette().color(QPalette::Highlight);
  const QColor frame = shade;
  shade.setAlpha(kShade);
  painter.fillRect(rect(), shade);
  painter.setPen(QPen(frame, kFrame));
  painter.drawRect(rect().adjusted(kFrame / 2, kFrame / 2, -kFrame / 2, -kFrame / 2));
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  painter.setFont(large);
  const QString text = tr("Drop to use as the input");
  QRect box = painter.fontMetrics().boundingRect(rect(), Qt::AlignCenter | Qt::TextWordWrap, text);
  box.adjust(-kFrame * 4, -kFrame * 3, kFrame * 4, kFrame * 3);
  painter.fillRect(box, frame);
  painter.setPen(palette().color(QPalette::HighlightedText));
  painter.drawText(box, Qt::AlignCenter | Qt::TextWordWrap, text);
}

}  // namespace tesselink
