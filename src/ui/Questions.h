// SPDX-License-Identifier: MIT
// The questions that a format pair raises, each asked in a window of its own.
#pragma once

#include <string>
#include <vector>

#include "core/run/Interaction.h"
#include "core/run/Settings.h"

class QWidget;

namespace tesselink {

// Each throws OperationCanceled when the person cancels instead of answering.

/// Offers what was answered the last time, and keeps the answers; without settings neither.
void AskFields(FieldSelection& selection, Settings* settings, QWidget* parent);
/// One code for each layer that the dialog shows.
std::vector<std::string> AskLayers(const LayerMatchingQuestion& question, QWidget* parent);
/// The position of the answer; a question without a window of its own gets a plain list.
std::size_t AskChoice(const ChoiceQuestion& question, QWidget* parent);
TableFields AskTableFields(const TableFieldsQuestion& question, QWidget* parent);

}  // namespace tesselink
