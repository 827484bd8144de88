// SPDX-License-Identifier: MIT
// The report of a batch: a line of JSON for each file, by which a later run knows what is done.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/Json.h"
#include "core/io/System.h"

namespace tesselink {

/// Files as they are now, as the report has them; those that are not there are left out.
Json StatesOf(const std::vector<std::string>& files);

/// A file that is appended to, a whole line at a time. Beside it, as long as a batch runs, lies FILE.begun with the
/// inputs whose conversion was begun: what a killed run had begun, it may have written without a line about it.
class BatchReport {
 public:
  /// Opens the report for this batch alone. Throws Error when there is one and it is neither resumed nor replaced,
  /// another batch writes it, or it is no report.
  BatchReport(const std::string& path, bool resume, bool overwrite);
  BatchReport(const BatchReport&) = delete;
  BatchReport& operator=(const BatchReport&) = delete;
  /// One in which nothing was begun leaves no file.
  ~BatchReport();

  /// Whether the report says that an input was converted whole, by the same version and options, and of files that are
  /// as they were, which is all part of `conversion`; and whether as many files of its output are there as it wrote.
  bool IsDone(const std::string& input, const Json& conversion, std::size_t outputs) const;
  /// Whether a file is an output of this input as an earlier run has left it, or as a killed one may have.
  bool IsOwn(const std::string& input, const std::string& file) const;

  /// From now on the report is that of this batch; one that is not resumed is emptied.
  void Begin();
  void NoteBegun(const std::string& input);
  /// Throws Error where the line cannot be written; none of it is there then.
  void Append(const Json& line);
  /// Everything that was begun has its line.
  void Close();

  /// What Append expects under this name for IsDone, and what for IsOwn.
  static constexpr const char* kConversion = "conversion";
  static constexpr const char* kWritten = "written";

 private:
  struct Entry {
    std::int64_t at = 0;           // where its line begins
    std::uint64_t conversion = 0;  // 0: not whole
    std::vector<std::uint64_t> written;
  };
  void RefuseOtherFiles() const;
  void ReadLines();
  void ReadLine(const std::string& text, std::int64_t at);
  void ReadBegun();

  std::string path_, begunPath_;
  bool resume_;
  sys::Descriptor file_, begun_;
  std::unordered_map<std::string, Entry> entries_;
  std::unordered_map<std::string, std::int64_t> begunBefore_;  // with the length of the report at that time
};

}  // namespace tesselink
