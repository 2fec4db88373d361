// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <optional>

#include "algorithms/elementary.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

std::vector<std::vector<ExactNumber>> ElementsOf(const DerivationQuestion& question) {
  return ExactDeriver().ExactElements(question, {});
}

/// At most nine digits each.
bool IsShort(const Rational& value) {
  const Rational most = PowerOfTen(9);
  Rational numerator;
  Rational denominator;
  fmpz_set(fmpq_numref(numerator.Get()), fmpq_numref(value.Get()));
  fmpz_set(fmpq_numref(denominator.Get()), fmpq_denref(value.Get()));
  return numerator.Magnitude() < most && denominator < most;
}

/// Every short element is known and equal, and no other one is known.
void ExpectElements(const std::vector<ExactNumber>& shown, const RationalMatrix& exact) {
  ASSERT_EQ(shown.size(), static_cast<std::size_t>(exact.Rows()) * exact.Cols());
  std::size_t at = 0;
  for (int i = 1; i <= exact.Rows(); ++i) {
    for (int j = 1; j <= exact.Cols(); ++j, ++at) {
      EXPECT_EQ(shown[at].IsKnown(), IsShort(exact(i, j)));
      if (shown[at].IsKnown()) {
        EXPECT_TRUE(ValueOf(shown[at]) == exact(i, j));
      }
    }
  }
}

TEST(ExactElements, AreThoseOfTheInverse) {
  OperandSource source(91);
  for (int round = 0; round < 120; ++round) {
    const Matrix A = source.Square();
    const auto shown = ElementsOf(Ask(DerivationTask::kInverse, A));
    const RationalMatrix exact = AsShown(A);
    ASSERT_EQ(shown.empty(), DeterminantOf(exact).IsZero());
    if (!shown.empty()) ExpectElements(shown[0], SolutionOf(exact, UnitMatrix(A.Rows())));
  }
}

TEST(ExactElements, AreThoseOfTheAdjointOfASingularMatrixToo) {
  const Matrix A = MatrixOf({{1, 2}, {2, 4}});
  const auto shown = ElementsOf(Ask(DerivationTask::kAdjoint, A));
  ASSERT_EQ(shown.size(), 1U);
  ExpectElements(shown[0], AsShown(MatrixOf({{4, -2}, {-2, 1}})));
  DerivationQuestion byInverse = Ask(DerivationTask::kAdjoint, A);
  byInverse.byCofactors = false;
  EXPECT_TRUE(ElementsOf(byInverse).empty());
  byInverse.a = MatrixOf({{1, 0.5}, {3, 4}});
  ExpectElements(ElementsOf(byInverse).at(0), AsShown(MatrixOf({{4, -0.5}, {-3, 1}})));
}

TEST(ExactElements, OfFactorsMakeTheMatrix) {
  OperandSource source(92, 4);
  int known = 0;
  for (int round = 0; round < 150; ++round) {
    const Matrix A = source.Any(source.Order(), source.Order());
    const auto shown = ElementsOf(Ask(DerivationTask::kLu, A));
    if (shown.empty()) continue;
    const LuFactors lu = FactorLu(A, true, unheard);
    const int m = A.Rows();
    RationalMatrix L(m, m);
    RationalMatrix U(m, A.Cols());
    bool areKnown = true;
    for (int k = 0; k < m * m; ++k) areKnown = areKnown && shown[0][k].IsKnown();
    for (int k = 0; k < m * A.Cols(); ++k) areKnown = areKnown && shown[1][k].IsKnown();
    if (!areKnown) continue;
    ++known;
    for (int i = 1; i <= m; ++i) {
      for (int j = 1; j <= m; ++j) L(i, j) = ValueOf(shown[0][(i - 1) * m + j - 1]);
      for (int j = 1; j <= A.Cols(); ++j) U(i, j) = ValueOf(shown[1][(i - 1) * A.Cols() + j - 1]);
    }
    const RationalMatrix product = ProductOf(L, U);
    const RationalMatrix exact = AsShown(A);
    for (int i = 1; i <= m; ++i) {
      for (int j = 1; j <= A.Cols(); ++j) {
        EXPECT_TRUE(product(i, j) == exact(static_cast<int>(lu.exchanges(i, 1)), j));
      }
    }
  }
  EXPECT_GE(known, 50);
}

