// SPDX-License-Identifier: MIT
#include "core/io/Numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/io/Errors.h"
#include "core/io/Text.h"

namespace tesselink {
namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::array<std::uint64_t, 19> kPowersOfTen = [] {
  std::array<std::uint64_t, 19> powers{};
  std::uint64_t power = 1;
  for (std::uint64_t& entry : powers) {
    entry = power;
    power *= 10;
  }
  return powers;
}();

constexpr std::array<char, 200> kDigitPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

// The number of digits before the decimal point; for values below 1 zero less the number of zeros behind the point. The
// literals below 1 are the nearest doubles above their decimal, so no double lies between the two.
int DigitsBeforePoint(double value) {
  if (value < 1) return value >= 0.1 ? 0 : value >= 0.01 ? -1 : value >= 0.001 ? -2 : -3;
  const auto whole = static_cast<std::uint64_t>(value);
  const int estimate = static_cast<int>(std::bit_width(whole) * 1233 >> 12);
  return estimate + (whole >= kPowersOfTen[static_cast<std::size_t>(estimate)] ? 1 : 0);
}

// value * 10^scale as a whole number, exactly rounded, halves to even. Holds for 1e-4 <= value < 1e15 and a product
// below 2^60: the mantissa has 53 bits, the power at most 60, the shift is between 1 and 127.
std::uint64_t ScaledWhole(double value, int scale) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const std::uint64_t mantissa = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
  const int shift = 1075 - static_cast<int>(bits >> 52);
  const Wide product = static_cast<Wide>(mantissa) * kPowersOfTen[static_cast<std::size_t>(scale)];
  const auto quotient = static_cast<std::uint64_t>(product >> shift);
  const Wide rest = product & ((static_cast<Wide>(1) << shift) - 1);
  const Wide half = static_cast<Wide>(1) << (shift - 1);
  return quotient + (rest > half || (rest == half && (quotient & 1) != 0) ? 1 : 0);
}

// Writes exactly `count` digits.
void WriteDigits(char* out, std::uint64_t value, int count) {
  for (; count >= 2; count -= 2) {
    std::memcpy(out + count - 2, &kDigitPairs[2 * (value % 100)], 2);
    value /= 100;
  }
  if (count == 1) out[0] = static_cast<char>('0' + value);
}

// Places the decimal point among `length` significant digits of which `before` stand before it.
char* Layout(char* out, const char* digits, int length, int before) {
  const auto copy = [&out](const char* from, int count) {
    std::memcpy(out, from, static_cast<std::size_t>(count));
    out += count;
  };
  if (before <= 0) {
    copy("0.000", 2 - before);
    copy(digits, length);
  } else if (length <= before) {
    copy(digits, length);
    std::memset(out, '0', static_cast<std::size_t>(before - length));
    out += before - length;
  } else {
    copy(digits, before);
    *out++ = '.';
    copy(digits + before, length - before);
  }
  return out;
}

char* FormatByLibrary(char* out, double value, int precision) {
  char* end = std::to_chars(out, out + kNumberTextSize, value, std::chars_format::general, precision).ptr;
  for (char* c = out; c != end; ++c) {
    if (*c >= 'a' && *c <= 'z') *c = static_cast<char>(*c - 'a' + 'A');
  }
  return end;
}

// The digits of a whole number below 10^8, one to a byte, the first in the lowest: numbers of four digits, of two and
// of one are divided side by side in one word.
std::uint64_t DigitBytes(std::uint32_t value) {
  const std::uint64_t fours = value / 10000 | std::uint64_t{value % 10000} << 32;
  const std::uint64_t hundreds = fours * 10486 >> 20 & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds | (fours - hundreds * 100) << 16;
  const std::uint64_t tens = twos * 103 >> 10 & 0x000F000F000F000F;
  return tens | (twos - tens * 10) << 8;
}

// The digits of a whole number below 10^16 without leading zeros; writes 16 bytes.
char* WriteWhole(char* out, std::uint64_t value) {
  constexpr std::uint64_t kZeros = 0x3030303030303030, kEight = 100000000;
  if constexpr (std::endian::native != std::endian::little) return std::to_chars(out, out + 16, value).ptr;
  const auto put = [&out](std::uint64_t digits, int leading) {
    const std::uint64_t text = (digits | kZeros) >> 8 * leading;
    std::memcpy(out, &text, sizeof text);
    out += 8 - leading;
  };
  const bool isLong = value >= kEight;
  const std::uint64_t first = DigitBytes(static_cast<std::uint32_t>(isLong ? value / kEight : value));
  put(first, first == 0 ? 7 : std::countr_zero(first) / 8);
  if (isLong) put(DigitBytes(static_cast<std::uint32_t>(value % kEight)), 0);
  return out;
}

