// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <optional>

#include "algorithms/inverse.h"
#include "base/number_text.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

/// [A | I]
RationalMatrix WithUnit(const RationalMatrix& A) {
  const int n = A.Rows();
  RationalMatrix both(n, 2 * n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) both(i, j) = A(i, j);
    both(i, n + i) = Rational(1.0);
  }
  return both;
}

Matrix WithUnit(const Matrix& A) {
  const int n = A.Rows();
  Matrix both(n, 2 * n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) both(i, j) = A(i, j);
    both(i, n + i) = 1;
  }
  return both;
}

RationalMatrix RightHalf(const RationalMatrix& both) {
  const int n = both.Rows();
  RationalMatrix right(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) right(i, j) = both(i, n + j);
  }
  return right;
}

/// The inverse; empty for a singular matrix.
RationalMatrix InverseOf(const RationalMatrix& A) {
  if (DeterminantOf(A).IsZero()) return {0, 0};
  return SolutionOf(A, UnitMatrix(A.Rows()));
}

RationalMatrix Scaled(RationalMatrix A, const Rational& factor) {
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) A(i, j) *= factor;
  }
  return A;
}

Replayed ReplayWithUnit(const Document& document, const Matrix& A) {
  return Replay(document, WithUnit(AsShown(A)), WithUnit(A));
}

