// SPDX-License-Identifier: MIT
#include "formats/shape/DrawingColumns.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/element/ColourNames.h"
#include "core/element/Justification.h"
#include "core/element/tEntity.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr std::size_t kAlways = 5, kOfPoints = 4;  // the first ones, and the last

bool IsOfType(char found, char wanted) { return found == wanted || (wanted == 'N' && found == 'F'); }

double NumberOf(std::string_view text) {
  const double number = NumberOrNone(text);
  return std::isfinite(number) ? number : 0;
}

}  // namespace

bool DrawingColumns::Find(const AttributeTable& table) {
  fields_.fill(-1);
  others_.clear();
  for (int i = 0; i <= table.NumFields(); ++i) {
    const std::string name = table.GetFieldName(i);
    const auto form = std::find_if(kDrawingColumns.begin(), kDrawingColumns.end(),
                                   [&](const ColumnForm& column) { return EqualsIgnoringCase(column.name, name); });
    const auto column = static_cast<std::size_t>(form - kDrawingColumns.begin());
    if (form != kDrawingColumns.end() && fields_[column] < 0 && IsOfType(table.FieldType(i), form->type)) {
      fields_[column] = i;
    } else {
      others_.push_back(i);
    }
  }
  const auto isThere = [](int field) { return field >= 0; };
  const auto ofPoints = std::count_if(fields_.end() - kOfPoints, fields_.end(), isThere);
  return std::all_of(fields_.begin(), fields_.begin() + kAlways, isThere) && (ofPoints == 0 || ofPoints == kOfPoints);
}

void DrawingColumns::Store(AttributeTable& table, std::int64_t row, tEntity& entity) const {
  const auto value = [&](Column column) { return table.GetFieldData(At(column), row); };
  constexpr double kGreatest = std::numeric_limits<std::int32_t>::max();
  entity.Layer = value(Column::Layer);
  entity.CDFCode = value(Column::Code);
  entity.Colour = static_cast<std::int32_t>(std::clamp(NumberOf(value(Column::Number)), -kGreatest, kGreatest));
  if (const auto colour = ColourOfText(value(Column::TrueColour))) {
    entity.RGB = *colour;
    entity.IsBlack = *colour == 0;
  }
  entity.LineStyle = value(Column::LineType);
  entity.Block = value(Column::Block);
  const std::string_view handle = value(Column::EntityHandle);
  std::from_chars(handle.data(), handle.data() + handle.size(), entity.Handle, 16);
  if (Has(Column::Text) && entity.bType == kPoint) StoreText(table, row, entity);
}

void DrawingColumns::StoreText(AttributeTable& table, std::int64_t row, tEntity& entity) const {
  entity.Text = table.GetFieldData(At(Column::Text), row);
  entity.TextAng = NumberOf(table.GetFieldData(At(Column::Angle), row));
  entity.TextSize = NumberOf(table.GetFieldData(At(Column::Height), row));
  const std::string_view letters = table.GetFieldData(At(Column::Placement), row);
  if (letters.empty() || entity.PointCount() > 0) return;
  entity.bType = kText;
  entity.TextJust = JustificationOfLetters(letters[0], letters.size() > 1 ? letters[1] : ' ', TextPlacement::kBaseline);
}

int SomeFields::GetFieldNum(std::string_view name) const {
  if (name.empty()) return -1;
  const int field = FieldNamed(*this, name);
  if (field < 0) throw Error("there is no field \"" + std::string(name) + "\"; the fields are " + FieldNames(*this));
  return field;
}

}  // namespace tesselink