// What stands behind the whole number for each count of thousandths, and how long it is.
struct Decimals {
  std::array<char, 4> text;
  std::uint8_t length;
};
constexpr std::array<Decimals, 1000> kThousandths = [] {
  std::array<Decimals, 1000> all{};
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto digit = [i](std::size_t place) { return static_cast<char>('0' + i / place % 10); };
    all[i] = {{'.', digit(100), digit(10), digit(1)},
              static_cast<std::uint8_t>(i == 0         ? 0
                                        : i % 100 == 0 ? 2
                                        : i % 10 == 0  ? 3
                                                       : 4)};
  }
  return all;
}();

// Most survey coordinates have at most three decimals. A whole number of thousandths below 10^15 whose quotient is the
// very value has at most 15 digits, so it is what 15 significant digits print. Returns null for any other value.
char* FormatThousandths(char* out, double magnitude) {
  if (!(magnitude < 1e12)) return nullptr;
  const auto thousandths =
      static_cast<std::int64_t>(magnitude * 1000 + 0.5);  // NOLINT(bugprone-incorrect-roundings): checked next
  if (static_cast<double>(thousandths) / 1000 != magnitude) return nullptr;
  out = WriteWhole(out, static_cast<std::uint64_t>(thousandths / 1000));
  const Decimals& decimals = kThousandths[static_cast<std::size_t>(thousandths % 1000)];
  std::memcpy(out, decimals.text.data(), decimals.text.size());
  return out + decimals.length;
}

// Integer arithmetic for the range in which the text has no exponent: several times as fast as the library, and as
// exact.
template <int Precision>
char* FormatGeneral(char* out, double value) {
  if (value == 0) {
    *out = '0';
    return out + 1;
  }
  const double magnitude = std::fabs(value);
  if (!(magnitude >= 1e-4 && magnitude < static_cast<double>(kPowersOfTen[Precision]))) {
    return FormatByLibrary(out, value, Precision);
  }
  if (Precision == 15) {
    *out = '-';
    if (char* end = FormatThousandths(out + (value < 0 ? 1 : 0), magnitude)) return end;
  }
  int before = DigitsBeforePoint(magnitude);
  std::uint64_t whole = ScaledWhole(magnitude, Precision - before);
  if (whole == kPowersOfTen[Precision]) {
    if (before == Precision) return FormatByLibrary(out, value, Precision);
    whole /= 10;
    ++before;
  }
  char digits[Precision];
  WriteDigits(digits, whole, Precision);
  int length = Precision;
  while (digits[length - 1] == '0') --length;
  if (value < 0) *out++ = '-';
  return Layout(out, digits, length, before);
}

[[noreturn]] void ThrowTooLarge(std::string_view text) {
  throw Error("the number \"" + std::string(text.substr(0, 40)) + "\" is too large");
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Eight digits as a number, the first of them in the lowest byte, each less '0'.
inline std::uint64_t EightDigits(std::uint64_t digits) {
  digits = digits * 10 + (digits >> 8);
  return ((digits & 0x000000FF000000FF) * 0x000F424000000064 +
          (digits >> 16 & 0x000000FF000000FF) * 0x0000271000000001) >>
         32;
}

// Consumes a run of digits behind `value` and returns its end; where there is room, up to eight digits at once.
inline const char* ParseDigits(const char* at, const char* last, std::uint64_t& value) {
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    if (last - at >= 8) {
      std::uint64_t bytes;
      std::memcpy(&bytes, at, sizeof bytes);
      const std::uint64_t digits = bytes ^ kEach * '0';
      const std::uint64_t others = (digits | (digits + kEach * 0x76)) & kEach << 7;
      const int count = others == 0 ? 8 : std::countr_zero(others) / 8;
      if (count == 0) return at;
      value = value * kPowersOfTen[static_cast<std::size_t>(count)] + EightDigits(digits << (64 - 8 * count));
      at += count;
      if (count < 8) return at;
    }
  }
  for (; at != last; ++at) {
    const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
    if (digit > 9) break;
    value = value * 10 + digit;
  }
  return at;
}

