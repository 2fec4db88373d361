// SPDX-License-Identifier: MIT
#include "proof/proof.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "algorithms/determinant.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "base/number_text.h"
#include "proof/oracle.h"
#include "proof/questions.h"
#include "support/core_exact.h"

namespace qmx {
namespace {

using testing::Ask;
using testing::Rational;
using testing::Rows;
using testing::Scalar;

Progress unheard;

ProofAnswer ProveIt(const ProofQuestion& question) {
  ProofLimits limits;
  limits.seconds = 60;
  return Prove(question, limits);
}

ProofQuestion AskInverse(const Matrix& A) {
  return Ask(ProofTask::kInverse, A, {Inverse(A, unheard).value_or(A)});
}

int WideDigits(const ProofQuestion& question, const ProofAnswer& answer, int row, int col) {
  const double value = question.computed[0](row, col);
  return HeldDigits(CStr(value), kWideDigits, value, answer.results[0].At(row, col));
}

/// The digits that hold of every element, in its wide text, against the truth.
void ExpectTrueDigits(const ProofQuestion& question, const ProofAnswer& answer) {
  const testing::Truth truth = testing::TruthOf(question)[0];
  const Matrix& computed = question.computed[0];
  for (int i = 1; i <= computed.Rows(); ++i) {
    for (int j = 1; j <= computed.Cols(); ++j) {
      const Rational shown = testing::FromText(CStr(computed(i, j)));
      const auto& exact = truth[(i - 1) * computed.Cols() + (j - 1)];
      const int digits = exact ? testing::TrueDigits(shown, kWideDigits, *exact) : 0;
      EXPECT_EQ(WideDigits(question, answer, i, j), digits) << i << ", " << j;
    }
  }
}

TEST(ProofTest, TellsThatTheInverseOfOneToNineIsNoise) {
  const Matrix A = Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  const ProofQuestion question = Ask(ProofTask::kInverse, A, {*Inverse(A, unheard)});
  ASSERT_GT(std::abs(question.computed[0](1, 1)), 1e15);
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kNoExactAnswer);
  EXPECT_TRUE(answer.singular);
  EXPECT_EQ(answer.results[0].narrow.digits, 0);
  EXPECT_FALSE(answer.conditionExponent.has_value());
}

TEST(ProofTest, CountsTheDigitsOfTheInverseOfHilbertMatrices) {
  for (const int n : {3, 8, 10, 12}) {
    const ProofQuestion question = AskInverse(testing::HilbertMatrix(n, n));
    const ProofAnswer answer = ProveIt(question);
    EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
    EXPECT_FALSE(answer.singular);
    ExpectTrueDigits(question, answer);
    EXPECT_LT(answer.results[0].wide.digits, n < 8 ? 16 : 10);
  }
}

TEST(ProofTest, EveryDigitOfAnExactResultHolds) {
  const Matrix A = Rows({{2, 1, 0}, {0, 4, 0}, {0, 0, 8}});
  const ProofQuestion question = AskInverse(A);
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_EQ(answer.results[0].wide.digits, kWideDigits);
  EXPECT_EQ(answer.results[0].narrow.digits, kNarrowDigits);
  for (int j = 1; j <= 3; ++j) {
    EXPECT_EQ(HeldDigits(question.computed[0](3, j), answer.results[0].At(3, j)), kDoubleDigits);
  }
}

/// One digit of one element is falsified: that element loses the claims to that digit and the ones
/// after it, and no other element any.
TEST(ProofTest, AFalsifiedDigitLosesExactlyTheRightClaims) {
  const Matrix A = Rows({{3, 1, 4, 1}, {5, 9, 2, 6}, {5, 3, 5, 8}, {9, 7, 9, 3}});
  const ProofQuestion honest = AskInverse(A);
  const ProofAnswer before = ProveIt(honest);
  for (int digit = 1; digit <= 15; ++digit) {
    ProofQuestion question = honest;
    double& value = question.computed[0](2, 3);
    const double unit = std::pow(10.0, std::floor(std::log10(std::abs(value))) - digit + 1);
    value += 3 * unit;
    const ProofAnswer answer = ProveIt(question);
    EXPECT_EQ(WideDigits(question, answer, 2, 3), digit - 1);
    ExpectTrueDigits(question, answer);
    for (int i = 1; i <= 4; ++i) {
      for (int j = 1; j <= 4; ++j) {
        if (i == 2 && j == 3) continue;
        EXPECT_EQ(WideDigits(question, answer, i, j), WideDigits(honest, before, i, j));
      }
    }
    EXPECT_EQ(answer.results[0].wide.digits, digit - 1);
    EXPECT_EQ(answer.results[0].wide.row, 2);
    EXPECT_EQ(answer.results[0].wide.col, 3);
  }
}

TEST(ProofTest, ProvesZerosAndTellsThemFromTinyNumbers) {
  // The exact inverse has zeros off its three diagonals; the computed ones are or are not zero.
  const int n = 9;
  Matrix A(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) A(i, j) = 3 * std::min(i, j);
  }
  ProofQuestion question = AskInverse(A);
  question.computed[0](1, 5) = 0;
  question.computed[0](1, 6) = 1e-300;
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(WideDigits(question, answer, 1, 5), kWideDigits);
  EXPECT_EQ(WideDigits(question, answer, 1, 6), 0);
  EXPECT_EQ(answer.results[0].At(1, 6).upper, 0);
  EXPECT_EQ(answer.results[0].At(1, 6).lower, 0);
  question.computed[0](1, 1) = 0;
  EXPECT_EQ(WideDigits(question, ProveIt(question), 1, 1), 0);
}

