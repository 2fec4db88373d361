// SPDX-License-Identifier: MIT
#include "base/number_text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <limits>

namespace qmx {
namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;

/// A finite number as digits: 0.d1 d2 d3 ... is never used; the value is d1.d2d3... times 10 to the
/// exponent.
struct Digits {
  std::array<char, 24> text;
  int count = 0;
  int exponent = 0;
  bool negative = false;
};

/// Takes apart what to_chars wrote in scientific form and drops the zeros at the end.
Digits TakeApart(const char* first, const char* last) {
  Digits digits;
  digits.negative = *first == '-';
  if (digits.negative) ++first;
  // The exponent has a sign and two or three digits.
  const char* exponent = last[-4] == 'e' ? last - 4 : last - 5;
  assert(*exponent == 'e');
  for (const char* digit = exponent + 2; digit != last; ++digit)
    digits.exponent = digits.exponent * 10 + (*digit - '0');
  if (exponent[1] == '-') digits.exponent = -digits.exponent;
  // A point stands behind the first digit unless that is the only one.
  digits.text[0] = *first;
  digits.count = static_cast<int>(std::max<std::ptrdiff_t>(exponent - first - 1, 1));
  std::copy_n(first + 2, digits.count - 1, digits.text.data() + 1);
  while (digits.count > 1 && digits.text[digits.count - 1] == '0') --digits.count;
  if (digits.count == 1 && digits.text[0] == '0') digits.negative = false;
  return digits;
}

Digits RoundedDigits(double value, int significant) {
  std::array<char, 40> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific, significant - 1)
                       .ptr;
  return TakeApart(buffer.data(), end);
}

Digits ShortestDigits(double value) {
  std::array<char, 40> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific)
                       .ptr;
  return TakeApart(buffer.data(), end);
}

char* Copy(const char* from, int count, char* out) { return std::copy_n(from, count, out); }

char* WritePlain(const Digits& digits, bool zeroBeforePoint, char* out) {
  const int before = digits.exponent + 1;
  if (before <= 0) {
    if (zeroBeforePoint) *out++ = '0';
    *out++ = '.';
    out = std::fill_n(out, -before, '0');
    return Copy(digits.text.data(), digits.count, out);
  }
  const int whole = std::min(before, digits.count);
  out = Copy(digits.text.data(), whole, out);
  out = std::fill_n(out, before - whole, '0');
  if (digits.count == whole) return out;
  *out++ = '.';
  return Copy(digits.text.data() + whole, digits.count - whole, out);
}

char* WriteExponentForm(const Digits& digits, char* out) {
  *out++ = digits.text[0];
  if (digits.count > 1) {
    *out++ = '.';
    out = Copy(digits.text.data() + 1, digits.count - 1, out);
  }
  *out++ = 'E';
  *out++ = digits.exponent < 0 ? '-' : '+';
  const int magnitude = std::abs(digits.exponent);
  if (magnitude < 10) *out++ = '0';
  return std::to_chars(out, out + 4, magnitude).ptr;
}

/// Lays out the digits without a sign. `places` is the most that a plain number may need on either
/// side of the point, `more` what it may need beyond that behind it.
char* WriteDigits(const Digits& digits, int places, bool zeroBeforePoint, char* out, int more = 0) {
  const int before = digits.exponent + 1;
  const int after = digits.count - before;
  return before <= places && after <= places + more ? WritePlain(digits, zeroBeforePoint, out)
                                                    : WriteExponentForm(digits, out);
}

enum class Shape { kCStr, kStr };

