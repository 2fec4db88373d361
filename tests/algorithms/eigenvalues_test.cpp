// SPDX-License-Identifier: MIT
#include "algorithms/eigenvalues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/arithmetic.h"
#include "base/fault.h"
#include "base/team.h"
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

constexpr EigenParameters kDefaults{0.0005, 100, 0.1, 0.001};
constexpr EigenParameters kTight{1e-11, 20000, 0.1, 0.001};

EigenvalueRun Find(const Matrix& A, const EigenParameters& parameters,
                   std::int32_t shiftIndex = 0) {
  ClearArithmeticFaults();
  return FindEigenvalues(A, parameters, shiftIndex, unheard);
}

/// The eigenvalues found, in increasing order.
std::vector<double> Sorted(const EigenvalueRun& run) {
  std::vector<double> found(run.eigenvalues.begin(), run.eigenvalues.begin() + run.count);
  std::sort(found.begin(), found.end());
  return found;
}

EigenParameters NextParameters(testing::Dice& dice) {
  constexpr std::array<double, 7> kTolerances{5e-4, 5e-4, 5e-4, 1e-6, 1e-10, 0, -1};
  constexpr std::array<int, 7> kLimits{-3, 0, 1, 4, 12, 30, 60};
  constexpr std::array<double, 5> kReferences{0.1, 0.1, 1e-3, 5, -1};
  return {kTolerances[dice.Integer(0, 6)], kLimits[dice.Integer(0, 6)],
          kReferences[dice.Integer(0, 4)], 0.001};
}

void CompareRuns(testing::Comparison& comparison, const Matrix& A, const EigenParameters& p,
                 int carried, const BlockSizes& sizes = kBlockSizes) {
  comparison.Compare(
      [&] {
        std::int32_t shiftIndex = carried;
        const EigenvalueRun run = FindEigenvalues(A, p, shiftIndex, unheard, sizes);
        Record record{static_cast<double>(run.count), static_cast<double>(shiftIndex)};
        testing::Append(record, run.eigenvalues);
        testing::Append(record, run.origin);
        return record;
      },
      [&] {
        int shiftIndex = carried;
        const reference::Eigen eigen = reference::FindEigenvalues(
            testing::ToTable(A), {p.tolerance, p.maxCycles, p.shiftReference, p.additionalShift},
            shiftIndex);
        Record record{static_cast<double>(eigen.count), static_cast<double>(shiftIndex)};
        testing::Append(record, eigen.values);
        testing::Append(record, eigen.origin);
        return record;
      },
      {&A},
      "tolerance " + std::to_string(p.tolerance) + ", cycles " + std::to_string(p.maxCycles) +
          ", reference " + std::to_string(p.shiftReference) + ", carried index " +
          std::to_string(carried));
}

TEST(EigenvaluesTest, HasTheBitsOfThePlainLoop) {
  testing::CaseSource squares(901, testing::CaseShape::kSquare, 10);
  testing::CaseSource symmetric(902, testing::CaseShape::kSymmetric, 10);
  testing::Dice& dice = squares.Randomness();
  testing::Comparison comparison("eigenvalues");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = comparison.Count() % 2 == 0 ? squares.Next() : symmetric.Next();
    const int carried = dice.Chance(0.5) ? 0 : dice.Integer(0, A.Rows() + 1);
    CompareRuns(comparison, A, NextParameters(dice), carried);
  }
}

TEST(EigenvaluesTest, HasThemInBlocksOnEveryInstructionSet) {
  testing::ForEachInstructionSet([](InstructionSet set) {
    testing::CaseSource squares(911, testing::CaseShape::kSquare, 1);
    testing::CaseSource symmetric(912, testing::CaseShape::kSymmetric, 1);
    testing::Comparison comparison("eigenvalues in blocks, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int n : {14, 15, 16, 17, 20, 23, 24, 31, 32, 33, 34, 48, 49, 64, 65, 70}) {
      for (int kind = 0; kind < 13 && !comparison.HasSeenEnough(); ++kind) {
        const EigenParameters p{n < 40 ? 5e-4 : 0.05, n < 40 ? 15 : 6, 0.1, 0.001};
        CompareRuns(comparison, squares.Next(n, n), p, 0);
        CompareRuns(comparison, symmetric.Next(n, n), p, 2);
      }
    }
  });
}

/// Only rows 2 and 3 take part in the first reflection, and then columns 2 and 3 are done: what was
/// packed for the second one must not be used for the fourth.
void LeaveOutColumns(Matrix& A) {
  A(3, 1) = 1;
  for (int i = 4; i <= A.Rows(); ++i) A(i, 1) = A(i, 2) = A(i, 3) = 0;
}

