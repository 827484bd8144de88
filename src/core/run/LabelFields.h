// SPDX-License-Identifier: MIT
// What the fields of an attribute table make of labels: their text, height and angle.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/run/FieldSelection.h"
#include "core/run/LabelText.h"

namespace tesselink {

class Report;
class tEntity;

/// The labels of one table, as they were chosen. Heights and angles are numbers, the same for all labels, or fields; a
/// name in braces is a field in any case.
class LabelFields {
 public:
  /// The table and the report outlive this; `path` names the table in messages. Throws Error for what the table does
  /// not have, and for numbers that cannot be.
  LabelFields(const FieldSelection& chosen, AttributeTable& table, std::string path, Report& report);

  /// The field of a name as GetFieldNum finds it; that another one stands for it is told.
  static int FieldNumber(const std::string& name, const AttributeTable& table, const std::string& path, Report& report);

  bool Wanted() const { return text_.Any(); }
  /// Whether a height was chosen; else labels have the one that is set.
  bool HasHeight() const { return height_.number || height_.field >= 0; }
  /// The height of labels that have none by the table.
  void DefaultHeight(double height) { defaultHeight_ = height; }
  /// The field of the colours of shapes and labels; -1 where none was chosen.
  int ColourField() const { return colourField_; }

  /// Puts text, height and angle of a row, counted from 0, into a label. False where there is nothing to say.
  bool Fill(std::int64_t row, tEntity& label);

 private:
  struct Number {
    std::optional<double> number = {};
    int field = -1;
  };
  static Number NumberOrField(const std::string& chosen, const AttributeTable& table);
  double ValueOf(const Number& number, std::int64_t row, double least, double otherwise);

  AttributeTable& table_;
  std::string path_;
  Report& report_;
  LabelText text_;
  Number height_, angle_;
  double defaultHeight_ = 1000;
  int colourField_ = -1;
};

}  // namespace tesselink
