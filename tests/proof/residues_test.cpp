// SPDX-License-Identifier: MIT
#include "proof/residues.h"

#include <gtest/gtest.h>

#include <utility>

#include "proof/rational.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"

namespace qmx {
namespace {

using testing::Rational;
using testing::RationalMatrix;
using testing::Rows;

const ProofLimits kNoLimits{{}, 1000};

int RankOf(RationalMatrix A) {
  int rank = 0;
  for (int c = 1; c <= A.Cols() && rank < A.Rows(); ++c) {
    int p = rank + 1;
    while (p <= A.Rows() && A(p, c).IsZero()) ++p;
    if (p > A.Rows()) continue;
    ++rank;
    for (int j = 1; j <= A.Cols() && p != rank; ++j) std::swap(A(p, j), A(rank, j));
    for (int i = rank + 1; i <= A.Rows(); ++i) {
      const Rational factor = A(i, c) / A(rank, c);
      for (int j = c; j <= A.Cols(); ++j) A(i, j) -= factor * A(rank, j);
    }
  }
  return rank;
}

/// det(point·I - A·2^shift), by elimination.
Rational ValueOf(const Matrix& A, slong shift, int point) {
  const int n = A.Rows();
  RationalMatrix W(n, n);
  Rational scale(1);
  for (slong k = 0; k < shift; ++k) scale *= Rational(2);
  for (slong k = 0; k > shift; --k) scale /= Rational(2);
  Rational value(1);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      W(i, j) = Rational(i == j ? point : 0) - Rational(A(i, j)) * scale;
    }
  }
  for (int c = 1; c <= n; ++c) {
    int p = c;
    while (p <= n && W(p, c).IsZero()) ++p;
    if (p > n) return Rational(0);
    if (p != c) value *= Rational(-1);
    for (int j = 1; j <= n && p != c; ++j) std::swap(W(p, j), W(c, j));
    value *= W(c, c);
    for (int i = c + 1; i <= n; ++i) {
      const Rational factor = W(i, c) / W(c, c);
      for (int j = c; j <= n; ++j) W(i, j) -= factor * W(c, j);
    }
  }
  return value;
}

TEST(ExactRankTest, AgreesWithEliminationInRationalNumbers) {
  const Watch watch(kNoLimits);
  testing::CaseSource cases(51, testing::CaseShape::kAny, 9);
  int deficient = 0;
  for (int k = 0; k < 2000; ++k) {
    const Matrix A = cases.Next();
    const int rank = RankOf(RationalMatrix(A));
    deficient += rank < std::min(A.Rows(), A.Cols()) ? 1 : 0;
    ASSERT_EQ(ExactRank(A, watch), rank) << testing::Print(A);
  }
  EXPECT_GT(deficient, 200);
}

/// Its determinant is the first of the primes.
TEST(ExactRankTest, DoesNotTakeAMultipleOfAPrimeForZero) {
  const Matrix A = Rows({{0x1p31, 1}, {-135, 0x1p31}});
  EXPECT_EQ(ExactRank(A, Watch(kNoLimits)), 2);
}

TEST(CharacteristicPolynomialTest, HasTheValuesOfTheDeterminant) {
  const Watch watch(kNoLimits);
  testing::CaseSource cases(52, testing::CaseShape::kSquare, 7);
  for (int k = 0; k < 400; ++k) {
    const Matrix A = cases.Next();
    if (A.Rows() == 0) continue;
    const CharacteristicPolynomial polynomial = ExactCharacteristicPolynomial(A, watch);
    ASSERT_EQ(fmpz_poly_degree(polynomial.coefficients.Get()), A.Rows());
    // A polynomial of that degree is known by so many values.
    for (int point = 0; point <= A.Rows(); ++point) {
      Rational value;
      fmpz_t at;
      fmpz_init_set_si(at, point);
      fmpz_poly_evaluate_fmpz(fmpq_numref(value.Get()), polynomial.coefficients.Get(), at);
      fmpz_clear(at);
      ASSERT_TRUE(value == ValueOf(A, polynomial.shift, point)) << testing::Print(A);
    }
  }
}

}  // namespace
}  // namespace qmx
