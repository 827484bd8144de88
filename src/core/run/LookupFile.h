// SPDX-License-Identifier: MIT
// A lookup file that belongs to another installed package: finding it, and reading its fixed-length records.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/io/Files.h"
#include "core/run/Filters.h"

namespace tesselink {

/// The default value of a key under the root of the system's registered classes; empty where there is no registry.
std::string RegisteredClassValue(const std::string& key);

/// Which lookup file it is.
struct LookupFileKind {
  std::string fileName;     ///< as in "$CDF.MAP"
  std::string application;  ///< under which the settings remember where it lies
  std::int64_t recordLength = 0;
  std::string given = {};  ///< where the person said that it lies; empty: it is searched for
  std::function<std::string(const std::string& key)> registry = RegisteredClassValue;
};

/// The file is found in the other package's folder, where it was found before, in the program's own folder, or by
/// asking until the person names a file that exists.
class LookupFile {
 public:
  LookupFile(const FilterContext& context, LookupFileKind kind) : context_(context), kind_(std::move(kind)) {}

  /// Finds and opens the file unless one is open. A file that was found but cannot be opened counts as empty. Throws
  /// Error when the given file does not exist, and what the person's face throws where it cannot ask.
  void Create();
  bool IsOpen() const { return file_.IsOpen(); }
  /// The length in records, rounded to the nearest whole number (halves to even) and at most what 16 bits hold; 0
  /// while no file is open.
  std::int16_t Count() const;
  /// A record by its number from 1, filled up with NULs where the file ends. Valid until the next call.
  std::string_view Record(int number);

 private:
  std::string Locate();
  bool IsUsable(const std::string& path) const;
  std::string InPackageFolder() const;
  std::string InProgramFolderOrAsked(const std::string& remembered);

  FilterContext context_;
  LookupFileKind kind_;
  BinaryFile file_;
  ReadWindow window_{file_};
  std::string record_;
};

}  // namespace tesselink
