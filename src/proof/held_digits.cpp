// SPDX-License-Identifier: MIT
#include "proof/held_digits.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>

// Everything is compared in long doubles, whose 64 bits leave room below the 15 digits of a text,
// and whose range takes every double to the ends of its own without underflow.
static_assert(LDBL_MANT_DIG >= 64 && LDBL_MAX_EXP >= 16384);

namespace qmx {
namespace {

using Wide = long double;

// More than all roundings below can amount to, as a part of the numbers compared: no more than some
// forty operations, each off by 2^-64.
constexpr Wide kSlack = 0x1p-58L;

Wide PowerOfTen(int exponent) {
  Wide power = 1;
  Wide square = 10;
  for (int rest = std::abs(exponent); rest != 0; rest /= 2) {
    if (rest % 2 != 0) power *= square;
    square *= square;
  }
  return exponent < 0 ? 1 / power : power;
}

/// The most k up to `most` with distance < 10^(first - k + 1): the first significant digit stands
/// for 10^first.
int DigitsWithin(Wide distance, int first, int most) {
  int held = 0;
  while (held < most && distance < PowerOfTen(first - held) * (1 - kSlack)) ++held;
  return held;
}

/// A decimal number other than zero, digits·10^exponent, whose first digit stands for 10^first.
struct Decimal {
  bool isNumber = false;
  bool isNegative = false;
  std::uint64_t digits = 0;
  int exponent = 0;
  int first = 0;
};

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// The digits of a number up to its exponent.
std::size_t ReadDigits(std::string_view text, Decimal& number) {
  bool afterPoint = false;
  int count = 0;
  std::size_t at = 0;
  for (; at < text.size() && (IsDigit(text[at]) || (text[at] == '.' && !afterPoint)); ++at) {
    if (text[at] == '.') {
      afterPoint = true;
      continue;
    }
    number.isNumber = true;
    if (number.digits != 0 || text[at] != '0') ++count;
    if (count > kDoubleDigits) return number.isNumber = false;
    number.digits = number.digits * 10 + static_cast<std::uint64_t>(text[at] - '0');
    if (afterPoint) --number.exponent;
  }
  number.first = number.exponent + count - 1;
  return at;
}

Decimal ReadDecimal(std::string_view text) {
  Decimal number;
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    number.isNegative = text.front() == '-';
    text.remove_prefix(1);
  }
  text.remove_prefix(ReadDigits(text, number));
  if (text.empty() || !number.isNumber) return number;
  const bool hasExponent = text.front() == 'E' || text.front() == 'e';
  text.remove_prefix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int exponent = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), exponent);
  number.isNumber = hasExponent && read.ec == std::errc() &&
                    read.ptr == text.data() + text.size() && std::abs(exponent) < 2000;
  number.exponent += exponent;
  number.first += exponent;
  return number;
}

}  // namespace

int HeldDigits(double computed, const ElementProof& proof) {
  if (computed == 0) return proof.relativeError == 0 ? kDoubleDigits : 0;
  if (!std::isfinite(computed)) return 0;
  const Wide magnitude = std::abs(static_cast<Wide>(computed));
  // Where the number is a hair away from a power of ten that is not exact, the lower exponent is
  // the safe one.
  const auto reaches = [&](int exponent) {
    const bool isExact = exponent >= 0 && exponent <= 27;
    return PowerOfTen(exponent) * (isExact ? 1 : 1 + kSlack) <= magnitude;
  };
  int first = static_cast<int>(std::floor(std::log10(magnitude))) + 1;
  while (!reaches(first)) --first;
  return DigitsWithin(magnitude * proof.relativeError, first, kDoubleDigits);
}

int HeldDigits(std::string_view shown, int most, double computed, const ElementProof& proof) {
  const Decimal number = ReadDecimal(shown);
  if (!number.isNumber) return 0;
  if (number.digits == 0) return proof.lower == 0 && proof.upper == 0 ? most : 0;
  const Wide magnitude = static_cast<Wide>(number.digits) * PowerOfTen(number.exponent);
  const Wide written = number.isNegative ? -magnitude : magnitude;
  const Wide byEnds = std::max(std::abs(written - proof.lower), std::abs(written - proof.upper));
  Wide distance = byEnds;
  if (std::isfinite(computed) && std::isfinite(proof.relativeError)) {
    const Wide value = computed;
    distance =
        std::min(distance, std::abs(written - value) + std::abs(value) * Wide{proof.relativeError});
  }
  return DigitsWithin(distance + magnitude * kSlack, number.first, most);
}

}  // namespace qmx
