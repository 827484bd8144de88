// SPDX-License-Identifier: MIT
// The line below the dialect: what the chosen one does with the drawing at hand.
#pragma once

#include <QLabel>

#include "app/DialectText.h"

namespace tesselink {

class DialectLine final : public QLabel {
  Q_OBJECT
 public:
  explicit DialectLine(QWidget* parent = nullptr);

  /// The gravest of what there is to tell; the tip has all.
  void Tell(Dialect dialect, const std::vector<DialectSentence>& sentences);
};

}  // namespace tesselink
