// SPDX-License-Identifier: MIT
// The manual pages.
#pragma once

#include <string>

#include "manual/CommandTexts.h"

namespace tesselink {

/// tesselink(1).
std::string ProgramPage(const ProgramText& text, const std::string& date);
/// tesselink-COMMAND(1).
std::string CommandPage(const ProgramText& text, const CommandText& command, const std::string& date);
/// tesselink-formats(5).
std::string FormatsPage(const std::string& date);

}  // namespace tesselink
