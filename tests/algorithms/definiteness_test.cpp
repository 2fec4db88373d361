// SPDX-License-Identifier: MIT
#include "algorithms/definiteness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "base/fault.h"
#include "base/team.h"
#include "output/reports.h"
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

void Append(Record& record, const std::string& verdict) {
  record.insert(record.end(), verdict.begin(), verdict.end());
}

void CompareReports(testing::Comparison& comparison, const Matrix& A,
                    const BlockSizes& sizes = kBlockSizes) {
  comparison.Compare(
      [&] {
        const DefinitenessReport report = TestDefiniteness(A, unheard, sizes);
        Record record{report.overallSmallestPivot};
        testing::Append(record, report.smallestPivot);
        testing::Append(record, report.leadingMinor);
        Append(record, DefinitenessText(report.verdict));
        return record;
      },
      [&] {
        const reference::Definite definite = reference::TestDefiniteness(testing::ToTable(A));
        Record record{definite.overallSmallestPivot};
        testing::Append(record, definite.smallestPivot);
        testing::Append(record, definite.leadingMinor);
        Append(record, definite.verdict);
        return record;
      },
      {&A});
}

TEST(DefinitenessTest, HasTheBitsAndTheVerdictOfThePlainLoop) {
  testing::CaseSource cases(601, testing::CaseShape::kSymmetric, 12);
  testing::Comparison comparison("definiteness");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    CompareReports(comparison, cases.Next());
  }
}

TEST(DefinitenessTest, HasThemInBlocksOnEveryInstructionSet) {
  testing::ForEachInstructionSet([](InstructionSet set) {
    testing::CaseSource cases(611, testing::CaseShape::kSymmetric, 1);
    testing::Comparison comparison("definiteness in blocks, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int n : {9, 10, 17, 26, 47, 48, 49, 50, 64, 65, 81, 100, 146}) {
      for (int kind = 0; kind < 50 && !comparison.HasSeenEnough(); ++kind) {
        CompareReports(comparison, cases.Next(n, n));
      }
    }
  });
}

/// Symmetric real numbers below `size`.
Matrix SymmetricMatrix(testing::Dice& dice, int n, double size) {
  Matrix A(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= i; ++j) A(i, j) = A(j, i) = dice.Real(-size, size);
  }
  return A;
}

/// With a diagonal that leaves nothing to exchange, and minors that do not overflow.
Matrix DominantMatrix(testing::Dice& dice, int n) {
  Matrix A = SymmetricMatrix(dice, n, 1.0 / n);
  for (int i = 1; i <= n; ++i) A(i, i) = dice.Chance(0.9) ? 1.25 : -0.75;
  return A;
}

/// Full of exchanges, with minors that stay within bounds, too.
Matrix IndefiniteMatrix(testing::Dice& dice, int n) {
  return SymmetricMatrix(dice, n, std::sqrt(8.0 / n));
}

/// Makes a step of a dominant matrix special: the element below the diagonal and its mirror image.
void Disturb(Matrix& A, int row, int step, double element) {
  A(row, step) = A(step, row) = element;
}

TEST(DefinitenessTest, TheStepsBeforeAndBehindAnExchangeKeepTheirBits) {
  constexpr int kOrder = 150;
  const double huge = 1e6;
  for (const int members : {1, 3}) {
    Team team(members);
    const UseTeam use(team);
    testing::Dice dice(621);
    BlockSizes sizes;
    sizes.elimination.shareFrom = 0;
    sizes.definiteness.shareFrom = 0;
    testing::Comparison comparison("definiteness with single exchanges, " +
                                   std::to_string(members) + " members");
    for (const int step : {1, 2, 7, 8, 9, 16, 17, 31, 33, 63, 65, 127, 128, 129, 130, 149}) {
      for (const int row : {step + 1, step + 8, step + 20, kOrder}) {
        if (row > kOrder) continue;
        for (const double element : {huge, std::nan(""), HUGE_VAL}) {
          Matrix A = DominantMatrix(dice, kOrder);
          Disturb(A, row, step, element);
          CompareReports(comparison, A, sizes);
        }
        Matrix zeroPivot = DominantMatrix(dice, kOrder);
        for (int k = 1; k <= kOrder; ++k) Disturb(zeroPivot, k, step, 0);
        Disturb(zeroPivot, row, step, dice.Chance(0.5) ? 0 : 1);
        CompareReports(comparison, zeroPivot, sizes);
      }
    }
  }
}

TEST(DefinitenessTest, AnyNumberOfThreadsGivesTheSameBits) {
  for (const int members : {1, 2, 3, 7, 64}) {
    Team team(members);
    const UseTeam use(team);
    testing::Dice dice(631);
    BlockSizes sizes;
    sizes.definiteness.shareFrom = 100;
    testing::Comparison comparison("definiteness on " + std::to_string(members) + " threads");
    for (const int n : {239, 240, 241, 242, 257, 290}) {
      const Matrix calm = DominantMatrix(dice, n);
      CompareReports(comparison, calm, sizes);
      Matrix disturbed = calm;
      for (int k = 0; k < 5; ++k) {
        const int step = dice.Integer(1, n - 1);
        Disturb(disturbed, dice.Integer(step + 1, n), step, dice.Real(-100, 100));
      }
      CompareReports(comparison, disturbed, sizes);
      const Matrix indefinite = IndefiniteMatrix(dice, n);
      CompareReports(comparison, indefinite, sizes);
      Matrix singular = indefinite;
      for (int k = 1; k <= n; ++k) Disturb(singular, k, n / 3, 0);
      CompareReports(comparison, singular, sizes);
    }
  }
}

