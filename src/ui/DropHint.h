// SPDX-License-Identifier: MIT
// Shows while files are dragged over a window what becomes of them there.
#pragma once

#include <QWidget>

namespace tesselink {

/// Lies over the whole of its parent and lets everything through.
class DropHint final : public QWidget {
  Q_OBJECT
 public:
  explicit DropHint(QWidget* parent);
  /// Shows or hides it.
  void SetActive(bool active);

 private:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tesselink
