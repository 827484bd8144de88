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

std::string Format::Pattern() const {
  const std::size_t open = entry.rfind('('), close = entry.rfind(')');
  return entry.substr(open + 1, close - open - 1);
}

const InputFormat& FormatTable::Input(std::string_view entry) const { return RowOf(inputs_, entry); }
const OutputFormat& FormatTable::Output(std::string_view entry) const { return RowOf(outputs_, entry); }

}  // namespace tesselink
