// SPDX-License-Identifier: MIT
#include "algorithms/qr.h"

#include <gtest/gtest.h>

#include <cmath>

#include "algorithms/elementary.h"
#include "base/arithmetic.h"
#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"
#include "support/core_instruction_sets.h"
#include "support/core_tolerance.h"

namespace qmx {
namespace {

using testing::Record;
using testing::Rows;

Progress unheard;

template <class Factors>
Record Of(const Factors& factors) {
  Record record{factors.factored ? 1.0 : 0.0};
  testing::Append(record, factors.Q);
  testing::Append(record, factors.R);
  return record;
}

TEST(QrTest, HasTheBitsOfThePlainLoop) {
  testing::CaseSource cases(501, testing::CaseShape::kTall, 13);
  testing::Comparison comparison("QR");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = cases.Next();
    comparison.Compare([&] { return Of(FactorQr(A, unheard)); },
                       [&] { return Of(reference::FactorQr(testing::ToTable(A))); }, {&A});
  }
}

TEST(QrTest, HasThemInBlocksOnEveryInstructionSet) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(511, testing::CaseShape::kTall, 1);
    testing::Dice& dice = cases.Randomness();
    testing::Comparison comparison("QR in blocks, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int n : {5, 9, 15, 16, 17, 18, 20, 31, 32, 33, 34, 40, 47, 64, 100, 129, 140, 390}) {
      const int kinds = n < 200 ? 13 : 2;
      for (int kind = 0; kind < kinds && !comparison.HasSeenEnough(); ++kind) {
        const Matrix A = cases.Next(n + (dice.Chance(0.5) ? 0 : dice.Integer(1, 40)), n);
        comparison.Compare([&] { return Of(FactorQr(A, unheard)); },
                           [&] { return Of(reference::FactorQr(testing::ToTable(A))); }, {},
                           std::to_string(A.Rows()) + " x " + std::to_string(n));
      }
    }
  });
}

TEST(QrTest, WhereADotProductIsZeroNegativeZerosStay) {
  // Subtracting a multiple of a column, even by 0, would turn a -0 of the other into 0.
  for (const int n : {5, 16, 17, 40, 300}) {
    for (const int ones : {1, 3}) {
      Matrix A(n, n);
      for (int i = 1; i <= n; ++i) {
        for (int j = 1; j <= n; ++j) A(i, j) = -0.0;
        A(i, i) = -1;
        // In some columns a dot product is not zero.
        if (ones == 3 && i % 7 == 0) A(i - 1, i) = 2;
      }
      testing::Comparison comparison("QR of negative zeros");
      comparison.Compare([&] { return Of(FactorQr(A, unheard)); },
                         [&] { return Of(reference::FactorQr(testing::ToTable(A))); }, {},
                         std::to_string(n) + ", kind " + std::to_string(ones));
    }
  }
}

TEST(QrTest, AFailureForgetsTheFaultsOfLaterColumns) {
  // Column 2 fails; column 3 alone would overflow.
  const Matrix A = Rows({{1, 1, 1e200}, {0, 0, 1e200}, {0, 0, 1}});
  ClearArithmeticFaults();
  EXPECT_FALSE(FactorQr(A, unheard).factored);
  EXPECT_NO_THROW(CheckArithmetic());
}

TEST(QrTest, AColumnIsDividedByItsLength) {
  const QrFactors factors = FactorQr(Rows({{3}, {4}}), unheard);
  EXPECT_TRUE(factors.factored);
  EXPECT_EQ(factors.Q, Rows({{0.6}, {0.8}}));
  EXPECT_EQ(factors.R, Rows({{5}}));
}

TEST(QrTest, EqualColumnsFailWhereTheRemainderIsExactlyZero) {
  const QrFactors factors = FactorQr(Rows({{1, 1, 5}, {1, 1, 6}, {1, 1, 8}, {1, 1, 9}}), unheard);
  EXPECT_FALSE(factors.factored);
  EXPECT_EQ(factors.Q, Rows({{0.5, 0, 0}, {0.5, 0, 0}, {0.5, 0, 0}, {0.5, 0, 0}}));
  EXPECT_EQ(factors.R, Rows({{2, 2, 0}, {0, 0, 0}, {0, 0, 0}}))
      << "the projection on the first column is already there";
}

