// SPDX-License-Identifier: MIT
#include "derivation/shown.h"

#include <flint/fmpz_factor.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "base/number_text.h"
#include "derivation/rounded.h"
#include "proof/held_digits.h"

namespace qmx {
namespace {

// What is split into primes by trial is done with in a moment below these.
constexpr ulong kMostTrialPrime = 5000;
constexpr ulong kMostWordBits = 64;

/// Whether a distance is no more than half of 10^exponent.
bool IsWithinHalf(const Rational& distance, slong exponent) {
  Rational unit = PowerOfTen(exponent);
  fmpq_div_2exp(unit.Get(), unit.Get(), 1);
  return fmpq_cmp(distance.Get(), unit.Get()) <= 0;
}

/// Where the digits-th significant digit of a text ends; the whole length where it has no more.
std::size_t EndOfDigit(std::string_view text, int digits) {
  if (digits == 0) return 0;
  int seen = 0;
  for (std::size_t at = 0; at < text.size() && text[at] != 'E'; ++at) {
    if (text[at] < '0' || text[at] > '9' || (seen == 0 && text[at] == '0')) continue;
    if (++seen == digits) {
      const bool isLast = text.find_first_of("0123456789", at + 1) == std::string_view::npos ||
                          text.substr(at + 1).starts_with('E');
      return isLast ? text.size() : at + 1;
    }
  }
  return text.size();
}

/// number = root² · rest, the rest free of squares. False where that is not found in a moment.
bool SplitSquare(const fmpz* number, fmpz* root, fmpz* rest) {
  fmpz_one(root);
  fmpz_set(rest, number);
  for (ulong prime = 2; prime < kMostTrialPrime; prime += prime == 2 ? 1 : 2) {
    while (fmpz_divisible_si(rest, static_cast<slong>(prime * prime))) {
      fmpz_divexact_ui(rest, rest, prime * prime);
      fmpz_mul_ui(root, root, prime);
    }
  }
  Whole whole;
  if (fmpz_is_square(rest)) {
    fmpz_sqrt(whole.Get(), rest);
    fmpz_mul(root, root, whole.Get());
    fmpz_one(rest);
    return true;
  }
  if (fmpz_bits(rest) > kMostWordBits) return fmpz_is_probabprime(rest) != 0;
  fmpz_factor_t primes;
  fmpz_factor_init(primes);
  fmpz_factor(primes, rest);
  for (slong k = 0; k < primes->num; ++k) {
    for (ulong power = primes->exp[k]; power >= 2; power -= 2) {
      fmpz_mul(root, root, primes->p + k);
      fmpz_divexact(rest, rest, primes->p + k);
      fmpz_divexact(rest, rest, primes->p + k);
    }
  }
  fmpz_factor_clear(primes);
  return true;
}

/// The root of a rational, off by less than 10^-40 of itself.
Rational RootOfRational(const Rational& square) {
  // √(p/q) = √(p·q)/q, with as many bits more as the root is to be good for.
  Whole product;
  fmpz_mul(product.Get(), square.Numerator(), square.Denominator());
  constexpr slong kBits = 140;
  fmpz_mul_2exp(product.Get(), product.Get(), 2 * kBits);
  fmpz_sqrt(product.Get(), product.Get());
  Rational root;
  fmpq_set_fmpz_frac(root.Get(), product.Get(), square.Denominator());
  fmpq_div_2exp(root.Get(), root.Get(), kBits);
  return root;
}

ShownNumber ShowDecimal(double value) {
  ShownNumber shown;
  if (std::isfinite(value)) shown.decimal = CStr(value);
  shown.held = shown.decimal.size();
  return shown;
}

}  // namespace

ExactNumber ExactOf(const Rational& value, int mostDigits) {
  ExactNumber exact;
  std::string denominator = Digits(value.Denominator(), mostDigits);
  if (denominator.empty()) return exact;
  exact.numerator = Digits(value.Numerator(), mostDigits);
  if (exact.IsKnown()) exact.denominator = std::move(denominator);
  return exact;
}

ExactNumber ExactOf(const TracedRoot& value, int mostDigits) {
  if (value.coefficient.IsZero() || value.square.IsZero()) return ExactOf(Rational(), mostDigits);
  // c·√(p/q) = c/q·√(p·q)
  Whole product;
  fmpz_mul(product.Get(), value.square.Numerator(), value.square.Denominator());
  Whole root;
  Whole rest;
  if (static_cast<int>(fmpz_sizeinbase(product.Get(), 10)) > 3 * mostDigits ||
      !SplitSquare(product.Get(), root.Get(), rest.Get()))
    return {};
  Rational factor;
  fmpq_set_fmpz_frac(factor.Get(), root.Get(), value.square.Denominator());
  fmpq_mul(factor.Get(), factor.Get(), value.coefficient.Get());
  std::string radicand = Digits(rest.Get(), mostDigits);
  if (radicand.empty()) return {};
  ExactNumber exact = ExactOf(factor, mostDigits);
  if (exact.IsKnown()) exact.radicand = std::move(radicand);
  return exact;
}

std::size_t HeldCharacters(std::string_view decimal, const Rational& exact) {
  const std::optional<WrittenNumber> written = ReadWritten(decimal);
  if (!written) return 0;
  if (written->value == exact) return decimal.size();
  if (written->value.IsZero()) return 0;
  Rational distance;
  fmpq_sub(distance.Get(), written->value.Get(), exact.Get());
  fmpq_abs(distance.Get(), distance.Get());
  const slong leading = written->leading;
  if (IsWithinHalf(distance, leading - kWideDigits + 1)) return decimal.size();
  int digits = 0;
  while (digits < kWideDigits - 1 && IsWithinHalf(distance, leading - digits)) ++digits;
  return EndOfDigit(decimal, digits);
}

ShownNumber Show(const Traced& number) {
  ShownNumber shown = ShowDecimal(number.value);
  if (!number.isKnown) return shown;
  shown.held = HeldCharacters(shown.decimal, number.exact);
  shown.exact = ExactOf(number.exact);
  return shown;
}

ShownNumber Show(const TracedRoot& number) {
  ShownNumber shown = ShowDecimal(number.value);
  if (!number.isKnown) return shown;
  Rational value = RootOfRational(number.square);
  fmpq_mul(value.Get(), value.Get(), number.coefficient.Get());
  shown.held = HeldCharacters(shown.decimal, value);
  shown.exact = ExactOf(number);
  return shown;
}

ShownNumber ShowExact(const Rational& value) {
  ShownNumber shown;
  shown.exact = ExactOf(value);
  return shown.exact.IsKnown() ? shown : ShowRounded(value);
}

ShownNumber ShowExact(int whole) { return ShowExact(Rational(whole)); }

bool IsJust(const Traced& number, int whole) {
  return number.value == whole && (!number.isKnown || number.exact == Rational(whole));
}

bool IsNegative(const Traced& number) {
  return number.value < 0 && (!number.isKnown || number.exact.Sign() < 0);
}

}  // namespace qmx
