// SPDX-License-Identifier: MIT
// Which files a batch converts.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/Arguments.h"

namespace tesselink {

struct BatchInput {
  std::string path;
  std::size_t below = 0;  ///< where that part of the path begins which an output keeps

  std::string Kept() const { return path.substr(below); }
};

struct BatchInputs {
  std::vector<BatchInput> files;    ///< in the order of the arguments, those of a folder by name
  std::vector<std::string> notes;   ///< what was passed over, for the person to know
  std::vector<std::string> closed;  ///< folders that cannot be searched, and why
};

/// Searches what the command names. In folders, those that begin with a period and links to folders are passed over,
/// and so is the folder of the outputs. Throws UsageError or Error for what is no input.
BatchInputs FindInputs(const BatchCommand& command);

}  // namespace tesselink