// The plain decimals of coordinates, without an exponent, whose digits and power of ten are both exact, so that one
// division rounds correctly. Returns null for anything else.
const char* ParsePlain(const char* first, const char* last, double& value) {
  static constexpr std::array<double, 19> kPowers{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                                  1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};
  constexpr std::ptrdiff_t kMostDigits = 18;
  constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
  const char* at = first;
  const bool negative = at != last && *at == '-';
  if (negative) ++at;
  std::uint64_t digits = 0;
  const char* start = at;
  at = ParseDigits(at, last, digits);
  std::ptrdiff_t count = at - start, decimals = 0;
  if (at != last && *at == '.') {
    start = ++at;
    at = ParseDigits(at, last, digits);
    decimals = at - start;
    count += decimals;
  }
  if (count == 0 || count > kMostDigits || digits > kExact) return nullptr;
  if (at != last && (*at == 'e' || *at == 'E')) return nullptr;
  value = static_cast<double>(digits) / kPowers[static_cast<std::size_t>(decimals)];
  if (negative) value = -value;
  return at;
}

// What was read of a text: the end of its number, and whether that is too large to hold.
struct Parsed {
  const char* end;
  bool tooLarge;
};

// Any number at the start of [first, last); `first` and 0 when there is none.
Parsed ParseByLibrary(const char* first, const char* last, double& value) {
  value = 0;
  const char* start = first != last && *first == '+' ? first + 1 : first;
  const char* digit = start == first && first != last && *first == '-' ? first + 1 : start;
  // from_chars would also take "inf" and "nan".
  if (digit == last || !(IsDigit(*digit) || *digit == '.')) return {first, false};
  const auto [end, status] = std::from_chars(start, last, value);
  if (status == std::errc::invalid_argument) return {first, false};
  if (status != std::errc::result_out_of_range) return {end, false};
  const std::string_view number(start, static_cast<std::size_t>(end - start));
  const std::size_t exponent = number.find_first_of("eE");
  const bool tiny = exponent == std::string_view::npos ? number.find_first_of("123456789") > number.find('.')
                                                       : number.substr(exponent + 1).starts_with('-');
  value = 0;
  return {end, !tiny};
}

template <typename Format>
std::string Text(Format format) {
  char buffer[kNumberTextSize];
  return std::string(buffer, format(buffer));
}

}  // namespace

char* FormatNumber(char* out, double value) { return FormatGeneral<15>(out, value); }
char* FormatSingle(char* out, float value) { return FormatGeneral<7>(out, static_cast<double>(value)); }
char* FormatInteger(char* out, std::int64_t value) { return std::to_chars(out, out + kNumberTextSize, value).ptr; }

std::string NumberText(double value) {
  return Text([value](char* out) { return FormatNumber(out, value); });
}
std::string SingleText(float value) {
  return Text([value](char* out) { return FormatSingle(out, value); });
}

const char* ParseNumber(const char* first, const char* last, double& value) {
  if (const char* end = ParsePlain(first, last, value)) return end;
  const Parsed parsed = ParseByLibrary(first, last, value);
  if (parsed.tooLarge) ThrowTooLarge({first, static_cast<std::size_t>(parsed.end - first)});
  return parsed.end;
}

double LenientNumber(std::string_view text) {
  text = Trimmed(text);
  double value = 0;
  if (text.find(' ') == std::string_view::npos) {
    ParseNumber(text.data(), text.data() + text.size(), value);
    return value;
  }
  std::string packed;
  for (const char c : text) {
    if (c != ' ') packed += c;
  }
  ParseNumber(packed.data(), packed.data() + packed.size(), value);
  return value;
}

double StrictNumber(std::string_view text) {
  const std::string_view trimmed = Trimmed(text);
  const char* const last = trimmed.data() + trimmed.size();
  double value = 0;
  if (trimmed.empty() || ParseNumber(trimmed.data(), last, value) != last) {
    throw Error("\"" + std::string(text.substr(0, 40)) + "\" is not a number");
  }
  return value;
}

double NumberOrNone(std::string_view text) {
  double value = 0;
  const char* first = text.data();
  const char* last = first + text.size();
  if (ParsePlain(first, last, value) == last && first != last) return value;
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  while (first != last && isBlank(*first)) ++first;
  while (first != last && isBlank(last[-1])) --last;
  if (ParsePlain(first, last, value) == last && first != last) return value;
  const Parsed parsed = ParseByLibrary(first, last, value);
  return first != last && parsed.end == last && !parsed.tooLarge ? value : kNone;
}

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

double Percentage(std::int64_t position, std::int64_t size, std::int64_t unit) {
  if (size == 0) return 0;
  return std::min(static_cast<double>(position) / static_cast<double>(size) * static_cast<double>(100 * unit), 100.0);
}

}  // namespace tesselink
