// SPDX-License-Identifier: MIT
#include "algorithms/linear_system.h"

#include <gtest/gtest.h>

#include <cmath>

#include "algorithms/lu.h"
#include "base/fault.h"
#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"
#include "support/core_tolerance.h"

namespace qmx {
namespace {

using testing::CaseShape;
using testing::CaseSource;
using testing::Comparison;
using testing::Dice;
using testing::Record;
using testing::Rows;
using testing::ToTable;

Progress unheard;

template <class Solution>
Record Of(const Solution& solution) {
  Record record{solution.solved ? 1.0 : 0.0, solution.inconsistent ? 1.0 : 0.0};
  testing::Append(record, solution.x);
  return record;
}

/// A system with whole coefficients of low rank, half of the time with a solution.
Matrix DeficientSystem(Dice& dice, int equations, int unknowns) {
  Matrix system = testing::IntegerMatrix(dice, equations, unknowns + 1, 3);
  const int from = dice.Integer(1, unknowns);
  const int to = dice.Integer(1, unknowns);
  for (int i = 1; i <= equations; ++i) system(i, to) = system(i, from);
  if (dice.Chance(0.5)) return system;
  for (int i = 1; i <= equations; ++i) {
    system(i, unknowns + 1) = 0;
    for (int j = 1; j <= unknowns; ++j) system(i, unknowns + 1) += j * system(i, j);
  }
  return system;
}

/// Mostly n x (n + 1), with deficient and misshapen systems among them.
Matrix NextSystem(CaseSource& cases, int largest) {
  Dice& dice = cases.Randomness();
  const int n = dice.Integer(1, largest);
  if (dice.Chance(0.3)) return DeficientSystem(dice, n, n);
  if (dice.Chance(0.15)) return cases.Next();
  return cases.Next(n, n + 1);
}

TEST(LinearSystemTest, OneShotHasTheBitsOfThePlainLoop) {
  CaseSource cases(801, CaseShape::kAny, 10);
  Comparison comparison("one-shot solution");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix system = NextSystem(cases, 11);
    comparison.Compare([&] { return Of(SolveOneShot(system, unheard)); },
                       [&] { return Of(reference::SolveOneShot(ToTable(system))); }, {&system});
  }
}

TEST(LinearSystemTest, LargeSystemsHaveTheBitsOfThePlainLoopToo) {
  CaseSource cases(811, CaseShape::kAny, 1);
  Comparison comparison("large systems");
  for (const int n : {31, 32, 33, 40, 41, 57, 64, 129, 140}) {
    for (int kind = 0; kind < 25 && !comparison.HasSeenEnough(); ++kind) {
      const Matrix system = cases.Next(n, n + 1);
      comparison.Compare([&] { return Of(SolveOneShot(system, unheard)); },
                         [&] { return Of(reference::SolveOneShot(ToTable(system))); }, {},
                         std::to_string(n));
      const int unknowns = n < 100 ? n - 1 : cases.Randomness().Integer(62, 66);
      const Matrix tall = cases.Next(n, unknowns + 1);
      comparison.Compare([&] { return Of(SolveLeastSquares(tall, unheard)); },
                         [&] { return Of(reference::SolveLeastSquares(ToTable(tall))); }, {},
                         std::to_string(n));
    }
  }
}

TEST(LinearSystemTest, LeastSquaresOfManyUnknownsHasTheBitsOfThePlainLoopToo) {
  Comparison comparison("least squares of many unknowns");
  testing::Dice dice(812);
  for (const int unknowns : {499, 500}) {
    const Matrix system = testing::RealMatrix(dice, unknowns + 3, unknowns + 1);
    comparison.Compare([&] { return Of(SolveLeastSquares(system, unheard)); },
                       [&] { return Of(reference::SolveLeastSquares(ToTable(system))); }, {},
                       std::to_string(unknowns));
  }
}

TEST(LinearSystemTest, LeastSquaresHasTheBitsOfThePlainLoop) {
  CaseSource cases(802, CaseShape::kAny, 12);
  Dice& dice = cases.Randomness();
  Comparison comparison("least squares");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const int unknowns = dice.Integer(1, 9);
    const int equations = unknowns + dice.Integer(0, 6);
    const Matrix system = dice.Chance(0.15)  ? cases.Next()
                          : dice.Chance(0.2) ? DeficientSystem(dice, equations, unknowns)
                                             : cases.Next(equations, unknowns + 1);
    comparison.Compare([&] { return Of(SolveLeastSquares(system, unheard)); },
                       [&] { return Of(reference::SolveLeastSquares(ToTable(system))); },
                       {&system});
  }
}

