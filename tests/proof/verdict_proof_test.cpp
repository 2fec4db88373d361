// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <vector>

#include "algorithms/definiteness.h"
#include "algorithms/elementary.h"
#include "proof/oracle.h"
#include "proof/proof.h"
#include "proof/questions.h"
#include "support/core_compare.h"
#include "support/core_exact.h"

namespace qmx {
namespace {

using testing::Rows;

VerdictProof Judge(const Matrix& A, Definiteness verdict) {
  ProofQuestion question = testing::Ask(ProofTask::kDefiniteness, A, {});
  question.definiteness = verdict;
  ProofLimits limits;
  limits.seconds = 60;
  const ProofAnswer answer = Prove(question, limits);
  EXPECT_EQ(answer.outcome, ProofOutcome::kProved);
  return answer.verdict;
}

/// Whether no principal minor of sign·A is negative, which makes it positive semidefinite, and
/// whether all of them are positive.
struct Minors {
  bool noneNegative = true;
  bool allPositive = true;
};

Minors PrincipalMinors(const Matrix& A, int sign) {
  Minors minors;
  for (unsigned set = 1; set < 1u << A.Rows(); ++set) {
    std::vector<int> lines;
    for (int k = 0; k < A.Rows(); ++k) {
      if ((set >> k & 1u) != 0) lines.push_back(k + 1);
    }
    const int order = static_cast<int>(lines.size());
    testing::RationalMatrix block(order, order);
    for (int i = 1; i <= order; ++i) {
      for (int j = 1; j <= order; ++j) {
        block(i, j) = testing::Rational(sign * A(lines[i - 1], lines[j - 1]));
      }
    }
    const int minor = testing::ExactDeterminantOf(block).Sign();
    minors.noneNegative = minors.noneNegative && minor >= 0;
    minors.allPositive = minors.allPositive && minor > 0;
  }
  return minors;
}

bool IsTrueOf(const Matrix& A, Definiteness verdict) {
  const Minors plus = PrincipalMinors(A, 1);
  const Minors minus = PrincipalMinors(A, -1);
  switch (verdict) {
    case Definiteness::kIndefinite:
      return !plus.noneNegative && !minus.noneNegative;
    case Definiteness::kPositiveDefinite:
      return plus.allPositive;
    case Definiteness::kNegativeDefinite:
      return minus.allPositive;
    case Definiteness::kSemidefinite:
      return (plus.noneNegative && !plus.allPositive) || (minus.noneNegative && !minus.allPositive);
    case Definiteness::kPositiveSemidefinite:
      return plus.noneNegative && !plus.allPositive;
    default:
      return minus.noneNegative && !minus.allPositive;
  }
}

constexpr Definiteness kVerdicts[] = {
    Definiteness::kIndefinite,           Definiteness::kPositiveDefinite,
    Definiteness::kNegativeDefinite,     Definiteness::kSemidefinite,
    Definiteness::kPositiveSemidefinite, Definiteness::kNegativeSemidefinite,
};

TEST(VerdictProofTest, AgreesWithThePrincipalMinors) {
  testing::CaseSource cases(31, testing::CaseShape::kSymmetric, 5);
  int held = 0;
  for (int k = 0; k < 600; ++k) {
    const Matrix A = cases.Next();
    if (A.Rows() == 0) continue;
    for (const Definiteness verdict : kVerdicts) {
      const bool isTrue = IsTrueOf(A, verdict);
      held += isTrue ? 1 : 0;
      ASSERT_EQ(Judge(A, verdict), isTrue ? VerdictProof::kProved : VerdictProof::kDisproved)
          << static_cast<int>(verdict) << " of " << testing::Print(A);
    }
  }
  EXPECT_GT(held, 500);
}

TEST(VerdictProofTest, SeesWhatTheLeadingMinorsDoNot) {
  Progress unheard;
  const Matrix A = Rows({{1, 0, 0}, {0, 0, 0}, {0, 0, -1}});
  ASSERT_EQ(TestDefiniteness(A, unheard).verdict, Definiteness::kPositiveSemidefinite);
  EXPECT_EQ(Judge(A, Definiteness::kPositiveSemidefinite), VerdictProof::kDisproved);
  EXPECT_EQ(Judge(A, Definiteness::kIndefinite), VerdictProof::kProved);
  // Rounding makes it seem definite; the smallest eigenvalue is below zero.
  const Matrix nearly = Rows({{1, 1}, {1, 1 - 0x1p-53}});
  EXPECT_EQ(Judge(nearly, Definiteness::kPositiveDefinite), VerdictProof::kDisproved);
  EXPECT_EQ(Judge(nearly, Definiteness::kIndefinite), VerdictProof::kProved);
  EXPECT_EQ(Judge(Rows({{1, 2}, {3, 4}}), Definiteness::kIndefinite), VerdictProof::kDisproved);
}

TEST(VerdictProofTest, SaysSoWhereALimitLeavesItOpen) {
  ProofQuestion question = testing::Ask(ProofTask::kDefiniteness, testing::IdentityMatrix(9), {});
  question.definiteness = Definiteness::kPositiveDefinite;
  ProofLimits limits;
  EXPECT_EQ(Prove(question, limits).verdict, VerdictProof::kProved);
  limits.bits = 100;
  EXPECT_EQ(Prove(question, limits).verdict, VerdictProof::kNotProved);
  EXPECT_EQ(Prove(question, limits).outcome, ProofOutcome::kCannotBeProved);
  limits.stop = [] { return true; };
  EXPECT_EQ(Prove(question, limits).verdict, VerdictProof::kNotProved);
  EXPECT_EQ(Prove(question, limits).outcome, ProofOutcome::kStopped);
}

TEST(VerdictProofTest, ChecksSymmetryExactly) {
  Matrix A = Rows({{1, 2}, {2, 5}});
  for (const bool isSymmetric : {true, false}) {
    ProofQuestion question = testing::Ask(ProofTask::kSymmetry, A, {});
    question.symmetric = true;
    EXPECT_EQ(Prove(question, {}).verdict,
              isSymmetric ? VerdictProof::kProved : VerdictProof::kDisproved);
    question.symmetric = false;
    EXPECT_EQ(Prove(question, {}).verdict,
              isSymmetric ? VerdictProof::kDisproved : VerdictProof::kProved);
    A(1, 2) += 0x1p-50;
  }
}

}  // namespace
}  // namespace qmx
