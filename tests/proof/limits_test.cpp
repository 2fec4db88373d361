// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>

#include "base/arithmetic.h"
#include "base/number_text.h"
#include "proof/oracle.h"
#include "proof/proof.h"
#include "proof/questions.h"
#include "support/cpu_time.h"

namespace qmx {
namespace {

using testing::Ask;

/// A question of order n or so whose result is made up: what matters is the work.
ProofQuestion WorkOf(ProofTask task, int n) {
  testing::Dice dice(41);
  const Matrix A = testing::RealMatrix(dice, n, n);
  ProofQuestion question = Ask(task, A, {A});
  question.b = A;
  if (task == ProofTask::kTrace || task == ProofTask::kDeterminant) {
    question.computed = {testing::Scalar(1)};
  } else if (task == ProofTask::kLu || task == ProofTask::kQr) {
    question.computed = {A, A};
  } else if (task == ProofTask::kEigen) {
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j < i; ++j) question.a(i, j) = question.a(j, i);
    }
    question.computed = {testing::RealMatrix(dice, n, 1), A};
  } else if (task >= ProofTask::kSolution && task <= ProofTask::kLeastSquares) {
    question.computed = {testing::RealMatrix(dice, n, 1)};
    question.system = A;
    if (task != ProofTask::kSolutionByFactors) question.a = testing::RealMatrix(dice, n, n + 1);
  }
  return question;
}

class StopTest : public ::testing::TestWithParam<ProofTask> {};

/// Milliseconds until a check stops after it is asked to.
double TimeToStop(const ProofQuestion& question, std::chrono::milliseconds after) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  std::optional<double> asked;
  ProofLimits limits;
  limits.seconds = 60;
  limits.stop = [&] {
    if (Clock::now() - start < after) return false;
    if (!asked) asked = test::ProcessorTime();
    return true;
  };
  const ProofAnswer answer = Prove(question, limits);
  if (!asked) return 0;
  EXPECT_EQ(answer.outcome, ProofOutcome::kStopped);
  return test::ProcessorTime() - *asked;
}

TEST_P(StopTest, ComesSoonAndWhenever) {
  const ProofQuestion question = WorkOf(GetParam(), GetParam() == ProofTask::kEigen ? 120 : 200);
  double longest = 0;
  ProofLimits limits;
  limits.seconds = 1;
  double gap = 0;
  double lastAsked = test::ProcessorTime();
  limits.stop = [&] {
    const double now = test::ProcessorTime();
    gap = std::max(gap, now - lastAsked);
    lastAsked = now;
    return false;
  };
  Prove(question, limits);
  EXPECT_LT(gap, 50 * test::kSlowdown);
  for (const int after : {0, 1, 10, 100, 300}) {
    longest = std::max(longest, TimeToStop(question, std::chrono::milliseconds(after)));
  }
  EXPECT_LT(longest, 50 * test::kSlowdown);
}

TEST_P(StopTest, LetsAnExceptionThrough) {
  ProofLimits limits;
  limits.stop = []() -> bool { throw std::runtime_error("enough"); };
  EXPECT_THROW(Prove(WorkOf(GetParam(), 20), limits), std::runtime_error);
}

TEST_P(StopTest, TimeThatIsUpLeavesNoClaimBehind) {
  ProofLimits limits;
  limits.seconds = 0;
  const ProofAnswer answer = Prove(WorkOf(GetParam(), 20), limits);
  EXPECT_EQ(answer.outcome, ProofOutcome::kCannotBeProved);
  for (const ResultProof& result : answer.results) {
    EXPECT_EQ(result.wide.digits, 0);
    EXPECT_EQ(result.narrow.digits, 0);
  }
}

INSTANTIATE_TEST_SUITE_P(All, StopTest, ::testing::ValuesIn(testing::kDigitTasks),
                         [](const auto& task) { return testing::NameOf(task.param); });

/// Claims made when the precision is exhausted are few, and true.
TEST(LimitsTest, ExhaustedPrecisionIsNeverAClaim) {
  for (const ProofTask task : testing::kDigitTasks) {
    testing::QuestionSource source(task, 4300 + static_cast<int>(task), 10);
    for (int k = task == ProofTask::kEigen ? 55 : 0; k < 60;) {  // The truth takes its time there.
      const auto question = source.Next();
      if (!question) continue;
      ++k;
      ProofLimits limits;
      limits.bits = source.Randomness().Integer(1, 400);
      const ProofAnswer answer = Prove(*question, limits);
      const std::vector<testing::Truth> truths = testing::TruthOf(*question, answer);
      for (std::size_t r = 0; r < truths.size(); ++r) {
        for (std::size_t e = 0; e < truths[r].size(); ++e) {
          const double value = question->computed[r].Data()[e];
          const auto& exact = truths[r][e];
          const int held = HeldDigits(value, answer.results[r].elements[e]);
          const int truth =
              exact ? testing::TrueDigits(testing::Rational(value), kDoubleDigits, *exact) : 0;
          ASSERT_LE(held, truth) << testing::NameOf(task) << " " << value;
        }
      }
    }
  }
}

