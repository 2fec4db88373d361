// SPDX-License-Identifier: MIT
#include "derivation/characteristic.h"

#include <flint/fmpz_mat.h>
#include <flint/fmpz_poly_factor.h>

#include <algorithm>

namespace qmx {
namespace {

// Measured with random matrices of such elements.
constexpr int kMostOrder = 40;
constexpr int kSmallOrder = 8;
constexpr slong kMostBits = 400;
constexpr slong kMostBitsOfSmall = 4'500;

/// A = numerators / denominator.
class WholeMatrix {
 public:
  explicit WholeMatrix(const ExactMatrix& A) {
    fmpz_mat_init(numerators_, A.Rows(), A.Cols());
    fmpq_mat_get_fmpz_mat_matwise(numerators_, denominator_.Get(), A.Get());
  }
  WholeMatrix(const WholeMatrix&) = delete;
  WholeMatrix& operator=(const WholeMatrix&) = delete;
  ~WholeMatrix() { fmpz_mat_clear(numerators_); }
  const fmpz_mat_struct* Numerators() const { return numerators_; }
  const fmpz* Denominator() const { return denominator_.Get(); }

 private:
  fmpz_mat_t numerators_;
  Whole denominator_;
};

class WholeFactors {
 public:
  explicit WholeFactors(fmpz_poly_struct* polynomial) {
    fmpz_poly_factor_init(value_);
    fmpz_poly_factor(value_, polynomial);
  }
  WholeFactors(const WholeFactors&) = delete;
  WholeFactors& operator=(const WholeFactors&) = delete;
  ~WholeFactors() { fmpz_poly_factor_clear(value_); }
  int Count() const { return static_cast<int>(value_->num); }
  const fmpz_poly_struct* At(int k) const { return value_->p + k; }
  int Multiplicity(int k) const { return static_cast<int>(value_->exp[k]); }

 private:
  fmpz_poly_factor_t value_;
};

/// The polynomial with leading coefficient 1 whose roots are those of `scaled` divided by
/// `denominator`.
RationalPolynomial Unscaled(const fmpz_poly_struct* scaled, const fmpz* denominator) {
  RationalPolynomial polynomial;
  fmpq_poly_set_fmpz_poly(polynomial.Get(), scaled);
  Rational scale;
  fmpq_set_fmpz(scale.Get(), denominator);
  fmpq_poly_rescale(polynomial.Get(), polynomial.Get(), scale.Get());
  fmpq_poly_make_monic(polynomial.Get(), polynomial.Get());
  return polynomial;
}

bool IsBefore(const PolynomialFactor& one, const PolynomialFactor& other) {
  const int degree = one.polynomial.Degree();
  if (degree != other.polynomial.Degree()) return degree < other.polynomial.Degree();
  for (int k = degree - 1; k >= 0; --k) {
    // A larger coefficient stands for smaller roots.
    const int order =
        fmpq_cmp(one.polynomial.Coefficient(k).Get(), other.polynomial.Coefficient(k).Get());
    if (order != 0) return order > 0;
  }
  return false;
}

}  // namespace

Rational RationalPolynomial::Coefficient(int exponent) const {
  Rational coefficient;
  fmpq_poly_get_coeff_fmpq(coefficient.Get(), value_, exponent);
  return coefficient;
}

Rational RootOfLinear(const RationalPolynomial& linear) {
  Rational root = linear.Coefficient(0);
  fmpq_neg(root.Get(), root.Get());
  return root;
}

bool IsWithinReach(const ExactMatrix& A) {
  const int order = std::max(A.Rows(), A.Cols());
  if (order > kMostOrder) return false;
  const WholeMatrix whole(A);
  const slong bits = std::max(FLINT_ABS(fmpz_mat_max_bits(whole.Numerators())),
                              static_cast<slong>(fmpz_bits(whole.Denominator())));
  return bits <= (order <= kSmallOrder ? kMostBitsOfSmall : kMostBits);
}

CharacteristicPolynomial CharacteristicOf(const ExactMatrix& A) {
  const WholeMatrix whole(A);
  WholePolynomial scaled;
  fmpz_mat_charpoly(scaled.Get(), whole.Numerators());
  CharacteristicPolynomial result;
  result.polynomial = Unscaled(scaled.Get(), whole.Denominator());
  const WholeFactors factors(scaled.Get());
  for (int k = 0; k < factors.Count(); ++k) {
    result.factors.push_back(
        {Unscaled(factors.At(k), whole.Denominator()), factors.Multiplicity(k)});
  }
  std::ranges::sort(result.factors, IsBefore);
  return result;
}

}  // namespace qmx
