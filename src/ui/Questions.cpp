#include "ui/Questions.h"

#include "core/io/Errors.h"
#include "core/run/FieldSelection.h"
#include "formats/cdf/LayerMatching.h"
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

}  // namespace

void AskFields(FieldSelection& selection, QWidget* parent) {
  if (selection.CurrentStep() == FieldSelection::Step::Done) return;
  fDBFSel(selection, parent).exec();
}

std::vector<std::string> AskLayers(const LayerMatchingQuestion& question, QWidget* parent) {
  const bool all = question.context.options.dialect == Dialect::Standard;
  LayerMatching matching(question.context);
  matching.Create(question.layers, question.heading, question.application, false,
                  all ? LayerMatching::kNoLimit : LayerMatching::kRowLimit);
  return frmLayers(matching, parent).Match();
}

ShapeKind AskShapeKind(ShapeKind preset, QWidget* parent) {
  frmESRIType dialog(parent);
  dialog.Preset(preset);
  Answered(dialog);
  return dialog.Kind();
}

PointChoice AskPoints(QWidget* parent) {
  frmPoint dialog(parent);
  if (dialog.Create() != QDialog::Accepted) throw OperationCanceled();
  return dialog.SecondFile() ? PointChoice::SecondFile : PointChoice::Ignore;
}

GridFields AskGridFields(const std::string& suggestedTable, QWidget* parent) {
  fTRDig dialog(suggestedTable, parent);
  Answered(dialog);
  return dialog.Fields();
}

}  // namespace tesselink
