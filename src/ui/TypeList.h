// SPDX-License-Identifier: MIT
// The entity type of one layer: a list in which a type is chosen, or found by typing part of it.
#pragma once

#include <QComboBox>
#include <QHash>

#include "ui/TextListModel.h"

namespace tesselink {

/// The types that all lists of a dialog share, as they show on the screen.
class TypesShown {
 public:
  explicit TypesShown(const std::vector<std::string>& types);

  /// Where a type stands first; -1 for a text that is none.
  int RowOf(const QString& text) const { return rows_.value(text, -1); }
  /// The type as its file has it, in place of its text on the screen; any other text as it is.
  std::string TypeOf(const QString& text) const;
  /// The first type that contains a text, whatever its letter case; empty for none.
  QString FirstWith(const QString& text) const;
  /// How wide the longest of them shows.
  int Width(const QFontMetrics& metrics) const;
  TextListModel* Model() { return &model_; }

 private:
  TextListModel model_;
  QHash<QString, int> rows_;
};

/// Any text may be typed. Return takes the first type that contains it, until it is a type's own. The wheel is left to
/// what the list stands on.
class TypeList final : public QComboBox {
  Q_OBJECT
 public:
  /// The types outlive the list.
  explicit TypeList(TypesShown& types, QWidget* parent = nullptr);

  void SetType(const QString& type);
  /// Whether its text is neither a type's nor empty.
  bool IsUnknown() const { return !currentText().isEmpty() && types_.RowOf(currentText()) < 0; }
  /// What Return takes instead of the text; empty for nothing.
  QString Suggestion() const { return IsUnknown() ? types_.FirstWith(currentText()) : QString(); }
  /// False when there is nothing to take.
  bool TakeSuggestion();

 signals:
  /// The keyboard has come to it.
  void entered(Qt::FocusReason reason);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeUsable();

  TypesShown& types_;
};

}  // namespace tesselink
