// SPDX-License-Identifier: MIT
// What a person answered the last time about the fields of a table like this one.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "core/run/FieldSelection.h"
#include "core/run/Settings.h"

namespace tesselink {

struct FieldAnswers {
  std::string layer, text;
  LabelLook look;

  /// The fields in a few words, as in "LAYER, LABEL".
  QString Words() const;
};

/// Tables are alike when their fields have the same names, in the same order.
class FieldMemory {
 public:
  /// The settings must outlive the memory. The selection offers a table's fields; it is at its first question.
  FieldMemory(Settings& settings, const FieldSelection& selection);

  /// Nothing where no such table was asked about, or nothing was chosen.
  std::optional<FieldAnswers> Last() const;
  void Keep(const FieldSelection& answered);

 private:
  Settings& settings_;
  std::string key_;
};

}  // namespace tesselink
