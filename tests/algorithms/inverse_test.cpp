// SPDX-License-Identifier: MIT
#include "algorithms/inverse.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "algorithms/determinant.h"
#include "base/arithmetic.h"
#include "base/fault.h"
#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"
#include "support/core_instruction_sets.h"
#include "support/core_tolerance.h"

namespace qmx {
namespace {

using testing::CaseShape;
using testing::CaseSource;
using testing::Comparison;
using testing::Record;
using testing::Rows;

Progress unheard;

Record Of(const std::optional<Matrix>& result) {
  Record record{result ? 1.0 : 0.0};
  if (result) testing::Append(record, *result);
  return record;
}

Record Of(const reference::Inverted& inverted) {
  Record record{inverted.invertible ? 1.0 : 0.0};
  if (inverted.invertible) testing::Append(record, inverted.result);
  return record;
}

Record Of(const reference::Table& adjoint) {
  Record record;
  testing::Append(record, adjoint);
  return record;
}

TEST(InverseTest, HasTheBitsOfThePlainLoop) {
  CaseSource cases(301, CaseShape::kSquare, 12);
  Comparison comparison("inverse");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = cases.Next();
    comparison.Compare([&] { return Of(Inverse(A, unheard)); },
                       [&] { return Of(reference::Inverse(testing::ToTable(A))); }, {&A});
  }
}

TEST(InverseTest, HasThemInBlocksOnEveryInstructionSet) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    CaseSource cases(311, CaseShape::kSquare, 1);
    Comparison comparison("inverses in blocks, instruction set " +
                          std::to_string(static_cast<int>(set)));
    for (const int n :
         {9, 10, 18, 27, 31, 32, 33, 34, 40, 41, 65, 73, 97, 104, 128, 129, 141, 226}) {
      for (int kind = 0; kind < 13 && !comparison.HasSeenEnough(); ++kind) {
        const Matrix A = cases.Next(n, n);
        comparison.Compare([&] { return Of(Inverse(A, unheard)); },
                           [&] { return Of(reference::Inverse(testing::ToTable(A))); }, {},
                           std::to_string(n));
        comparison.Compare([&] { return Of(AdjointByInverse(A, unheard)); },
                           [&] { return Of(reference::AdjointByInverse(testing::ToTable(A))); }, {},
                           "adjoint " + std::to_string(n));
      }
    }
  });
}

TEST(AdjointTest, ByInverseHasTheBitsOfThePlainLoop) {
  CaseSource cases(302, CaseShape::kSquare, 12);
  Comparison comparison("adjoint by inverse");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const Matrix A = cases.Next();
    comparison.Compare([&] { return Of(AdjointByInverse(A, unheard)); },
                       [&] { return Of(reference::AdjointByInverse(testing::ToTable(A))); }, {&A});
  }
}

void CompareByCofactors(Comparison& comparison, const Matrix& A) {
  comparison.Compare(
      [&] {
        Record record;
        testing::Append(record, AdjointByCofactors(A, unheard));
        return record;
      },
      [&] { return Of(reference::AdjointByCofactors(testing::ToTable(A))); }, {&A});
}

TEST(AdjointTest, ByCofactorsHasTheBitsOfThePlainLoop) {
  CaseSource cases(303, CaseShape::kSquare, 11);
  Comparison comparison("adjoint by cofactors");
  while (comparison.Count() < testing::kCases / 4 && !comparison.HasSeenEnough()) {
    const Matrix A = cases.Next();
    CompareByCofactors(comparison, A);
  }
}

TEST(AdjointTest, ByCofactorsHasThemOnEveryInstructionSet) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    CaseSource cases(312, CaseShape::kSquare, 1);
    Comparison comparison("adjoints by cofactors, instruction set " +
                          std::to_string(static_cast<int>(set)));
    for (const int n : {5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 24}) {
      for (int kind = 0; kind < 25 && !comparison.HasSeenEnough(); ++kind) {
        const Matrix A = cases.Next(n, n);
        CompareByCofactors(comparison, A);
      }
    }
  });
}

TEST(AdjointTest, SharedStepsRaiseNoFaultOfTheirOwn) {
  // Eleven steps add up in the last element: all of them are too much, but every minor lacks one.
  const int n = 12;
  Matrix A = testing::IdentityMatrix(n);
  for (int k = 1; k < n; ++k) {
    A(n, k) = 0.5;
    A(k, n) = -0.1875 * std::numeric_limits<double>::max();
  }
  A(n, n) = 0;
  ClearArithmeticFaults();
  AdjointByCofactors(A, unheard);
  EXPECT_NO_THROW(CheckArithmetic());
  Determinant(A, unheard);
  EXPECT_THROW(CheckArithmetic(), RuntimeFault) << "the whole matrix does overflow";
  ClearArithmeticFaults();
}

TEST(InverseTest, RowsStayWhereTheyAreUntilTheEnd) {
  EXPECT_EQ(Inverse(Rows({{0, 1}, {1, 0}}), unheard), Rows({{0, 1}, {1, 0}}));
  EXPECT_EQ(Inverse(Rows({{0, 2, 0}, {0, 0, 4}, {8, 0, 0}}), unheard),
            Rows({{0, 0, 0.125}, {0.5, 0, 0}, {0, 0.25, 0}}));
}

