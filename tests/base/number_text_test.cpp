// SPDX-License-Identifier: MIT
#include "base/number_text.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace qmx {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallestNormal = std::numeric_limits<double>::min();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

struct DoubleCase {
  double value;
  const char* text;
};

TEST(CStr, ShowsUpToFifteenDigitsInTheStandardShape) {
  constexpr std::array<DoubleCase, 14> kCases{{{0.5, "0.5"},
                                               {-0.5, "-0.5"},
                                               {1.0 / 3, "0.333333333333333"},
                                               {2.0 / 3, "0.666666666666667"},
                                               {1.0 / 30, "3.33333333333333E-02"},
                                               {0.0001, "0.0001"},
                                               {-2.0, "-2"},
                                               {0.0, "0"},
                                               {-0.0, "0"},
                                               {0.1 + 0.2, "0.3"},
                                               {100, "100"},
                                               {1234.5, "1234.5"},
                                               {kLargest, "1.79769313486232E+308"},
                                               {kSmallest, "4.94065645841247E-324"}}};
  for (const auto& [value, text] : kCases) EXPECT_EQ(CStr(value), text);
}

TEST(CStr, SwitchesToTheExponentFormWhereFifteenPlacesDoNotSuffice) {
  EXPECT_EQ(CStr(123456789012345.0), "123456789012345");
  EXPECT_EQ(CStr(999999999999999.0), "999999999999999");
  EXPECT_EQ(CStr(1e14), "100000000000000");
  EXPECT_EQ(CStr(1e15), "1E+15");
  EXPECT_EQ(CStr(1234567890123456.0), "1.23456789012346E+15");
  EXPECT_EQ(CStr(999999999999999.9), "1E+15");
  EXPECT_EQ(CStr(1e-15), "0.000000000000001");
  EXPECT_EQ(CStr(1e-16), "1E-16");
  EXPECT_EQ(CStr(1.5e-14), "0.000000000000015");
  EXPECT_EQ(CStr(1.5e-15), "1.5E-15");
  EXPECT_EQ(CStr(0.0123456789012345), "1.23456789012345E-02");
  EXPECT_EQ(CStr(0.012345678901234), "0.012345678901234");
  EXPECT_EQ(CStr(12345678901234.5), "12345678901234.5");
}

