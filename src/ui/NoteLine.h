// SPDX-License-Identifier: MIT
// A line below a control that says what its content means, with a button where something can be done about it.
#pragma once

#include <QLabel>
#include <QString>
#include <QWidget>

class QToolButton;

namespace tesselink {

struct Note {
  QString text = {};
  bool isProblem = false;  ///< marked by a sign, not by a colour alone
  QString action = {};     ///< the button's caption; empty for none

  bool operator==(const Note&) const = default;
};

/// As high as a line at least, so that little moves while a person types. A screen reader finds the text as `meaning`.
class NoteLine final : public QWidget {
  Q_OBJECT
 public:
  NoteLine(const char* name, const QString& meaning, QWidget* parent = nullptr);

  void Show(const Note& note);
  const Note& Shown() const { return note_; }

 signals:
  /// The button was pressed.
  void acted();

 private:
  QString meaning_;
  QLabel *sign_, *text_;
  QToolButton* action_;
  Note note_;
};

}  // namespace tesselink
