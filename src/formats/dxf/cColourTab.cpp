// SPDX-License-Identifier: MIT
#include "formats/dxf/cColourTab.h"

#include <algorithm>
#include <array>
#include <limits>

#include "core/element/ColourNames.h"
#include "core/io/Errors.h"
#include "core/io/Paths.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

constexpr std::size_t kLast = 255;
constexpr std::int64_t kFirstRecord = 6;  // that of number 1

}  // namespace

void cColourTab::Create() {
  file_.Close();
  palette_.clear();
  file_ = BinaryFile(JoinPath(folder_, "ACADTBL.TBL"));
}

void cColourTab::ByteOrd(std::string_view order) {
  const std::string letter = UpperCase(order.substr(0, 1));
  if (letter != "I" && letter != "M") throw Error("Byte order must be Intel or Motorola", "ByteOrder");
  byteOrder_ = letter[0];
  palette_.clear();
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
  return Combined(record.data());
}

std::int32_t cColourTab::Combined(const std::uint8_t* record) const {
  const std::int32_t first = record[0], middle = record[1], last = record[2];
  return byteOrder_ == 'I' ? first + 256 * middle + 65536 * last : 65536 * first + 256 * middle + last;
}

// In one piece: a lookup for each colour would be a call to the system for each.
const std::vector<std::int32_t>& cColourTab::Palette() {
  if (!palette_.empty()) return palette_;
  if (!file_.IsOpen()) Create();
  std::array<std::uint8_t, std::size_t{3} * kLast> records{};
  const std::size_t got = file_.ReadAt(kFirstRecord, records.data(), records.size());
  if (got < records.size()) {
    throw Error(file_.Path() + ": holds no colour of number " + std::to_string(got / 3 + 1), "Colour");
  }
  for (std::size_t at = 0; at < records.size(); at += 3) palette_.push_back(Combined(&records[at]));
  return palette_;
}

bool cColourTab::IsColourOf(std::int32_t number, std::int32_t colour) {
  return Palette()[static_cast<std::size_t>(number - 1)] == colour;
}

std::int32_t cColourTab::Nearest(std::int32_t colour) {
  constexpr std::size_t kMostKept = 4096;
  if (const auto known = nearest_.find(colour); known != nearest_.end()) return known->second;
  const std::vector<std::int32_t>& palette = Palette();
  const auto nearest = std::min_element(palette.begin(), palette.end(), [&](std::int32_t a, std::int32_t b) {
    return ColourDistance(a, colour) < ColourDistance(b, colour);
  });
  if (nearest_.size() >= kMostKept) nearest_.clear();
  return nearest_[colour] = static_cast<std::int32_t>(nearest - palette.begin()) + 1;
}

}  // namespace tesselink