TEST(CStr, ShowsIntegers) {
  EXPECT_EQ(CStr(3), "3");
  EXPECT_EQ(CStr(-1), "-1");
  EXPECT_EQ(CStr(0), "0");
  EXPECT_EQ(CStr(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(CStr, NeverFailsOverWhatIsNoNumber) {
  EXPECT_EQ(CStr(kInfinity), "Infinity");
  EXPECT_EQ(CStr(-kInfinity), "-Infinity");
  EXPECT_EQ(CStr(kNaN), "NaN");
  EXPECT_EQ(Str(kInfinity), " Infinity");
  EXPECT_EQ(Str(-kInfinity), "-Infinity");
}

TEST(CStrSingle, RoundsToSinglePrecisionAndSevenDigits) {
  EXPECT_EQ(CStrSingle(1.0 / 3), "0.3333333");
  EXPECT_EQ(CStrSingle(1.0 / 30), "3.333334E-02");
  EXPECT_EQ(CStrSingle(0.1), "0.1");
  EXPECT_EQ(CStrSingle(9999999), "9999999");
  EXPECT_EQ(CStrSingle(1e7), "1E+07");
  EXPECT_EQ(CStrSingle(1234567.8), "1234568");
  EXPECT_EQ(CStrSingle(1e-7), "0.0000001");
  EXPECT_EQ(CStrSingle(1e-8), "1E-08");
  EXPECT_EQ(CStrSingle(-2.5), "-2.5");
  EXPECT_EQ(CStrSingle(-0.0), "0");
}

TEST(CStrSingle, ShowsWhatSinglePrecisionCannotHold) {
  EXPECT_EQ(CStrSingle(1e300), "1E+300");
  EXPECT_EQ(CStrSingle(-kLargest), "-1.797693E+308");
  EXPECT_EQ(CStrSingle(1e-50), "0");
  EXPECT_EQ(CStrSingle(-1e-50), "0");
}

TEST(Str, LeavesAPlaceForTheSignAndNoZeroBeforeThePoint) {
  EXPECT_EQ(Str(0.5), " .5");
  EXPECT_EQ(Str(-0.5), "-.5");
  EXPECT_EQ(Str(0), " 0");
  EXPECT_EQ(Str(-0.0), " 0");
  EXPECT_EQ(Str(1e20), " 1E+20");
  EXPECT_EQ(Str(1.23456789012346e17), " 1.23456789012346E+17");
  EXPECT_EQ(Str(1e-5), " .00001");
  EXPECT_EQ(Str(-12), "-12");
}

TEST(PrintItem, EndsWithABlank) {
  EXPECT_EQ(PrintItem(2.5), " 2.5 ");
  EXPECT_EQ(PrintItem(-2.5), "-2.5 ");
  EXPECT_EQ(PrintItem(3), " 3 ");
  EXPECT_EQ(PrintItem(-3), "-3 ");
  EXPECT_EQ(PrintItem(0), " 0 ");
}

TEST(FileNumber, UsesTheFewestDigitsThatReadBack) {
  EXPECT_EQ(FileNumber(0.5), ".5");
  EXPECT_EQ(FileNumber(0.1), ".1");
  EXPECT_EQ(FileNumber(1.0 / 3), ".3333333333333333");
  EXPECT_EQ(FileNumber(0.1 + 0.2), ".30000000000000004");
  EXPECT_EQ(FileNumber(-2.5), "-2.5");
  EXPECT_EQ(FileNumber(0.0), "0");
  EXPECT_EQ(FileNumber(-0.0), "0");
  EXPECT_EQ(FileNumber(1e-20), "1E-20");
  EXPECT_EQ(FileNumber(123456789012345.0), "123456789012345");
  EXPECT_EQ(FileNumber(1e15), "1E+15");
  EXPECT_EQ(FileNumber(1234567890123456.0), "1234567890123456");
  EXPECT_EQ(FileNumber(kLargest), "1.7976931348623157E+308");
}

TEST(FileNumber, GivesSubnormalNumbersFifteenDigits) {
  EXPECT_EQ(FileNumber(kSmallest), "4.94065645841247E-324");
  EXPECT_EQ(FileNumber(-kSmallest), "-4.94065645841247E-324");
  EXPECT_EQ(FileNumber(kSmallestNormal), "2.2250738585072014E-308");
  EXPECT_EQ(FileNumber(5.672890015651015e-309), "5.672890015651015E-309");
}

TEST(ClipboardNumber, HasTheDigitsOfAFileAndAZeroBeforeThePoint) {
  const auto text = [](double value) {
    std::array<char, kFileNumberRoom> room;
    return std::string(room.data(), WriteClipboardNumber(room.data(), value));
  };
  EXPECT_EQ(text(0.5), "0.5");
  EXPECT_EQ(text(-0.1), "-0.1");
  EXPECT_EQ(text(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(text(-0.0), "0");
  EXPECT_EQ(text(-kLargest), "-1.7976931348623157E+308");
  EXPECT_EQ(text(kSmallest), "4.94065645841247E-324");
  EXPECT_EQ(text(std::numeric_limits<double>::infinity()), "Infinity");
}

TEST(CStrExact, AddsDigitsOnlyWhereFifteenDoNotReadBack) {
  EXPECT_EQ(CStrExact(0.1), CStr(0.1));
  EXPECT_EQ(CStrExact(-2), "-2");
  EXPECT_EQ(CStrExact(1e-15), CStr(1e-15));
  EXPECT_EQ(CStrExact(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(CStrExact(-0.0), "0");
}

bool SameBits(double one, double two) {
  return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(two);
}

/// The number's text in a file, unless the roundtrip through it, by two independent readers, is not
/// exact.
testing::AssertionResult ReadsBack(double value) {
  const std::string text = FileNumber(value);
  if (text.size() > static_cast<std::size_t>(kFileNumberRoom))
    return testing::AssertionFailure() << text << " is too long";
  const double wanted = value == 0 ? 0.0 : value;
  double byCharconv = 0;
  const char* end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, byCharconv);
#ifdef _WIN32
  // The C library there rounds some numbers twice.
  const double byStrtod = wanted;
#else
  const double byStrtod = std::strtod(text.c_str(), nullptr);
#endif
  const auto byParse = ParseNumber(text);
  if (parsed.ptr == end && SameBits(byCharconv, wanted) && SameBits(byStrtod, wanted) && byParse &&
      SameBits(*byParse, wanted) && SameBits(Val(" " + text + " "), wanted))
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << text << " does not read back";
}

/// True if the text with 15 significant digits is the same number, so that no more may be written.
bool FifteenDigitsSuffice(double value) {
  std::array<char, 40> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific, 14)
                       .ptr;
  double back = 0;
  std::from_chars(buffer.data(), end, back);
  return back == value;
}

int DigitsOf(const std::string& text) {
  const std::string mantissa = text.substr(0, text.find('E'));
  std::string digits;
  for (const char c : mantissa) {
    if (c >= '0' && c <= '9') digits += c;
  }
  digits.erase(0, digits.find_first_not_of('0'));
  return static_cast<int>(digits.size());
}

TEST(FileNumber, LosesNoBitOfAMillionRandomPatterns) {
  std::mt19937_64 random(20011);
  int checked = 0;
  while (checked < 1000000) {
    const double value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    ASSERT_TRUE(ReadsBack(value));
    if (FifteenDigitsSuffice(value)) {
      ASSERT_LE(DigitsOf(FileNumber(value)), 15) << value;
      ASSERT_EQ(FileNumber(value), value < 0 ? Str(value) : Str(value).substr(1));
    }
    ++checked;
  }
}

TEST(FileNumber, LosesNoBitOfOrdinaryNumbers) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> uniform(-1000, 1000);
  for (int i = 0; i < 200000; ++i) ASSERT_TRUE(ReadsBack(uniform(random)));
  for (int i = -3000; i <= 3000; ++i) {
    ASSERT_TRUE(ReadsBack(i));
    ASSERT_TRUE(ReadsBack(i / 100.0));
    ASSERT_TRUE(ReadsBack(i / 7.0));
  }
}

TEST(FileNumber, LosesNoBitAroundPowersOfTwoAndTen) {
  for (int e = -1074; e <= 1023; ++e) {
    const double power = std::ldexp(1.0, e);
    ASSERT_TRUE(ReadsBack(power));
    ASSERT_TRUE(ReadsBack(std::nextafter(power, kInfinity)));
    ASSERT_TRUE(ReadsBack(std::nextafter(power, 0)));
  }
  for (int e = -307; e <= 308; ++e) {
    const double power = std::strtod(("1e" + std::to_string(e)).c_str(), nullptr);
    ASSERT_TRUE(ReadsBack(power));
    ASSERT_TRUE(ReadsBack(std::nextafter(power, 0)));
    ASSERT_TRUE(ReadsBack(std::nextafter(power, kLargest)));
  }
}

struct TextCase {
  const char* text;
  double value;
};

TEST(Val, TakesTheLongestLeadingNumber) {
  constexpr std::array<TextCase, 29> kCases{{
      {"12abc", 12},   {"1.5e", 1.5},     {"1.5e+", 1.5}, {"1.5e-", 1.5}, {"1e3", 1000},
      {"1E3", 1000},   {"1E+03", 1000},   {"25e-1", 2.5}, {" .5", 0.5},   {"5.", 5},
      {"+7", 7},       {"-7", -7},        {"", 0},        {"   ", 0},     {"-", 0},
      {"+", 0},        {".", 0},          {"e5", 0},      {"-.5x", -0.5}, {"1.2.3", 1.2},
      {"1,5", 1},      {"\t 3", 3},       {"--3", 0},     {"+-3", 0},     {"0x10", 0},
      {"1e999", 1e99}, {"-1e999", -1e99}, {"1e-999", 0},  {"1 2", 1},
  }};
  for (const auto& [text, value] : kCases) EXPECT_EQ(Val(text), value) << '"' << text << '"';
}

TEST(Val, ReadsNoWordsAsNumbers) {
  EXPECT_EQ(Val("inf"), 0);
  EXPECT_EQ(Val("Infinity"), 0);
  EXPECT_EQ(Val("nan"), 0);
  EXPECT_EQ(Val("True"), 0);
}

TEST(Val, StaysFiniteForEveryLength) {
  EXPECT_EQ(Val("1" + std::string(400, '0')), 1e308);
  EXPECT_EQ(Val(std::string(400, '9')), 1e308);
  EXPECT_EQ(Val("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(Val("1e" + std::string(50, '9')), 1e99);
  EXPECT_EQ(Val("1e-" + std::string(50, '9')), 0);
  EXPECT_EQ(Val("0e" + std::string(50, '9')), 0);
}

TEST(ParseNumber, TakesExactlyOneFiniteNumber) {
  EXPECT_EQ(ParseNumber("12"), 12);
  EXPECT_EQ(ParseNumber("-.5"), -0.5);
  EXPECT_EQ(ParseNumber("+1E-20"), 1e-20);
  EXPECT_EQ(ParseNumber("5."), 5);
  EXPECT_EQ(ParseNumber("1e-999"), 0);
  const std::string zeros(400, '0');
  EXPECT_EQ(ParseNumber("." + zeros + "1e50"), 0);
  EXPECT_EQ(ParseNumber("1" + zeros + "e-800"), 0);
  EXPECT_FALSE(ParseNumber("1" + zeros + ".5e-50").has_value());
  EXPECT_FALSE(ParseNumber("." + zeros + "1e900").has_value());
  for (const char* text : {"", " ", "1 ", " 1", "1,", "abc", "1e", "1e+", "+", "-", ".", "1e999",
                           "-1e999", "inf", "nan", "0x1p3", "1d3", "1.2.3", "--1"})
    EXPECT_FALSE(ParseNumber(text).has_value()) << '"' << text << '"';
}

TEST(RoundToInteger, RoundsHalvesToEvenAndHoldsTheRange) {
  EXPECT_EQ(RoundToInteger(2.5), 2);
  EXPECT_EQ(RoundToInteger(3.5), 4);
  EXPECT_EQ(RoundToInteger(-2.5), -2);
  EXPECT_EQ(RoundToInteger(-3.5), -4);
  EXPECT_EQ(RoundToInteger(0.49999), 0);
  EXPECT_EQ(RoundToInteger(1e99), 2147483647);
  EXPECT_EQ(RoundToInteger(-1e99), -2147483647 - 1);
  EXPECT_EQ(RoundToInteger(2147483647.4), 2147483647);
  EXPECT_EQ(RoundToInteger(kInfinity), 2147483647);
  EXPECT_EQ(RoundToInteger(kNaN), 0);
}

TEST(IntegerValue, RoundsTheLeadingNumber) {
  EXPECT_EQ(IntegerValue("100"), 100);
  EXPECT_EQ(IntegerValue(" 2.5 cycles"), 2);
  EXPECT_EQ(IntegerValue("1e99"), 2147483647);
  EXPECT_EQ(IntegerValue("x"), 0);
}

TEST(ParseDimension, TakesWholeNumbersFromTheLeastOn) {
  EXPECT_EQ(ParseDimension("3"), 3);
  EXPECT_EQ(ParseDimension(" 3 "), 3);
  EXPECT_EQ(ParseDimension("\t3"), 3);
  EXPECT_EQ(ParseDimension("+3"), 3);
  EXPECT_EQ(ParseDimension("007"), 7);
  EXPECT_EQ(ParseDimension("2147483647"), 2147483647);
  EXPECT_EQ(ParseDimension("0", 0), 0);
  for (const char* text : {"", "  ", "0", "-1", "2.0", "2.", "abc", "3x", "3 4", "2147483648",
                           "99999999999999999999", "+", "-", "+-3", "1e2"})
    EXPECT_FALSE(ParseDimension(text).has_value()) << '"' << text << '"';
  EXPECT_FALSE(ParseDimension("-1", 0).has_value());
}

TEST(ParseLeadingNumber, StopsWhereTheNumberEnds) {
  const auto read = [](std::string_view text, double& value) -> std::string {
    const char* end = ParseLeadingNumber(text.data(), text.data() + text.size(), value);
    return end == nullptr ? "none" : std::string(end, text.data() + text.size());
  };
  double value = 0;
  EXPECT_EQ(read("12abc", value), "abc");
  EXPECT_EQ(value, 12);
  EXPECT_EQ(read("+.5,1", value), ",1");
  EXPECT_EQ(value, 0.5);
  EXPECT_EQ(read("-2e-3 4", value), " 4");
  EXPECT_EQ(value, -0.002);
  EXPECT_EQ(read("1e-999;", value), ";");
  EXPECT_EQ(value, 0);
  for (const char* text :
       {"", " 1", "nan", "inf", "-inf", "1e999", "-", "+", "+-1", "--1", ".", "x"})
    EXPECT_EQ(read(text, value), "none") << '"' << text << '"';
}

TEST(RoundDecimal, RoundsTheDigitsOfTheText) {
  EXPECT_EQ(RoundDecimal(1.00000000005, 10), 1);
  EXPECT_EQ(RoundDecimal(1.00000000015, 10), 1.0000000002);
  EXPECT_EQ(RoundDecimal(1.000000000051, 10), 1.0000000001);
  EXPECT_EQ(RoundDecimal(9.99999999999, 10), 10);
  EXPECT_EQ(RoundDecimal(-9.99999999999, 10), -10);
  EXPECT_EQ(RoundDecimal(0.5, 0), 0);
  EXPECT_EQ(RoundDecimal(1.5, 0), 2);
  EXPECT_EQ(RoundDecimal(2.675, 2), 2.68);
  EXPECT_EQ(RoundDecimal(0.05, 0), 0);
  EXPECT_EQ(RoundDecimal(3.25, 10), 3.25);
  EXPECT_EQ(RoundDecimal(0.0, 10), 0);
}

}  // namespace
}  // namespace qmx
