// SPDX-License-Identifier: MIT
#include "core/element/Justification.h"

namespace tesselink {

using Place = TextPlacement;

std::string JustificationLetters(int code) {
  const auto [across, up] = PlacementOf(code);
  return {across == Place::kMiddle  ? 'C'
          : across == Place::kRight ? 'R'
                                    : 'L',
          up == Place::kCentre ? 'C'
          : up == Place::kTop  ? 'T'
                               : 'B'};
}

std::string LettersWithBaseline(int code) {
  std::string letters = JustificationLetters(code);
  if (PlacementOf(code).up == Place::kBaseline) letters.pop_back();
  return letters;
}

std::int16_t JustificationOfLetters(char horizontal, char vertical, int otherwise) {
  Place place;
  place.across = horizontal == 'C' ? Place::kMiddle : horizontal == 'R' ? Place::kRight : Place::kLeft;
  place.up = vertical == 'B'   ? Place::kBottom
             : vertical == 'C' ? Place::kCentre
             : vertical == 'T' ? Place::kTop
                               : otherwise;
  return JustificationCode(place);
}

}  // namespace tesselink
