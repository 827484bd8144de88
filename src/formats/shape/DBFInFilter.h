// SPDX-License-Identifier: MIT
// Random access to a dBase attribute table. It is not an input format of its own: the shapefile reader and the field
// questions use it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/io/Files.h"
#include "core/run/AttributeTable.h"
#include "core/run/Dialect.h"
#include "core/run/Filters.h"
#include "formats/shape/TableEncoding.h"
#include "formats/shape/TableValues.h"

namespace tesselink {

class Report;

/// What a dialect decides in reading a table.
struct DBFReading {
  bool byHeader;             ///< the terminator ends the fields and the header counts the rows; else lengths tell both
  bool unknownFieldIsFirst;  ///< else an unknown field name is an error
  bool longNames;    ///< a name may fill all 11 bytes, and blanks behind it are none of it; else that is an error
  bool asUtf8;       ///< texts are decoded by .cpg file or language byte; else their bytes are passed on
  bool keepsIndent;  ///< blanks before a text are part of it
  bool everyType;  ///< binary values and memo fields become text, and dBase 7 is known; else their bytes are passed on
};

/// Reads a table by field and record. Only the header and the field descriptors stay in memory. Numbers are returned as
/// text, and deleted records like any other.
class DBFInFilter final : public AttributeTable {
 public:
  explicit DBFInFilter(Dialect dialect = Dialect::Classic) : DBFInFilter(dialect, nullptr, nullptr) {}
  /// `report` is told of what a table's values lack; `page`, where not null, is that of its texts, whatever the table
  /// says.
  DBFInFilter(Dialect dialect, Report* report, const CodePage* page);

  /// Opens a table and reads header and descriptors. A file that does not exist changes nothing; after one that cannot
  /// be read none is open.
  void filename(const std::string& path);
  /// The same for a table that must be there: one that cannot be read throws ReadFailed.
  void OpenExisting(const std::string& path);
  const std::string& filename() const { return filename_; }
  /// The read position as a percentage of the file; 0 with no file open.
  int Progress() const;

  int NumFields() const override { return static_cast<int>(fields_.size()) - 1; }
  /// Throws Error when the header gives a record length of 0.
  std::int64_t NumRecs() const override;
  std::string GetFieldName(int field) const override;
  int GetFieldNum(std::string_view name) const override;
  std::string_view GetFieldData(int field, std::int64_t record) override;

  char FieldType(int field) const override { return Descriptor(field).type; }
  int FieldLength(int field) const override { return Descriptor(field).length; }
  int FieldDecimals(int field) const override { return Descriptor(field).decimals; }
  /// Looks through the whole table when it is called first.
  int FieldWidth(int field) override;

  /// Whether texts are delivered as UTF-8, and the code page that the table names for them.
  TextEncoding Encoding() const { return {reading_.asUtf8, encoding_.NamedPage()}; }
  /// Whether a record, counted from 0, is there and marked as deleted.
  bool IsDeleted(std::int64_t record);
  /// The code page that the table names but that is not known; empty otherwise.
  const std::string& UnknownEncoding() const { return encoding_.Unknown(); }
  /// Tells of that.
  void WarnOfEncoding() const;

 private:
  struct Field {
    std::string name;  // 11 bytes as stored
    char type = ' ';
    int length = 0;
    int decimals = 0;
    int stored = 0;           // of its bytes, those that lie in the record
    std::int64_t offset = 0;  // from the record's first byte, the deletion flag
    bool isText = true;
    int lengthBit = -1, nullBit = -1;  // among the table's null flags; -1: none
    bool told = false;                 // that its values are not read
  };
  // Where the descriptor of a field has what.
  struct Layout {
    std::int64_t firstAt, size;
    std::size_t nameSize, lengthAt;
  };
  bool IsLevel7() const { return (version_ & 7) == 4; }
  bool IsFoxPro() const { return version_ >= 0x30 && version_ <= 0x32; }
  void Close();
  void ReadHeader();
  void ReadFields();
  Field FieldOf(std::span<const std::byte> descriptor, const Layout& layout, std::int64_t offset) const;
  bool TakeFlags(std::span<const std::byte> descriptor, Field& field);
  void ReadEncoding(unsigned char languageByte);
  void MeasureFields();
  void WarnOfBytes(const std::string& where);
  std::span<const std::byte> BytesOf(const Field& field, std::int64_t record);
  bool HasFlag(int bit, std::int64_t record);
  std::string_view OtherValue(Field& field, std::int64_t record);
  std::string_view VaryingText(const Field& field, std::int64_t record);
  std::string_view MemoText(Field& field, std::int64_t record);
  void WarnOfType(Field& field);
  void WarnOfMemo(std::int64_t record, const std::string& what);
  std::string_view Decoded(std::string_view text, std::int64_t record);
  std::string PlaceOf(std::int64_t record) const { return filename_ + ", row " + std::to_string(record + 1); }
  const Field& Descriptor(int field) const;

  const DBFReading& reading_;
  Report* const report_;
  const CodePage* const page_;
  std::string filename_;
  BinaryFile file_;
  ReadWindow window_{file_};
  std::vector<Field> fields_;
  std::vector<int> widths_;  // of the fields' longest values as UTF-8
  std::int64_t headerLength_ = 0;
  std::int64_t recordLength_ = 0;
  std::int64_t headerRecords_ = 0;
  std::int64_t position_ = 0;
  TableEncoding encoding_;
  std::string decoded_;
  bool bytesTold_ = false;
  // What only some tables have.
  unsigned char version_ = 0;
  Field flags_;  // of length 0 where there is none
  int flagBits_ = 0;
  MemoFile memos_;
  enum class Memos { NotTried, Open, Missing } memosState_ = Memos::NotTried;
  std::string value_;
};

}  // namespace tesselink
