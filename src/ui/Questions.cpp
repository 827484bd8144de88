#include "ui/Questions.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include "core/Errors.h"
#include "core/FieldSelection.h"
#include "faces/UiText.h"

namespace tesselink {
namespace {

std::string Choice(QWidget* parent, const QString& title, const QString& label, const QStringList& items, int first) {
  bool chosen = false;
  const QString item = QInputDialog::getItem(parent, title, label, items, first, false, &chosen);
  if (!chosen) throw OperationCanceled();
  return item.toStdString();
}

std::string Typed(QWidget* parent, const QString& title, const QString& label, const std::string& preset) {
  bool typed = false;
  const QString text = QInputDialog::getText(parent, title, label, QLineEdit::Normal, Shown(preset), &typed);
  if (!typed) throw OperationCanceled();
  return text.toStdString();
}

}  // namespace

void AskFields(FieldSelection& selection, QWidget* parent) {
  while (selection.CurrentStep() != FieldSelection::Step::Done) {
    QStringList items;
    for (const std::string& choice : selection.Choices()) items.append(Shown(choice));
    const bool layer = selection.CurrentStep() == FieldSelection::Step::LayerField;
    const int first = layer ? 0 : static_cast<int>(items.size()) - 1;
    const QString label = Shown(selection.Stat()) + "\n\n" + Shown(selection.FieldLabel());
    selection.Choose(Choice(parent, "DBF Fields", label, items, first));
    selection.Continue();
  }
}

// There is no window for the matching of layers yet.
std::optional<std::vector<std::string>> AskLayers(const LayerMatchingQuestion&, QWidget*) { return std::nullopt; }

ShapeKind AskShapeKind(ShapeKind preset, QWidget* parent) {
  const QStringList items{"Points or Text", "Polyline"};
  const std::string kind = Choice(parent, "ESRI Shape File Type",
                                  "ESRI Shape files have the limitation that they can only support one type of entity "
                                  "at a time. Which type of entity would you like this file to be?",
                                  items, preset == ShapeKind::Polyline ? 1 : 0);
  return kind == "Polyline" ? ShapeKind::Polyline : ShapeKind::PointsOrText;
}

PointChoice AskPoints(QWidget* parent) {
  const QStringList items{"Create a 2nd Output file for point entities", "Ignore Point elements"};
  const std::string choice = Choice(parent, "Point Entities", "Point entities were found in the input file.", items, 0);
  return choice == items[0].toStdString() ? PointChoice::SecondFile : PointChoice::Ignore;
}

GridFields AskGridFields(const std::string& suggestedTable, QWidget* parent) {
  const QString title = "Locate Township and Range Fields";
  GridFields fields;
  fields.table = Typed(parent, title, "Table", suggestedTable);
  fields.township = Typed(parent, title, "Township", "");
  fields.range = Typed(parent, title, "Range", "");
  fields.section = Typed(parent, title, "Section", "");
  return fields;
}

}  // namespace tesselink
