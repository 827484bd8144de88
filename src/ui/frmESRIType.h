// SPDX-License-Identifier: MIT
// The question which kind of element a shapefile is to hold.
#pragma once

#include <QDialog>
#include <cstddef>
#include <vector>

#include "formats/shape/ESRIOutFilt.h"

class QRadioButton;

namespace tesselink {

/// Escape and the close box reject: the run is to be cancelled.
class frmESRIType final : public QDialog {
  Q_OBJECT
 public:
  /// Offers so many kinds, in their order.
  explicit frmESRIType(QWidget* parent = nullptr, std::size_t kinds = 2);

  /// Sets the option to begin with.
  void Preset(ShapeKind kind);
  ShapeKind Kind() const;

 private:
  std::vector<QRadioButton*> options_;
};

}  // namespace tesselink
