// SPDX-License-Identifier: MIT
#include "ui/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace tesselink {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
  setToolTip("<qt>" + text.toHtmlEscaped() + "</qt>");
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString line = text().replace('\n', ' ').replace('\t', ' ');
  const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, width());
  style()->drawItemText(&painter, rect(), static_cast<int>(alignment()), palette(), isEnabled(), shown,
                        foregroundRole());
}

}  // namespace tesselink
