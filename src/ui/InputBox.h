// SPDX-License-Identifier: MIT
// An input box that asks where a file lies.
#pragma once

#include <QDialog>

class QLineEdit;

namespace tesselink {

struct TextQuestion;

/// Says why what was looked for before is no good, and has a button to look for the file. It begins empty; Escape and
/// its Cancel button reject.
class InputBox final : public QDialog {
  Q_OBJECT
 public:
  explicit InputBox(const TextQuestion& question, QWidget* parent = nullptr);
  QString Text() const;

 private:
  void Browse();

  QString subject_;
  QLineEdit* text_;
};

}  // namespace tesselink
