// SPDX-License-Identifier: MIT
// Numbers to text and back, the same on every workstation whatever its locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tesselink {

/// The room that any of the Format functions may need.
inline constexpr std::size_t kNumberTextSize = 32;

/// Writes a number as the general conversion "%.15G" does, with a period, and returns the end of the text. Zero of
/// either sign is "0".
char* FormatNumber(char* out, double value);
/// As FormatNumber with 7 significant digits, for values of single precision.
char* FormatSingle(char* out, float value);
/// Writes a whole number in decimal and returns the end of the text.
char* FormatInteger(char* out, std::int64_t value);

std::string NumberText(double value);
std::string SingleText(float value);

/// Reads the longest decimal number at the start of [first, last) and returns its end; `first` and 0 when there is
/// none. Blanks are no part of a number. Throws Error when the number is too large to hold.
const char* ParseNumber(const char* first, const char* last, double& value);
/// The longest leading part that reads as a decimal number, blanks inside being ignored; 0 when there is none. Throws
/// Error when the number is too large to hold.
double LenientNumber(std::string_view text);
/// The whole text as a decimal number, blanks around it allowed. Throws Error for anything else ("nan", "inf" and
/// hexadecimal included).
double StrictNumber(std::string_view text);

/// As StrictNumber, blanks and tabs around the number allowed; not a number for anything else, and for a number that is
/// too large to hold.
double NumberOrNone(std::string_view text);

/// The nearest whole number, a half going to the even neighbour.
double RoundHalfEven(double value);

/// How much of a file's bytes a position is, as a percentage of at most 100; 0 of nothing. `unit` is that of the
/// position in bytes.
double Percentage(std::int64_t position, std::int64_t size, std::int64_t unit = 1);

/// The larger of two values.
template <typename T>
constexpr const T& LargerOf(const T& a, const T& b) {
  return a < b ? b : a;
}

}  // namespace tesselink
