// The question which kind of element a shapefile is to hold.
#pragma once

#include <QDialog>

#include "formats/shape/ESRIOutFilt.h"

class QRadioButton;

namespace tesselink {

/// Escape and the close box reject: the run is to be cancelled.
class frmESRIType final : public QDialog {
  Q_OBJECT
 public:
  explicit frmESRIType(QWidget* parent = nullptr);

  /// Sets the option to begin with.
  void Preset(ShapeKind kind);
  ShapeKind Kind() const;

 private:
  QRadioButton *point_, *polyline_;
};

}  // namespace tesselink
