// SPDX-License-Identifier: MIT
#include "formats/landmark/AscInFilter.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  const std::string path = PutFile("f.asc", {reinterpret_cast<const char*>(data), size});
  ReadToTheEnd<AscInFilter>(path, size);
  ReadToTheEnd<AscInFilter>(path, size, {.dialect = Dialect::Standard});
  return 0;
}