TEST(ProofTest, EnclosesLargeInversesAroundAnApproximateOne) {
  testing::Dice dice(21);
  const int n = 70;
  const Matrix A = testing::IntegerMatrix(dice, n, n, 9);
  const ProofQuestion question = AskInverse(A);
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  const testing::Truth truth = testing::TruthOf(question)[0];
  int equal = 0;
  for (int e = 0; e < n * n; ++e) {
    const double value = question.computed[0].Data()[e];
    const int held = HeldDigits(value, answer.results[0].elements[e]);
    const int digits = testing::TrueDigits(Rational(value), kDoubleDigits, *truth[e]);
    EXPECT_LE(held, digits);
    equal += held == digits ? 1 : 0;
  }
  EXPECT_GT(equal, n * n * 0.999);
}

/// Products of two triangular matrices have inverses of whole numbers, however large. The orders
/// lead from conditions that the first precision just copes with to such that it does not.
TEST(ProofTest, RaisesThePrecisionForLargeMatricesThatNeedIt) {
  int condition = 0;
  for (const int n : {66, 70, 76, 90}) {
    testing::Dice dice(24);
    Matrix L = testing::IntegerMatrix(dice, n, n, 3);
    Matrix U = testing::IntegerMatrix(dice, n, n, 3);
    for (int i = 1; i <= n; ++i) {
      L(i, i) = U(i, i) = 1;
      for (int j = 1; j < i; ++j) L(j, i) = U(i, j) = 0;
    }
    const Matrix A = Product(L, U, unheard);
    const auto exact = testing::ExactInverseOf(testing::RationalMatrix(A));
    ProofQuestion question = Ask(ProofTask::kInverse, A, {Matrix(n, n)});
    Matrix& computed = question.computed[0];
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) computed(i, j) = (*exact)(i, j).ToDouble();
    }
    EXPECT_EQ(ProveIt(question).results[0].wide.digits, kWideDigits);
    computed(2, 3) *= 1 + 1e-10;
    const ProofAnswer answer = ProveIt(question);
    EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
    EXPECT_EQ(answer.results[0].wide.row, 2);
    EXPECT_EQ(answer.results[0].wide.col, 3);
    condition = answer.conditionExponent.value();
  }
  EXPECT_GT(condition, 40);
}

TEST(ProofTest, ProvesTheZerosOfALargeTriangularInverse) {
  testing::Dice dice(22);
  const int n = 90;
  Matrix A = testing::RealMatrix(dice, n, n);
  for (int i = 1; i <= n; ++i) {
    A(i, i) += 3;
    for (int j = 1; j < i; ++j) A(i, j) = 0;
  }
  const ProofQuestion question = AskInverse(A);
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_EQ(WideDigits(question, answer, n, 1), kWideDigits);
  EXPECT_GT(answer.results[0].wide.digits, 8);
}

TEST(ProofTest, FindsLargeMatricesSingular) {
  testing::Dice dice(23);
  const int n = 80;
  Matrix A = testing::RealMatrix(dice, n, n);
  for (int j = 1; j <= n; ++j) A(n, j) = A(3, j) * 2;
  ProofQuestion question = Ask(ProofTask::kInverse, A, {A});
  EXPECT_EQ(ProveIt(question).outcome, ProofOutcome::kNoExactAnswer);
  // A difference in the last bit of one element makes it regular.
  A(n, n) = std::nextafter(A(n, n), 9);
  question = Ask(ProofTask::kInverse, A, {A});
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_GE(answer.conditionExponent.value(), 15);
}

