// SPDX-License-Identifier: MIT
#include "cli/ClipOption.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>
#include <vector>

#include "cli/CommandOptions.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"

namespace tesselink {
namespace {

ClipBox BoxOf(const std::string& text) {
  std::vector<double> numbers;
  try {
    for (std::size_t begin = 0; begin <= text.size();) {
      const std::size_t end = std::min(text.find(',', begin), text.size());
      numbers.push_back(StrictNumber(std::string_view(text).substr(begin, end - begin)));
      begin = end + 1;
    }
  } catch (const Error&) {
    numbers.clear();
  }
  if (numbers.size() != 4) {
    throw CLI::ValidationError("--clip", "\"" + text +
                                             "\" is no window; give two opposite corners as X1,Y1,X2,Y2, four numbers "
                                             "in the units of the drawing");
  }
  const auto [minX, maxX] = std::minmax(numbers[0], numbers[2]);
  const auto [minY, maxY] = std::minmax(numbers[1], numbers[3]);
  return {minX, minY, maxX, maxY};
}

}  // namespace

void AddClip(CommandOptions& command, std::optional<ClipBox>& clip) {
  command
      .add_option_function<std::string>(
          "--clip", [&clip](const std::string& text) { clip = BoxOf(text); },
          "Take only elements that touch a window, and these whole:\ntwo opposite corners in units of the drawing")
      ->type_name("X1,Y1,X2,Y2");
}

}  // namespace tesselink
