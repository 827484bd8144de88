// SPDX-License-Identifier: MIT
#include "core/io/Numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "support/Support.h"

namespace tesselink {
namespace {

std::string ByPrintf(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

TEST(Numbers, TextIsThatOfTheGeneralConversion) {
  std::mt19937_64 random(20);
  const auto check = [](double value) {
    if (value == 0 || !std::isfinite(value)) return;
    ASSERT_EQ(NumberText(value), ByPrintf("%.15G", value)) << ByPrintf("%a", value);
    const auto single = static_cast<float>(value);
    if (single != 0 && std::isfinite(single)) {
      ASSERT_EQ(SingleText(single), ByPrintf("%.7G", static_cast<double>(single)));
    }
  };
  for (int i = 0; i < 200000; ++i) {
    check(std::bit_cast<double>(random()));  // any bit pattern
    check(std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())), -static_cast<int>(random() % 80)));
    const auto digits = static_cast<double>(random() % 1000000000000ULL);
    for (const double scale : {1.0, 10.0, 100.0, 1000.0, 1e4, 1e6, 1e9}) check(digits / scale);
  }
  // Ties, carries into another digit, the borders of the fixed form.
  constexpr double borders[] = {0.5,
                                2.5,
                                0.0001,
                                0.00009999999999999999,
                                0.000099999999999999994,
                                999999999999999.0,
                                999999999999999.5,
                                999999999999999.9,
                                1e15,
                                1e20,
                                -1e20,
                                99999999999999.95,
                                0.1 + 0.2,
                                123456789012345.5,
                                0.999999999999999944,
                                1234567.5,
                                12345678.0,
                                9999999.5,
                                1e-7,
                                5e-324};
  for (const double value : borders) {
    check(value);
    check(-value);
  }
  EXPECT_EQ(NumberText(0), "0");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(2.5), "2.5");
  EXPECT_EQ(SingleText(0.1F), "0.1");
}

TEST(Numbers, ReadBackEqualsTheLibrary) {
  std::mt19937_64 random(21);
  for (int i = 0; i < 200000; ++i) {
    const double value =
        std::ldexp(static_cast<double>(static_cast<std::int64_t>(random())), -static_cast<int>(random() % 70));
    for (const char* format : {"%.3f", "%.15g", "%.17g", "%.0f", "%e"}) {
      const std::string text = ByPrintf(format, value);
      ASSERT_EQ(StrictNumber(text), std::strtod(text.c_str(), nullptr)) << text;
    }
  }
}

TEST(Numbers, LenientTakesTheLongestLeadingNumber) {
  for (const char* none : {"", "abc", "-", "+-1", "nan", "inf", "0x10", "1e-400", "."}) {
    EXPECT_EQ(LenientNumber(none), 0) << none;
  }
  const std::pair<const char*, double> cases[] = {
      {"12abc", 12},  {" 1 2 . 5 x", 12.5}, {"-3.25", -3.25}, {"+4", 4},
      {"1.5.2", 1.5}, {".5", 0.5},          {"5.", 5},        {"1e3", 1000},
      {"1e", 1},      {"1E+2,9", 100},      {"- 7", -7},      {"0.0000000000000000000000000001", 1e-28}};
  for (const auto& [text, value] : cases) EXPECT_EQ(LenientNumber(text), value) << text;
  EXPECT_NE(ErrorOf([] { LenientNumber("1e400"); }), "");
}

TEST(Numbers, StrictTakesNothingButANumber) {
  EXPECT_EQ(StrictNumber("  -12.5e1 "), -125);
  for (const char* text : {"", " ", "12a", "nan", "inf", "-inf", "0x1F", "1 2", "1,5", "--1", "1e400", "\t1", "12\r",
                           "1234:678", "12/45678", "123456789\xB1", "12345678 9"}) {
    EXPECT_NE(ErrorOf([&] { StrictNumber(text); }), "") << text;
    EXPECT_EQ(std::isnan(NumberOrNone(text)), text != std::string("\t1")) << text;
  }
  EXPECT_EQ(NumberOrNone(" \t-12.5e1\t "), -125);
  EXPECT_EQ(NumberOrNone("+1e-400"), 0);
}

TEST(Numbers, HalvesRoundToTheEvenNeighbour) {
  const std::pair<double, double> cases[] = {{0.5, 0},   {1.5, 2},     {2.5, 2}, {-0.5, 0},
                                             {-1.5, -2}, {-0.0625, 0}, {2.51, 3}};
  for (const auto& [value, rounded] : cases) EXPECT_EQ(RoundHalfEven(value), rounded) << value;
}

}  // namespace
}  // namespace tesselink
