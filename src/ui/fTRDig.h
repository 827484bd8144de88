// SPDX-License-Identifier: MIT
// The question where the townships, ranges and sections of a T/R Digitizer file come from.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "core/run/Interaction.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace tesselink {

/// Escape and the close box reject: the run is to be cancelled.
class fTRDig final : public QDialog {
  Q_OBJECT
 public:
  explicit fTRDig(const std::string& suggestedTable, QWidget* parent = nullptr);

  /// The table and the names of its fields, as the table spells them.
  TableFields Fields() const;
  /// What stands in the way of going on; empty when nothing does.
  QString Problem() const;
  /// Goes on unless there is a problem.
  void accept() override;

 private:
  struct Entry {
    QComboBox* list;
    QString caption;
    QString missing;  // what is said while it names no field
    std::vector<QString> usualNames;
  };

  QLayout* Contents();
  QComboBox* NewEntry(const char* name);
  void Browse();
  void UseTable(const std::string& path);
  void ReadFieldNames();
  void ShowProblem();
  int FieldOf(const Entry& entry) const;
  void Guess(const Entry& entry);

  std::string table_;
  std::vector<std::string> fieldNames_;
  QString tableProblem_;
  QLineEdit* path_;
  std::vector<Entry> entries_;
  QLabel* problem_;
};

}  // namespace tesselink
