// SPDX-License-Identifier: MIT
// The three files of a shapefile in one input: the lengths of .shp and .shx as little-endian 32-bit numbers, then the
// bytes of .shp, .shx and .dbf. The standard dialect reads it without its index, too.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "formats/shape/ESRIInFilt.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  if (size < 8) return 0;
  std::uint32_t lengths[2];
  std::memcpy(lengths, data, sizeof lengths);
  std::string_view rest(reinterpret_cast<const char*>(data) + 8, size - 8);
  const auto take = [&rest](std::size_t length) {
    const std::string_view part = rest.substr(0, length);
    rest.remove_prefix(part.size());
    return part;
  };
  const std::string path = PutFile("f.shp", take(lengths[0]));
  PutFile("f.shx", take(lengths[1]));
  PutFile("f.dbf", rest);
  for (const Dialect dialect : {Dialect::Classic, Dialect::Standard})
    ReadToTheEnd<ESRIInFilt>(path, size * 4, {.dialect = dialect});
  std::remove((path.substr(0, path.size() - 4) + ".shx").c_str());
  ReadToTheEnd<ESRIInFilt>(path, size * 4, {.dialect = Dialect::Standard});
  return 0;
}
