// SPDX-License-Identifier: MIT
#include "formats/landmark/MolInFilter.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  const std::string path = PutFile("f.mol", {reinterpret_cast<const char*>(data), size});
  SilentPerson person;
  NoSettings settings;
  Report report;
  MolInFilter reader({person, settings, report});
  reader.filename(path);
  tEntity entity;
  if (!reader.Layers().empty() || reader.GetNextEntity(entity) || reader.Eof() != (size == 0)) std::abort();
  return 0;
}
