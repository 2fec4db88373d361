// SPDX-License-Identifier: MIT
#include "derivation/exact_polynomial.h"

#include <flint/fmpq_poly.h>
#include <flint/fmpz_poly.h>
#include <flint/fmpz_poly_factor.h>

#include <algorithm>

namespace qmx {
namespace {

class RationalPolynomial {
 public:
  RationalPolynomial() { fmpq_poly_init(value_); }
  RationalPolynomial(const RationalPolynomial&) = delete;
  RationalPolynomial& operator=(const RationalPolynomial&) = delete;
  ~RationalPolynomial() { fmpq_poly_clear(value_); }
  fmpq_poly_struct* Get() { return value_; }

 private:
  fmpq_poly_t value_;
};

/// A polynomial with whole coefficients, and its factors.
class WholePolynomial {
 public:
  WholePolynomial() {
    fmpz_poly_init(value_);
    fmpz_poly_factor_init(factors_);
  }
  WholePolynomial(const WholePolynomial&) = delete;
  WholePolynomial& operator=(const WholePolynomial&) = delete;
  ~WholePolynomial() {
    fmpz_poly_factor_clear(factors_);
    fmpz_poly_clear(value_);
  }
  fmpz_poly_struct* Get() { return value_; }
  fmpz_poly_factor_struct* Factors() { return factors_; }

 private:
  fmpz_poly_t value_;
  fmpz_poly_factor_t factors_;
};

/// The same roots, the highest coefficient 1.
Polynomial WithLeadingOne(const fmpz_poly_struct* polynomial) {
  const slong degree = fmpz_poly_degree(polynomial);
  Polynomial result(static_cast<std::size_t>(degree) + 1);
  for (slong k = 0; k <= degree; ++k) {
    fmpq_set_fmpz_frac(result[k].Get(), polynomial->coeffs + k, polynomial->coeffs + degree);
  }
  return result;
}

bool ComesBefore(const PolynomialFactor& one, const PolynomialFactor& other) {
  if (one.polynomial.size() != other.polynomial.size()) {
    return one.polynomial.size() < other.polynomial.size();
  }
  for (std::size_t k = 0; k < one.polynomial.size(); ++k) {
    const int order = fmpq_cmp(one.polynomial[k].Get(), other.polynomial[k].Get());
    if (order != 0) return order < 0;
  }
  return false;
}

/// Brings A to reduced row echelon form; the columns of its pivots.
std::vector<int> Reduce(ExactMatrix& A) {
  const slong rank = fmpq_mat_rref(A.Get(), A.Get());
  std::vector<int> pivots;
  for (int i = 1; i <= rank; ++i) {
    int j = pivots.empty() ? 1 : pivots.back() + 1;
    while (fmpq_is_zero(A.At(i, j))) ++j;
    pivots.push_back(j);
  }
  return pivots;
}

}  // namespace

Polynomial CharacteristicPolynomial(const ExactMatrix& A) {
  RationalPolynomial polynomial;
  fmpq_mat_charpoly(polynomial.Get(), A.Get());
  Polynomial coefficients(static_cast<std::size_t>(A.Rows()) + 1);
  for (int k = 0; k <= A.Rows(); ++k) {
    fmpq_poly_get_coeff_fmpq(coefficients[k].Get(), polynomial.Get(), k);
  }
  return coefficients;
}

std::vector<PolynomialFactor> FactorsOf(const Polynomial& polynomial) {
  RationalPolynomial rational;
  for (std::size_t k = 0; k < polynomial.size(); ++k) {
    fmpq_poly_set_coeff_fmpq(rational.Get(), static_cast<slong>(k), polynomial[k].Get());
  }
  WholePolynomial whole;
  fmpq_poly_get_numerator(whole.Get(), rational.Get());
  fmpz_poly_factor(whole.Factors(), whole.Get());
  std::vector<PolynomialFactor> factors;
  for (slong k = 0; k < whole.Factors()->num; ++k) {
    const fmpz_poly_struct* factor = whole.Factors()->p + k;
    factors.push_back({WithLeadingOne(factor), static_cast<int>(whole.Factors()->exp[k]),
                       static_cast<int>(fmpz_poly_num_real_roots(factor))});
  }
  std::sort(factors.begin(), factors.end(), ComesBefore);
  return factors;
}

std::vector<std::vector<Rational>> NullSpaceOf(ExactMatrix& A) {
  const std::vector<int> pivots = Reduce(A);
  std::vector<std::vector<Rational>> basis;
  for (int free = 1; free <= A.Cols(); ++free) {
    if (std::find(pivots.begin(), pivots.end(), free) != pivots.end()) continue;
    std::vector<Rational> vector(static_cast<std::size_t>(A.Cols()));
    vector[free - 1] = Rational(1);
    for (std::size_t k = 0; k < pivots.size(); ++k) {
      fmpq_neg(vector[pivots[k] - 1].Get(), A.At(static_cast<int>(k) + 1, free));
    }
    basis.push_back(std::move(vector));
  }
  return basis;
}

}  // namespace qmx
