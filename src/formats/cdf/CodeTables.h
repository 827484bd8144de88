// SPDX-License-Identifier: MIT
// What an entity code stands for: its layer, by the list of entity types, and its colours, by the list of colours.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "core/element/tEntity.h"
#include "core/run/ConversionRun.h"
#include "core/run/Filters.h"
#include "formats/cdf/CDFMap.h"
#include "formats/dxf/cColourTab.h"
#include "formats/grid/LNGSLMap.h"

namespace tesselink {

/// Serves the CDF reader, and the run for elements of other formats that have a code but no layer. The lists are opened
/// at the first code. A list that is not found is a warning: then every layer is "Unassociated" and no colour is set.
class CodeTables {
 public:
  explicit CodeTables(const FilterContext& context);

  /// Sets the layer of an element by its `CDFCode` ("Unassociated" for a code that the list does not hold), its
  /// `Colour` to the colour number of lines or of texts, and `RGB` to what that number stands for in drawings. The
  /// layer is the list's own bytes, or UTF-8 where the element's texts are.
  void Fill(tEntity& entity, bool asUtf8);

 private:
  struct Colour {
    std::int16_t number = 0;
    std::int32_t rgb = 0;
  };
  struct Meaning {
    std::string layer = "Unassociated", layerUtf8 = layer;
    bool coloured = false;
    Colour line, text;
  };

  void Open();
  Meaning Look(const std::string& code);
  Colour ColourOf(std::int16_t number);

  FilterContext context_;
  CDFMap types_;
  LNGSLMap colours_;
  cColourTab colourNumbers_;
  bool opened_ = false;
  std::unordered_map<std::string, Meaning> known_;
};

/// The run's filler: tables of its own, opened when they are first needed.
LayerFiller FillerFromCodeTables();

}  // namespace tesselink
