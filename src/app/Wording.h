// SPDX-License-Identifier: MIT
// The language and the numbers of a face, for texts that both faces tell.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

namespace tesselink {

/// English, and numbers without separators, as the command line has them; a face with other ones derives its own.
class Wording {
 public:
  virtual ~Wording() = default;

  /// A text that `TRANSLATABLE` marks, looked up under its context; as it stands where there is no other.
  virtual std::string Text(const char* context, const char* text) const;
  virtual std::string Number(std::int64_t number) const { return std::to_string(number); }

  /// Such a text with the values in the places of %1, %2 and so on.
  std::string Filled(const char* context, const char* pattern, std::initializer_list<std::string> values) const;
  /// One of the context "Summary".
  std::string Told(const char* pattern, std::initializer_list<std::string> values) const {
    return Filled("Summary", pattern, values);
  }
};

/// As the command line tells.
inline const Wording kPlainWording;

}  // namespace tesselink
