// SPDX-License-Identifier: MIT
// Files of groups that are put into a code page while they are copied.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "core/io/Files.h"

namespace tesselink {

/// Names with letters beyond ASCII, and what stands for them in a drawing.
using NamesInPage = std::map<std::string, std::string, std::less<>>;

/// Appends whole lines of a file, from a position to another one, each second line a value. Where there are bytes
/// beyond ASCII, what the function makes of the value stands for it; the line of its code comes with it.
void AppendInPage(FileWriter& output, BinaryFile& groups, std::int64_t from, std::int64_t to,
                  const std::function<std::string_view(std::string_view code, std::string_view value)>& inPage);

}  // namespace tesselink
