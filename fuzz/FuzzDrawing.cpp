#include "formats/dxf/DXFInFilter.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  const std::string path = PutFile("f.dxf", {reinterpret_cast<const char*>(data), size});
  SilentPerson person;
  NoSettings settings;
  Report report;
  FilterOptions options;
  options.paperSpace = size % 2 == 0;
  options.programFolder = FuzzFolder();
  DXFInFilter reader({person, settings, report, options});
  // A curve has many vertices for a few bytes, an array of inserts up to 65536; no element has more for its bytes.
  const std::size_t most = 70000 + 300 * size;
  tEntity entity;
  std::size_t delivered = 0;
  try {
    reader.filename(path);
    while (!reader.Eof()) {
      if (reader.GetNextEntity(entity) && ++delivered > size) std::abort();
      if (static_cast<std::size_t>(entity.PointCount() + 1) > most) std::abort();
      entity.Clear();
    }
  } catch (const Error&) {
  }
  return 0;
}
