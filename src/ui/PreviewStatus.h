// SPDX-License-Identifier: MIT
// The lines below a preview: what was read, and what there is to know of it.
#pragma once

#include <QLabel>

#include "picture/PreviewReading.h"

namespace tesselink {

class PreviewStatus final : public QLabel {
  Q_OBJECT
 public:
  explicit PreviewStatus(QWidget* parent = nullptr);

  /// Tells of a reading, or of nothing. The tool tip holds all of it.
  void Tell(const QString& title, const PreviewReading* reading);

  /// A note in the window's language, as one line; where that is not all, the rest stands in the tool tip.
  static QString Line(const ReadingNote& note);

 private:
  static QString Whole(const ReadingNote& note);
};

}  // namespace tesselink