TEST(EigenvaluesTest, HasThemInPackedReflectionsOfAnyTeam) {
  // Orders in which tiles, strips and blocks of rows end in different places.
  BlockSizes sizes;
  sizes.hessenberg.packedFrom = 5;
  sizes.hessenberg.reflectionStrip = 19;
  sizes.hessenberg.reflectionDepth = 17;
  sizes.hessenberg.shareFrom = 9;
  testing::ForEachInstructionSet([&sizes](InstructionSet set) {
    testing::CaseSource squares(914, testing::CaseShape::kSquare, 1);
    testing::Comparison comparison("packed reflections, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int members : {1, 2, 3, 7, 64}) {
      Team team(members);
      const UseTeam use(team);
      for (const int n : {10, 17, 18, 33, 36, 43, 52}) {
        for (int kind = 0; kind < 13 && !comparison.HasSeenEnough(); ++kind) {
          Matrix A = squares.Next(n, n);
          if (kind % 2 == 0) LeaveOutColumns(A);
          CompareRuns(comparison, A, {5e-4, 1, 0.1, 0.001}, 0, sizes);
        }
      }
    }
  });
}

/// Counts what a run reports.
class Counter : public Progress {
 public:
  void Report([[maybe_unused]] double fraction) override { ++count_; }
  int Count() const { return count_; }

 private:
  int count_ = 0;
};

TEST(EigenvaluesTest, AFaultEndsTheRunInTheCycleWhereItHappens) {
  // The squares of column 1 overflow in the first cycle. All later ones would be cycles of numbers
  // that are none, as many as are allowed.
  const Matrix A = Rows({{1e200, 1e200}, {1e200, -1e200}});
  ClearArithmeticFaults();
  Counter reports;
  std::int32_t shiftIndex = 1;
  EXPECT_THROW(FindEigenvalues(A, {1e-9, 1000, 0.1, 0.001}, shiftIndex, reports), RuntimeFault);
  EXPECT_EQ(reports.Count(), 0);
  EXPECT_EQ(shiftIndex, 1);
}

TEST(EigenvaluesTest, HasThemInStripsOfLargeMatrices) {
  testing::Dice dice(913);
  testing::Comparison comparison("eigenvalues in strips");
  const EigenParameters once{5e-4, 1, 0.1, 0.001};
  const auto hessenberg = [&dice](int n) {
    Matrix A = testing::RealMatrix(dice, n, n);
    for (int i = 3; i <= n; ++i) std::fill_n(A.Row(i), i - 2, 0.0);
    return A;
  };
  CompareRuns(comparison, hessenberg(540), once, 0);
  // Three columns to reduce; with more of them the plain loop would take minutes.
  Matrix A = hessenberg(300);
  A(3, 1) = 1;
  A(6, 5) = 0;
  CompareRuns(comparison, A, once, 0);
}

TEST(EigenvaluesTest, OrderTwoNeedsNoReduction) {
  const EigenvalueRun run = Find(Rows({{2, 1}, {1, 2}}), kDefaults);
  ASSERT_EQ(run.count, 2);
  EXPECT_EQ(run.origin, (std::vector<double>{2, 1}));
  EXPECT_NEAR(run.eigenvalues[0], 1, 0.001);
  EXPECT_NEAR(run.eigenvalues[1], 3, 0.001);
}

TEST(EigenvaluesTest, ADiagonalMatrixIsReadFromTheBottomInOneCycle) {
  EigenParameters once = kDefaults;
  once.maxCycles = 1;
  const EigenvalueRun run =
      Find(Rows({{4, 0, 0, 0}, {0, 3, 0, 0}, {0, 0, 2, 0}, {0, 0, 0, 1}}), once);
  EXPECT_EQ(run.count, 4);
  EXPECT_EQ(run.eigenvalues, (std::vector<double>{1, 2, 3, 4}));
  EXPECT_EQ(run.origin, (std::vector<double>{4, 3, 2, 1}));
}

TEST(EigenvaluesTest, MiddleEntriesGoBeforeTheTopWhereTheBottomIsNotReady) {
  // The rotation in rows 4 and 5 never settles; rows 3, 2 and 1 are cut off from it and found in
  // that order, though the cycle limit then ends the run.
  const EigenvalueRun run = Find(
      Rows({{7, 0, 0, 0, 0}, {0, 6, 0, 0, 0}, {0, 0, 5, 0, 0}, {0, 0, 0, 1, -2}, {0, 0, 0, 2, 1}}),
      {0.0005, 10, -1, 0.001});
  ASSERT_EQ(run.count, 3);
  EXPECT_EQ(run.origin, (std::vector<double>{3, 2, 1, 0, 0}));
  EXPECT_EQ((std::vector<double>(run.eigenvalues.begin(), run.eigenvalues.begin() + 3)),
            (std::vector<double>{5, 6, 7}));
}

