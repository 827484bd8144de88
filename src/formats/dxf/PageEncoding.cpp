// SPDX-License-Identifier: MIT
#include "formats/dxf/PageEncoding.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tesselink {
namespace {

// The first byte beyond ASCII; eight at a time, since most have none.
std::size_t FirstBeyondAscii(std::string_view bytes) {
  std::size_t at = 0;
  for (std::uint64_t eight = 0; at + sizeof eight <= bytes.size(); at += sizeof eight) {
    std::memcpy(&eight, bytes.data() + at, sizeof eight);
    if ((eight & 0x8080808080808080) != 0) break;
  }
  const auto isBeyond = [](char c) { return static_cast<unsigned char>(c) >= 128; };
  const auto found = std::find_if(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end(), isBeyond);
  return found == bytes.end() ? std::string_view::npos : static_cast<std::size_t>(found - bytes.begin());
}

// The last line of a text that ends with a line end.
std::string_view LastLine(std::string_view lines) {
  lines.remove_suffix(lines.ends_with("\r\n") ? 2 : 1);
  return lines.substr(lines.rfind('\n') + 1);
}

}  // namespace

void AppendInPage(FileWriter& output, BinaryFile& groups, std::int64_t from, std::int64_t to,
                  const std::function<std::string_view(std::string_view code, std::string_view value)>& inPage) {
  constexpr std::size_t kBlock = std::size_t{1} << 16;
  std::string buffer, code;
  while (from < to) {
    const std::size_t kept = buffer.size();
    const std::size_t most = std::min(kBlock, static_cast<std::size_t>(to - from));
    buffer.resize(kept + most);
    const std::size_t got = groups.ReadAt(from, buffer.data() + kept, most);
    buffer.resize(kept + got);
    if (got == 0) break;
    from += static_cast<std::int64_t>(got);
    const std::size_t whole = buffer.rfind('\n') + 1;
    for (std::string_view lines(buffer.data(), whole); !lines.empty();) {
      const std::size_t at = FirstBeyondAscii(lines);
      const std::size_t begin = at == std::string_view::npos ? lines.size() : lines.substr(0, at).rfind('\n') + 1;
      output.Write(lines.substr(0, begin));
      if (begin > 0) code = LastLine(lines.substr(0, begin));
      lines.remove_prefix(begin);
      if (lines.empty()) break;
      const std::size_t end = lines.find('\n') + 1;
      output.Line(inPage(code, LastLine(lines.substr(0, end))));
      lines.remove_prefix(end);
    }
    buffer.erase(0, whole);
  }
  output.Write(buffer);
}

}  // namespace tesselink
