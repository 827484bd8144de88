// SPDX-License-Identifier: MIT
#include "ui/frmPoint.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/Named.h"
#include "ui/QuestionButtons.h"

namespace tesselink {
namespace {

// The words of this text, misspellings included, are known to its readers.
constexpr const char* kExplanation = QT_TRANSLATE_NOOP(
    "tesselink::frmPoint",
    "Point entities were found in the input file. A Point entity may represent a well, a spot elevation, or some other "
    "feature which can be represented by a single point. As the CDF file does not directly support the dynamic "
    "placement of symbols at specific points, such entities can not be accurately represented in a CDF. In order to "
    "bring these entities in to a mapping package, it is therefore necessare to create a second output file containing "
    "only these entities. The output file should be easily importable in to Quarrydesk after an input file format has "
    "been defined using the define conversions option in Quarrydesk. If you choose to create a 2nd Output file, a 2nd "
    "file will be created in the same folder as the first output, but with the extention of .pts.");
constexpr const char* kContact = "https://github.com/tesselink/tesselink/issues";

QLabel* Paragraph(const char* name, const QString& text) {
  auto* label = Named(new QLabel(text), name);
  label->setWordWrap(true);
  return label;
}

}  // namespace

frmPoint::frmPoint(QWidget* parent)
    : QDialog(parent),
      secondFile_(Named(new QRadioButton(tr("Create a 2nd Output file for point entities")), "Opt2ndOut")),
      ignore_(Named(new QRadioButton(tr("Ignore Point elements")), "OptIgnore")) {
  setObjectName("frmPoint");
  setWindowTitle(tr("Point Entities Found in the Input File"));
  auto* explanation = Paragraph("lblExplanation", tr(kExplanation));
  auto* contact = Paragraph(
      "lblContact",
      tr("If you need help with this, please write to %1.").arg(QString("<a href=\"%1\">%1</a>").arg(kContact)));
  contact->setTextInteractionFlags(Qt::TextBrowserInteraction);
  contact->setOpenExternalLinks(true);
  secondFile_->setChecked(true);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(explanation);
  layout->addWidget(contact);
  layout->addWidget(secondFile_);
  layout->addWidget(ignore_);
  layout->addStretch();
  layout->addLayout(QuestionButtons::Row(*this, "cmdContinue"));
  setTabOrder(findChild<QWidget*>("cmdCancel"), contact);
  secondFile_->setFocus();
  // Wrapped text has its height by its width; a dialog that may be narrower would cut it.
  const int width = fontMetrics().averageCharWidth() * 80;
  setMinimumSize(width, layout->totalHeightForWidth(width));
}

int frmPoint::Create() {
  created_ = true;
  return exec();
}

bool frmPoint::SecondFile() const { return secondFile_->isChecked(); }

}  // namespace tesselink
