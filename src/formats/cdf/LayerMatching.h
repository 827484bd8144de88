// SPDX-License-Identifier: MIT
// Layer-name matching: which Geographix entity type each layer of a drawing becomes. The state and the rules behind the
// matching dialog; the command line matches by the same class.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/run/Filters.h"
#include "formats/cdf/CDFMap.h"

namespace tesselink {

class LayerMatching {
 public:
  /// The most layers that the dialog shows.
  static constexpr std::size_t kRowLimit = 50;
  static constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

  struct Row {
    std::string layer;      ///< as the reader delivers it
    std::string type;       ///< the description chosen, or what was typed, as UTF-8; empty: none
    std::string shortened;  ///< how Smart Assign reads the layer name, in capitals of Windows-1252
    std::vector<std::string> words = {};
    bool numeric = false;
    std::size_t strength = 0;  ///< of the best match so far
  };

  explicit LayerMatching(const FilterContext& context) : context_(context), map_(context) {}

  /// Makes a row for each layer, up to the limit; more layers than the dialog's limit are told in a message. Rows whose
  /// layer was matched before under the cross-reference name begin with that type. Throws what CDFMap::Create does.
  void Create(const std::vector<std::string>& layers, const std::string& heading = {},
              const std::string& crossReference = {}, bool countEmpty = false, std::size_t rowLimit = kRowLimit);

  /// The heading of the layer column.
  const std::string& Heading() const { return heading_; }
  /// Every description of the map as UTF-8, in its order.
  const std::vector<std::string>& Types() const { return types_; }
  const std::vector<Row>& Rows() const { return rows_; }
  /// The rows that had no type after Create, when it was asked to count them.
  std::int16_t UnReffed() const { return unReffed_; }

  /// Sets a row's text. One that is no description gives an empty code.
  void Choose(std::size_t row, const std::string& type) { rows_.at(row).type = type; }
  /// Gives each row without a type the entry at the row's own position in the list, whatever the layer's name.
  void AssignTypes();
  /// Guesses types from the layer names: a description that contains the whole name, else the first one that begins
  /// with the longest beginning of one of its words. Rows without any match keep their text.
  void SmartAssign();

  /// One code for each row, empty for a row without a known type, and remembers the pairs under the cross-reference
  /// name.
  std::vector<std::string> HandBack();
  /// The codes without remembering them.
  std::vector<std::string> Codes();

 private:
  std::string CodeOf(const std::string& description);
  void Recall();

  FilterContext context_;
  CDFMap map_;
  std::string heading_ = "DXF Layer Name";
  std::string crossReference_;
  std::vector<std::string> types_;
  std::vector<Row> rows_;
  std::int16_t unReffed_ = 0;
};

/// A layer name, as UTF-8, as Smart Assign reads it: elevations in metres become contours in feet, as in "Contour 300
/// Ft.".
std::string NameToMatch(const std::string& layer);

}  // namespace tesselink