TEST(ExactElements, OfQrAreTheRationalOnes) {
  const auto shown = ElementsOf(Ask(DerivationTask::kQr, MatrixOf({{3, 1}, {4, 1}})));
  ASSERT_EQ(shown.size(), 2U);
  ExpectElements(shown[0], AsShown(MatrixOf({{0.6, 0.8}, {0.8, -0.6}})));
  ExpectElements(shown[1], AsShown(MatrixOf({{5, 1.4}, {0, 0.2}})));
  const auto roots = ElementsOf(Ask(DerivationTask::kQr, MatrixOf({{1, 1}, {1, 2}})));
  EXPECT_FALSE(roots.at(0).at(0).IsKnown());
  EXPECT_TRUE(roots.at(1).at(2).IsKnown());
}

TEST(ExactElements, OfSolutionsSolve) {
  OperandSource source(93, 6);
  for (int round = 0; round < 120; ++round) {
    const int n = source.Order();
    const Matrix system = source.Any(n, n + 1);
    const RationalMatrix exact = AsShown(system);
    RationalMatrix A(n, n);
    RationalMatrix b(n, 1);
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) A(i, j) = exact(i, j);
      b(i, 1) = exact(i, n + 1);
    }
    for (const auto task : {DerivationTask::kSolution, DerivationTask::kLeastSquares}) {
      const auto shown = ElementsOf(Ask(task, system));
      ASSERT_EQ(shown.empty(), DeterminantOf(A).IsZero());
      if (!shown.empty()) ExpectElements(shown[0], SolutionOf(A, b));
    }
  }
  DerivationQuestion byFactors =
      Ask(DerivationTask::kSolutionByFactors, MatrixOf({{7, 7}, {0.5, 7}}));
  byFactors.b = MatrixOf({{2, 1}, {7, 3}});
  byFactors.exchanges = MatrixOf({{2}, {1}});
  byFactors.system = MatrixOf({{4}, {2}});
  // P·b = (2, 4), y = (2, 3), x = (1/2, 1)
  ExpectElements(ElementsOf(byFactors).at(0), AsShown(MatrixOf({{0.5}, {1}})));
}

TEST(ExactElements, OfSumsProductsAndTransposes) {
  OperandSource source(94);
  for (int round = 0; round < 60; ++round) {
    const int rows = source.Order();
    const int cols = source.Order();
    DerivationQuestion question = Ask(DerivationTask::kSum, source.Any(rows, cols));
    question.b = source.Any(rows, cols);
    const RationalMatrix a = AsShown(question.a);
    const RationalMatrix b = AsShown(question.b);
    RationalMatrix sum = a;
    RationalMatrix difference = a;
    for (int i = 1; i <= rows; ++i) {
      for (int j = 1; j <= cols; ++j) {
        sum(i, j) += b(i, j);
        difference(i, j) -= b(i, j);
      }
    }
    ExpectElements(ElementsOf(question).at(0), sum);
    question.task = DerivationTask::kDifference;
    ExpectElements(ElementsOf(question).at(0), difference);
    question.task = DerivationTask::kTranspose;
    ExpectElements(ElementsOf(question).at(0), TransposeOf(a));
    question.task = DerivationTask::kProduct;
    question.b = Transpose(question.b, unheard);
    ExpectElements(ElementsOf(question).at(0), ProductOf(a, TransposeOf(b)));
  }
}

TEST(ExactElements, AreNotBegunForWhatTakesLong) {
  Dice dice(95);
  EXPECT_TRUE(ElementsOf(Ask(DerivationTask::kInverse, RealMatrix(dice, 150, 150))).empty());
  EXPECT_TRUE(ElementsOf(Ask(DerivationTask::kLu, RealMatrix(dice, 150, 150))).empty());
  EXPECT_TRUE(ElementsOf(Ask(DerivationTask::kQr, RealMatrix(dice, 60, 60))).empty());
  EXPECT_FALSE(ElementsOf(Ask(DerivationTask::kInverse, IntegerMatrix(dice, 60, 60, 9))).empty());
  // Of as many products those of short numbers alone.
  DerivationQuestion product = Ask(DerivationTask::kProduct, RealMatrix(dice, 140, 140));
  product.b = RealMatrix(dice, 140, 140);
  EXPECT_TRUE(ElementsOf(product).empty());
  product.a = IntegerMatrix(dice, 140, 140, 9);
  product.b = IntegerMatrix(dice, 140, 140, 9);
  EXPECT_FALSE(ElementsOf(product).empty());
  EXPECT_TRUE(ElementsOf(Ask(DerivationTask::kLeastSquares, RealMatrix(dice, 1500, 41))).empty());
  const Matrix whole = IntegerMatrix(dice, 1500, 41, 9);
  EXPECT_FALSE(ElementsOf(Ask(DerivationTask::kLeastSquares, whole)).empty());
}

}  // namespace
}  // namespace qmx::testing
