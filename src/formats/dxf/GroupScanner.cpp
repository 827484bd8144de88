// SPDX-License-Identifier: MIT
#include "formats/dxf/GroupScanner.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

constexpr std::string_view kBinarySentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int kComment = 999;

std::string_view WithoutBlanks(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// A group code: a whole number of up to five digits, blanks around it allowed.
bool ParseCode(std::string_view line, int& code) {
  const char* c = line.data();
  const char* const end = c + line.size();
  while (c != end && (*c == ' ' || *c == '\t')) ++c;
  const bool negative = c != end && *c == '-';
  if (negative) ++c;
  const char* const first = c;
  int value = 0;
  for (; c != end && *c >= '0' && *c <= '9' && c - first < 5; ++c) value = value * 10 + (*c - '0');
  const bool digits = c != first && value <= 32767;
  while (c != end && (*c == ' ' || *c == '\t')) ++c;
  code = negative ? -value : value;
  return digits && c == end;
}

// The code of a line of three columns with its end, as in " 10\r\n", which nearly every code stands in; -1 for any
// other.
inline int CodeOfThreeColumns(const char* line, std::size_t& length) {
  if (line[0] != ' ') return -1;
  length = line[3] == '\r' ? 5 : 4;
  const unsigned tens = line[1] == ' ' ? 0 : static_cast<unsigned char>(line[1]) - unsigned{'0'};
  const unsigned ones = static_cast<unsigned char>(line[2]) - unsigned{'0'};
  return tens > 9 || ones > 9 || line[length - 1] != '\n' ? -1 : static_cast<int>(tens * 10 + ones);
}

// How a binary drawing holds the value of a group code.
enum class Storage { Text, Chunk, Double, Int16, Int32, Int64, Byte, Unknown };

Storage StorageOf(int code) {
  struct Range {
    int first, last;
    Storage storage;
  };
  static constexpr std::array kRanges{
      Range{-5, 9, Storage::Text},       Range{10, 59, Storage::Double},    Range{60, 79, Storage::Int16},
      Range{90, 99, Storage::Int32},     Range{100, 105, Storage::Text},    Range{110, 149, Storage::Double},
      Range{160, 169, Storage::Int64},   Range{170, 179, Storage::Int16},   Range{210, 239, Storage::Double},
      Range{270, 289, Storage::Int16},   Range{290, 299, Storage::Byte},    Range{300, 309, Storage::Text},
      Range{310, 319, Storage::Chunk},   Range{320, 369, Storage::Text},    Range{370, 389, Storage::Int16},
      Range{390, 399, Storage::Text},    Range{400, 409, Storage::Int16},   Range{410, 419, Storage::Text},
      Range{420, 429, Storage::Int32},   Range{430, 439, Storage::Text},    Range{440, 459, Storage::Int32},
      Range{460, 469, Storage::Double},  Range{470, 481, Storage::Text},    Range{999, 1003, Storage::Text},
      Range{1004, 1004, Storage::Chunk}, Range{1005, 1009, Storage::Text},  Range{1010, 1059, Storage::Double},
      Range{1060, 1070, Storage::Int16}, Range{1071, 1071, Storage::Int32},
  };
  for (const Range& range : kRanges) {
    if (code <= range.last) return code >= range.first ? range.storage : Storage::Unknown;
  }
  return Storage::Unknown;
}

}  // namespace

struct GroupScanner::Binary {
  explicit Binary(BinaryFile&& opened) : file(std::move(opened)), window(file) {}

  std::span<const std::byte> Bytes(std::size_t count) { return window.At(position, count); }

  // Takes a number off the file; false when the file ends within it.
  template <typename T>
  bool Take(T& value) {
    const auto bytes = Bytes(sizeof value);
    if (bytes.size() < sizeof value) return false;
    std::memcpy(&value, bytes.data(), sizeof value);
    position += static_cast<std::int64_t>(sizeof value);
    return true;
  }

  template <typename T>
  bool TakeAs(double& number) {
    T value{};
    if (!Take(value)) return false;
    number = static_cast<double>(value);
    return true;
  }

  BinaryFile file;
  ReadWindow window;
  std::int64_t position = static_cast<std::int64_t>(kBinarySentinel.size());
  bool wideCodes = false;  // two bytes a code, as from AC1012 on; before, one
  bool ended = false;
};

GroupScanner::GroupScanner(const std::string& path, Report& report) : path_(path), report_(report) {
  BinaryFile file(path);
  std::array<char, 26> head{};
  const std::size_t got = file.ReadAt(0, head.data(), head.size());
  const std::string_view beginning(head.data(), got);
  if (beginning.starts_with(kBinarySentinel)) {
    binary_ = std::make_unique<Binary>(std::move(file));
    // The first group is "0 SECTION", or a comment.
    const std::string_view code = beginning.substr(kBinarySentinel.size(), 2);
    binary_->wideCodes = code == std::string_view("\0\0", 2) || code == "\xE7\x03";
    return;
  }
  if (beginning.starts_with("AC10") && beginning.find('\0') != std::string_view::npos) {
    throw Error(path + ": is a DWG drawing; save it as DXF");
  }
  if (beginning.starts_with("\xFF\xFE") || beginning.starts_with("\xFE\xFF")) {
    throw Error(path + ": is text of two bytes a letter; save it as DXF anew, or as UTF-8");
  }
  CheckBeginning();
  lines_ = LineReader(path);
}

GroupScanner::~GroupScanner() = default;

