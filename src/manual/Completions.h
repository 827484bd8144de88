// SPDX-License-Identifier: MIT
// What shells complete behind "tesselink": commands, options, and what may stand behind an option.
#pragma once

#include <string>

#include "manual/CommandTexts.h"

namespace tesselink {

std::string BashCompletion(const ProgramText& text);
std::string ZshCompletion(const ProgramText& text);
std::string FishCompletion(const ProgramText& text);

}  // namespace tesselink
