// The questions that a format pair raises, each asked in a window of its own.
#pragma once

#include <string>
#include <vector>

#include "core/run/Interaction.h"

class QWidget;

namespace tesselink {

// Each throws OperationCanceled when its window is closed without an answer.

void AskFields(FieldSelection& selection, QWidget* parent);
/// One code for each layer that the dialog shows.
std::vector<std::string> AskLayers(const LayerMatchingQuestion& question, QWidget* parent);
ShapeKind AskShapeKind(ShapeKind preset, QWidget* parent);
PointChoice AskPoints(QWidget* parent);
GridFields AskGridFields(const std::string& suggestedTable, QWidget* parent);

}  // namespace tesselink