TEST(ProofTest, KnowsTheDeterminantAndTheAdjointOfSingularMatrices) {
  const Matrix A = Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  for (const double determinant : {0.0, 6.66133814775094e-16}) {
    const ProofAnswer answer = ProveIt(Ask(ProofTask::kDeterminant, A, {Scalar(determinant)}));
    EXPECT_TRUE(answer.singular);
    EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
    EXPECT_EQ(answer.results[0].wide.digits, determinant == 0 ? kWideDigits : 0);
    EXPECT_EQ(answer.results[0].At(1, 1).lower, 0);
    EXPECT_EQ(answer.results[0].At(1, 1).upper, 0);
  }
  const Matrix lowRank = Rows({{1, 2, 3, 4}, {2, 4, 6, 8}, {1, 1, 1, 1}, {0, 1, 2, 3}});
  for (const Matrix& singular : {A, lowRank, Rows({{0, 1}, {0, 2}}), Rows({{0}})}) {
    const ProofQuestion question =
        Ask(ProofTask::kAdjoint, singular, {AdjointByCofactors(singular, unheard)});
    const ProofAnswer answer = ProveIt(question);
    EXPECT_TRUE(answer.singular);
    EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
    ExpectTrueDigits(question, answer);
  }
}

TEST(ProofTest, FactorsEndAtABlockThatIsSingular) {
  // Without exchanges there are no factors from the second column on.
  const Matrix A = Rows({{1, 2, 3}, {2, 4, 7}, {1, 1, 1}});
  const Matrix L = Rows({{1, 0, 0}, {2, 1, 0}, {1, .5, 1}});
  const Matrix U = Rows({{1, 2, 3}, {0, 0, 1}, {0, 0, -2}});
  const ProofAnswer answer = ProveIt(Ask(ProofTask::kLu, A, {L, U}));
  EXPECT_EQ(answer.outcome, ProofOutcome::kPartlyProved);
  EXPECT_TRUE(answer.singular);
  EXPECT_EQ(HeldDigits(2, answer.results[0].At(2, 1)), kDoubleDigits);
  EXPECT_EQ(HeldDigits(.5, answer.results[0].At(3, 2)), 0);
  EXPECT_EQ(HeldDigits(1, answer.results[1].At(2, 3)), kDoubleDigits);
  EXPECT_EQ(HeldDigits(-2, answer.results[1].At(3, 3)), 0);
}

TEST(ProofTest, OrthonormalColumnsEndAtADependentOne) {
  const Matrix A = Rows({{1, 1, 2}, {1, 2, 3}, {1, 4, 5.0}, {0, 3, 3}});  // Column 3 = 1 + 2.
  const QrFactors factors = FactorQr(A, unheard);
  Matrix noise = factors.Q;
  for (int i = 1; i <= 4; ++i) noise(i, 3) = .5;
  const ProofAnswer answer = ProveIt(Ask(ProofTask::kQr, A, {noise, factors.R}));
  EXPECT_TRUE(answer.singular);
  EXPECT_EQ(answer.outcome, ProofOutcome::kPartlyProved);
  for (int i = 1; i <= 3; ++i) {
    EXPECT_GE(HeldDigits(noise(i, 2), answer.results[0].At(i, 2)), 14);
    EXPECT_EQ(HeldDigits(noise(i, 3), answer.results[0].At(i, 3)), 0);
  }
}

TEST(ProofTest, TellsSystemsWithoutAUniqueSolution) {
  const Matrix system = Rows({{1, 2, 3}, {2, 4, 6}});
  EXPECT_EQ(ProveIt(Ask(ProofTask::kSolution, system, {Matrix(2, 1)})).outcome,
            ProofOutcome::kNoExactAnswer);
  const Matrix tall = Rows({{1, 2, 3}, {2, 4, 6}, {3, 6, 1}});
  EXPECT_EQ(ProveIt(Ask(ProofTask::kLeastSquares, tall, {Matrix(2, 1)})).outcome,
            ProofOutcome::kNoExactAnswer);
  ProofQuestion question =
      Ask(ProofTask::kSolutionByFactors, Rows({{1, 0}, {1, 1}}), {Matrix(2, 1)});
  question.b = Rows({{1, 2}, {0, 0}});
  question.system = Rows({{1}, {1}});
  EXPECT_EQ(ProveIt(question).outcome, ProofOutcome::kNoExactAnswer);
}

TEST(ProofTest, ComparesASolutionByFactorsWithTheMatrixThatTheFactorsStandFor) {
  const Matrix A = Rows({{1, 2}, {3, 5}});
  const LuFactors factors = FactorLu(A, true, unheard);
  ProofQuestion question = Ask(ProofTask::kSolutionByFactors, factors.L, {});
  question.b = factors.U;
  question.b(2, 2) = 7;  // Not what belongs to A.
  question.exchanges = factors.exchanges;
  question.system = Rows({{1}, {1}});
  question.computed = {
      SolveByFactors(question.a, question.b, question.exchanges, question.system, unheard).x};
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_GE(answer.results[0].wide.digits, 14);
  ExpectTrueDigits(question, answer);
}

