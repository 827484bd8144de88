// SPDX-License-Identifier: MIT
#include "ui/PathControls.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "ui/Named.h"
#include "ui/WheelGuard.h"

namespace tesselink {

QComboBox* FormatBox(const char* name, const QString& meaning) {
  auto* box = Named(new QComboBox, name);
  box->setAccessibleName(meaning);
  GuardFromWheel(*box);
  return box;
}

QLineEdit* PathBox(const char* name, const QString& meaning) {
  auto* box = Named(new QLineEdit, name);
  box->setAccessibleName(meaning);
  box->setMinimumWidth(box->fontMetrics().averageCharWidth() * 40);
  // What does not fit into the box.
  QObject::connect(box, &QLineEdit::textChanged, box, [box](const QString& path) {
    box->setToolTip(path.isEmpty() ? path : "<qt>" + path.toHtmlEscaped() + "</qt>");
  });
  // Files dropped here are for the window to take.
  box->setAcceptDrops(false);
  return box;
}

QPushButton* BrowseButton(const char* name, const QString& caption, const QString& meaning, const QString& keys) {
  auto* button = Named(new QPushButton(caption), name);
  button->setAccessibleName(meaning);
  if (!keys.isEmpty()) button->setToolTip(meaning + " (" + keys + ")");
  button->setAutoDefault(true);
  return button;
}

QLabel* LabelFor(QWidget* control, const char* name, const QString& text) {
  auto* label = Named(new QLabel(text), name);
  label->setBuddy(control);
  return label;
}

void AlignColumns(QGridLayout& grid) {
  const QFontMetrics metrics = grid.parentWidget()->fontMetrics();
  grid.setColumnMinimumWidth(0, metrics.horizontalAdvance("Output Format:  "));
  grid.setColumnStretch(1, 1);
}

QStringList EntriesOf(const QComboBox& box) {
  QStringList entries;
  for (int i = 0; i < box.count(); ++i) entries.append(box.itemText(i));
  return entries;
}

}  // namespace tesselink