/// Factors as they are found in practice, at times with a zero in the diagonal of U, an exchange
/// beyond the system or factors of another order than the system.
struct StoredFactors {
  Matrix L;
  Matrix U;
  Matrix exchanges;
  Matrix system;
};

StoredFactors NextFactors(CaseSource& cases) {
  Dice& dice = cases.Randomness();
  const int n = dice.Integer(1, 10);
  LuFactors factors = FactorLu(cases.Next(n, n), true, unheard);
  if (dice.Chance(0.2)) factors.U(dice.Integer(1, n), dice.Integer(1, n)) = 0;
  if (dice.Chance(0.2)) factors.exchanges = Matrix();
  if (dice.Chance(0.05) && factors.exchanges.Rows() == n) {
    factors.exchanges(dice.Integer(1, n), 1) = dice.Integer(-1, n + 1);
  }
  if (dice.Chance(0.05) && factors.exchanges.Rows() == n) {
    factors.exchanges(dice.Integer(1, n), 1) += 0.25;
  }
  const int equations = dice.Chance(0.1) ? dice.Integer(0, 11) : n;
  const int columns = dice.Chance(0.1) ? dice.Integer(0, 3) : 1;
  return {factors.L, factors.U, factors.exchanges, cases.Next(equations, columns)};
}

TEST(LinearSystemTest, SolvingByFactorsHasTheBitsOfThePlainLoop) {
  CaseSource cases(803, CaseShape::kAny, 10);
  Comparison comparison("solution by factors");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const StoredFactors f = NextFactors(cases);
    comparison.Compare([&] { return Of(SolveByFactors(f.L, f.U, f.exchanges, f.system, unheard)); },
                       [&] {
                         return Of(reference::SolveByFactors(
                             ToTable(f.L), ToTable(f.U), ToTable(f.exchanges), ToTable(f.system)));
                       },
                       {&f.L, &f.U, &f.exchanges, &f.system});
  }
}

TEST(LinearSystemTest, OneEquationIsAQuotient) {
  const SystemSolution solution = SolveOneShot(Rows({{4, 10}}), unheard);
  EXPECT_TRUE(solution.solved);
  EXPECT_EQ(solution.x, Rows({{2.5}}));
}

TEST(LinearSystemTest, AZeroFirstColumnIsSkippedAndFoundAtTheTop) {
  const SystemSolution dependent = SolveOneShot(Rows({{0, 1, 3}, {0, 2, 6}}), unheard);
  EXPECT_FALSE(dependent.solved);
  EXPECT_FALSE(dependent.inconsistent);
  EXPECT_EQ(dependent.x, Rows({{0}, {3}})) << "the solved part stays";

  const SystemSolution inconsistent = SolveOneShot(Rows({{0, 1, 3}, {0, 2, 8}}), unheard);
  EXPECT_FALSE(inconsistent.solved);
  EXPECT_TRUE(inconsistent.inconsistent);
  EXPECT_EQ(inconsistent.x, Rows({{0}, {4}}));
}

TEST(LinearSystemTest, RepeatedEquationsHaveInfinitelyManySolutions) {
  const SystemSolution solution = SolveOneShot(Rows({{1, 2, 3}, {1, 2, 3}}), unheard);
  EXPECT_FALSE(solution.solved);
  EXPECT_FALSE(solution.inconsistent);
}

TEST(LinearSystemTest, RepeatedEquationsWithDifferentRightHandSidesAreInconsistent) {
  const SystemSolution solution = SolveOneShot(Rows({{1, 2, 3}, {1, 2, 4}}), unheard);
  EXPECT_FALSE(solution.solved);
  EXPECT_TRUE(solution.inconsistent);
}

TEST(LinearSystemTest, TheFirstZeroFromBelowDecides) {
  // Row 3 is consistent, row 2 would not be.
  const Matrix system = Rows({{1, 1, 1, 1}, {0, 0, 1, 5}, {0, 0, 0, 0}});
  const SystemSolution solution = SolveOneShot(system, unheard);
  EXPECT_FALSE(solution.solved);
  EXPECT_FALSE(solution.inconsistent);
  EXPECT_EQ(solution.x, Matrix(3, 1));
}

