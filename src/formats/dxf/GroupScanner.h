// SPDX-License-Identifier: MIT
// A drawing as its stream of groups: a code that tells what a value means, and the value. Text drawings have the two on
// alternate lines; binary drawings, which begin with "AutoCAD Binary DXF", have them as numbers and as ended texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/io/Files.h"

namespace tesselink {

class Report;
enum class WarningKind;

/// Where a group of code 0 stands, to come back to it.
struct GroupMark {
  std::int64_t position = 0, place = 0;
  int code = 0;
  std::string text;
};

/// Reads one group at a time. Comments are passed over silently, lines that cannot be a group code with a warning.
class GroupScanner {
 public:
  /// Opens a drawing. Throws Error when the file cannot be opened or begins like no drawing.
  GroupScanner(const std::string& path, Report& report);
  ~GroupScanner();
  GroupScanner(const GroupScanner&) = delete;
  GroupScanner& operator=(const GroupScanner&) = delete;

  /// Goes on to the next group; false at the end of the file.
  bool Next();
  int Code() const { return code_; }
  /// The group of code 0 that was read last, and the way back to it.
  GroupMark Mark() const { return {Position(), Place(), code_, std::string(Keyword().substr(0, kLongestMarked))}; }
  void GoTo(const GroupMark& mark);
  /// The value with its leading blanks, valid until Next; empty for a number of a binary drawing.
  std::string_view Text() const { return text_; }
  /// The value without the blanks around it.
  std::string_view Keyword() const;
  /// The value as a number; not a number when it is none or too large.
  double Number() const;
  /// The value as a whole number, its fraction cut off; nothing when it is no number or beyond 32 bits.
  std::optional<std::int32_t> Integer() const;

  /// Bytes consumed so far.
  std::int64_t Position() const;
  std::int64_t Size() const;
  /// The system's handle of the open file.
  int FileNumber() const;
  /// The line of the value read last; in a binary drawing the number of the byte behind it.
  std::int64_t Place() const;
  /// A place as people read it, with the file: "plat.dxf, line 12".
  std::string PlaceText(std::int64_t place) const;

 private:
  struct Binary;
  static constexpr std::size_t kLongestMarked = 64;  // beyond the longest keyword

  bool NextTextGroup();
  bool ReadCode();
  void PassOver(std::string_view line);
  bool NextBinaryGroup();
  std::optional<int> ReadBinaryCode();
  bool ReadBinaryValue();
  bool ReadBinaryText();
  void CheckBeginning();
  void Warn(WarningKind kind, const std::string& what);

  std::string path_;
  Report& report_;
  LineReader lines_;
  std::unique_ptr<Binary> binary_;
  int code_ = 0;
  std::string_view text_;
  std::string marked_;  // the text of a mark that was gone to
  double number_ = 0;
};

}  // namespace tesselink
