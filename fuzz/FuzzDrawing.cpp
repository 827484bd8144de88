#include "formats/dxf/DXFInFilter.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  const std::string path = PutFile("f.dxf", {reinterpret_cast<const char*>(data), size});
  FilterOptions options;
  if (size % 2 == 0) options.own.Set("paper-space", "yes");
  options.programFolder = FuzzFolder();
  // A curve has many vertices for a few bytes, an array of inserts up to 65536; no element has more for its bytes.
  ReadToTheEnd<DXFInFilter>(path, size, options, 70000 + 300 * size);
  options.dialect = Dialect::Standard;
  ReadToTheEnd<DXFInFilter>(path, size, options, kMostVerticesOfChain + kMostVerticesOfCurve + 300 * size);
  return 0;
}
