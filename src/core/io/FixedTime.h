// SPDX-License-Identifier: MIT
// The one date that outputs bear, for those who make them anew and compare.
#pragma once

#include <cstdint>
#include <optional>

namespace tesselink {

/// The time that outputs are to bear instead of the present, in seconds since 1970: what SOURCE_DATE_EPOCH in the
/// environment says. None where that is not set, or is no such number.
std::optional<std::int64_t> FixedTime();

}  // namespace tesselink
