#include "ui/frmESRIType.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/Named.h"

namespace tesselink {

frmESRIType::frmESRIType(QWidget* parent)
    : QDialog(parent),
      point_(Named(new QRadioButton("Points or Text"), "optPoint")),
      polyline_(Named(new QRadioButton("Polyline"), "optPolyline")) {
  setObjectName("frmESRIType");
  setWindowTitle("ESRI Shape File Type");
  auto* question = Named(new QLabel("ESRI Shape files have the limitation that they can only support one type of "
                                    "entity at a time. Which type of entity would you like this file to be?"),
                         "lblQuestion");
  question->setWordWrap(true);
  auto* proceed = Named(new QPushButton("Continue"), "cmdContinue");
  proceed->setDefault(true);
  connect(proceed, &QPushButton::clicked, this, &QDialog::accept);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(question);
  layout->addWidget(point_);
  layout->addWidget(polyline_);
  layout->addStretch();
  layout->addWidget(proceed, 0, Qt::AlignRight);
  Preset(ShapeKind::PointsOrText);
  resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());
}

void frmESRIType::Preset(ShapeKind kind) {
  QRadioButton* option = kind == ShapeKind::PointsOrText ? point_ : polyline_;
  option->setChecked(true);
  option->setFocus();
}

ShapeKind frmESRIType::Kind() const { return point_->isChecked() ? ShapeKind::PointsOrText : ShapeKind::Polyline; }

}  // namespace tesselink
