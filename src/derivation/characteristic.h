// SPDX-License-Identifier: MIT
#pragma once

#include <flint/fmpq_poly.h>
#include <flint/fmpz_poly.h>

#include <vector>

#include "derivation/exact_matrix.h"

namespace qmx {

/// A polynomial with rational coefficients.
class RationalPolynomial {
 public:
  RationalPolynomial() { fmpq_poly_init(value_); }
  RationalPolynomial(const RationalPolynomial& other) : RationalPolynomial() {
    fmpq_poly_set(value_, other.value_);
  }
  RationalPolynomial(RationalPolynomial&& other) noexcept : RationalPolynomial() {
    fmpq_poly_swap(value_, other.value_);
  }
  RationalPolynomial& operator=(RationalPolynomial other) noexcept {
    fmpq_poly_swap(value_, other.value_);
    return *this;
  }
  ~RationalPolynomial() { fmpq_poly_clear(value_); }
  fmpq_poly_struct* Get() { return value_; }
  const fmpq_poly_struct* Get() const { return value_; }
  int Degree() const { return static_cast<int>(fmpq_poly_degree(value_)); }
  /// The coefficient of the power `exponent`.
  Rational Coefficient(int exponent) const;

 private:
  fmpq_poly_t value_;
};

/// A polynomial with whole coefficients.
class WholePolynomial {
 public:
  WholePolynomial() { fmpz_poly_init(value_); }
  WholePolynomial(const WholePolynomial&) = delete;
  WholePolynomial& operator=(const WholePolynomial&) = delete;
  ~WholePolynomial() { fmpz_poly_clear(value_); }
  fmpz_poly_struct* Get() { return value_; }
  const fmpz_poly_struct* Get() const { return value_; }

 private:
  fmpz_poly_t value_;
};

/// A polynomial that cannot be divided any further over the rational numbers, with leading
/// coefficient 1, and how often it is a factor.
struct PolynomialFactor {
  RationalPolynomial polynomial;
  int multiplicity = 1;
};

/// The root of a polynomial of degree 1 with leading coefficient 1.
Rational RootOfLinear(const RationalPolynomial& linear);

/// det(λ·I - A) and its factors: those of lower degree first, of the same degree in the order of
/// their roots as far as these are rational.
struct CharacteristicPolynomial {
  RationalPolynomial polynomial;
  std::vector<PolynomialFactor> factors;
};

/// False where finding the polynomial and its roots would take too long: orders above 40, or
/// elements of very different magnitudes in matrices that are not small. What is within reach takes
/// less than a second, of order 40 up to a few.
bool IsWithinReach(const ExactMatrix& A);

/// Of a square matrix within reach. Computed of the matrix of whole numbers that A is but for a
/// common denominator (Cohen, A Course in Computational Algebraic Number Theory, 2.2.4 and 3.5).
CharacteristicPolynomial CharacteristicOf(const ExactMatrix& A);

}  // namespace qmx
