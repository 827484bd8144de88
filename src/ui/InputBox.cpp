// SPDX-License-Identifier: MIT
#include "ui/InputBox.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/io/Paths.h"
#include "core/run/Interaction.h"
#include "ui/Named.h"
#include "ui/UiText.h"

namespace tesselink {
namespace {

// A long path may go on in the next line behind each of its folders.
QString Breakable(QString text) { return text.replace('/', QStringLiteral("/\u200b")); }

QLabel* Paragraph(const char* name, const QString& text) {
  auto* label = Named(new QLabel(text), name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

InputBox::InputBox(const TextQuestion& question, QWidget* parent)
    : QDialog(parent), subject_(Shown(question.subject)), text_(Named(new QLineEdit, "txtAnswer")) {
  setObjectName("InputBox");
  setWindowTitle(InWindowLanguage(question.title, question.subject));
  auto* prompt = Paragraph("lblPrompt", InWindowLanguage(question.prompt, question.subject));
  auto* reasons = Paragraph("lblReasons", Breakable(Shown(question.reasons)));
  if (question.reasons.empty()) reasons->hide();
  text_->setAccessibleName(tr("The file, or the folder that it lies in"));
  text_->setPlaceholderText(text_->accessibleName());
  auto* browse = Named(new QPushButton(tr("&Browse...")), "cmdBrowse");
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &InputBox::Browse);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Asks again: the conversion cannot go on without the file"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* answer = new QHBoxLayout;
  answer->addWidget(text_, 1);
  answer->addWidget(browse);
  auto* contents = new QVBoxLayout(this);
  contents->addWidget(prompt);
  contents->addLayout(answer);
  contents->addWidget(reasons);
  contents->addStretch();
  contents->addWidget(buttons);
  const int width = fontMetrics().averageCharWidth() * 70;
  resize(width, contents->totalHeightForWidth(width));
  text_->setFocus();
}

QString InputBox::Text() const { return text_->text(); }

void InputBox::Browse() {
  const QString begin = Shown(FolderOf(PathOf(text_->text())));
  QFileDialog dialog(this, tr("Browsing..."), begin.isEmpty() ? QDir::homePath() : begin,
                     QString("%1 (%1 %2);;").arg(subject_, subject_.toLower()) + tr("All Files (*)"));
  dialog.setObjectName("Dialog");
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.exec() == Accepted) text_->setText(dialog.selectedFiles().constFirst());
}

}  // namespace tesselink
