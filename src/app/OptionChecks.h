// SPDX-License-Identifier: MIT
// What is wrong with a value that a person gave for an option, in the words of both faces; empty when nothing is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/run/ClipWindow.h"

namespace tesselink {

/// A number greater than 0.
std::string WrongDistance(const std::string& text);
/// A number greater than 0, or any text that is no number, as the name of a field.
std::string WrongHeight(const std::string& text);
/// Four numbers; see BoxIn.
std::string WrongBox(const std::string& text);
/// As in "500M" and "20G".
std::string WrongSize(const std::string& text);

/// The window between two opposite corners, "X1,Y1,X2,Y2"; nothing for any other text.
std::optional<ClipBox> BoxIn(std::string_view text);
/// A number of bytes, with K, M, G or T for powers of 1024; nothing for any other text.
std::optional<std::int64_t> BytesIn(std::string_view text);
/// What stands between the commas of a list.
std::vector<std::string> ListIn(std::string_view text);

}  // namespace tesselink