TEST(InverseDerivation, StepsDoneAgainGiveTheInverse) {
  OperandSource source(21);
  int exact = 0;
  for (int round = 0; round < 250; ++round) {
    const Matrix A = source.Square();
    const Document document = Derive(Ask(DerivationTask::kInverse, A));
    const Replayed replayed = ReplayWithUnit(document, A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const std::optional<Matrix> inverse = Inverse(A, unheard);
    const ShownMatrix shown = MatrixOfFormula(document, "A^-1=");
    ASSERT_EQ(inverse.has_value(), shown.rows > 0) << TextOf(document);
    if (!inverse) continue;
    const RationalMatrix expected = InverseOf(AsShown(A));
    EXPECT_EQ(Joined(Differences(shown, *inverse, expected)), "") << TextOf(document);
    if (!replayed.isExactToTheEnd) continue;
    ++exact;
    EXPECT_TRUE(AreEqual(RightHalf(replayed.exact), expected)) << TextOf(document);
  }
  EXPECT_GE(exact, 100);
}

TEST(InverseDerivation, AdjointByTheInverseIsTheDeterminantTimesTheInverse) {
  OperandSource source(22);
  int exact = 0;
  for (int round = 0; round < 250; ++round) {
    const Matrix A = source.Square();
    DerivationQuestion question = Ask(DerivationTask::kAdjoint, A);
    question.byCofactors = false;
    const Document document = Derive(question);
    const Replayed replayed = ReplayWithUnit(document, A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const std::optional<Matrix> adjoint = AdjointByInverse(A, unheard);
    const ShownMatrix shown = MatrixOfFormula(document, "adj(A)=[");
    ASSERT_EQ(adjoint.has_value(), shown.rows > 0) << TextOf(document);
    if (!adjoint) continue;
    const Rational determinant = DeterminantOf(AsShown(A));
    EXPECT_EQ(Joined(Differences(shown, *adjoint, Scaled(InverseOf(AsShown(A)), determinant))), "")
        << TextOf(document);
    const ShownNumber told = ResultOf(document, "det(A)=");
    if (!told.exact.IsKnown()) continue;
    ++exact;
    EXPECT_TRUE(ValueOf(told.exact) == determinant);
  }
  EXPECT_GE(exact, 100);
}

TEST(InverseDerivation, OneExchangeIsOne) {
  DerivationQuestion question = Ask(DerivationTask::kAdjoint, MatrixOf({{0, 2}, {1, 0}}));
  question.byCofactors = false;
  const std::string text = TextOf(Derive(question));
  EXPECT_NE(text.find("changes its sign: there was 1.\ndet(A)=-2\n"), std::string::npos) << text;
}

TEST(InverseDerivation, LongOrdersAreSaidByTheirEnds) {
  // Each row of A is one of the unit matrix, one further down.
  Matrix A(14, 14);
  for (int i = 1; i <= 14; ++i) A(i, i == 14 ? 1 : i + 1) = 1;
  const std::string text = TextOf(Derive(Ask(DerivationTask::kInverse, A)));
  EXPECT_NE(
      text.find("Row 14 becomes row 1, row 1 row 2, row 2 row 3, …, row 11 row 12, row 12 row "
                "13, row 13 row 14.\n"),
      std::string::npos)
      << text;
  const std::string factors = TextOf(Derive(Ask(DerivationTask::kLu, A)));
  EXPECT_NE(factors.find("The rows of A have got the order 14, 1, 2, …, 11, 12, 13: so does P put "
                         "them.\n"),
            std::string::npos)
      << factors;
}

TEST(InverseDerivation, CofactorsAreThoseOfTheProgram) {
  OperandSource source(23, 6);
  for (int round = 0; round < 60; ++round) {
    const Matrix A = source.Square();
    const int n = A.Rows();
    DerivationQuestion question = Ask(DerivationTask::kAdjoint, A);
    question.row = source.Randomness().Integer(1, n);
    question.col = source.Randomness().Integer(1, n);
    const Document document = Derive(question);
    const RationalMatrix exact = AsShown(A);
    RationalMatrix adjoint(n, n);
    RationalMatrix minor(n - 1, n - 1);
    Matrix computedMinor(n - 1, n - 1);
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) {
        RationalMatrix left(n - 1, n - 1);
        Matrix computedLeft(n - 1, n - 1);
        for (int k = 1; k < n; ++k) {
          for (int l = 1; l < n; ++l) {
            left(k, l) = exact(k < i ? k : k + 1, l < j ? l : l + 1);
            computedLeft(k, l) = A(k < i ? k : k + 1, l < j ? l : l + 1);
          }
        }
        const Rational sign((i + j) % 2 == 0 ? 1.0 : -1.0);
        adjoint(j, i) = sign * DeterminantOf(left);
        if (j == question.row && i == question.col) {
          minor = left;
          computedMinor = computedLeft;
        }
      }
    }
    const Replayed replayed = Replay(document, minor, computedMinor);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const ShownMatrix shown = MatrixOfFormula(document, "adj(A)=[");
    const Matrix program = AdjointByCofactors(A, unheard);
    // A pivot that is 0 without rounding leaves decimals alone; the others are exact.
    EXPECT_EQ(Joined(Differences(shown, program, adjoint)), "") << TextOf(document);
    for (int i = 1; i <= shown.rows; ++i) {
      for (int j = 1; j <= shown.cols; ++j) {
        const bool isAsked = i == question.row && j == question.col;
        EXPECT_EQ(shown.At(i, j).mark, isAsked ? CellMark::kAsked : CellMark::kNone);
      }
    }
  }
}

TEST(InverseDerivation, SaysEachStep) {
  EXPECT_EQ(TextOf(Derive(Ask(DerivationTask::kInverse, MatrixOf({{1, 2}, {3, 4}})))),
            R"(# Inverse of A
A=[1 2; 3 4]
What makes A the unit matrix makes the unit matrix, written behind the line, the inverse of A.
[1 2 1 0; 3 4 0 1]
### Column 1
Of the rows without a pivot so far, row 2 has the largest magnitude, 3: it is the pivot.
Row 1 minus 1/3 of row 2.
Row 2 divided by 3.
[0 2/3 1 -1/3; 1 4/3 0 1/3]
### Column 2
Of the rows without a pivot so far, row 1 has the largest magnitude, 2/3: it is the pivot.
Row 2 minus 2 of row 1.
Row 1 divided by 2/3.
[0 1 3/2 -1/2; 1 0 -2 1]
### The order of the rows
Row 2 becomes row 1, row 1 row 2.
[1 0 -2 1; 0 1 3/2 -1/2]
### The inverse
A^-1=[-2 1; 3/2 -1/2]
)");
}

}  // namespace
}  // namespace qmx::testing
