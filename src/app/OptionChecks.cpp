// SPDX-License-Identifier: MIT
#include "app/OptionChecks.h"

#include <algorithm>
#include <cmath>

#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "core/io/Text.h"

namespace tesselink {

std::string WrongDistance(const std::string& text) {
  try {
    if (StrictNumber(text) > 0) return {};
  } catch (const Error&) {
  }
  return "\"" + text + "\" is no distance; give a number greater than 0";
}

std::string WrongHeight(const std::string& text) {
  const double number = NumberOrNone(text);
  return number <= 0 ? "\"" + text + "\" is no height; give a number greater than 0, or a field" : std::string();
}

std::string WrongBox(const std::string& text) {
  if (BoxIn(text)) return {};
  return "\"" + text +
         "\" is no window; give two opposite corners as X1,Y1,X2,Y2, four numbers in the units of the drawing";
}

std::string WrongSize(const std::string& text) {
  return BytesIn(text) ? std::string() : "\"" + text + "\" is no size; give one as 500M or 20G";
}

std::optional<ClipBox> BoxIn(std::string_view text) {
  std::vector<double> numbers;
  try {
    for (const std::string& number : ListIn(text)) numbers.push_back(StrictNumber(number));
  } catch (const Error&) {
    return std::nullopt;
  }
  if (numbers.size() != 4) return std::nullopt;
  const auto [minX, maxX] = std::minmax(numbers[0], numbers[2]);
  const auto [minY, maxY] = std::minmax(numbers[1], numbers[3]);
  return ClipBox{minX, minY, maxX, maxY};
}

std::optional<std::int64_t> BytesIn(std::string_view text) {
  constexpr std::string_view kUnits = "KMGT";
  text = Trimmed(text);
  double factor = 1;
  const std::string last = text.empty() ? std::string() : UpperCase(text.substr(text.size() - 1));
  if (const std::size_t unit = last.empty() ? kUnits.npos : kUnits.find(last); unit != kUnits.npos) {
    factor = std::pow(1024.0, static_cast<double>(unit + 1));
    text.remove_suffix(1);
  }
  const double bytes = NumberOrNone(text) * factor;
  if (!(bytes >= 1 && bytes < 9e18) || bytes != std::floor(bytes)) return std::nullopt;
  return static_cast<std::int64_t>(bytes);
}

std::vector<std::string> ListIn(std::string_view text) {
  std::vector<std::string> items;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    items.emplace_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return items;
}

}  // namespace tesselink
