// SPDX-License-Identifier: MIT
// What the writers of features have in common.
#pragma once

#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "formats/FeatureGeometry.h"

namespace tesselink {

class FeatureOutFilter : public OutputFilter {
 public:
  using OutputFilter::OutputFilter;
  static AreaPlace PlaceOfAreas(const OptionValues&) { return AreaPlace::Beside; }
  Carrying CarriesSource() const override { return Carrying::Yes; }

 protected:
  /// Makes the geometry of an element and counts what it does not say. False for an element that it cannot be made of.
  bool TakeGeometry(const tEntity& entity, FeatureKind kind);

  FeatureGeometry geometry_;
};

}  // namespace tesselink
