// SPDX-License-Identifier: MIT
#include "core/io/FixedTime.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace tesselink {

std::optional<std::int64_t> FixedTime() {
  const char* const value = std::getenv("SOURCE_DATE_EPOCH");
  if (value == nullptr) return std::nullopt;
  const std::string_view text = value;
  std::int64_t seconds = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  constexpr std::int64_t kLatest = 253'402'300'799;  // the year 9999 ends
  const bool good = error == std::errc() && stop == text.data() + text.size() && seconds >= 0 && seconds <= kLatest;
  return good ? std::optional(seconds) : std::nullopt;
}

}  // namespace tesselink
