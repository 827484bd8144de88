// SPDX-License-Identifier: MIT
// One option of the pane "More": its label, its control, a button that helps, and what is wrong with its value.
#pragma once

#include <QObject>
#include <QString>
#include <string>

#include "app/ConversionOptions.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tesselink {

class OptionRow final : public QObject {
  Q_OBJECT
 public:
  /// The controls belong to the parent and are named for the option, as "option.blocks".
  OptionRow(ConversionOption option, QWidget& parent);

  const ConversionOption& Option() const { return option_; }
  /// Puts the controls behind those that are in the layout already.
  void AddTo(QGridLayout& grid);
  /// What the person gave; empty for nothing.
  std::string Value() const;
  void SetValue(const std::string& value);
  /// Greys what counts for nothing, and choices that the dialect does not have.
  void SetRest(OptionRest rest, Dialect dialect);
  /// The names of fields to choose from.
  void SetFields(const QStringList& fields);
  /// Tells beside the control what is wrong; empty when nothing is.
  void ShowProblem(const QString& problem);
  QString Problem() const;
  void SetFocus();
  /// The button that helps; null where there is none.
  QPushButton* Helper() const { return helper_; }

 signals:
  /// The person has changed the value and is done with it.
  void changed();

 private:
  QWidget* BuildControl(QWidget& parent);
  QComboBox* BuildChoices(QWidget& parent);
  void BuildHelper(QWidget& parent);
  void Browse();

  ConversionOption option_;
  QLabel *label_ = nullptr, *problem_;
  QCheckBox* flag_ = nullptr;
  QComboBox* list_ = nullptr;
  QLineEdit* text_ = nullptr;
  QPushButton* helper_ = nullptr;
  QWidget* control_;
};

}  // namespace tesselink
