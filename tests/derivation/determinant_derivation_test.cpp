// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "algorithms/determinant.h"
#include "base/number_text.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Document DeriveDeterminant(const Matrix& A) { return Derive(Ask(DerivationTask::kDeterminant, A)); }

/// The product of the diagonal, with the sign of the exchanges that were done again.
Rational ProductOfDiagonal(const Document& document, const Replayed& replayed) {
  Rational product(1.0);
  for (int k = 1; k <= replayed.exact.Rows(); ++k) product *= replayed.exact(k, k);
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line != nullptr && line->operation &&
        line->operation->kind == RowOperation::Kind::kExchange)
      product = Rational(0.0) - product;
  }
  return product;
}

TEST(DeterminantDerivation, StepsDoneAgainGiveTheDeterminant) {
  OperandSource source(11);
  for (int round = 0; round < 300; ++round) {
    const Matrix A = source.Square();
    const Document document = DeriveDeterminant(A);
    const Replayed replayed = Replay(document, A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const ShownNumber result = ResultOf(document, "det(A)=");
    Progress unheard;
    const double determinant = Determinant(A, unheard);
    EXPECT_EQ(result.decimal, std::isfinite(determinant) ? CStr(determinant) : "");
    if (replayed.isExactToTheEnd && result.exact.IsKnown()) {
      EXPECT_TRUE(ValueOf(result.exact) == ProductOfDiagonal(document, replayed))
          << TextOf(document);
      EXPECT_TRUE(ValueOf(result.exact) == DeterminantOf(AsShown(A)));
    }
  }
}

TEST(DeterminantDerivation, SaysEachStep) {
  const Document document = DeriveDeterminant(MatrixOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}));
  EXPECT_EQ(TextOf(document), R"(# Determinant of A
A=[1 2 3; 4 5 6; 7 8 10]
Subtracting multiples of rows makes the elements below the diagonal 0, column by column, and leaves the determinant as it is.
### Column 1
From row 1 down, 7 in row 3 has the largest magnitude: it is the pivot.
Rows 1 and 3 change places.
[7 8 10; 4 5 6; 1 2 3]
Row 2 minus 4/7 of row 1.
Row 3 minus 1/7 of row 1.
[7 8 10; 0 3/7 2/7; 0 6/7 11/7]
### Column 2
From row 2 down, 6/7 in row 3 has the largest magnitude: it is the pivot.
Rows 2 and 3 change places.
[7 8 10; 0 6/7 11/7; 0 3/7 2/7]
Row 3 minus 1/2 of row 2.
[7 8 10; 0 6/7 11/7; 0 0 -1/2]
### The determinant
Rows have changed places 2 times, each of which changes the sign. The determinant is the product of the diagonal.
det(A)=7·6/7·(-1/2)=-3
)");
}

}  // namespace
}  // namespace qmx::testing
