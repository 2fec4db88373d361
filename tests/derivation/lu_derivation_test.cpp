// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <optional>

#include "algorithms/lu.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

TEST(LuDerivation, StepsDoneAgainGiveTheFactors) {
  OperandSource source(31);
  int exact = 0;
  for (int round = 0; round < 400; ++round) {
    const Matrix A = source.Any(source.Order(), source.Order());
    DerivationQuestion question = Ask(DerivationTask::kLu, A);
    question.pivoting = round % 2 == 0;
    const Document document = Derive(question);
    const LuFactors lu = FactorLu(A, question.pivoting, unheard);
    const Replayed replayed = Replay(document, A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const ShownMatrix L = MatrixOfFormula(document, "L=");
    ASSERT_EQ(L.rows > 0, lu.factored) << TextOf(document);
    if (!lu.factored) continue;
    const ShownMatrix U = MatrixOfFormula(document, "U=");
    EXPECT_EQ(Joined(DecimalDifferences(L, lu.L)), "") << TextOf(document);
    EXPECT_EQ(Joined(DecimalDifferences(U, lu.U)), "") << TextOf(document);
    const std::optional<RationalMatrix> exactL = ExactlyShown(L);
    const std::optional<RationalMatrix> exactU = ExactlyShown(U);
    if (!exactL || !exactU) continue;
    RationalMatrix ordered = AsShown(A);
    if (lu.exchangeCount > 0) {
      const auto P = ExactlyShown(MatrixOfFormula(document, "P="));
      ASSERT_TRUE(P.has_value());
      ordered = ProductOf(*P, ordered);
    }
    ++exact;
    if (replayed.isExactToTheEnd) {
      EXPECT_TRUE(AreEqual(*exactU, replayed.exact)) << TextOf(document);
    }
    EXPECT_TRUE(AreEqual(ProductOf(*exactL, *exactU), ordered)) << TextOf(document);
  }
  EXPECT_GE(exact, 150);
}

TEST(LuDerivation, SaysWhereItCannotGoOnWithoutPivoting) {
  DerivationQuestion question = Ask(DerivationTask::kLu, MatrixOf({{0, 1}, {1, 0}}));
  question.pivoting = false;
  EXPECT_EQ(TextOf(Derive(question)), R"(# LU factors of A without pivoting
A=[0 1; 1 0]
Subtracting multiples of rows makes the elements below the diagonal 0: what is left is U, and the multiples go into L.
### Column 1
The element on the diagonal is 0 and one below it is not: without pivoting the factorization ends here.
)");
}

}  // namespace
}  // namespace qmx::testing
