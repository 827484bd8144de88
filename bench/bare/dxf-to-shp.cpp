// SPDX-License-Identifier: MIT
// The least that a loop must do to turn the chains of a drawing of release AC1009 into the records of a shapefile:
// lines found, codes and numbers read, boxes and records written; nothing checked, no index, no table, no header.
// Usage: dxf-to-shp IN.dxf OUT.shp
#include "BareGroups.h"

namespace {

using namespace bare;

void WriteRecord(Output& out, std::uint32_t number, const Chain& chain) {
  struct [[gnu::packed]] {
    std::uint32_t number, length, type;
    double box[4];
    std::uint32_t parts, points, start;
  } head{};
  const std::size_t count = chain.x.size();
  head.number = __builtin_bswap32(number);
  head.length = __builtin_bswap32(static_cast<std::uint32_t>((sizeof head - 8 + 16 * count) / 2));
  head.type = 3;
  double box[] = {1e300, 1e300, -1e300, -1e300};
  for (std::size_t i = 0; i < count; ++i) {
    box[0] = chain.x[i] < box[0] ? chain.x[i] : box[0];
    box[1] = chain.y[i] < box[1] ? chain.y[i] : box[1];
    box[2] = chain.x[i] > box[2] ? chain.x[i] : box[2];
    box[3] = chain.y[i] > box[3] ? chain.y[i] : box[3];
  }
  std::memcpy(head.box, box, sizeof box);
  head.parts = 1;
  head.points = static_cast<std::uint32_t>(count);
  out.Put({reinterpret_cast<const char*>(&head), sizeof head});
  for (std::size_t i = 0; i < count; ++i) {
    const double xy[] = {chain.x[i], chain.y[i]};
    out.Put({reinterpret_cast<const char*>(xy), sizeof xy});
  }
}

}  // namespace

int main(int count, char** values) {
  if (count != 3) return 2;
  Output out(values[2]);
  std::uint32_t records = 0;
  bare::ForEachChain(values[1], [&](const bare::Chain& chain) { WriteRecord(out, ++records, chain); });
}
