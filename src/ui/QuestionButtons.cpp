// SPDX-License-Identifier: MIT
#include "ui/QuestionButtons.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>

#include "ui/Named.h"

namespace tesselink {

QBoxLayout* QuestionButtons::Row(QDialog& dialog, const char* continueName) {
  auto* proceed = Named(new QPushButton(tr("Continue")), continueName);
  proceed->setDefault(true);
  QObject::connect(proceed, &QPushButton::clicked, &dialog, &QDialog::accept);
  auto* cancel = Cancel();
  QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(proceed);
  row->addWidget(cancel);
  return row;
}

QPushButton* QuestionButtons::Cancel() {
  auto* cancel = Named(new QPushButton(tr("&Cancel")), "cmdCancel");
  cancel->setToolTip(tr("Ends the conversion; nothing is written"));
  return cancel;
}

bool QuestionButtons::MayEndRun(QWidget* parent) {
  QMessageBox box(QMessageBox::Question, tr("Cancel"), tr("End the conversion?"), QMessageBox::Yes | QMessageBox::No,
                  parent);
  box.setInformativeText(tr("Nothing is written. An output that is there already stays as it is."));
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

}  // namespace tesselink
