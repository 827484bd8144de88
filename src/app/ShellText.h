// SPDX-License-Identifier: MIT
// Words of a shell's command.
#pragma once

#include <string>

namespace tesselink {

/// What a POSIX shell takes for this very text, whatever is in it.
std::string ShellQuoted(const std::string& text);
/// The same in letters of UTF-8 alone, for places that hold no other bytes.
std::string ShellQuotedAsUtf8(const std::string& text);

}  // namespace tesselink
