// SPDX-License-Identifier: MIT
// What the command line calls an option, in words that a person at the window understands.
#pragma once

#include <QString>
#include <string_view>

namespace tesselink {

/// The control and its entry that stand for an option with a value, as in "Dialect: Standard"; for an option without a
/// control, that the command line has it.
QString OptionInWords(std::string_view option, std::string_view value);
/// A text of the command line, each option in it put so.
QString WithoutOptions(const QString& text);

}  // namespace tesselink