TEST(LimitsTest, TooFewBitsProveNothing) {
  for (const ProofTask task : {ProofTask::kDeterminant, ProofTask::kInverse, ProofTask::kAdjoint,
                               ProofTask::kLu, ProofTask::kQr, ProofTask::kSolution,
                               ProofTask::kSolutionByFactors, ProofTask::kLeastSquares}) {
    ProofLimits limits;
    limits.bits = 100;
    const ProofAnswer answer = Prove(WorkOf(task, 8), limits);
    EXPECT_EQ(answer.outcome, ProofOutcome::kCannotBeProved) << testing::NameOf(task);
    EXPECT_EQ(answer.results[0].wide.digits, 0);
  }
}

TEST(LimitsTest, MemoryIsAskedForBeforeItIsTaken) {
  for (const ProofTask task : {ProofTask::kDeterminant, ProofTask::kInverse, ProofTask::kAdjoint,
                               ProofTask::kLu, ProofTask::kQr, ProofTask::kSolution,
                               ProofTask::kLeastSquares, ProofTask::kProduct, ProofTask::kEigen}) {
    const ProofQuestion question = WorkOf(task, 80);
    ProofLimits limits;
    limits.seconds = 60;
    limits.bytes = 100000;
    EXPECT_EQ(Prove(question, limits).outcome, ProofOutcome::kCannotBeProved)
        << testing::NameOf(task);
    EXPECT_GT(EstimateProof(question).bytes, 100000) << testing::NameOf(task);
  }
}

TEST(LimitsTest, AnEstimateGrowsWithTheWork) {
  for (const ProofTask task : testing::kDigitTasks) {
    const ProofCost small = EstimateProof(WorkOf(task, 10));
    const ProofCost large = EstimateProof(WorkOf(task, 100));
    EXPECT_GT(small.seconds, 0) << testing::NameOf(task);
    EXPECT_LT(small.seconds, 0.01) << testing::NameOf(task);
    EXPECT_GT(large.seconds, small.seconds * 5) << testing::NameOf(task);
  }
  EXPECT_LT(EstimateProof(WorkOf(ProofTask::kInverse, 300)).seconds, kUnaskedSeconds);
  EXPECT_GT(EstimateProof(WorkOf(ProofTask::kInverse, 900)).seconds, kUnaskedSeconds);
  EXPECT_GT(EstimateProof(WorkOf(ProofTask::kEigen, 300)).seconds, kUnaskedSeconds);
}

TEST(LimitsTest, ChecksRunSideBySideOnSeveralThreads) {
  const ProofQuestion question = WorkOf(ProofTask::kEigen, 12);
  const ProofAnswer alone = Prove(question, {});
  std::vector<std::thread> threads;
  std::vector<int> agreements(4);
  for (int& agreement : agreements) {
    threads.emplace_back([&question, &alone, &agreement] {
      for (int k = 0; k < 5; ++k) {
        const ProofAnswer answer = Prove(question, {});
        bool same = true;
        for (std::size_t e = 0; e < alone.results[1].elements.size(); ++e) {
          same = same && answer.results[1].elements[e].lower == alone.results[1].elements[e].lower;
        }
        agreement += same ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(agreements, std::vector<int>(4, 5));
}

/// Whatever computes while a check runs.
TEST(LimitsTest, LeavesTheArithmeticFlagsAlone) {
  ProofLimits limits;
  limits.stop = [] {
    std::feraiseexcept(FE_INVALID);
    return false;
  };
  ClearArithmeticFaults();
  Prove(WorkOf(ProofTask::kInverse, 10), limits);
  EXPECT_EQ(std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID), 0);
  std::feraiseexcept(FE_OVERFLOW);
  Prove(WorkOf(ProofTask::kInverse, 10), {});
  EXPECT_NE(std::fetestexcept(FE_OVERFLOW), 0);
  ClearArithmeticFaults();
}

}  // namespace
}  // namespace qmx
