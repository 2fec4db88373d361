// SPDX-License-Identifier: MIT
#include "algorithms/eigenvectors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "base/arithmetic.h"
#include "base/fault.h"
#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"
#include "support/core_tolerance.h"

namespace qmx {
namespace {

using testing::Record;
using testing::Rows;

Progress unheard;

constexpr EigenParameters kDefaults{0.0005, 100, 0.1, 0.001};

std::vector<double> StartVector(testing::Dice& dice, int n) {
  std::vector<double> x(n);
  for (double& component : x) component = 0.5 - static_cast<float>(dice.Next() >> 40) * 0x1p-24f;
  return x;
}

void CompareRuns(testing::Comparison& comparison, const Matrix& A, double lambda, int origin,
                 const EigenParameters& p, const std::vector<double>& start) {
  comparison.Compare(
      [&] {
        std::vector<double> x = start;
        Record record{static_cast<double>(FindEigenvector(A, lambda, origin, p, x, unheard))};
        testing::Append(record, x);
        return record;
      },
      [&] {
        reference::Table x(A.Rows(), 1);
        for (int i = 1; i <= A.Rows(); ++i) x(i, 1) = start[i - 1];
        Record record{static_cast<double>(reference::FindEigenvector(
            testing::ToTable(A), lambda, origin,
            {p.tolerance, p.maxCycles, p.shiftReference, p.additionalShift}, x))};
        testing::Append(record, x);
        return record;
      },
      {&A},
      "lambda " + std::to_string(lambda) + ", origin " + std::to_string(origin) + ", cycles " +
          std::to_string(p.maxCycles) + ", shift " + std::to_string(p.additionalShift));
}

TEST(EigenvectorsTest, HasTheBitsOfThePlainLoop) {
  constexpr std::array<double, 4> kTolerances{5e-4, 1e-9, 0, -1};
  constexpr std::array<int, 4> kLimits{-1, 0, 3, 20};
  constexpr std::array<double, 5> kShifts{0.001, 0.001, 0, 1, -0.5};
  testing::CaseSource squares(1001, testing::CaseShape::kSquare, 11);
  testing::CaseSource symmetric(1002, testing::CaseShape::kSymmetric, 11);
  testing::Dice& dice = squares.Randomness();
  testing::Comparison comparison("eigenvectors");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = comparison.Count() % 2 == 0 ? squares.Next() : symmetric.Next();
    if (A.Rows() == 0) continue;
    const EigenParameters p{kTolerances[dice.Integer(0, 3)], kLimits[dice.Integer(0, 3)], 0.1,
                            kShifts[dice.Integer(0, 4)]};
    const int origin = dice.Integer(1, A.Rows());
    const double lambda = dice.Chance(0.5) ? A(origin, origin) : dice.Integer(-9, 9) / 2.0;
    CompareRuns(comparison, A, lambda, origin, p, StartVector(dice, A.Rows()));
  }
}

VectorOutcome Find(const Matrix& A, double lambda, int origin, const EigenParameters& parameters,
                   std::vector<double>& x) {
  ClearArithmeticFaults();
  return FindEigenvector(A, lambda, origin, parameters, x, unheard);
}

TEST(EigenvectorsTest, LargeMatricesHaveTheBitsOfThePlainLoopToo) {
  testing::CaseSource cases(1011, testing::CaseShape::kSymmetric, 1);
  testing::Comparison comparison("eigenvectors of large matrices");
  for (const int n : {32, 33, 57, 64, 130}) {
    for (int kind = 0; kind < 25 && !comparison.HasSeenEnough(); ++kind) {
      const Matrix A = cases.Next(n, n);
      CompareRuns(comparison, A, A(1, 1), 1, {5e-4, 4, 0.1, 0.001},
                  StartVector(cases.Randomness(), n));
    }
  }
}

TEST(EigenvectorsTest, ADiagonalEntryEqualToTheEigenvalueIsShiftedDown) {
  // Down to 1, where the matrix is exactly singular; up to 3 it would not be.
  const Matrix A = Rows({{2, 0}, {0, 1}});
  std::vector<double> x{0.25, -0.5};
  EXPECT_EQ(Find(A, 2, 1, {0.0005, 100, 0.1, 1}, x), VectorOutcome::kSingular);
  EXPECT_EQ(x, (std::vector<double>{0.25, -0.5})) << "the start vector stays";
}

TEST(EigenvectorsTest, ASmallerDiagonalEntryIsShiftedUp) {
  const Matrix A = Rows({{1, 0}, {0, 3}});
  std::vector<double> x{0.25, 0.5};
  EXPECT_EQ(Find(A, 2, 1, {0.0005, 100, 0.1, 1}, x), VectorOutcome::kSingular);
}

TEST(EigenvectorsTest, AChangeOfSignCountsAsConverged) {
  // Below a negative eigenvalue of the inverse every cycle turns the vector round.
  const Matrix A = Rows({{2, 0}, {0, 9}});
  std::vector<double> x{-1, 0};
  EigenParameters once = kDefaults;
  once.maxCycles = 1;
  EXPECT_EQ(Find(A, 3, 1, once, x), VectorOutcome::kConverged);
  EXPECT_EQ(x, (std::vector<double>{1, 0}));
}

TEST(EigenvectorsTest, NoCyclesAllowedStillMeansOne) {
  const Matrix A = Rows({{2, 1}, {1, 2}});
  EigenParameters none{-1, 0, 0.1, 0.001};
  std::vector<double> x{0.3, 0.1};
  EXPECT_EQ(Find(A, 3, 1, none, x), VectorOutcome::kNotConverged);
  EXPECT_NEAR(x[0] * x[0] + x[1] * x[1], 1, testing::SumTolerance(2, 1));
}

TEST(EigenvectorsTest, AVectorThatVanishesIsAnInvalidOperation) {
  std::vector<double> x{0, 0};
  try {
    Find(Rows({{2, 1}, {1, 2}}), 3, 1, kDefaults, x);
    FAIL();
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kInvalidProcedureCall);
  }
}

TEST(EigenvectorsTest, ResidualsOfSymmetricMatricesAreSmall) {
  testing::Dice dice(1003);
  const EigenParameters tight{1e-13, 300, 0.1, 1e-6};
  int vectors = 0;
  for (int n = 2; n <= 20; ++n) {
    Matrix A = testing::RealMatrix(dice, n, n);
    for (int i = 1; i <= n; ++i) {
      A(i, i) += 3 * i;
      for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
    }
    ClearArithmeticFaults();
    std::int32_t shiftIndex = 0;
    const EigenvalueRun run = FindEigenvalues(A, {1e-12, 20000, 0.1, 0}, shiftIndex, unheard);
    ASSERT_EQ(run.count, n);
    for (int t = 0; t < n; ++t) {
      std::vector<double> x = StartVector(dice, n);
      const int origin = static_cast<int>(run.origin[t]);
      ASSERT_EQ(Find(A, run.eigenvalues[t], origin, tight, x), VectorOutcome::kConverged);
      ++vectors;
      for (int i = 1; i <= n; ++i) {
        double residual = -run.eigenvalues[t] * x[i - 1];
        for (int j = 1; j <= n; ++j) residual += A(i, j) * x[j - 1];
        EXPECT_NEAR(residual, 0, testing::EigenvalueTolerance(n, 1e-12, 4.0 * n));
      }
    }
  }
  EXPECT_EQ(vectors, 209);
}

}  // namespace
}  // namespace qmx
