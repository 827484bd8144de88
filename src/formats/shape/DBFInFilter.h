// Random access to a dBase attribute table. It is not an input format of its own: the shapefile reader and the field
// questions use it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/AttributeTable.h"
#include "core/Files.h"

namespace tesselink {

/// Reads a table by field and record. Only the header and the field descriptors stay in memory. Deleted records are
/// returned like any other, and numbers as their text.
class DBFInFilter final : public AttributeTable {
 public:
  /// Opens a table and reads header and descriptors. A file that does not exist changes nothing.
  void filename(const std::string& path);
  const std::string& filename() const { return filename_; }
  /// The read position as a percentage of the file; 0 with no file open.
  int Progress() const;

  int NumFields() const override { return static_cast<int>(fields_.size()) - 1; }
  /// Counted from the file's size, not from the header. Throws Error when the header gives a record length of 0.
  std::int64_t NumRecs() const override;
  std::string GetFieldName(int field) const override;
  int GetFieldNum(std::string_view name) const override;
  std::string_view GetFieldData(int field, std::int64_t record) override;

  /// The type letter, the length in bytes and the count of decimals of a field, as its descriptor gives them.
  char FieldType(int field) const { return Descriptor(field).type; }
  int FieldLength(int field) const { return Descriptor(field).length; }
  int FieldDecimals(int field) const { return Descriptor(field).decimals; }

 private:
  struct Field {
    std::string name;  // 11 bytes as stored
    char type = ' ';
    int length = 0;
    int decimals = 0;
    std::int64_t offset = 0;  // from the record's first byte, the deletion flag
  };
  void ReadFields();
  const Field& Descriptor(int field) const;

  std::string filename_;
  BinaryFile file_;
  ReadWindow window_{file_};
  std::vector<Field> fields_;
  std::int64_t headerLength_ = 0;
  std::int64_t recordLength_ = 0;
  std::int64_t position_ = 0;
};

}  // namespace tesselink
