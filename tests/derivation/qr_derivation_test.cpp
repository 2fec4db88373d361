// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "algorithms/qr.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

/// one · two of numbers with roots of which each pair has the same radicand, or is zero.
std::optional<Rational> ProductOf(const ExactNumber& one, const ExactNumber& two) {
  if (one.numerator == "0" || two.numerator == "0") return Rational(0.0);
  if (one.radicand != two.radicand) return std::nullopt;
  return ValueOf(one) * ValueOf(two) * FromText(one.radicand);
}

/// A(i, j) of Q · R, exactly; nothing where a number is not written.
std::optional<Rational> ElementOf(const ShownMatrix& Q, const ShownMatrix& R, int i, int j) {
  Rational sum;
  for (int k = 1; k <= R.rows; ++k) {
    const ExactNumber& q = Q.At(i, k).number.exact;
    const ExactNumber& r = R.At(k, j).number.exact;
    if (!q.IsKnown() || !r.IsKnown()) return std::nullopt;
    const std::optional<Rational> product = ProductOf(q, r);
    if (!product) {
      ADD_FAILURE() << "radicands differ";
      return std::nullopt;
    }
    sum += *product;
  }
  return sum;
}

TEST(QrDerivation, StepsDoneAgainGiveTheFactors) {
  OperandSource source(51, 6);
  int exact = 0;
  for (int round = 0; round < 300; ++round) {
    const int cols = source.Order();
    const Matrix A = source.Any(source.Randomness().Integer(cols, 7), cols);
    const Document document = Derive(Ask(DerivationTask::kQr, A));
    const Replayed replayed = Replay(document, A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const QrFactors qr = FactorQr(A, unheard);
    const ShownMatrix Q = MatrixOfFormula(document, "Q=");
    const ShownMatrix R = MatrixOfFormula(document, "R=");
    ASSERT_EQ(Q.rows > 0, qr.factored) << TextOf(document);
    if (!qr.factored) continue;
    EXPECT_EQ(Joined(DecimalDifferences(Q, qr.Q)), "") << TextOf(document);
    EXPECT_EQ(Joined(DecimalDifferences(R, qr.R)), "") << TextOf(document);
    EXPECT_EQ(Joined(DecimalDifferences(Q, replayed.computed)), "") << TextOf(document);
    const RationalMatrix shown = AsShown(A);
    for (int i = 1; i <= A.Rows(); ++i) {
      for (int j = 1; j <= A.Cols(); ++j) {
        const std::optional<Rational> element = ElementOf(Q, R, i, j);
        if (!element) continue;
        ++exact;
        EXPECT_TRUE(*element == shown(i, j)) << TextOf(document);
      }
    }
  }
  EXPECT_GE(exact, 700);
}

TEST(QrDerivation, RootsAreFreeOfSquares) {
  const Document document = Derive(Ask(DerivationTask::kQr, MatrixOf({{2, 1}, {2, 0}})));
  const ShownMatrix R = MatrixOfFormula(document, "R=");
  // √8, 2/√8, √(1/2)
  EXPECT_EQ(R.At(1, 1).number.exact, (ExactNumber{"2", "1", "2"}));
  EXPECT_EQ(R.At(1, 2).number.exact, (ExactNumber{"1", "2", "2"}));
  EXPECT_EQ(R.At(2, 2).number.exact, (ExactNumber{"1", "2", "2"}));
  EXPECT_EQ(R.At(2, 2).number.held, R.At(2, 2).number.decimal.size());
}

}  // namespace
}  // namespace qmx::testing
