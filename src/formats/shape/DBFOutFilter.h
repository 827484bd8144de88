// The dBase table writer: a table beside each shapefile.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Files.h"

namespace tesselink {

/// Writes a table of character values record by record. The layout has the system's own marks: version byte 0, no
/// terminator behind the descriptors, a record length without the deletion flag, NULs for padding, no end byte, and a
/// value that loses its last character when it fills its field.
class DBFOutFilter {
 public:
  DBFOutFilter() = default;
  ~DBFOutFilter();
  DBFOutFilter(const DBFOutFilter&) = delete;
  DBFOutFilter& operator=(const DBFOutFilter&) = delete;

  /// Finishes the open file and creates one, replacing a file of that name.
  void filename(const std::string& path);
  const std::string& filename() const { return path_; }
  /// Declares the next field; `type` counts by its first letter. Without effect once there is a record. Throws Error
  /// for a name of more than 10 characters and a length outside 1 to 255.
  void AddField(const std::string& name, int length, std::string_view type);
  /// Appends a record of values separated by "|", in field order; missing ones are empty. Throws Error for a value
  /// longer than its field.
  void AddRecord(std::string_view values);
  /// The same for values that are apart already and may hold "|".
  void AddRecord(std::span<const std::string_view> values);
  /// Rewrites the header and closes the file. Throws Error when that fails.
  void Release();
  /// Closes without completing.
  void Discard() { file_.Discard(); }

 private:
  struct Field {
    std::string name;
    char type;
    int length;
  };
  void WriteHeader();
  [[noreturn]] void ThrowTooLong(const Field& field, std::string_view value) const;
  std::int64_t HeaderLength() const { return 32 + 32 * static_cast<std::int64_t>(fields_.size()); }

  std::string path_;
  FileWriter file_;
  std::vector<Field> fields_;
  std::int64_t recordLength_ = 0;
  std::int64_t recordCount_ = 0;
  std::string record_;
  std::vector<std::string_view> split_;
};

}  // namespace tesselink
