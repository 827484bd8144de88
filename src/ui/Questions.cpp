// SPDX-License-Identifier: MIT
#include "ui/Questions.h"

#include <QInputDialog>
#include <QStringList>
#include <algorithm>

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "formats/cdf/LayerMatching.h"
#include "ui/FieldMemory.h"
#include "ui/UiText.h"
#include "ui/fDBFSel.h"
#include "ui/fTRDig.h"
#include "ui/frmESRIType.h"
#include "ui/frmLayers.h"
#include "ui/frmPoint.h"

namespace tesselink {
namespace {

void Answered(QDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted) throw OperationCanceled();
}

std::size_t AskShapeKind(const ChoiceQuestion& question, QWidget* parent) {
  frmESRIType dialog(parent, question.answers.size());
  dialog.Preset(static_cast<ShapeKind>(question.preset));
  Answered(dialog);
  return static_cast<std::size_t>(dialog.Kind());
}

std::size_t AskPoints(QWidget* parent) {
  frmPoint dialog(parent);
  if (dialog.Create() != QDialog::Accepted) throw OperationCanceled();
  return dialog.SecondFile() ? 0 : 1;
}

}  // namespace

void AskFields(FieldSelection& selection, Settings* settings, QWidget* parent) {
  if (selection.CurrentStep() == FieldSelection::Step::Done) return;
  fDBFSel dialog(selection, parent);
  if (settings == nullptr) return Answered(dialog);
  FieldMemory memory(*settings, selection);
  if (const std::optional<FieldAnswers> last = memory.Last()) dialog.OfferLast(*last);
  Answered(dialog);
  memory.Keep(selection);
}

std::vector<std::string> AskLayers(const LayerMatchingQuestion& question, QWidget* parent) {
  const bool all = question.context.options.dialect == Dialect::Standard;
  LayerMatching matching(question.context);
  matching.Create(question.layers, question.heading, question.application, false,
                  all ? LayerMatching::kNoLimit : LayerMatching::kRowLimit);
  return frmLayers(matching, parent, question.codesMatter).Match();
}

std::size_t AskChoice(const ChoiceQuestion& question, QWidget* parent) {
  if (question.option == "shape-type") return AskShapeKind(question, parent);
  if (question.option == "points") return AskPoints(parent);
  QStringList answers;
  for (const std::string_view answer : question.answers) answers.append(Shown(std::string(answer)));
  QInputDialog dialog(parent);
  dialog.setLabelText(Shown(std::string(question.option)));
  dialog.setComboBoxItems(answers);
  dialog.setTextValue(answers.value(static_cast<qsizetype>(question.preset)));
  Answered(dialog);
  return static_cast<std::size_t>(std::max<qsizetype>(answers.indexOf(dialog.textValue()), 0));
}

TableFields AskTableFields(const TableFieldsQuestion& question, QWidget* parent) {
  fTRDig dialog(question.suggestedTable, parent);
  Answered(dialog);
  return dialog.Fields();
}

}  // namespace tesselink