std::string Convert(double value, int significant, Shape shape, int more = 0) {
  if (!std::isfinite(value)) {
    // No task publishes such a value; a display must not fail over one all the same.
    const char* name = std::isnan(value) ? "NaN" : value > 0 ? "Infinity" : "-Infinity";
    return shape == Shape::kStr && *name != '-' ? std::string(" ") + name : name;
  }
  const Digits digits = RoundedDigits(value, significant);
  std::array<char, kFileNumberRoom> buffer;
  char* out = buffer.data();
  if (digits.negative) {
    *out++ = '-';
  } else if (shape == Shape::kStr) {
    *out++ = ' ';
  }
  out = WriteDigits(digits, significant, shape == Shape::kCStr, out, more);
  return {buffer.data(), out};
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view SkipBlanks(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t");
  return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// Length of the longest leading part of `text` (no blanks, sign already gone) that has the form of
/// a number.
std::size_t NumberLength(std::string_view text) {
  std::size_t pos = 0;
  std::size_t digits = 0;
  while (pos < text.size() && IsDigit(text[pos])) ++pos, ++digits;
  if (pos < text.size() && text[pos] == '.') {
    ++pos;
    while (pos < text.size() && IsDigit(text[pos])) ++pos, ++digits;
  }
  if (digits == 0) return 0;
  if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
    std::size_t end = pos + 1;
    if (end < text.size() && (text[end] == '+' || text[end] == '-')) ++end;
    const std::size_t firstDigit = end;
    while (end < text.size() && IsDigit(text[end])) ++end;
    if (end > firstDigit) pos = end;
  }
  return pos;
}

/// The decimal exponent of the first non-zero digit of a well-formed number; very large or small
/// ones are held.
long DecimalMagnitude(std::string_view number) {
  const std::size_t exponentAt = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, exponentAt);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t lead = mantissa.find_first_not_of("0.");
  if (lead == std::string_view::npos) return std::numeric_limits<long>::min();
  const long shift =
      lead < point ? static_cast<long>(point - lead) - 1 : -static_cast<long>(lead - point);
  if (exponentAt == std::string_view::npos) return shift;
  std::string_view exponent = number.substr(exponentAt + 1);
  const bool negative = exponent.front() == '-';
  if (negative || exponent.front() == '+') exponent.remove_prefix(1);
  long value = 0;
  const auto parsed = std::from_chars(exponent.data(), exponent.data() + exponent.size(), value);
  constexpr long kHuge = 1000000000;
  if (parsed.ec != std::errc() || value > kHuge) value = kHuge;
  return shift + (negative ? -value : value);
}

/// The value of a text that has exactly the form of an unsigned number; nothing where it is beyond
/// the doubles.
std::optional<double> ConvertNumber(std::string_view number) {
  double value = 0;
  const auto parsed = std::from_chars(number.data(), number.data() + number.size(), value);
  if (parsed.ec == std::errc()) return value;
  // Out of range on the small side is a zero; on the large side there is no such double.
  if (DecimalMagnitude(number) < 0) return 0.0;
  return std::nullopt;
}

struct Signed {
  bool negative;
  std::string_view rest;
};

Signed SplitSign(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+'))
    return {text.front() == '-', text.substr(1)};
  return {false, text};
}

/// With 15 digits where these read back to the same double, else with the fewest that do.
char* WriteExact(double value, bool zeroBeforePoint, char* out) {
  // The shortest text that reads back is the 15-digit one whenever that reads back, except among
  // the subnormal numbers, many of which are told apart by fewer digits than that.
  Digits digits = ShortestDigits(value);
  const bool subnormal = value != 0 && std::abs(value) < std::numeric_limits<double>::min();
  if (subnormal && digits.count < kDoubleDigits) digits = RoundedDigits(value, kDoubleDigits);
  if (digits.negative) *out++ = '-';
  return WriteDigits(digits, std::max(digits.count, kDoubleDigits), zeroBeforePoint, out);
}

}  // namespace

std::string CStr(double value) { return Convert(value, kDoubleDigits, Shape::kCStr); }

std::string CStr(int value) { return std::to_string(value); }

std::string CStrSingle(double value) {
  const bool fits = std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
  return Convert(fits ? static_cast<double>(static_cast<float>(value)) : value, kSingleDigits,
                 Shape::kCStr);
}

std::string TableNumber(double value, int digits) {
  return Convert(value, digits, Shape::kCStr, 3);
}

std::string Str(double value) { return Convert(value, kDoubleDigits, Shape::kStr); }

std::string PrintItem(double value) { return Str(value) + ' '; }

