// SPDX-License-Identifier: MIT
#include "formats/shape/DBFInFilter.h"
#include "fuzz/Harness.h"

namespace tesselink {
namespace {

void ReadTable(const std::string& path, Dialect dialect) {
  DBFInFilter table(dialect);
  try {
    table.filename(path);
    const std::int64_t records = std::min<std::int64_t>(table.NumRecs(), 50);
    for (int field = 0; field <= std::min(table.NumFields(), 300); ++field) {
      if (table.FieldType(field) == 'C' && table.GetFieldNum(table.GetFieldName(field)) > field) std::abort();
      const auto most = static_cast<std::size_t>(table.FieldWidth(field));
      for (std::int64_t record = -1; record <= records; ++record) {
        if (table.FieldType(field) == 'C' && table.GetFieldData(field, record).size() > most) std::abort();
      }
    }
  } catch (const Error&) {
  }
}

}  // namespace
}  // namespace tesselink

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  const std::string path = PutFile("f.dbf", {reinterpret_cast<const char*>(data), size});
  for (const Dialect dialect : {Dialect::Classic, Dialect::Standard}) ReadTable(path, dialect);
  return 0;
}
