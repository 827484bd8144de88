// SPDX-License-Identifier: MIT
// A label that shows as much of its text as there is room for.
#pragma once

#include <QLabel>

namespace tesselink {

/// The text is plain; the whole of it is in the tool tip.
class ElidedLabel final : public QLabel {
  Q_OBJECT
 public:
  explicit ElidedLabel(const QString& text, QWidget* parent = nullptr);
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tesselink
