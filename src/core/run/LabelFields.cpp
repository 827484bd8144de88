// SPDX-License-Identifier: MIT
#include "core/run/LabelFields.h"

#include <cmath>
#include <limits>

#include "core/element/tEntity.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "core/run/AttributeTable.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

constexpr double kAnyNumber = -std::numeric_limits<double>::infinity();

}  // namespace

LabelFields::LabelFields(const FieldSelection& chosen, AttributeTable& table, std::string path, Report& report)
    : table_(table), path_(std::move(path)), report_(report) {
  const LabelLook& look = chosen.Look();
  try {
    height_ = NumberOrField(look.height, table);
    angle_ = NumberOrField(look.angle, table);
    if (!look.colour.empty()) colourField_ = FieldMeant(look.colour, table);
    if (height_.number && !(*height_.number > 0)) throw Error("a height of labels is a number above 0");
    if (!chosen.TextWanted()) return;
    if (LabelText::IsTemplate(chosen.TextField()) && FieldNamed(table, chosen.TextField()) < 0) {
      text_ = LabelText(chosen.TextField(), table);
      return;
    }
  } catch (const Error& error) {
    throw Error(path_ + ": " + error.what());
  }
  text_ = LabelText(FieldNumber(chosen.TextField(), table, path_, report));
}

int LabelFields::FieldNumber(const std::string& name, const AttributeTable& table, const std::string& path,
                             Report& report) {
  const int number = table.GetFieldNum(name);
  if (number == 0 && !EqualsIgnoringCase(Trimmed(table.GetFieldName(0)), Trimmed(name))) {
    report.Warn(WarningKind::UnknownField,
                path + ": has no field \"" + name + "\"; its first field, \"" + table.GetFieldName(0) + "\", is used",
                name);
  }
  return number;
}

LabelFields::Number LabelFields::NumberOrField(const std::string& chosen, const AttributeTable& table) {
  if (chosen.empty()) return {};
  if (const double number = NumberOrNone(chosen); std::isfinite(number)) return {.number = number};
  return {.field = FieldMeant(chosen, table)};
}

double LabelFields::ValueOf(const Number& number, std::int64_t row, double least, double otherwise) {
  if (number.field < 0) return number.number.value_or(otherwise);
  const std::string_view text = table_.GetFieldData(number.field, row);
  const double value = NumberOrNone(text);
  if (value > least && std::isfinite(value)) return value;
  report_.Warn(WarningKind::LabelNumbers, path_ + ", row " + std::to_string(row + 1) + ": \"" + std::string(text) +
                                              "\" in " + table_.GetFieldName(number.field) + " is no " +
                                              (&number == &height_ ? "height" : "angle") + " of a label; " +
                                              NumberText(otherwise) + " was taken");
  return otherwise;
}

bool LabelFields::Fill(std::int64_t row, tEntity& label) {
  if (!text_.Write(table_, row, label.Text)) return false;
  label.TextSize = ValueOf(height_, row, 0, defaultHeight_);
  label.TextAng = ValueOf(angle_, row, kAnyNumber, 0);
  return true;
}

}  // namespace tesselink
