// What each command does; every one returns its exit code.
#pragma once

#include "cli/Arguments.h"

namespace tesselink {

int RunCommand(const Command& command);

}  // namespace tesselink
