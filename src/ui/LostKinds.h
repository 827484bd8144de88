// SPDX-License-Identifier: MIT
// What of a drawing a preview marks as lost.
#pragma once

#include <cstdint>

#include "core/run/FormatTable.h"
#include "core/run/Settings.h"

namespace tesselink {

/// Which kinds an output will not hold, as bits of LostKind, as far as that can be said before a run: what the writer
/// of the format lacks by these options, and what it leaves out by the values that were given or answered.
std::uint32_t LostKindsOf(const OutputFormat& format, const FilterOptions& options, const OptionValues& values,
                          Settings& settings);

}  // namespace tesselink
