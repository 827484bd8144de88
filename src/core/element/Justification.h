// SPDX-License-Identifier: MIT
// Text justification: one byte, the vertical placement in its high four bits (0 or 16 bottom, 32 centre, 48 top), the
// horizontal one in its low four bits (0 left, 1 centre, 2 right).
#pragma once

#include <cstdint>
#include <string>

namespace tesselink {

/// The two halves of a justification code, each as it stands in the byte. Vertically 0 is the baseline, where a format
/// tells it from the bottom.
struct TextPlacement {
  static constexpr int kLeft = 0, kMiddle = 1, kRight = 2;
  static constexpr int kBaseline = 0, kBottom = 16, kCentre = 32, kTop = 48;

  int across = kLeft;
  int up = kBaseline;
};

constexpr TextPlacement PlacementOf(int code) { return {code & 15, code & 240}; }
constexpr std::int16_t JustificationCode(TextPlacement placement) {
  return static_cast<std::int16_t>(placement.up + placement.across);
}

/// The two letters of a justification code, horizontal first, as in "LB"; values without a letter count as left or
/// bottom.
std::string JustificationLetters(int code);
/// The letters without that of the vertical placement for a text on its baseline, as in "L".
std::string LettersWithBaseline(int code);
/// The code of two letters, compared exactly. No horizontal letter counts as left, no vertical one as `otherwise`.
std::int16_t JustificationOfLetters(char horizontal, char vertical, int otherwise);

}  // namespace tesselink
