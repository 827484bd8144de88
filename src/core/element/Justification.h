// Text justification: one byte, the vertical placement in its high four bits (0 or 16 bottom, 32 centre, 48 top), the
// horizontal one in its low four bits (0 left, 1 centre, 2 right).
#pragma once

#include <string>

namespace tesselink {

/// The two letters of a justification code, horizontal first, as in "LB"; values without a letter count as left or
/// bottom.
std::string JustificationLetters(int code);

}  // namespace tesselink
