// SPDX-License-Identifier: MIT
// Text files that carry bare line feeds: noticed before they are read and, with the person's consent, repaired.
#pragma once

#include <cstddef>
#include <string>

#include "core/run/Interaction.h"

namespace tesselink {

/// What CheckLineEnds returns when the person cancelled.
inline constexpr const char* kOperationCanceled = "Operation Canceled";

/// Looks for a carriage return with a line feed in the first bytes of a file, of which 20 are the system's own. Where
/// there is none, asks whether to overwrite the file with a repaired version, to write one elsewhere or to cancel.
/// Returns the path to read, which is the given one when the person leaves the file alone, or "Operation Canceled".
std::string CheckLineEnds(const std::string& path, Interaction& interaction, std::size_t lookedAt = 20);

/// Writes a copy of the file in which every line feed is a carriage return and a line feed into a temporary file and
/// returns that file's name. Yields while it works; throws OperationCanceled on a confirmed cancel.
std::string ConvertLineEnds(const std::string& path, Interaction& interaction);

}  // namespace tesselink