TEST(EigenvaluesTest, ComplexEigenvaluesAreNotFound) {
  EXPECT_EQ(Find(Rows({{0, -1}, {1, 0}}), kDefaults).count, 0);
}

TEST(EigenvaluesTest, AComplexPairLeavesTheRealEigenvalue) {
  const EigenvalueRun run = Find(Rows({{0, -1, 0}, {1, 0, 0}, {0, 0, 5}}), kDefaults);
  ASSERT_EQ(run.count, 1);
  EXPECT_NEAR(run.eigenvalues[0], 5, 0.001);
  EXPECT_EQ(run.origin[0], 3);
}

TEST(EigenvaluesTest, NoCyclesAllowedStillMeansOne) {
  EigenParameters none = kDefaults;
  none.maxCycles = 0;
  EXPECT_EQ(Find(Rows({{2, 0}, {0, 1}}), none).count, 2);
  none.maxCycles = -7;
  EXPECT_EQ(Find(Rows({{2, 0}, {0, 1}}), none).count, 2);
}

TEST(EigenvaluesTest, TheLimitStopsBeforeTheShiftWhereNoCycleIsAllowed) {
  // With one cycle allowed the shift of that cycle is made and remembered, with none it is not.
  const Matrix A = Rows({{1, 2, 0}, {2, 5, 1}, {0, 1, 9}});
  const auto slotsAfter = [&](int maxCycles) {
    return Find(A, {1e-12, maxCycles, 1e9, 0.001}).eigenvalues;
  };
  EXPECT_EQ(slotsAfter(0), (std::vector<double>{0, 0, 0}));
  EXPECT_NE(slotsAfter(1)[0], 0);
  EXPECT_EQ(slotsAfter(1)[0], slotsAfter(1)[2]);
}

TEST(EigenvaluesTest, OrderOneEndsInAFaultOnceItsValueSettles) {
  try {
    Find(Rows({{5}}), kDefaults);
    FAIL();
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kSubscriptOutOfRange);
  }
}

TEST(EigenvaluesTest, OrderOneWithABoundThatNothingMeetsFindsNothing) {
  EXPECT_EQ(Find(Rows({{5}}), {-1, 10, 0.1, 0.001}).count, 0);
}

TEST(EigenvaluesTest, AColumnOfExactZerosIsSkippedInTheReduction) {
  // Triangular: nothing is reflected, so the eigenvalues come out to the last bit.
  const EigenvalueRun run = Find(Rows({{3, 1, 4}, {0, 1, 5}, {0, 0, -2}}), kTight);
  ASSERT_EQ(run.count, 3);
  EXPECT_EQ(Sorted(run).front(), -2);
}

TEST(EigenvaluesTest, TheShiftIndexIsCarriedFromRunToRun) {
  // One cycle in which the first diagonal entry moves least: the index is left as it came.
  const Matrix A = Rows({{50, 1e-3, 0}, {1e-3, 2, 1}, {0, 1, 1}});
  std::int32_t carried = 0;
  ClearArithmeticFaults();
  FindEigenvalues(A, {0, 1, 1e9, 0.001}, carried, unheard);
  EXPECT_EQ(carried, 0);
  carried = 2;
  const EigenvalueRun run = FindEigenvalues(A, {0, 1, 1e9, 0.001}, carried, unheard);
  EXPECT_EQ(carried, 2);
  EXPECT_NE(run.eigenvalues[2], 0) << "the shift is the entry that the index names";
}

TEST(EigenvaluesTest, AnIndexCarriedFromALargerMatrixIsAFault) {
  const Matrix A = Rows({{50, 1e-3, 0}, {1e-3, 2, 1}, {0, 1, 1}});
  std::int32_t carried = 4;
  ClearArithmeticFaults();
  EXPECT_THROW(FindEigenvalues(A, {0, 1, 1e9, 0.001}, carried, unheard), RuntimeFault);
}

TEST(EigenvaluesTest, AnOverflowEndsTheRun) {
  try {
    Find(Rows({{1e200, 1}, {1, 1e200}}), kDefaults);
    FAIL();
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kOverflow);
  }
}