TEST(QrTest, ARemainderOfRoundingSizeIsNormalised) {
  // 0.3 is not 3·0.1 in doubles: what is left of the second column is noise.
  const QrFactors factors = FactorQr(Rows({{0.1, 0.3}, {0.2, 0.6}, {0.7, 2.1}}), unheard);
  ASSERT_TRUE(factors.factored);
  EXPECT_LT(factors.R(2, 2), 1e-15);
  double sum = 0;
  for (int r = 1; r <= 3; ++r) sum += factors.Q(r, 2) * factors.Q(r, 2);
  EXPECT_NEAR(sum, 1, testing::SumTolerance(3, 1));
}

TEST(QrTest, AZeroFirstColumnFailsWithNothingFilled) {
  const QrFactors factors = FactorQr(Rows({{0, 1}, {0, 2}}), unheard);
  EXPECT_FALSE(factors.factored);
  EXPECT_EQ(factors.Q, Matrix(2, 2));
  EXPECT_EQ(factors.R, Matrix(2, 2));
}

TEST(QrTest, AnOrthogonalMatrixIsItsOwnFactor) {
  const double c = 0.6;
  const double s = 0.8;
  const Matrix A = Rows({{c, -s, 0}, {s, c, 0}, {0, 0, -1}});
  const QrFactors factors = FactorQr(A, unheard);
  EXPECT_LE(testing::LargestDifference(factors.Q, A), testing::SumTolerance(3, 1));
  EXPECT_LE(testing::LargestDifference(factors.R, testing::IdentityMatrix(3)),
            testing::SumTolerance(3, 1));
  for (int j = 1; j <= 3; ++j) EXPECT_GT(factors.R(j, j), 0);
}

TEST(QrTest, ProjectionsAreTakenOfTheColumnItself) {
  // The modified process, which projects what is left of the column, would keep Q orthogonal here;
  // the classical one loses it: columns 2 and 3 both become (0, -1, 1, 0) and (0, -1, 0, 1).
  const double e = 1e-9;
  const QrFactors factors = FactorQr(Rows({{1, 1, 1}, {e, 0, 0}, {0, e, 0}, {0, 0, e}}), unheard);
  double dot = 0;
  for (int r = 1; r <= 4; ++r) dot += factors.Q(r, 2) * factors.Q(r, 3);
  EXPECT_NEAR(dot, 0.5, 1e-6);
}

TEST(QrTest, AMatrixWithoutColumnsFactors) {
  const QrFactors factors = FactorQr(Matrix(3, 0), unheard);
  EXPECT_TRUE(factors.factored);
  EXPECT_EQ(factors.Q.Rows(), 3);
  EXPECT_EQ(factors.R, Matrix());
}

TEST(QrTest, ProductOfTheFactorsIsTheMatrixAndQIsOrthonormal) {
  testing::Dice dice(502);
  for (int round = 0; round < 200; ++round) {
    const int n = dice.Integer(1, 40);
    const int m = n + dice.Integer(0, 20);
    Matrix A = testing::RealMatrix(dice, m, n);
    for (int i = 1; i <= n; ++i) A(i, i) += 2 * n;
    const QrFactors factors = FactorQr(A, unheard);
    ASSERT_TRUE(factors.factored);
    EXPECT_LE(testing::LargestDifference(testing::PlainProduct(factors.Q, factors.R), A),
              testing::SumTolerance(m, testing::MaxMagnitude(A)));
    const Matrix gram = testing::PlainProduct(Transpose(factors.Q, unheard), factors.Q);
    EXPECT_LE(testing::LargestDifference(gram, testing::IdentityMatrix(n)),
              testing::SumTolerance(m, 4));
    for (int j = 1; j <= n; ++j) {
      EXPECT_GT(factors.R(j, j), 0);
      for (int i = j + 1; i <= n; ++i) EXPECT_EQ(factors.R(i, j), 0);
    }
  }
}

}  // namespace
}  // namespace qmx
