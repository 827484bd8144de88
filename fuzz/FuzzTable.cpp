#include "formats/shape/DBFInFilter.h"
#include "fuzz/Harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tesselink;
  DBFInFilter table;
  try {
    table.filename(PutFile("f.dbf", {reinterpret_cast<const char*>(data), size}));
    const std::int64_t records = std::min<std::int64_t>(table.NumRecs(), 50);
    for (int field = 0; field <= std::min(table.NumFields(), 300); ++field) {
      if (table.FieldType(field) == 'C' && table.GetFieldNum(table.GetFieldName(field)) > field) std::abort();
      for (std::int64_t record = -1; record <= records; ++record) {
        if (table.GetFieldData(field, record).size() > static_cast<std::size_t>(table.FieldLength(field))) std::abort();
      }
    }
  } catch (const Error&) {
  }
  return 0;
}
