// SPDX-License-Identifier: MIT
// What the command that converts many drawings shares with the one that converts one.
#pragma once

#include "cli/Arguments.h"

namespace tesselink {

/// Throws UsageError or Error where options do not go together, or with the formats of input and output, or name files
/// that are not there or cannot be understood. Neither input nor output is looked at.
void CheckConversion(const ConvertCommand& command);

}  // namespace tesselink