TEST(LinearSystemTest, ANearlySingularSystemIsSolved) {
  const SystemSolution solution = SolveOneShot(Rows({{1, 1, 2}, {1, 1 + 0x1p-52, 3}}), unheard);
  EXPECT_TRUE(solution.solved);
  EXPECT_EQ(solution.x(2, 1), 0x1p52);
}

TEST(LinearSystemTest, ASystemWithoutEquationsIsSolved) {
  EXPECT_TRUE(SolveOneShot(Matrix(0, 1), unheard).solved);
  EXPECT_TRUE(SolveOneShot(Matrix(0, 5), unheard).solved);
}

TEST(LinearSystemTest, AMissingColumnIsAFault) {
  EXPECT_THROW(SolveOneShot(Matrix(3, 2), unheard), RuntimeFault);
  EXPECT_THROW(SolveOneShot(Matrix(1, 0), unheard), RuntimeFault);
  // Without a right-hand side a regular matrix meets no missing column; a singular one does.
  EXPECT_TRUE(SolveOneShot(Rows({{1, 2}, {3, 4}}), unheard).solved);
  EXPECT_THROW(SolveOneShot(Rows({{1, 2}, {2, 4}}), unheard), RuntimeFault);
}

TEST(LinearSystemTest, ResidualsAreSmall) {
  Dice dice(804);
  for (int n = 1; n <= 80; ++n) {
    const Matrix system = testing::RealMatrix(dice, n, n + 1);
    const SystemSolution solution = SolveOneShot(system, unheard);
    ASSERT_TRUE(solution.solved);
    for (int i = 1; i <= n; ++i) {
      double residual = system(i, n + 1);
      for (int j = 1; j <= n; ++j) residual -= system(i, j) * solution.x(j, 1);
      EXPECT_LE(std::abs(residual),
                testing::EliminationTolerance(n, 1 + testing::MaxMagnitude(solution.x)));
    }
  }
}

TEST(StoredFactorsTest, IdentityFactorsLeaveBackSubstitution) {
  const Matrix U = Rows({{2, 1}, {0, 4}});
  const SystemSolution solution =
      SolveByFactors(testing::IdentityMatrix(2), U, Rows({{1}, {2}}), Rows({{8}, {16}}), unheard);
  EXPECT_TRUE(solution.solved);
  EXPECT_EQ(solution.x, Rows({{2}, {4}}));
}

TEST(StoredFactorsTest, NoExchangesMeanTheIdentity) {
  const Matrix U = Rows({{2, 1}, {0, 4}});
  EXPECT_EQ(SolveByFactors(testing::IdentityMatrix(2), U, Matrix(), Rows({{8}, {16}}), unheard).x,
            Rows({{2}, {4}}));
}

TEST(StoredFactorsTest, TheDiagonalOfLIsNotRead) {
  const Matrix L = Rows({{99, 0}, {0.5, 99}});
  const SystemSolution solution =
      SolveByFactors(L, testing::IdentityMatrix(2), Matrix(), Rows({{2}, {4}}), unheard);
  EXPECT_EQ(solution.x, Rows({{2}, {3}}));
}

TEST(StoredFactorsTest, ExchangesAreRoundedAndOtherColumnsIgnored) {
  const Matrix I = testing::IdentityMatrix(2);
  EXPECT_EQ(SolveByFactors(I, I, Rows({{2.25}, {0.75}}), Rows({{5, 1}, {7, 1}}), unheard).x,
            Rows({{7}, {5}}));
}

TEST(StoredFactorsTest, AZeroInTheDiagonalStopsAndKeepsTheForwardSubstitutedValues) {
  const Matrix L = Rows({{1, 0, 0}, {2, 1, 0}, {0, 0, 1}});
  const Matrix U = Rows({{1, 0, 0}, {0, 0, 1}, {0, 0, 2}});
  const SystemSolution inconsistent =
      SolveByFactors(L, U, Matrix(), Rows({{1}, {7}, {6}}), unheard);
  EXPECT_FALSE(inconsistent.solved);
  EXPECT_TRUE(inconsistent.inconsistent) << "3 on the left against 5 on the right";
  EXPECT_EQ(inconsistent.x, Rows({{1}, {5}, {3}}));

  const SystemSolution dependent = SolveByFactors(L, U, Matrix(), Rows({{1}, {5}, {6}}), unheard);
  EXPECT_FALSE(dependent.solved);
  EXPECT_FALSE(dependent.inconsistent);
}