// A drawing's first line is a group code.
void GroupScanner::CheckBeginning() {
  LineReader lines(path_);
  std::string_view line;
  int code = 0;
  while (lines.ReadLine(line)) {
    if (WithoutBlanks(line).empty()) continue;
    if (ParseCode(line, code)) return;
    throw Error(path_ + ", line " + std::to_string(lines.LineNumber()) +
                ": is no DXF drawing; expected a group code, which is a whole number");
  }
  throw Error(path_ + ": is no DXF drawing; it holds nothing");
}

bool GroupScanner::Next() { return binary_ ? NextBinaryGroup() : NextTextGroup(); }

void GroupScanner::GoTo(const GroupMark& mark) {
  if (binary_) {
    binary_->position = mark.position;
    binary_->ended = false;
  } else {
    lines_.GoTo(mark.position, mark.place);
  }
  code_ = mark.code;
  marked_ = mark.text;
  text_ = marked_;
}

bool GroupScanner::NextTextGroup() {
  constexpr std::size_t kLongestCodeLine = 5;
  do {
    const char* const ahead = lines_.Ahead(kLongestCodeLine);
    std::size_t length = 0;
    const int code = ahead == nullptr ? -1 : CodeOfThreeColumns(ahead, length);
    if (code >= 0) {
      lines_.PassLine(length);
      code_ = code;
    } else if (!ReadCode()) {
      return false;
    }
    if (!lines_.ReadLine(text_)) return false;
  } while (code_ == kComment);
  return true;
}

bool GroupScanner::ReadCode() {
  std::string_view line;
  int code = 0;
  for (;;) {
    if (!lines_.ReadLine(line)) return false;
    if (ParseCode(line, code)) break;
    PassOver(line);
  }
  code_ = code;
  return true;
}

// A line that is no group code is the value of a wrong code, or a line too many; what follows it is taken for a code
// again.
void GroupScanner::PassOver(std::string_view line) {
  if (!WithoutBlanks(line).empty()) Warn(WarningKind::GroupCodes, "expected a group code; the line was passed over");
}

bool GroupScanner::NextBinaryGroup() {
  while (!binary_->ended) {
    const std::optional<int> code = ReadBinaryCode();
    if (!code || !ReadBinaryValue()) binary_->ended = true;
    if (!binary_->ended && code_ != kComment) return true;
  }
  return false;
}

std::optional<int> GroupScanner::ReadBinaryCode() {
  std::int16_t wide = 0;
  if (binary_->wideCodes) {
    if (!binary_->Take(wide)) return std::nullopt;
  } else {
    std::uint8_t narrow = 0;
    if (!binary_->Take(narrow)) return std::nullopt;
    wide = narrow;
    // Extended data has codes beyond one byte.
    if (narrow == 255 && !binary_->Take(wide)) return std::nullopt;
  }
  code_ = wide;
  return code_;
}

bool GroupScanner::ReadBinaryValue() {
  text_ = {};
  number_ = kNoNumber;
  switch (StorageOf(code_)) {
    case Storage::Text:
      return ReadBinaryText();
    case Storage::Chunk: {
      std::uint8_t length = 0;
      if (!binary_->Take(length)) return false;
      binary_->position += length;
      return true;
    }
    case Storage::Double:
      return binary_->TakeAs<double>(number_);
    case Storage::Int16:
      return binary_->TakeAs<std::int16_t>(number_);
    case Storage::Int32:
      return binary_->TakeAs<std::int32_t>(number_);
    case Storage::Int64:
      return binary_->TakeAs<std::int64_t>(number_);
    case Storage::Byte:
      return binary_->TakeAs<std::uint8_t>(number_);
    case Storage::Unknown:
      break;
  }
  Warn(WarningKind::GroupCodes, "the group code " + std::to_string(code_) +
                                    " is none that a binary drawing holds; the rest " + "of the drawing was not read");
  return false;
}

bool GroupScanner::ReadBinaryText() {
  for (const std::size_t count : {std::size_t{256}, ReadWindow::kCapacity}) {
    const auto bytes = binary_->Bytes(count);
    if (bytes.empty()) return false;
    const void* end = std::memchr(bytes.data(), 0, bytes.size());
    if (end == nullptr) continue;
    text_ = std::string_view(reinterpret_cast<const char*>(bytes.data()),
                             static_cast<std::size_t>(static_cast<const std::byte*>(end) - bytes.data()));
    binary_->position += static_cast<std::int64_t>(text_.size()) + 1;
    return true;
  }
  Warn(WarningKind::TextWithoutEnd, "a text of the drawing does not end; the rest of the drawing was not read");
  return false;
}

std::string_view GroupScanner::Keyword() const { return WithoutBlanks(text_); }

double GroupScanner::Number() const {
  if (!binary_) return NumberOrNone(text_);
  return std::isfinite(number_) ? number_ : kNoNumber;
}

std::optional<std::int32_t> GroupScanner::Integer() const {
  const double number = Number();
  if (!(number >= -2147483648.0 && number <= 2147483647.0)) return std::nullopt;
  return static_cast<std::int32_t>(number);
}

std::int64_t GroupScanner::Position() const { return binary_ ? binary_->position : lines_.Position(); }
std::int64_t GroupScanner::Size() const { return binary_ ? binary_->file.Size() : lines_.Size(); }
int GroupScanner::FileNumber() const { return binary_ ? binary_->file.Number() : lines_.Number(); }
std::int64_t GroupScanner::Place() const { return binary_ ? binary_->position : lines_.LineNumber(); }

std::string GroupScanner::PlaceText(std::int64_t place) const {
  return path_ + (binary_ ? ", byte " : ", line ") + std::to_string(place);
}

void GroupScanner::Warn(WarningKind kind, const std::string& what) {
  report_.Warn(kind, PlaceText(Place()) + ": " + what);
}

}  // namespace tesselink
