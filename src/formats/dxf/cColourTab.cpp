#include "formats/dxf/cColourTab.h"

#include <array>
#include <limits>

#include "core/element/ColourNames.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"

namespace tesselink {

void cColourTab::Create() {
  file_.Close();
  file_ = BinaryFile(JoinPath(folder_, "ACADTBL.TBL"));
}

void cColourTab::ByteOrd(std::string_view order) {
  const std::string letter = UpperCase(order.substr(0, 1));
  if (letter != "I" && letter != "M") throw Error("Byte order must be Intel or Motorola", "ByteOrder");
  byteOrder_ = letter[0];
}

std::int32_t cColourTab::Colour(std::int32_t number) {
  if (!file_.IsOpen()) Create();
  // Positions count from 1 and are held in 16 bits.
  const std::int64_t position = std::int64_t{number} * 3 + 4;
  constexpr std::int64_t kGreatest = std::numeric_limits<std::int16_t>::max();
  if (position > kGreatest || position < -kGreatest - 1) {
    throw Error("Overflow: the colour number " + std::to_string(number) + " is too large", "Colour");
  }
  std::array<std::uint8_t, 3> record{};
  if (file_.ReadAt(position - 1, record.data(), record.size()) < record.size()) {
    throw Error(file_.Path() + ": holds no colour of number " + std::to_string(number), "Colour");
  }
  const std::int32_t first = record[0], middle = record[1], last = record[2];
  return byteOrder_ == 'I' ? first + 256 * middle + 65536 * last : 65536 * first + 256 * middle + last;
}

std::int32_t cColourTab::Nearest(std::int32_t colour) {
  constexpr std::size_t kMostKept = 4096;
  if (const auto known = nearest_.find(colour); known != nearest_.end()) return known->second;
  std::int32_t best = 1;
  for (std::int32_t number = 2; number < 256; ++number) {
    if (ColourDistance(Colour(number), colour) < ColourDistance(Colour(best), colour)) best = number;
  }
  if (nearest_.size() >= kMostKept) nearest_.clear();
  nearest_[colour] = best;
  return best;
}

}  // namespace tesselink