TEST(StoredFactorsTest, FactorsSmallerThanTheSystemAreAFault) {
  const Matrix I = testing::IdentityMatrix(2);
  EXPECT_THROW(SolveByFactors(I, I, Matrix(), Matrix(3, 1), unheard), RuntimeFault);
  EXPECT_THROW(SolveByFactors(I, testing::IdentityMatrix(1), Matrix(), Matrix(2, 1), unheard),
               RuntimeFault);
  EXPECT_THROW(SolveByFactors(I, I, Rows({{1}, {3}}), Matrix(2, 1), unheard), RuntimeFault);
  EXPECT_THROW(SolveByFactors(I, I, Rows({{1}}), Matrix(2, 1), unheard), RuntimeFault);
}

TEST(StoredFactorsTest, AgreesWithSolvingAtOnce) {
  Dice dice(805);
  for (int n = 1; n <= 40; ++n) {
    const Matrix system = testing::RealMatrix(dice, n, n + 1);
    Matrix A(n, n);
    Matrix b(n, 1);
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) A(i, j) = system(i, j);
      b(i, 1) = system(i, n + 1);
    }
    const LuFactors factors = FactorLu(A, true, unheard);
    const SystemSolution byFactors =
        SolveByFactors(factors.L, factors.U, factors.exchanges, b, unheard);
    const SystemSolution atOnce = SolveOneShot(system, unheard);
    ASSERT_TRUE(byFactors.solved && atOnce.solved);
    // The same factors, only the right-hand side is summed up in another order; the condition of
    // these matrices stays below 1e5.
    EXPECT_LE(testing::LargestDifference(byFactors.x, atOnce.x),
              testing::ConditionedTolerance(n, 1e5, testing::MaxMagnitude(atOnce.x)));
  }
}

TEST(LeastSquaresTest, InconsistentEquationsMeetInTheMiddle) {
  const SystemSolution solution =
      SolveLeastSquares(Rows({{1, 0, 1}, {0, 1, 1}, {1, 1, 3}}), unheard);
  EXPECT_TRUE(solution.solved);
  EXPECT_NEAR(solution.x(1, 1), 4.0 / 3, testing::SumTolerance(2, 4));
  EXPECT_NEAR(solution.x(2, 1), 4.0 / 3, testing::SumTolerance(2, 4));
}

TEST(LeastSquaresTest, ASquareSystemHasTheSameSolutionUpToRounding) {
  const Matrix system = Rows({{4, 1, 9}, {1, 3, 5}});
  EXPECT_LE(testing::LargestDifference(SolveLeastSquares(system, unheard).x,
                                       SolveOneShot(system, unheard).x),
            testing::ConditionedTolerance(2, 4, 2));
}

TEST(LeastSquaresTest, IdenticalColumnsAreLinearlyDependent) {
  const SystemSolution solution =
      SolveLeastSquares(Rows({{1, 1, 1}, {2, 2, 1}, {3, 3, 7}}), unheard);
  EXPECT_FALSE(solution.solved);
  EXPECT_FALSE(solution.inconsistent);
}

TEST(LeastSquaresTest, TheResidualIsOrthogonalToTheColumns) {
  Dice dice(806);
  for (int unknowns = 1; unknowns <= 20; ++unknowns) {
    const int equations = 2 * unknowns + 5;
    const Matrix system = testing::RealMatrix(dice, equations, unknowns + 1);
    const SystemSolution solution = SolveLeastSquares(system, unheard);
    ASSERT_TRUE(solution.solved);
    for (int c = 1; c <= unknowns; ++c) {
      double dot = 0;
      for (int i = 1; i <= equations; ++i) {
        double residual = system(i, unknowns + 1);
        for (int j = 1; j <= unknowns; ++j) residual -= system(i, j) * solution.x(j, 1);
        dot += system(i, c) * residual;
      }
      EXPECT_LE(std::abs(dot),
                testing::EliminationTolerance(equations, 1 + testing::MaxMagnitude(solution.x)));
    }
  }
}

TEST(LeastSquaresTest, MoreUnknownsThanEquationsAreAFault) {
  EXPECT_THROW(SolveLeastSquares(Rows({{1, 2, 3}}), unheard), RuntimeFault);
  EXPECT_THROW(SolveLeastSquares(Matrix(2, 0), unheard), RuntimeFault);
  EXPECT_TRUE(SolveLeastSquares(Matrix(2, 1), unheard).solved);
}

}  // namespace
}  // namespace qmx
