// SPDX-License-Identifier: MIT
#include "formats/cdf/PointFile.h"

#include <cmath>
#include <optional>

#include "core/io/Numbers.h"
#include "core/io/Text.h"
#include "core/run/Report.h"

namespace tesselink {
namespace {

std::optional<double> NumberIn(std::string_view line, std::size_t first, std::size_t last) {
  if (first > line.size()) return {};
  const std::string_view field = Trimmed(line.substr(first - 1, last - first + 1));
  double value = 0;
  const bool whole =
      !field.empty() && ParseNumber(field.data(), field.data() + field.size(), value) == field.data() + field.size();
  return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

// "DXF Point (NAME) NUMBER", as far as 40 columns hold it; another name as it stands.
std::string_view NameIn(std::string_view line) {
  constexpr std::string_view kBefore = "DXF Point (";
  std::string_view name = Trimmed(line.substr(0, 40));
  if (!name.starts_with(kBefore)) return name;
  name.remove_prefix(kBefore.size());
  const std::size_t end = name.find_last_not_of("0123456789");
  const bool isNumbered =
      end != std::string_view::npos && end > 0 && end + 1 < name.size() && name[end] == ' ' && name[end - 1] == ')';
  return isNumbered ? name.substr(0, end - 1) : name;
}

}  // namespace

bool PointFile::Next(tEntity& entity, Report& report) {
  for (std::string_view line; reader_.IsOpen() && reader_.ReadLine(line);) {
    const auto x = NumberIn(line, 41, 50), y = NumberIn(line, 54, 63);
    if (x && y) {
      entity.bType = kPoint;
      entity.x(0, *x);
      entity.Y(0, *y);
      entity.Text = NameIn(line);
      return true;
    }
    if (Trimmed(line).empty()) continue;
    report.Warn(WarningKind::OtherLines,
                Where() + ": a line without a point, x in columns 41 to 50 and y in 54 to 63, was skipped", "points");
  }
  return false;
}

}  // namespace tesselink
