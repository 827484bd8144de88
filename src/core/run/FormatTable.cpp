// SPDX-License-Identifier: MIT
#include "core/run/FormatTable.h"

#include <algorithm>

#include "core/io/Errors.h"

namespace tesselink {
namespace {

template <typename Row>
const Row& RowOf(const std::vector<Row>& rows, std::string_view entry) {
  auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& r) { return r.entry == entry; });
  if (row == rows.end()) row = std::find_if(rows.begin(), rows.end(), [](const Row& r) { return r.fallBack; });
  if (row == rows.end()) throw Error("No format \"" + std::string(entry) + "\"");
  return *row;
}

}  // namespace

std::string PatternOf(std::string_view entry) {
  const std::size_t open = entry.rfind('('), close = entry.rfind(')');
  const bool isThere = open != std::string_view::npos && close != std::string_view::npos && open < close;
  return std::string(isThere ? entry.substr(open + 1, close - open - 1) : std::string_view());
}

const InputFormat& FormatTable::Input(std::string_view entry) const { return RowOf(inputs_, entry); }
const OutputFormat& FormatTable::Output(std::string_view entry) const { return RowOf(outputs_, entry); }

}  // namespace tesselink
