// SPDX-License-Identifier: MIT
// The one list of every format: a new format is a class and a row in Formats.cpp.
#pragma once

#include "core/run/FormatTable.h"

namespace tesselink {

/// Every format in the order of the drop-downs.
const FormatTable& AllFormats();

}  // namespace tesselink
