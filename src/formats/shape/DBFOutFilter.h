// SPDX-License-Identifier: MIT
// The dBase table writer: a table beside each shapefile.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/io/Files.h"
#include "core/run/Dialect.h"

namespace tesselink {

/// What a dialect decides in the layout of a table.
struct DBFWriting {
  char version;                 ///< byte 0
  char languageMark;            ///< byte 29
  char nameEnd;                 ///< the 11th byte of a field name
  std::string_view terminator;  ///< behind the field descriptors
  int flagLength;               ///< bytes of a record before its fields, as far as its length counts them
  bool blankBefore;             ///< a blank takes the last byte of what lies before a record
  char padding;
  int lostBytes;      ///< at the end of every field, that no value fills
  bool numbersRight;  ///< numbers stand at the right of their fields
  std::string_view endByte;
};

/// Writes a table record by record. By the system's own convention the layout has marks of its own: version byte 0, no
/// terminator behind the descriptors, a record length without the deletion flag, NULs for padding, no end byte, and a
/// value that loses its last character when it fills its field.
class DBFOutFilter {
 public:
  explicit DBFOutFilter(Dialect dialect = Dialect::Classic);
  ~DBFOutFilter();
  DBFOutFilter(const DBFOutFilter&) = delete;
  DBFOutFilter& operator=(const DBFOutFilter&) = delete;

  /// Finishes the open file and creates one, replacing a file of that name. While none is open, AddField and AddRecord
  /// throw Error.
  void filename(const std::string& path);
  const std::string& filename() const { return path_; }
  /// Declares the next field; `type` counts by its first letter. Without effect once there is a record. Throws Error
  /// for a name of more than 10 characters, a length outside 1 to 255, and more than the layout can count.
  void AddField(const std::string& name, int length, std::string_view type, int decimals = 0);
  /// The bytes that a record may still grow by, when so many fields are added.
  std::int64_t RoomFor(int fields) const;
  /// Appends a record of values separated by "|", in field order; missing ones are empty. Throws Error for a value
  /// longer than its field.
  void AddRecord(std::string_view values);
  /// The same for values that are apart already and may hold "|".
  void AddRecord(std::span<const std::string_view> values);
  /// Rewrites the header and closes the file. Throws Error when that fails.
  void Release();
  /// Bytes that have been written so far.
  std::int64_t Size() const { return file_.Size(); }
  /// Closes without completing.
  void Discard() { file_.Discard(); }

 private:
  struct Field {
    std::string name;
    char type;
    int length;
    int decimals;
  };
  void RequireOpen(const char* member) const;
  void WriteHeader();
  void WriteDescriptors(std::int64_t headerLength);
  [[noreturn]] void ThrowTooLong(const Field& field, std::string_view value) const;
  std::int64_t HeaderLength(std::size_t fields) const;
  std::int64_t RecordLength() const { return fieldsLength_ == 0 ? 0 : fieldsLength_ + writing_.flagLength; }

  const DBFWriting& writing_;
  std::string path_;
  FileWriter file_;
  std::vector<Field> fields_;
  std::int64_t fieldsLength_ = 0;
  std::int64_t recordCount_ = 0;
  std::string record_;
  std::vector<std::string_view> split_;
};

}  // namespace tesselink
