// SPDX-License-Identifier: MIT
#include "ui/frmESRIType.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "ui/Named.h"
#include "ui/QuestionButtons.h"

namespace tesselink {

frmESRIType::frmESRIType(QWidget* parent, std::size_t kinds) : QDialog(parent) {
  constexpr const char* kOptions[][2] = {{QT_TR_NOOP("Points or Text"), "optPoint"},
                                         {QT_TR_NOOP("Polyline"), "optPolyline"},
                                         {QT_TR_NOOP("Polygon"), "optPolygon"},
                                         {QT_TR_NOOP("Multipoint"), "optMultiPoint"}};
  setObjectName("frmESRIType");
  setWindowTitle(tr("ESRI Shape File Type"));
  auto* question = Named(new QLabel(tr("ESRI Shape files have the limitation that they can only support one type of "
                                       "entity at a time. Which type of entity would you like this file to be?")),
                         "lblQuestion");
  question->setWordWrap(true);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(question);
  for (std::size_t i = 0; i < std::min(kinds, std::size(kOptions)); ++i) {
    options_.push_back(Named(new QRadioButton(tr(kOptions[i][0])), kOptions[i][1]));
    layout->addWidget(options_.back());
  }
  layout->addStretch();
  layout->addLayout(QuestionButtons::Row(*this, "cmdContinue"));
  Preset(ShapeKind::PointsOrText);
  resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());
}

void frmESRIType::Preset(ShapeKind kind) {
  QRadioButton* option = options_.at(static_cast<std::size_t>(kind));
  option->setChecked(true);
  option->setFocus();
}

ShapeKind frmESRIType::Kind() const {
  const auto checked =
      std::find_if(options_.begin(), options_.end(), [](const QRadioButton* o) { return o->isChecked(); });
  return static_cast<ShapeKind>(checked - options_.begin());
}

}  // namespace tesselink
