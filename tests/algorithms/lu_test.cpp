// SPDX-License-Identifier: MIT
#include "algorithms/lu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

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

/// Works for the factors of the program and for those of the plain loop.
template <class Factors>
Record Of(const Factors& factors) {
  Record record{factors.factored ? 1.0 : 0.0, static_cast<double>(factors.exchangeCount)};
  testing::Append(record, factors.L);
  testing::Append(record, factors.U);
  testing::Append(record, factors.exchanges);
  return record;
}

class LuBitsTest : public ::testing::TestWithParam<bool> {};

TEST_P(LuBitsTest, HasTheBitsOfThePlainLoop) {
  const bool pivoting = GetParam();
  testing::CaseSource cases(pivoting ? 401 : 402, testing::CaseShape::kAny, 12);
  testing::Comparison comparison(pivoting ? "LU with pivoting" : "LU without pivoting");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = cases.Next();
    comparison.Compare([&] { return Of(FactorLu(A, pivoting, unheard)); },
                       [&] { return Of(reference::FactorLu(testing::ToTable(A), pivoting)); },
                       {&A});
  }
}

TEST_P(LuBitsTest, HasThemInBlocksOnEveryInstructionSet) {
  const bool pivoting = GetParam();
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(pivoting ? 411 : 412, testing::CaseShape::kAny, 1);
    testing::Dice& dice = cases.Randomness();
    testing::Comparison comparison("LU in blocks, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int size :
         {13, 17, 26, 31, 32, 33, 34, 39, 40, 41, 57, 65, 100, 128, 129, 137, 226}) {
      for (int kind = 0; kind < 13 && !comparison.HasSeenEnough(); ++kind) {
        const Matrix A =
            cases.Next(size, dice.Chance(0.6) ? size : std::max(1, size + dice.Integer(-30, 30)));
        comparison.Compare([&] { return Of(FactorLu(A, pivoting, unheard)); },
                           [&] { return Of(reference::FactorLu(testing::ToTable(A), pivoting)); },
                           {}, std::to_string(A.Rows()) + " x " + std::to_string(A.Cols()));
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutPivoting, LuBitsTest, ::testing::Bool());

TEST(LuTest, AZeroDiagonalNeedsPivoting) {
  const Matrix A = Rows({{0, 1}, {1, 0}});
  EXPECT_FALSE(FactorLu(A, false, unheard).factored);

  const LuFactors factors = FactorLu(A, true, unheard);
  EXPECT_TRUE(factors.factored);
  EXPECT_EQ(factors.exchangeCount, 1);
  EXPECT_EQ(factors.exchanges, Rows({{2}, {1}}));
  EXPECT_EQ(factors.L, testing::IdentityMatrix(2));
  EXPECT_EQ(factors.U, testing::IdentityMatrix(2));
}

TEST(LuTest, AColumnOfZerosBelowAZeroDiagonalIsSkipped) {
  const Matrix A = Rows({{0, 0}, {0, 1}});
  const LuFactors factors = FactorLu(A, false, unheard);
  EXPECT_TRUE(factors.factored);
  EXPECT_EQ(factors.L, testing::IdentityMatrix(2));
  EXPECT_EQ(factors.U, A);
  EXPECT_EQ(factors.exchangeCount, 0);
}

TEST(LuTest, ARefusalLeavesThePartlyReducedMatrixWithItsMultipliers) {
  const Matrix A = Rows({{2, 4, 6}, {1, 2, 5}, {4, 9, 1}});
  const LuFactors factors = FactorLu(A, false, unheard);
  EXPECT_FALSE(factors.factored);
  EXPECT_EQ(factors.U, Rows({{2, 4, 6}, {0.5, 0, 2}, {2, 1, -11}}));
  EXPECT_EQ(factors.L, Matrix());
  EXPECT_EQ(factors.exchanges, Rows({{1}, {2}, {3}}));
}

TEST(LuTest, ATallMatrixHasMultipliersInItsOwnColumnsOnly) {
  const LuFactors factors = FactorLu(Rows({{4, 2}, {2, 3}, {1, 1}}), true, unheard);
  EXPECT_EQ(factors.L, Rows({{1, 0, 0}, {0.5, 1, 0}, {0.25, 0.25, 1}}));
  EXPECT_EQ(factors.U, Rows({{4, 2}, {0, 2}, {0, 0}}));
}

TEST(LuTest, AWideMatrixHasASquareLowerFactor) {
  const LuFactors factors = FactorLu(Rows({{2, 4, 6}, {1, 5, 7}}), true, unheard);
  EXPECT_EQ(factors.L, Rows({{1, 0}, {0.5, 1}}));
  EXPECT_EQ(factors.U, Rows({{2, 4, 6}, {0, 3, 4}}));
}

TEST(LuTest, PivotTiesKeepTheUpperRow) {
  EXPECT_EQ(FactorLu(Rows({{2, 1}, {-2, 5}}), true, unheard).exchangeCount, 0);
  const LuFactors factors = FactorLu(Rows({{1, 0}, {-3, 1}, {3, 1}}), true, unheard);
  EXPECT_EQ(factors.exchanges(1, 1), 2);
}

TEST(LuTest, MultipliersMoveWithTheirRows) {
  const LuFactors factors = FactorLu(Rows({{4, 0, 0}, {1, 1, 0}, {2, 2, 1}}), true, unheard);
  EXPECT_EQ(factors.exchanges, Rows({{1}, {3}, {2}}));
  EXPECT_EQ(factors.L, Rows({{1, 0, 0}, {0.5, 1, 0}, {0.25, 0.5, 1}}));
}

TEST(LuTest, EmptyShapesFactorToEmptyOnes) {
  EXPECT_TRUE(FactorLu(Matrix(0, 3), true, unheard).factored);
  const LuFactors factors = FactorLu(Matrix(3, 0), true, unheard);
  EXPECT_TRUE(factors.factored);
  EXPECT_EQ(factors.L, testing::IdentityMatrix(3));
}

TEST(LuTest, ProductOfTheFactorsIsTheExchangedMatrix) {
  testing::CaseSource cases(403, testing::CaseShape::kAny, 40);
  int compared = 0;
  for (int round = 0; round < 600; ++round) {
    const Matrix A = cases.Next();
    // Beyond that range the products themselves overflow or vanish.
    const double size = testing::MaxMagnitude(A);
    if (size > 1e100 || size < 1e-100) continue;
    ++compared;
    const LuFactors factors = FactorLu(A, true, unheard);
    Matrix PA(A.Rows(), A.Cols());
    for (int i = 1; i <= A.Rows(); ++i) {
      for (int j = 1; j <= A.Cols(); ++j) {
        PA(i, j) = A(static_cast<int>(factors.exchanges(i, 1)), j);
      }
    }
    const double grown = testing::MaxMagnitude(
        testing::PlainProduct(testing::Magnitudes(factors.L), testing::Magnitudes(factors.U)));
    EXPECT_LE(testing::LargestDifference(testing::PlainProduct(factors.L, factors.U), PA),
              testing::SumTolerance(std::max(A.Rows(), A.Cols()), grown))
        << testing::Print(A);
    EXPECT_LE(testing::MaxMagnitude(factors.L), 1) << "partial pivoting bounds the multipliers";
  }
  EXPECT_GT(compared, 300);
}

}  // namespace
}  // namespace qmx
