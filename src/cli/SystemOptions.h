// The options of coordinate systems.
#pragma once

#include <CLI/App.hpp>

#include "core/run/SystemChoice.h"

namespace tesselink {

/// Adds --from-crs, and for a command that transforms --to-crs and --allow-ballpark.
void AddSystemOptions(CLI::App& command, SystemChoice& systems, bool transforms);

}  // namespace tesselink