TEST(ProofTest, TellsTheOrderOfTheConditionNumber) {
  for (const int n : {2, 5, 8, 12}) {
    const Matrix A = testing::HilbertMatrix(n, n);
    const auto inverse = testing::ExactInverseOf(testing::RationalMatrix(A));
    const auto norm = [n](const auto& element) {
      double largest = 0;
      for (int j = 1; j <= n; ++j) {
        double sum = 0;
        for (int i = 1; i <= n; ++i) sum += std::abs(element(i, j));
        largest = std::max(largest, sum);
      }
      return largest;
    };
    const double condition = norm([&](int i, int j) { return A(i, j); }) *
                             norm([&](int i, int j) { return (*inverse)(i, j).ToDouble(); });
    const int found = ProveIt(AskInverse(A)).conditionExponent.value();
    EXPECT_NEAR(found, std::log10(condition), 0.8) << n;
    Matrix system(n, n + 1);
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) system(i, j) = A(i, j);
      system(i, n + 1) = 1;
    }
    const ProofAnswer solved = ProveIt(Ask(ProofTask::kSolution, system, {Matrix(n, 1)}));
    EXPECT_EQ(solved.conditionExponent.value(), found);
    const ProofAnswer fitted = ProveIt(Ask(ProofTask::kLeastSquares, system, {Matrix(n, 1)}));
    EXPECT_NEAR(fitted.conditionExponent.value(), found, 1);
  }
}

TEST(ProofTest, AcceptsEmptyMatrices) {
  const Matrix none(0, 0);
  EXPECT_EQ(ProveIt(Ask(ProofTask::kInverse, none, {none})).outcome, ProofOutcome::kProved);
  EXPECT_EQ(ProveIt(Ask(ProofTask::kAdjoint, none, {none})).outcome, ProofOutcome::kProved);
  EXPECT_EQ(ProveIt(Ask(ProofTask::kLu, none, {none, none})).outcome, ProofOutcome::kProved);
  EXPECT_EQ(ProveIt(Ask(ProofTask::kQr, none, {none, none})).outcome, ProofOutcome::kProved);
  const ProofAnswer answer = ProveIt(Ask(ProofTask::kDeterminant, none, {Scalar(1)}));
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_EQ(answer.results[0].wide.digits, kWideDigits);
  EXPECT_EQ(ProveIt(Ask(ProofTask::kSum, none, {none})).results[0].wide.digits, kWideDigits);
}

TEST(ProofTest, RefusesWhatDoesNotBelongTogether) {
  const Matrix A = Rows({{1, 2}, {3, 4}});
  const Matrix tall = Rows({{1}, {2}, {3}});
  for (int task = 0; task <= static_cast<int>(ProofTask::kDefiniteness); ++task) {
    EXPECT_EQ(ProveIt(Ask(static_cast<ProofTask>(task), tall, {tall, tall, tall})).outcome,
              ProofOutcome::kDoesNotFit);
    EXPECT_EQ(EstimateProof(Ask(static_cast<ProofTask>(task), tall, {tall, tall, tall})).seconds,
              0);
  }
  EXPECT_EQ(ProveIt(Ask(ProofTask::kInverse, A, {tall})).outcome, ProofOutcome::kDoesNotFit);
  ProofQuestion lu = Ask(ProofTask::kLu, A, {A, A});
  for (const Matrix& exchanges : {Rows({{1}, {1}}), Rows({{0}, {1}}), Rows({{1}, {3}}), tall}) {
    lu.exchanges = exchanges;
    EXPECT_EQ(ProveIt(lu).outcome, ProofOutcome::kDoesNotFit);
  }
}

TEST(ProofTest, ClaimsNothingOfWhatIsNotFinite) {
  Matrix A = Rows({{1, 2}, {3, 4}});
  A(1, 1) = INFINITY;
  EXPECT_EQ(ProveIt(Ask(ProofTask::kTranspose, A, {A})).outcome, ProofOutcome::kCannotBeProved);
  Matrix B = Rows({{1, 2}, {3, 4}});
  ProofQuestion question = AskInverse(B);
  question.computed[0](1, 1) = NAN;
  const ProofAnswer answer = ProveIt(question);
  EXPECT_EQ(answer.outcome, ProofOutcome::kCannotBeProved);
  EXPECT_EQ(answer.results[0].wide.digits, 0);
}

}  // namespace
}  // namespace qmx
