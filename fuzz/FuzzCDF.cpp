// SPDX-License-Identifier: MIT
// Reads a drawing, writes what was read, and reads that: every header that was written must be found again, with an
// element behind it unless its text was blank.
#include "formats/cdf/CDFInFilter.h"
#include "formats/cdf/CDFOutFilter.h"
#include "fuzz/Harness.h"

namespace tesselink {
namespace {

struct Found {
  std::int64_t elements = 0, loneHeaders = 0;
};

template <typename Handler>
Found Read(const std::string& path, Handler handler) {
  SilentPerson person;
  NoSettings settings;
  Report report;
  CDFInFilter reader({person, settings, report});
  Found found;
  Pump pump(Dialect::Classic);
  try {
    reader.filename(path);
    while (pump.Next(reader)) {
      if (pump.Delivered()) handler(pump.Element());
    }
  } catch (const Error&) {  // a number that is too large
  }
  found.elements = pump.Elements();
  for (const Warning& warning : report.Warnings()) {
    if (warning.kind == "lone headers") found.loneHeaders = warning.count;
  }
  return found;
}

}  // namespace
}  // namespace tesselink

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  const std::string path = PutFile("f.cdf", {reinterpret_cast<const char*>(data), size}),
                    copy = FuzzFolder() + "/g.cdf";
  ReadToTheEnd<CDFInFilter>(path, size);
  SilentPerson person;
  NoSettings settings;
  Report report;
  CDFOutFilter writer({person, settings, report});
  writer.filename(copy);
  std::int64_t written = 0;
  Read(path, [&](tEntity& entity) {
    if (entity.PointCount() == -1) return;
    writer.WriteEntity(entity);
    ++written;
  });
  writer.Release();
  const Found again = Read(copy, [](const tEntity&) {});
  if (again.elements + again.loneHeaders != written) std::abort();
  return 0;
}
