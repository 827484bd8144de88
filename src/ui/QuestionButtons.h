// SPDX-License-Identifier: MIT
// The buttons below a question of a run, and the way out of it.
#pragma once

#include <QCoreApplication>

class QBoxLayout;
class QDialog;
class QPushButton;
class QWidget;

namespace tesselink {

class QuestionButtons {
  Q_DECLARE_TR_FUNCTIONS(tesselink::QuestionButtons)

 public:
  /// A row of a "Continue" button of this name, which Return presses and which accepts the dialog, and of a Cancel
  /// button, which rejects it.
  static QBoxLayout* Row(QDialog& dialog, const char* continueName);
  /// The button that ends the run.
  static QPushButton* Cancel();
  /// Asks whether to end the run; No is what a careless key press answers.
  static bool MayEndRun(QWidget* parent);
};

}  // namespace tesselink
