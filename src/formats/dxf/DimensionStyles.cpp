// SPDX-License-Identifier: MIT
#include "formats/dxf/DimensionStyles.h"

#include <cmath>

#include "core/io/Text.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {

void DimensionStyle::Take(int code, double value) {
  if (!std::isfinite(value)) return;
  if (code == 40) scale = value;
  if (code == 77) isTextAbove = value != 0;
  if (code == 140) textHeight = value;
  if (code == 147) gap = value;
}

void DimensionStyles::TakeGroup(const GroupScanner& scanner) {
  if (scanner.Code() == 2) {
    name_ = LowerCase(scanner.Keyword());
  } else {
    read_.Take(scanner.Code(), scanner.Number());
  }
}

void DimensionStyles::EndEntry() {
  if (!name_.empty()) styles_.emplace(name_, read_);
  name_.clear();
  read_ = {};
}

DimensionStyle DimensionStyles::Of(std::string_view name) const {
  const auto known = styles_.find(LowerCase(name));
  return known == styles_.end() ? DimensionStyle() : known->second;
}

}  // namespace tesselink
