#include "core/element/Justification.h"

namespace tesselink {

std::string JustificationLetters(int code) {
  const int horizontal = code & 15, vertical = code & 240;
  std::string letters = "LB";
  if (horizontal == 1) letters[0] = 'C';
  if (horizontal == 2) letters[0] = 'R';
  if (vertical == 32) letters[1] = 'C';
  if (vertical == 48) letters[1] = 'T';
  return letters;
}

}  // namespace tesselink