struct Verdict {
  Matrix A;
  Definiteness verdict;
  std::vector<double> minors;
  std::vector<double> pivots;
};

TEST(DefinitenessTest, VerdictsOfSmallMatrices) {
  const Verdict verdicts[] = {
      {Rows({{2, 1}, {1, 2}}), Definiteness::kPositiveDefinite, {2, 3}, {2, 1.5}},
      {Rows({{-2, 1}, {1, -2}}), Definiteness::kNegativeDefinite, {-2, 3}, {2, 1.5}},
      {Rows({{1, 2}, {2, 1}}), Definiteness::kIndefinite, {1, -3}, {1, 1.5}},
      {Rows({{0, 0}, {0, 1}}), Definiteness::kSemidefinite, {0, 0}, {0, 0}},
      {Rows({{1, 0}, {0, 0}}), Definiteness::kPositiveSemidefinite, {1, 0}, {1, 0}},
      {Rows({{-1, 0}, {0, 0}}), Definiteness::kNegativeSemidefinite, {-1, 0}, {1, 0}},
      {Rows({{0, 0}, {0, -1}}), Definiteness::kSemidefinite, {0, 0}, {0, 0}},
      {Rows({{0}}), Definiteness::kSemidefinite, {0}, {0}},
      {Rows({{5}}), Definiteness::kPositiveDefinite, {5}, {5}},
      {Rows({{-5}}), Definiteness::kNegativeDefinite, {-5}, {5}},
  };
  for (const Verdict& expected : verdicts) {
    const DefinitenessReport report = TestDefiniteness(expected.A, unheard);
    EXPECT_EQ(report.verdict, expected.verdict) << testing::Print(expected.A);
    EXPECT_EQ(report.leadingMinor, expected.minors) << testing::Print(expected.A);
    EXPECT_EQ(report.smallestPivot, expected.pivots) << testing::Print(expected.A);
  }
}

TEST(DefinitenessTest, AZeroPivotLeavesTheRestOfTheRowUnreduced) {
  // Row 2 stays (0, 3): its pivot column is zero, and 3 enters the product as it is.
  const DefinitenessReport report = TestDefiniteness(Rows({{0, 0}, {0, 3}}), unheard);
  EXPECT_EQ(report.leadingMinor, (std::vector<double>{0, 0}));
  EXPECT_EQ(report.overallSmallestPivot, 0);
}

TEST(DefinitenessTest, ExchangesAreCountedOverAllOrders) {
  // Order 2 exchanges once, order 3 once more.
  const DefinitenessReport report =
      TestDefiniteness(Rows({{0, 1, 2}, {1, 0, 0}, {2, 0, 5}}), unheard);
  EXPECT_EQ(report.leadingMinor, (std::vector<double>{0, -1, -5}));
  EXPECT_EQ(report.verdict, Definiteness::kIndefinite);
}

TEST(DefinitenessTest, ANegativeMinorOfEvenOrderOutweighsEverything) {
  EXPECT_EQ(ClassifyMinors({1, 1, 1, -1, 1}), Definiteness::kIndefinite);
  EXPECT_EQ(ClassifyMinors({0, 0, 0, -1}), Definiteness::kIndefinite);
}

TEST(DefinitenessTest, OddMinorsOfBothSignsAreIndefinite) {
  EXPECT_EQ(ClassifyMinors({1, 0, -1}), Definiteness::kIndefinite);
  EXPECT_EQ(ClassifyMinors({-1, 0, 0}), Definiteness::kNegativeSemidefinite);
  EXPECT_EQ(ClassifyMinors({0, 1, 0}), Definiteness::kSemidefinite);
}

TEST(DefinitenessTest, AMatrixWithoutElementsHasNoFirstMinor) {
  EXPECT_THROW(TestDefiniteness(Matrix(0, 0), unheard), RuntimeFault);
}

TEST(DefinitenessTest, MinorsOfIntegerMatricesComeCloseToTheExactOnes) {
  testing::Dice dice(602);
  for (int round = 0; round < 1500; ++round) {
    const int n = dice.Integer(1, 8);
    Matrix A = testing::IntegerMatrix(dice, n, n, 5);
    for (int i = 1; i <= n; ++i) {
      // Large enough a diagonal for the growth of this pivoting to stay small.
      A(i, i) += dice.Chance(0.5) ? 20 : -20;
      for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
    }
    const DefinitenessReport report = TestDefiniteness(A, unheard);
    Matrix block = A;
    for (int k = n; k >= 1; --k) {
      EXPECT_NEAR(report.leadingMinor[k - 1], static_cast<double>(testing::ExactDeterminant(block)),
                  testing::EliminationTolerance(k, testing::HadamardBound(block)))
          << testing::Print(A);
      block = testing::WithoutLines(block, k, k);
    }
  }
}

}  // namespace
}  // namespace qmx
