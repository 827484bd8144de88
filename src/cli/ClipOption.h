// The option --clip.
#pragma once

#include <optional>

#include "core/run/ClipWindow.h"

namespace CLI {
class App;
}

namespace tesselink {

/// Adds the option to a command; what is given goes into a box, in any order of its corners.
void AddClip(CLI::App& command, std::optional<ClipBox>& clip);

}  // namespace tesselink
