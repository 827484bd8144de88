// SPDX-License-Identifier: MIT
#include "formats/dxf/DXFInFilter.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  // What blocks may draw beyond the bytes of the drawing: enough for every way to nest them, and soon at its end.
  constexpr std::size_t kMostDrawn = 2000;
  const std::string path = PutFile("f.dxf", {reinterpret_cast<const char*>(data), size});
  FilterOptions options;
  if (size % 2 == 0) options.own.Set("paper-space", "yes");
  options.own.Set("limit", std::to_string(kMostDrawn));
  options.programFolder = FuzzFolder();
  // A curve has many vertices for a few bytes, an array of inserts up to 65536; no element has more for its bytes.
  ReadToTheEnd<DXFInFilter>(path, size, options, 70000 + 300 * size);
  options.own.Set("blocks", size % 3 == 0 ? "both" : "expand");
  const std::size_t most = kMostVerticesOfChain + kMostVerticesOfCurve + 300 * size;
  if (size % 3 != 1) ReadToTheEnd<DXFInFilter>(path, size + kMostDrawn, options, most);
  options.dialect = Dialect::Standard;
  ReadToTheEnd<DXFInFilter>(path, size + kMostDrawn, options, most);
  return 0;
}
