// SPDX-License-Identifier: MIT
// What there is to know of the element that was clicked in the preview.
#pragma once

#include <QWidget>
#include <string>

#include "picture/ElementLookup.h"

class QLabel;
class QTreeWidget;

namespace tesselink {

class ElementPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit ElementPanel(QWidget* parent = nullptr);

  /// An element is being looked for in a file, as far as so many percent.
  void ShowLooking(int percent);
  /// `unit` is that of the drawing; `thinned` says that not every element is drawn.
  void ShowFacts(const ElementFacts& facts, const QString& unit, bool thinned);
  /// Why there is nothing to show.
  void ShowReason(const QString& reason);

 signals:
  void Closed();

 private:
  void Add(const QString& name, const QString& value);
  void FitColumns();

  QLabel* state_;
  QTreeWidget* rows_;
};

}  // namespace tesselink