TEST(InverseTest, ASingularMatrixHasNone) {
  EXPECT_EQ(Inverse(Rows({{1, 2}, {2, 4}}), unheard), std::nullopt);
  EXPECT_EQ(Inverse(Rows({{0}}), unheard), std::nullopt);
  EXPECT_EQ(Inverse(Rows({{1, 0}, {1, 0}}), unheard), std::nullopt);
}

TEST(InverseTest, OfTheEmptyMatrixIsEmpty) { EXPECT_EQ(Inverse(Matrix(0, 0), unheard), Matrix()); }

TEST(InverseTest, HilbertMatricesGiveIntegers) {
  const Matrix known4 = Rows({{16, -120, 240, -140},
                              {-120, 1200, -2700, 1680},
                              {240, -2700, 6480, -4200},
                              {-140, 1680, -4200, 2800}});
  EXPECT_LE(testing::LargestDifference(*Inverse(testing::HilbertMatrix(4, 4), unheard), known4),
            testing::ConditionedTolerance(4, 28375, 6480));
  const Matrix known5 = Rows({{25, -300, 1050, -1400, 630},
                              {-300, 4800, -18900, 26880, -12600},
                              {1050, -18900, 79380, -117600, 56700},
                              {-1400, 26880, -117600, 179200, -88200},
                              {630, -12600, 56700, -88200, 44100}});
  EXPECT_LE(testing::LargestDifference(*Inverse(testing::HilbertMatrix(5, 5), unheard), known5),
            testing::ConditionedTolerance(5, 943656, 179200));
}

TEST(InverseTest, TimesTheMatrixIsTheIdentity) {
  testing::Dice dice(304);
  for (int n = 1; n <= 60; ++n) {
    Matrix A = testing::RealMatrix(dice, n, n);
    for (int i = 1; i <= n; ++i) A(i, i) += 4;
    const Matrix X = *Inverse(A, unheard);
    const double size = testing::MaxMagnitude(
        testing::PlainProduct(testing::Magnitudes(A), testing::Magnitudes(X)));
    EXPECT_LE(testing::LargestDifference(testing::PlainProduct(A, X), testing::IdentityMatrix(n)),
              testing::EliminationTolerance(n, size))
        << n;
  }
}

TEST(AdjointTest, OfOrderTwoExchangesTheDiagonal) {
  EXPECT_EQ(AdjointByCofactors(Rows({{1, 2}, {3, 4}}), unheard), Rows({{4, -2}, {-3, 1}}));
}

TEST(AdjointTest, OfASingularMatrixExistsByCofactorsOnly) {
  const Matrix A = Rows({{1, 2}, {2, 4}});
  EXPECT_EQ(AdjointByCofactors(A, unheard), Rows({{4, -2}, {-2, 1}}));
  EXPECT_EQ(AdjointByInverse(A, unheard), std::nullopt);
}

TEST(AdjointTest, OfOrderOneIsOneByCofactors) {
  EXPECT_EQ(AdjointByCofactors(Rows({{7}}), unheard), Rows({{1}}));
  EXPECT_EQ(AdjointByCofactors(Rows({{0}}), unheard), Rows({{1}}));
}

TEST(AdjointTest, OfOrderOneIsTheRoundedQuotientByInverse) {
  for (const double a : {3.0, 49.0, -0.1, 1e-300}) {
    EXPECT_EQ(AdjointByInverse(Rows({{a}}), unheard), Rows({{a * (1 / a)}}));
  }
  EXPECT_EQ(AdjointByInverse(Rows({{0}}), unheard), std::nullopt);
}

TEST(AdjointTest, OfTheEmptyMatrixIsEmpty) {
  EXPECT_EQ(AdjointByCofactors(Matrix(0, 0), unheard), Matrix());
  EXPECT_EQ(AdjointByInverse(Matrix(0, 0), unheard), Matrix());
}

TEST(AdjointTest, OfIntegerMatricesComesCloseToTheExactCofactors) {
  testing::Dice dice(305);
  for (int round = 0; round < 600; ++round) {
    const int n = dice.Integer(2, 7);
    const Matrix A = testing::IntegerMatrix(dice, n, n, round % 2 == 0 ? 9 : 2);
    const Matrix adjoint = AdjointByCofactors(A, unheard);
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) {
        const Matrix minor = testing::WithoutLines(A, i, j);
        const testing::Exact exact = testing::ExactDeterminant(minor);
        EXPECT_NEAR(adjoint(j, i), static_cast<double>((i + j) % 2 == 0 ? exact : -exact),
                    testing::EliminationTolerance(n, testing::HadamardBound(minor)))
            << testing::Print(A);
      }
    }
  }
}

TEST(AdjointTest, BothWaysAgreeWhereTheMatrixIsWellConditioned) {
  testing::Dice dice(306);
  for (int n = 1; n <= 9; ++n) {
    Matrix A = testing::RealMatrix(dice, n, n);
    for (int i = 1; i <= n; ++i) A(i, i) += n;
    const Matrix cofactors = AdjointByCofactors(A, unheard);
    EXPECT_LE(testing::LargestDifference(*AdjointByInverse(A, unheard), cofactors),
              testing::EliminationTolerance(n, testing::MaxMagnitude(cofactors)));
  }
}

}  // namespace
}  // namespace qmx
