// SPDX-License-Identifier: MIT
#include "proof/rational.h"

#include <flint/fmpz.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace qmx::testing {

Rational::Rational(double exact) : Rational() {
  int exponent = 0;
  const auto mantissa = static_cast<std::int64_t>(std::ldexp(std::frexp(exact, &exponent), 53));
  fmpq_set_si(value_, mantissa, 1);
  const int shift = exponent - 53;
  if (shift >= 0) {
    fmpq_mul_2exp(value_, value_, shift);
  } else {
    fmpq_div_2exp(value_, value_, -shift);
  }
}

Rational Rational::Magnitude() const {
  Rational magnitude;
  fmpq_abs(magnitude.value_, value_);
  return magnitude;
}

double Rational::ToDouble() const { return fmpq_get_d(value_); }

Rational PowerOfTen(int exponent) {
  Rational power;
  fmpz_set_ui(fmpq_numref(power.Get()), 10);
  fmpz_pow_ui(fmpq_numref(power.Get()), fmpq_numref(power.Get()), std::abs(exponent));
  return exponent < 0 ? Rational(1) / power : power;
}

Rational FromText(std::string_view text) {
  std::string digits;
  int exponent = 0;
  bool afterPoint = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (c == 'E') {
      exponent += std::atoi(std::string(text.substr(at + 1)).c_str());
      break;
    }
    if (c == '.') afterPoint = true;
    if (c != '.' && c != ' ') digits += c;
    if (c >= '0' && c <= '9' && afterPoint) --exponent;
  }
  Rational number;
  fmpq_set_str(number.Get(), digits.c_str(), 10);
  return number * PowerOfTen(exponent);
}

Rational RootOf(const Rational& square) {
  if (square.IsZero()) return square;
  // Numerator and denominator as whole numbers with so many bits that their whole roots suffice.
  Rational root;
  fmpz_t scaled;
  fmpz_init(scaled);
  fmpz* const parts[] = {fmpq_numref(root.Get()), fmpq_denref(root.Get())};
  const fmpz* const from[] = {fmpq_numref(square.Get()), fmpq_denref(square.Get())};
  for (int k = 0; k < 2; ++k) {
    fmpz_mul_2exp(scaled, from[k], 8000);
    fmpz_sqrt(parts[k], scaled);
  }
  fmpz_clear(scaled);
  fmpq_canonicalise(root.Get());
  return root;
}

int TrueDigits(const Rational& shown, int most, const Rational& exact) {
  if (shown.IsZero()) return exact.IsZero() ? most : 0;
  const Rational magnitude = shown.Magnitude();
  // The logarithm of the quotient of bits is close; the comparisons settle it.
  int first = static_cast<int>((static_cast<double>(fmpz_bits(fmpq_numref(magnitude.Get()))) -
                                static_cast<double>(fmpz_bits(fmpq_denref(magnitude.Get())))) *
                               0.30103) +
              2;
  while (magnitude < PowerOfTen(first)) --first;
  const Rational distance = (shown - exact).Magnitude();
  int held = 0;
  Rational unit = PowerOfTen(first);
  while (held < most && distance < unit) {
    ++held;
    unit /= Rational(10);
  }
  return held;
}

RationalMatrix::RationalMatrix(const Matrix& A) : RationalMatrix(A.Rows(), A.Cols()) {
  for (std::size_t k = 0; k < A.Size(); ++k) data_[k] = Rational(A.Data()[k]);
}

}  // namespace qmx::testing
