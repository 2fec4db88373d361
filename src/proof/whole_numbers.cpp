// SPDX-License-Identifier: MIT
#include "proof/whole_numbers.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>

namespace qmx {
namespace {

constexpr slong kZero = WORD_MAX;
constexpr slong kTestBits = 64;

/// The exponent of the last bit of a double: it is an odd number times that power of two.
slong LastBitOf(double value) {
  if (value == 0) return kZero;
  int exponent = 0;
  const auto mantissa = static_cast<std::int64_t>(std::ldexp(std::frexp(value, &exponent), 53));
  return exponent - 53 + std::countr_zero(static_cast<std::uint64_t>(std::abs(mantissa)));
}

/// The same for an exact ball.
slong LastBitOf(arb_srcptr exact) {
  if (arb_is_zero(exact)) return kZero;
  return static_cast<slong>(fmpz_get_si(ARF_EXPREF(arb_midref(exact)))) - arb_bits(exact);
}

/// lastBit(i, j), from 0, is that of an element.
template <typename LastBit>
WholeScale ScaleBy(int rows, int cols, LastBit lastBit) {
  WholeScale scale{std::vector<slong>(rows, kZero), std::vector<slong>(cols, kZero)};
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < cols; ++j) scale.rows[i] = std::min(scale.rows[i], lastBit(i, j));
    scale.rows[i] = scale.rows[i] == kZero ? 0 : -scale.rows[i];
  }
  for (int j = 0; j < cols; ++j) {
    for (int i = 0; i < rows; ++i) {
      const slong last = lastBit(i, j);
      if (last != kZero) scale.cols[j] = std::min(scale.cols[j], last + scale.rows[i]);
    }
    scale.cols[j] = scale.cols[j] == kZero ? 0 : -scale.cols[j];
  }
  return scale;
}

}  // namespace

WholeScale WholeScaleOf(const Matrix& A) {
  return ScaleBy(A.Rows(), A.Cols(), [&](int i, int j) { return LastBitOf(A(i + 1, j + 1)); });
}

WholeScale WholeScaleOf(const BallMatrix& A) {
  return ScaleBy(A.Rows(), A.Cols(), [&](int i, int j) { return LastBitOf(A(i, j)); });
}

WholeScale WholeColumnScaleOf(const Matrix& A) {
  WholeScale scale{std::vector<slong>(A.Rows(), 0), std::vector<slong>(A.Cols(), 0)};
  for (int j = 0; j < A.Cols(); ++j) {
    slong last = kZero;
    for (int i = 0; i < A.Rows(); ++i) last = std::min(last, LastBitOf(A(i + 1, j + 1)));
    if (last != kZero) scale.cols[j] = -last;
  }
  return scale;
}

bool IsZeroQuotient(arb_srcptr quotient, const Ball& denominator, slong exponent) {
  Ball numerator;
  arb_mul(numerator, quotient, denominator, kTestBits);
  arb_mul_2exp_si(numerator, numerator, exponent);
  mag_t bound;
  mag_init(bound);
  arb_get_mag(bound, numerator);
  const bool isBelowOne = mag_cmp_2exp_si(bound, 0) < 0;
  mag_clear(bound);
  return isBelowOne;
}

}  // namespace qmx
