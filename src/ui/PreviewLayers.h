// SPDX-License-Identifier: MIT
// The list of layers beside a preview, each with a box that shows or hides it.
#pragma once

#include <QWidget>
#include <vector>

#include "picture/PictureStyles.h"

class QCheckBox;
class QListWidget;

namespace tesselink {

class PreviewLayers final : public QWidget {
  Q_OBJECT
 public:
  explicit PreviewLayers(QWidget* parent = nullptr);

  /// Forgets the layers of the drawing before, and what was hidden of it.
  void Clear();
  /// Lists layers; those that are listed already keep their boxes.
  void List(const std::vector<PictureLayer>& layers);
  /// The same, by number.
  std::vector<bool> Hidden() const;

 signals:
  void HiddenChanged(const std::vector<bool>& hidden);

 private:
  void BoxChanged();
  void AllClicked();

  QCheckBox* all_;
  QListWidget* list_;
};

/// A small square of a colour that is legible on the paper of a widget.
QPixmap ColourSwatch(const QWidget& widget, std::int32_t colour);

}  // namespace tesselink