std::string PrintItem(int value) { return (value < 0 ? "" : " ") + std::to_string(value) + ' '; }

char* WriteFileNumber(char* out, double value) { return WriteExact(value, false, out); }

char* WriteClipboardNumber(char* out, double value) {
  if (std::isfinite(value)) return WriteExact(value, true, out);
  const std::string name = CStr(value);
  return std::copy(name.begin(), name.end(), out);
}

std::string CStrExact(double value) {
  std::array<char, kFileNumberRoom> buffer;
  return {buffer.data(), WriteClipboardNumber(buffer.data(), value)};
}

std::string FileNumber(double value) {
  std::array<char, kFileNumberRoom> buffer;
  return {buffer.data(), WriteFileNumber(buffer.data(), value)};
}

double Val(std::string_view text) { return ReadNumber(text).value; }

NumberRead ReadNumber(std::string_view text) {
  const std::string_view number = SkipBlanks(text);
  const std::size_t begin = text.size() - number.size();
  const auto [negative, rest] = SplitSign(number);
  const std::size_t digits = text.size() - rest.size();
  for (std::size_t length = NumberLength(rest); length > 0;
       length = NumberLength(rest.substr(0, length - 1))) {
    if (const auto value = ConvertNumber(rest.substr(0, length)))
      return {negative ? -*value : *value, begin, digits + length};
  }
  return {0, begin, begin};
}

std::optional<double> ParseNumber(std::string_view text) {
  const auto [negative, rest] = SplitSign(text);
  if (rest.empty() || NumberLength(rest) != rest.size()) return std::nullopt;
  const auto value = ConvertNumber(rest);
  if (!value) return std::nullopt;
  return negative ? -*value : *value;
}

const char* ParseLeadingNumber(const char* at, const char* end, double& value) {
  const char* number = at;
  if (number != end && *number == '+') ++number;
  const char* digits = number;
  if (digits == at && digits != end && *digits == '-') ++digits;
  if (digits == end || !(IsDigit(*digits) || *digits == '.')) return nullptr;
  const auto parsed = std::from_chars(number, end, value);
  if (parsed.ec == std::errc()) return parsed.ptr;
  if (parsed.ec != std::errc::result_out_of_range) return nullptr;
  // Too small reads as zero, too large is no double.
  const auto whole = ParseNumber({at, static_cast<std::size_t>(parsed.ptr - at)});
  if (!whole) return nullptr;
  value = *whole;
  return parsed.ptr;
}

std::int32_t RoundToInteger(double value) {
  if (std::isnan(value)) return 0;
  constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr double kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(std::nearbyint(value), kLeast, kMost));
}

std::int32_t IntegerValue(std::string_view text) { return RoundToInteger(Val(text)); }

std::optional<int> ParseDimension(std::string_view text, int least) {
  text = SkipBlanks(text);
  const std::size_t end = text.find_last_not_of(" \t");
  if (end == std::string_view::npos) return std::nullopt;
  text = text.substr(0, end + 1);
  if (text.front() == '+') text.remove_prefix(1);
  int value = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
  if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size() || value < least)
    return std::nullopt;
  return value;
}

double RoundDecimal(double value, int places) {
  if (!std::isfinite(value)) return value;
  Digits digits = RoundedDigits(value, kDoubleDigits);
  const int kept = digits.exponent + 1 + places;
  if (kept >= digits.count) return value;
  if (kept < 0) return 0;
  const bool tie = digits.text[kept] == '5' && digits.count == kept + 1;
  const bool odd = kept > 0 && (digits.text[kept - 1] - '0') % 2 != 0;
  const bool up = tie ? odd : digits.text[kept] >= '5';
  std::string text = "0" + std::string(digits.text.data(), kept);
  if (up) {
    std::size_t pos = text.size() - 1;
    while (text[pos] == '9') text[pos--] = '0';
    ++text[pos];
  }
  text += "e" + std::to_string(-places);
  double rounded = 0;
  std::from_chars(text.data(), text.data() + text.size(), rounded);
  return digits.negative ? -rounded : rounded;
}

}  // namespace qmx
