// SPDX-License-Identifier: MIT
#include "core/run/AttributeTable.h"

#include "core/io/Text.h"

namespace tesselink {

int FieldNamed(const AttributeTable& table, std::string_view name) {
  for (int i = 0; i <= table.NumFields(); ++i) {
    if (EqualsIgnoringCase(Trimmed(table.GetFieldName(i)), Trimmed(name))) return i;
  }
  return -1;
}

std::string FieldNames(const AttributeTable& table) {
  std::string names;
  for (int i = 0; i <= table.NumFields(); ++i) names += (i > 0 ? ", " : "") + table.GetFieldName(i);
  return names.empty() ? "none" : names;
}

}  // namespace tesselink
