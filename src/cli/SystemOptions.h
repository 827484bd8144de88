// SPDX-License-Identifier: MIT
// The options of coordinate systems.
#pragma once

#include "core/run/SystemChoice.h"

namespace tesselink {

class CommandOptions;

/// Adds --from-crs, and for a command that transforms --to-crs and --allow-ballpark.
void AddSystemOptions(CommandOptions& command, SystemChoice& systems, bool transforms);

}  // namespace tesselink