TEST(EigenvaluesTest, CancellationInTheReflectorIsADivisionByZero) {
  // 1e-170 squared vanishes: the root of 1 meets -1, and nothing is left to divide by.
  try {
    Find(Rows({{1, 0, 0}, {-1, 2, 0}, {1e-170, 0, 3}}), kDefaults);
    FAIL();
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kDivisionByZero);
  }
}

TEST(EigenvaluesTest, OrderZeroIsAFault) {
  EXPECT_THROW(Find(Matrix(0, 0), kDefaults), RuntimeFault);
}

void ExpectSpectrum(const Matrix& A, std::vector<double> known, const EigenParameters& parameters) {
  const EigenvalueRun run = Find(A, parameters);
  std::sort(known.begin(), known.end());
  ASSERT_EQ(run.count, A.Rows());
  const std::vector<double> found = Sorted(run);
  const double size = std::max(std::abs(known.front()), std::abs(known.back()));
  for (int i = 0; i < A.Rows(); ++i) {
    EXPECT_NEAR(found[i], known[i],
                testing::EigenvalueTolerance(A.Rows(), parameters.tolerance, size));
  }
}

TEST(EigenvaluesTest, Rosser) {
  const double a = 10 * std::sqrt(10405.0);
  const double b = 100 * std::sqrt(26.0);
  ExpectSpectrum(testing::RosserMatrix(), {-a, 0, 510 - b, 1000, 1000, 510 + b, 1020, a}, kTight);
}

/// Eigenvalues of a symmetric tridiagonal matrix with ones beside the diagonal, by bisection on the
/// number of negative pivots (Sturm sequences).
std::vector<double> SturmSpectrum(const std::vector<double>& diagonal) {
  const int n = static_cast<int>(diagonal.size());
  const auto below = [&](long double x) {
    int negative = 0;
    long double q = 1;
    for (int i = 0; i < n; ++i) {
      q = diagonal[i] - x - (i == 0 ? 0 : 1 / q);
      if (q == 0) q = 1e-30L;
      if (q < 0) ++negative;
    }
    return negative;
  };
  std::vector<double> spectrum;
  for (int k = 1; k <= n; ++k) {
    long double low = -100;
    long double high = 100;
    for (int step = 0; step < 80; ++step) {
      const long double middle = (low + high) / 2;
      (below(middle) >= k ? high : low) = middle;
    }
    spectrum.push_back(static_cast<double>(low));
  }
  return spectrum;
}

Matrix Tridiagonal(const std::vector<double>& diagonal) {
  const int n = static_cast<int>(diagonal.size());
  Matrix A(n, n);
  for (int i = 1; i <= n; ++i) {
    A(i, i) = diagonal[i - 1];
    if (i < n) A(i, i + 1) = A(i + 1, i) = 1;
  }
  return A;
}

TEST(EigenvaluesTest, Wilkinson) {
  std::vector<double> diagonal;
  for (int i = 10; i >= -10; --i) diagonal.push_back(std::abs(i));
  const std::vector<double> known = SturmSpectrum(diagonal);
  EXPECT_NEAR(known.back(), 10.746194182903393, 1e-14);
  EXPECT_NEAR(known.front(), -1.1254415221199847, 1e-14);
  ExpectSpectrum(Tridiagonal(diagonal), known, kTight);
}

TEST(EigenvaluesTest, SecondDifferences) {
  // 2 - 2·cos(k·pi / (n + 1)), with the signs beside the diagonal turned.
  const int n = 12;
  std::vector<double> known;
  for (int k = 1; k <= n; ++k) known.push_back(2 - 2 * std::cos(k * std::numbers::pi / (n + 1)));
  ExpectSpectrum(Tridiagonal(std::vector<double>(n, 2.0)), known, kTight);
}

TEST(EigenvaluesTest, Frank) {
  const int n = 7;
  Matrix A(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = std::max(1, i - 1); j <= n; ++j) A(i, j) = n + 1 - std::max(i, j);
  }
  const std::vector<double> found = Sorted(Find(A, kTight));
  ASSERT_EQ(found.size(), 7u);
  // They come in pairs x and 1/x with 1 in the middle; the small ones are ill conditioned.
  for (int i = 0; i < n; ++i) {
    EXPECT_NEAR(found[i] * found[n - 1 - i], 1, testing::ConditionedTolerance(n, 1e5, 1)) << i;
  }
  double sum = 0;
  for (const double value : found) sum += value;
  EXPECT_NEAR(sum, n * (n + 1) / 2.0, testing::ConditionedTolerance(n, 1e5, 1));
}

}  // namespace
}  // namespace qmx
