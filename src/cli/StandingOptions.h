// SPDX-License-Identifier: MIT
// The options that a person has set for every run.
#pragma once

#include <string>
#include <vector>

#include "cli/Arguments.h"

namespace tesselink {

/// The command as ParseArguments tells it, with the settings of the environment and the settings file in place of the
/// options that were not given, where they say something to it. A setting that is no good is wrong usage, as is an
/// option, and names its place.
Command ParseWithSettings(const std::vector<std::string>& arguments);

}  // namespace tesselink
