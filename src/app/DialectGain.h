// SPDX-License-Identifier: MIT
// Whether a classic run gave up what the standard dialect would have kept.
#pragma once

#include "core/run/ConversionRun.h"
#include "core/run/FormatTable.h"

namespace tesselink {

/// For a run in the classic dialect to such an output: whether the same run in the standard one, with no further
/// option, would have kept more of what was read, or have made a file in which other programs find more.
bool StandardKeepsMore(const RunSummary& summary, const OutputFormat& output);

}  // namespace tesselink
