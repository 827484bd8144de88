// SPDX-License-Identifier: MIT
#include "app/FileContent.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/io/System.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kEnough = 4096;

struct Mark {
  std::string_view bytes;
  FileContent content;
};

constexpr Mark kMarks[] = {
    {"\0\0\x27\x0a"sv, FileContent::Shapefile},
    {"AutoCAD Binary DXF"sv, FileContent::Drawing},
    {"PK\x03\x04"sv, FileContent::Zip},
    {"PK\x05\x06"sv, FileContent::Zip},
    {"\x1f\x8b"sv, FileContent::Gzip},
    {"SQLite format 3\0"sv, FileContent::Database},
    {"%PDF-"sv, FileContent::Pdf},
    {"\x08\x09\xfe\x02"sv, FileContent::Dgn},
    {"\xc8\x09\xfe\x02"sv, FileContent::Dgn},
    {"\x89PNG"sv, FileContent::Image},
    {"\xff\xd8\xff"sv, FileContent::Image},
    {"II*\0"sv, FileContent::Image},
    {"MM\0*"sv, FileContent::Image},
    {"\xff\xfe"sv, FileContent::WideText},
    {"\xfe\xff"sv, FileContent::WideText},
};

std::uint8_t ByteAt(std::string_view bytes, std::size_t at) { return static_cast<std::uint8_t>(bytes[at]); }

// "AC" or "MC", the release in digits, and zeros behind it.
bool IsDwg(std::string_view bytes) {
  if (bytes.size() < 8 || !(bytes.starts_with("AC") || bytes.starts_with("MC"))) return false;
  const bool release =
      std::all_of(bytes.begin() + 2, bytes.begin() + 6, [](char c) { return (c >= '0' && c <= '9') || c == '.'; });
  return release && bytes.substr(6, 20).find('\0') != std::string_view::npos;
}

// The version, a day, and a header that consists of 32 bytes for each field, as many for the table, and an end.
bool IsTable(std::string_view bytes) {
  constexpr std::string_view kVersions = "\x02\x03\x04\x30\x31\x32\x43\x63\x83\x8b\x8c\xcb\xf5"sv;
  if (bytes.size() < 32 || kVersions.find(bytes[0]) == std::string_view::npos) return false;
  const int header = ByteAt(bytes, 8) | ByteAt(bytes, 9) << 8;
  return ByteAt(bytes, 2) <= 12 && ByteAt(bytes, 3) <= 31 && header >= 33;
}

bool IsText(std::string_view bytes) {
  return std::none_of(bytes.begin(), bytes.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' && "\t\n\v\f\r\x1a"sv.find(c) == std::string_view::npos;
  });
}

// The next line that holds something, without white space at its ends; nothing behind the last one.
std::optional<std::string_view> NextLine(std::string_view& rest) {
  constexpr std::string_view kWhite = " \t\r\n\v\f";
  const std::size_t first = rest.find_first_not_of(kWhite);
  if (first == std::string_view::npos) return std::nullopt;
  rest.remove_prefix(first);
  const std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
  rest.remove_prefix(line.size());
  return line.substr(0, line.find_last_not_of(kWhite) + 1);
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A group code and what it announces: a section, or a comment.
bool IsDrawing(std::string_view text) {
  const std::optional<std::string_view> code = NextLine(text), value = NextLine(text);
  return code == "999" || (code == "0" && value && IsLetter(value->front()));
}

bool IsCdf(std::string_view text) {
  const std::optional<std::string_view> line = NextLine(text);
  return line && line->size() >= 8 && line->front() == 'B' &&
         std::all_of(line->begin() + 1, line->begin() + 8, IsDigit);
}

bool IsLandmark(std::string_view text) {
  static constexpr std::array kKeywords = {"METAFILE"sv, "TEXT"sv, "LINE"sv, "POLYGON"sv, "VECTOR"sv};
  while (const std::optional<std::string_view> line = NextLine(text)) {
    const std::size_t comma = line->find(',');
    if (comma == std::string_view::npos) continue;
    const std::string keyword = UpperCase(Trimmed(line->substr(0, comma)));
    if (std::find(kKeywords.begin(), kKeywords.end(), keyword) != kKeywords.end()) return true;
  }
  return false;
}

FileContent ContentOfText(std::string_view text) {
  if (text.starts_with("\xef\xbb\xbf")) text.remove_prefix(3);
  if (IsDrawing(text)) return FileContent::Drawing;
  if (IsCdf(text)) return FileContent::Cdf;
  if (IsLandmark(text)) return FileContent::Landmark;
  const std::string_view line = NextLine(text).value_or(std::string_view());
  if (line.starts_with('{')) return FileContent::GeoJson;
  return line.starts_with('<') ? FileContent::Xml : FileContent::Text;
}

}  // namespace

FileContent ContentOf(std::string_view beginning) {
  if (beginning.empty()) return FileContent::Nothing;
  const auto* const mark =
      std::find_if(std::begin(kMarks), std::end(kMarks), [&](const Mark& m) { return beginning.starts_with(m.bytes); });
  if (mark != std::end(kMarks)) return mark->content;
  if (IsDwg(beginning)) return FileContent::Dwg;
  if (IsText(beginning)) return ContentOfText(beginning);
  return IsTable(beginning) ? FileContent::Table : FileContent::Unknown;
}

FileContent ContentOfFile(const std::string& path) {
  const sys::Descriptor file = sys::Open(path, sys::Access::Read);
  std::string beginning(kEnough, '\0');
  const std::int64_t got = file ? sys::ReadAt(file, beginning.data(), beginning.size(), 0) : -1;
  return got < 0 ? FileContent::Unknown : ContentOf({beginning.data(), static_cast<std::size_t>(got)});
}

std::string_view InputKeyOf(FileContent content) {
  switch (content) {
    case FileContent::Shapefile:
      return "shp";
    case FileContent::Drawing:
      return "dxf";
    case FileContent::Landmark:
      return "asc";
    case FileContent::Cdf:
      return "cdf";
    default:
      return "";
  }
}

}  // namespace tesselink
