// SPDX-License-Identifier: MIT
// Finds an element of a picture again in the files that it was read from, with what no picture holds.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "picture/QuietReading.h"

namespace tesselink {

/// What there is to know of an element.
struct ElementFacts {
  std::string where;  ///< file and line or record
  std::int16_t kind = 0;
  bool isArea = false, isClosed = false;
  std::string layer, lineType, text, code;
  std::int32_t colour = 0;
  bool coloured = false;
  double size = 0;            ///< of a text its height, of a circle or an arc its radius
  std::int64_t vertices = 0;  ///< of the element, or of one ring where an area comes ring by ring
  std::int64_t record = 0;    ///< 0 where there are none
  std::vector<std::pair<std::string, std::string>> attributes;  ///< names and values
};

class ElementLookup final : public QuietReading {
 public:
  /// Looks for the element that a PreviewReading of the same input gave this number.
  ElementLookup(const PreviewInput& input, Settings& settings, std::uint32_t number,
                Clock clock = std::chrono::steady_clock::now)
      : QuietReading(input, settings, {}, std::move(clock)), number_(number) {}

  /// Nothing before the reading has ended, or where the file has changed since.
  const std::optional<ElementFacts>& Found() const { return found_; }

 private:
  void Take(InputFilter& reader, const tEntity& entity, std::uint32_t number) override;

  std::uint32_t number_;
  std::optional<ElementFacts> found_;
};

}  // namespace tesselink
