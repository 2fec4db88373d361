// SPDX-License-Identifier: MIT
#include "algorithms/determinant.h"

#include <gtest/gtest.h>

#include <cmath>

#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"
#include "support/core_instruction_sets.h"
#include "support/core_tolerance.h"

namespace qmx {
namespace {

using testing::Rows;

Progress unheard;

TEST(DeterminantTest, HasTheBitsOfThePlainLoop) {
  testing::CaseSource cases(201, testing::CaseShape::kSquare, 12);
  testing::Comparison comparison("determinant");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = cases.Next();
    comparison.Compare([&] { return testing::Record{Determinant(A, unheard)}; },
                       [&] { return testing::Record{reference::Determinant(testing::ToTable(A))}; },
                       {&A});
  }
}

TEST(DeterminantTest, HasThemInBlocksOnEveryInstructionSet) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(211, testing::CaseShape::kSquare, 1);
    testing::Comparison comparison("determinant in blocks, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int n : {9, 10, 18, 27, 32, 33, 34, 35, 40, 41, 42, 57, 65, 129, 130, 150}) {
      for (int kind = 0; kind < 25 && !comparison.HasSeenEnough(); ++kind) {
        const Matrix A = cases.Next(n, n);
        comparison.Compare(
            [&] { return testing::Record{Determinant(A, unheard)}; },
            [&] { return testing::Record{reference::Determinant(testing::ToTable(A))}; }, {},
            std::to_string(n));
      }
    }
  });
}

TEST(DeterminantTest, OneExchangeTurnsTheSign) {
  EXPECT_EQ(Determinant(Rows({{0, 1}, {1, 0}}), unheard), -1);
}

TEST(DeterminantTest, EqualMagnitudesKeepTheDiagonalRow) {
  EXPECT_EQ(Determinant(Rows({{2, 1}, {2, 5}}), unheard), 8);
  // An exchange would turn the sign of this zero.
  EXPECT_FALSE(std::signbit(Determinant(Rows({{2, 1}, {-2, -1}}), unheard)));
}

TEST(DeterminantTest, AZeroColumnGivesZero) {
  EXPECT_EQ(Determinant(Rows({{1, 0, 2}, {3, 0, 4}, {5, 0, 7}}), unheard), 0);
}

TEST(DeterminantTest, AZeroColumnStopsTheElimination) {
  // Columns 2 and 3 stay as they are: 0·1·1. Going on would have made the last factor negative.
  EXPECT_FALSE(std::signbit(Determinant(Rows({{0, 2, 0}, {0, 1, 2}, {0, 1, 1}}), unheard)));
}

TEST(DeterminantTest, OrderOneIsTheElement) { EXPECT_EQ(Determinant(Rows({{5}}), unheard), 5); }

TEST(DeterminantTest, OrderZeroIsOne) { EXPECT_EQ(Determinant(Matrix(0, 0), unheard), 1); }

TEST(DeterminantTest, IntegerMatricesComeCloseToTheExactValue) {
  testing::Dice dice(202);
  int singular = 0;
  for (int round = 0; round < 4000; ++round) {
    const int n = dice.Integer(1, 8);
    const Matrix A = testing::IntegerMatrix(dice, n, n, round % 2 == 0 ? 9 : 1);
    const testing::Exact exact = testing::ExactDeterminant(A);
    if (exact == 0) ++singular;
    EXPECT_NEAR(Determinant(A, unheard), static_cast<double>(exact),
                testing::EliminationTolerance(n, testing::HadamardBound(A)))
        << testing::Print(A);
  }
  EXPECT_GT(singular, 100);
}

TEST(DeterminantTest, HilbertMatricesHaveTheirKnownValues) {
  // 1/2160 and 1/266716800000.
  EXPECT_NEAR(Determinant(testing::HilbertMatrix(3, 3), unheard) * 2160, 1,
              testing::ConditionedTolerance(3, 748, 1));
  EXPECT_NEAR(Determinant(testing::HilbertMatrix(5, 5), unheard) * 266716800000.0, 1,
              testing::ConditionedTolerance(5, 943656, 1));
}

}  // namespace
}  // namespace qmx
