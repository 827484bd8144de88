// SPDX-License-Identifier: MIT
// The first byte is the length of a code or pattern, which follows; the rest is both lookup files.
#include "formats/cdf/CDFMap.h"
#include "formats/grid/LNGSLMap.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::string pattern(bytes.substr(1, data[0]));
  const std::string wanted = pattern;
  SilentPerson person;
  NoSettings settings;
  Report report;
  FilterContext context{person, settings, report};
  const std::string list = PutFile("map", bytes.substr(wanted.size() + 1));
  for (const char* option : {"cdf-map", "lngsl"}) context.options.own.Set(option, list);
  CDFMap types(context);
  LNGSLMap colours(context);
  types.Create();
  colours.Create();
  const std::int16_t first = types.SearchCode(pattern);
  if (first < 0 || first > types.Count() || (first > 0 && !FitsPattern(types.Code(first), pattern))) std::abort();
  for (int i = 1; i < first; ++i) {
    if (FitsPattern(types.Code(i), pattern)) std::abort();
  }
  for (int i = 1; i <= types.Count(); ++i) {
    const std::int16_t found = types.SearchDesc(types.Description(i));
    if (types.Code(i).size() > 7 || found < 1 || found > i) std::abort();
  }
  for (int i = 0; i <= colours.Count() + 1; ++i) colours.LineColour(i), colours.TextColour(i);
  if (colours.SearchDesc(wanted) > colours.Count()) std::abort();
  return 0;
}
