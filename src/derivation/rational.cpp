// SPDX-License-Identifier: MIT
#include "derivation/rational.h"

#include <charconv>
#include <memory>

namespace qmx {
namespace {

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Takes the digits up to the exponent off a text; the power of ten that the last one stands for.
slong TakeDigits(std::string_view& text, std::string& digits) {
  slong exponent = 0;
  bool afterPoint = false;
  while (!text.empty() && (IsDigit(text.front()) || (text.front() == '.' && !afterPoint))) {
    if (text.front() == '.') {
      afterPoint = true;
    } else {
      digits += text.front();
      if (afterPoint) --exponent;
    }
    text.remove_prefix(1);
  }
  return exponent;
}

}  // namespace

Rational PowerOfTen(slong exponent) {
  Rational power(10);
  fmpq_pow_si(power.Get(), power.Get(), exponent);
  return power;
}

Rational PowerOfTwo(slong exponent) {
  Rational power(1);
  if (exponent >= 0) {
    fmpq_mul_2exp(power.Get(), power.Get(), static_cast<ulong>(exponent));
  } else {
    fmpq_div_2exp(power.Get(), power.Get(), static_cast<ulong>(-exponent));
  }
  return power;
}

std::optional<WrittenNumber> ReadWritten(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative) text.remove_prefix(1);
  std::string digits;
  slong exponent = TakeDigits(text, digits);
  if (digits.empty()) return std::nullopt;
  if (text.starts_with('E')) {
    text.remove_prefix(1);
    if (text.starts_with('+')) text.remove_prefix(1);
    slong written = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), written);
    if (read.ec != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    exponent += written;
  }
  if (!text.empty()) return std::nullopt;
  WrittenNumber number;
  digits.erase(0, digits.find_first_not_of('0'));
  if (digits.empty()) return number;
  number.leading = exponent + static_cast<slong>(digits.size()) - 1;
  fmpz_set_str(fmpq_numref(number.value.Get()), digits.c_str(), 10);
  if (isNegative) fmpq_neg(number.value.Get(), number.value.Get());
  fmpq_mul(number.value.Get(), number.value.Get(), PowerOfTen(exponent).Get());
  return number;
}

std::string Digits(const fmpz* number, slong most) {
  // A digit takes more than three bits.
  if (static_cast<slong>(fmpz_bits(number)) > 4 * most) return {};
  const std::unique_ptr<char, decltype(&flint_free)> text(fmpz_get_str(nullptr, 10, number),
                                                          &flint_free);
  std::string digits = text.get();
  const auto count = static_cast<slong>(digits.size()) - (digits.starts_with('-') ? 1 : 0);
  return count <= most ? digits : std::string();
}

}  // namespace qmx
