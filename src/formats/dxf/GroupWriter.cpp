// SPDX-License-Identifier: MIT
#include "formats/dxf/GroupWriter.h"

#include <array>

namespace tesselink {

FileWriter& WriteHandle(FileWriter& file, Handle handle) {
  std::array<char, 16> digits{};
  std::size_t first = digits.size();
  do {
    digits[--first] = "0123456789ABCDEF"[handle & 15];
    handle >>= 4;
  } while (handle != 0);
  return file.Write({digits.data() + first, digits.size() - first});
}

FileWriter& GroupWriter::Code(int code) {
  file_.Write(code < 10 ? "  " : code < 100 ? " " : "");
  return file_.Integer(code).EndLine();
}

GroupWriter& GroupWriter::Groups(std::string_view groups) {
  while (!groups.empty()) {
    const std::string_view group = groups.substr(0, groups.find('|'));
    groups.remove_prefix(std::min(group.size() + 1, groups.size()));
    const std::size_t blank = group.find(' ');
    file_.Write(blank < 2 ? "  " : blank < 3 ? " " : "");
    file_.Line(group.substr(0, blank)).Line(group.substr(blank + 1));
  }
  return *this;
}

GroupWriter& GroupWriter::Group(int code, std::string_view value) {
  Code(code).Line(value);
  return *this;
}

GroupWriter& GroupWriter::Number(int code, double value) {
  Code(code).Number(value).EndLine();
  return *this;
}

GroupWriter& GroupWriter::Integer(int code, std::int64_t value) {
  Code(code).Integer(value).EndLine();
  return *this;
}

GroupWriter& GroupWriter::Object(int code, Handle handle) {
  WriteHandle(Code(code), handle).EndLine();
  return *this;
}

GroupWriter& GroupWriter::Place(int code, double x, double y, double z) {
  return Number(code, x).Number(code + 10, y).Number(code + 20, z);
}

}  // namespace tesselink
