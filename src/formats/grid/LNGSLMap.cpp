// SPDX-License-Identifier: MIT
#include "formats/grid/LNGSLMap.h"

#include "core/io/Text.h"

namespace tesselink {

LNGSLMap::LNGSLMap(const FilterContext& context)
    : file_(context, {"$LNGSL.DAT", "LNGSL", 126, context.options.own.Text("lngsl")}) {}

std::int16_t LNGSLMap::SearchDesc(const std::string& description) {
  const std::int16_t count = Count();
  for (int number = 1; number <= count; ++number) {
    if (CutAtNul(file_.Record(number).substr(0, 40)) == description) return static_cast<std::int16_t>(number);
  }
  return 0;
}

std::int16_t LNGSLMap::Number(int record, std::size_t offset) {
  const std::string_view bytes = file_.Record(record).substr(offset, 2);
  const unsigned low = static_cast<unsigned char>(bytes[0]), high = static_cast<unsigned char>(bytes[1]);
  return static_cast<std::int16_t>(high << 8 | low);
}

}  // namespace tesselink
