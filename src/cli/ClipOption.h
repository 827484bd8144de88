// SPDX-License-Identifier: MIT
// The option --clip.
#pragma once

#include <optional>

#include "core/run/ClipWindow.h"

namespace tesselink {

class CommandOptions;

/// Adds the option to a command; what is given goes into a box, in any order of its corners.
void AddClip(CommandOptions& command, std::optional<ClipBox>& clip);

}  // namespace tesselink
