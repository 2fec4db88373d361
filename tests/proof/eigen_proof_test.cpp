// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "base/number_text.h"
#include "proof/proof.h"
#include "proof/questions.h"
#include "support/core_exact.h"

namespace qmx {
namespace {

using testing::Ask;
using testing::Rows;

ProofAnswer ProveEigen(const Matrix& A, const Matrix& values, const Matrix& vectors) {
  ProofLimits limits;
  limits.seconds = 60;
  return Prove(Ask(ProofTask::kEigen, A, {values, vectors}), limits);
}

int Digits(const ResultProof& proof, const Matrix& computed, int row, int col) {
  const double value = computed(row, col);
  return HeldDigits(CStr(value), kWideDigits, value, proof.At(row, col));
}

TEST(EigenProofTest, CountsTheDigitsOfRossersEigenvalues) {
  // Exact: 1000 twice, 0, 1020, 510 - 100·sqrt(26), 510 + 100·sqrt(26), and -+10·sqrt(10405).
  const Matrix values = Rows({{1000},
                              {1000.00000001},
                              {1e-13},
                              {0},
                              {1020},
                              {1019.9019513},
                              {0.0980486407215},
                              {-1020.0490184},
                              {500}});
  const Matrix vectors;
  const ProofAnswer answer = ProveEigen(testing::RosserMatrix(), values, vectors);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  const int expected[] = {15, 11, 0, 15, 15, 11, 12, 11, 0};
  for (int t = 1; t <= 9; ++t) {
    EXPECT_EQ(Digits(answer.results[0], values, t, 1), expected[t - 1]) << values(t, 1);
  }
  EXPECT_EQ(answer.results[0].At(1, 1).lower, 1000);
  EXPECT_EQ(answer.results[0].At(3, 1).upper, 0);
}

TEST(EigenProofTest, AValueCloseToNoRealEigenvalueHasNoDigits) {
  const Matrix rotation = Rows({{0, -1}, {1, 0}});
  Matrix values = Rows({{0}, {1}});
  const ProofAnswer answer = ProveEigen(rotation, values, Matrix());
  EXPECT_EQ(answer.outcome, ProofOutcome::kPartlyProved);
  EXPECT_EQ(answer.results[0].wide.digits, 0);
  EXPECT_FALSE(answer.results[0].At(1, 1).IsEnclosed());
  // The eigenvalues 2 -+ 1e-9·i are not real either, near as they are.
  const Matrix nearly = Rows({{2, -1e-9}, {1e-9, 2}});
  values = Rows({{2}});
  EXPECT_EQ(ProveEigen(nearly, values, Matrix()).results[0].wide.digits, 0);
}

TEST(EigenProofTest, JudgesTheVectorsOfSimpleEigenvaluesUpToTheirSign) {
  const double half = std::sqrt(.5);
  const Matrix A = Rows({{2, 1, 0}, {1, 2, 0}, {0, 0, 7}});
  const Matrix values = Rows({{3}, {1}, {7}});
  const Matrix vectors = Rows({{-half, half, 0}, {-half, -half, 0}, {0, 1e-17, 1}});
  const ProofAnswer answer = ProveEigen(A, values, vectors);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_EQ(Digits(answer.results[1], vectors, 1, 1), 15);
  EXPECT_EQ(Digits(answer.results[1], vectors, 2, 2), 15);
  EXPECT_EQ(Digits(answer.results[1], vectors, 3, 1), 15);
  EXPECT_EQ(Digits(answer.results[1], vectors, 3, 2), 0);
  EXPECT_EQ(Digits(answer.results[1], vectors, 3, 3), 15);
  const Matrix twice = Rows({{3, 0}, {0, 3}});
  const Matrix pair = Rows({{3}, {3}});
  const Matrix axes = Rows({{1, 0}, {0, 1}});
  const ProofAnswer multiple = ProveEigen(twice, pair, axes);
  EXPECT_EQ(multiple.outcome, ProofOutcome::kPartlyProved);
  EXPECT_EQ(multiple.results[0].wide.digits, 15);
  EXPECT_EQ(multiple.results[1].wide.digits, 0);
}

/// Zeros that follow from a rational eigenvalue alone: of (1, 0, -1) the middle one.
TEST(EigenProofTest, ProvesZerosOfTheVectorOfARationalEigenvalue) {
  const double half = std::sqrt(.5);
  const Matrix A = Rows({{2, -1, 0}, {-1, 2, -1}, {0, -1, 2}});
  const Matrix vectors = Rows({{half}, {0}, {-half}});
  const ProofAnswer answer = ProveEigen(A, Rows({{2.0000000000000004}}), vectors);
  EXPECT_EQ(answer.results[1].wide.digits, 15);
  EXPECT_EQ(answer.results[0].At(1, 1).lower, 2);
}

TEST(EigenProofTest, SeparatesEigenvaluesThatAreClose) {
  const double gap = std::ldexp(1.0, -50);
  const Matrix A = Rows({{1, 0, 5}, {0, 1 + gap, 3}, {0, 0, 2}});
  const Matrix values = Rows({{1}, {1 + gap}});
  const ProofAnswer answer = ProveEigen(A, values, Matrix());
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_EQ(answer.results[0].At(1, 1).upper, 1);
  EXPECT_EQ(answer.results[0].At(2, 1).lower, 1 + gap);
  // A threefold eigenvalue with one direction only.
  const Matrix jordan = Rows({{5, 1, 0}, {0, 5, 1}, {0, 0, 5}});
  const Matrix rough = Rows({{5.00001}});
  const ProofAnswer threefold = ProveEigen(jordan, rough, Rows({{1}, {0}, {0}}));
  EXPECT_EQ(Digits(threefold.results[0], rough, 1, 1), 5);
  EXPECT_EQ(threefold.results[1].wide.digits, 0);
}

TEST(EigenProofTest, TakesMatricesOfOneElement) {
  const Matrix A = Rows({{-2.5}});
  const ProofAnswer answer = ProveEigen(A, A, Rows({{-1}}));
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  EXPECT_EQ(answer.results[1].wide.digits, 15);
}

}  // namespace
}  // namespace qmx
