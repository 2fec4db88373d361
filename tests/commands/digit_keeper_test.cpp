// SPDX-License-Identifier: MIT
#include "commands/digit_keeper.h"

#include "commands/digit_question.h"
#include "commands/digit_texts.h"
#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

/// Believes every number, and counts how often it was asked.
class Believer : public Prover {
 public:
  double seconds = 0;
  mutable std::vector<ProofQuestion> asked;

  ProofCost Estimate(const ProofQuestion&) const override { return {seconds, 0}; }
  ProofAnswer Prove(const ProofQuestion& question, const ProofLimits& limits) const override {
    ProofAnswer answer;
    if (limits.stop && limits.stop()) {
      answer.outcome = ProofOutcome::kStopped;
      return answer;
    }
    ++proofs;
    answer.outcome = ProofOutcome::kProved;
    for (const Matrix& computed : question.computed) {
      ResultProof proof{computed.Rows(), computed.Cols(), {}, {15, 1, 1}, {7, 1, 1}};
      for (std::size_t k = 0; k < computed.Size(); ++k)
        proof.elements.push_back({computed.Data()[k], computed.Data()[k], 0});
      answer.results.push_back(std::move(proof));
    }
    return answer;
  }

  mutable int proofs = 0;
};

class DigitKeeperTest : public test::RunnerBench {
 protected:
  DigitKeeperTest() {
    EnterA(Rows({{2, 1}, {1, 3}}));
    EnterB(Rows({{1, 0}, {0, 1}}));
  }

  /// Does the next check and tells what it was about.
  Result CheckNext() {
    keeper.Follow(workspace);
    const std::optional<DigitCheck> next = keeper.Next(workspace);
    if (!next) return kNoResult;
    auto finding = RunDigitCheck(prover, *next, [] { return false; });
    keeper.Take(workspace, *next, std::move(*finding));
    return next->result;
  }
  void CheckAll() {
    while (CheckNext() != kNoResult) {
    }
  }
  DigitState State(Result result) const { return keeper.Of(workspace, result).state; }
  ProofQuestion Question(Result result) const {
    return DigitQuestion(workspace, result, *workspace.computations[result]);
  }
  std::string Line(Slot slot) const {
    return DigitLine(workspace, slot, keeper.Of(workspace, ResultOf(slot).result), false);
  }

  Believer prover;
  DigitKeeper keeper;
};

TEST_F(DigitKeeperTest, TheNewestResultIsCheckedFirst) {
  for (const int task : {kTaskSum, kTaskInverse, kTaskDeterminant}) Press(task);
  EXPECT_EQ(CheckNext(), kResultDeterminant);
  EXPECT_EQ(CheckNext(), kResultInverse);
  EXPECT_EQ(CheckNext(), kResultSum);
  EXPECT_EQ(CheckNext(), kNoResult);
  EXPECT_EQ(State(kResultSum), DigitState::kKnown);
  EXPECT_EQ(State(kResultProduct), DigitState::kNone);
}

TEST_F(DigitKeeperTest, EveryTaskAsksItsOwnQuestion) {
  for (const auto& [task, result, asks] :
       {std::tuple{kTaskSum, kResultSum, ProofTask::kSum},
        {kTaskDifference, kResultDifference, ProofTask::kDifference},
        {kTaskProduct, kResultProduct, ProofTask::kProduct},
        {kTaskDeterminant, kResultDeterminant, ProofTask::kDeterminant},
        {kTaskTrace, kResultTrace, ProofTask::kTrace},
        {kTaskInverse, kResultInverse, ProofTask::kInverse},
        {kTaskAdjoint, kResultAdjoint, ProofTask::kAdjoint},
        {kTaskAdjointByInverse, kResultAdjoint, ProofTask::kAdjoint},
        {kTaskLU, kResultLU, ProofTask::kLu},
        {kTaskQR, kResultQR, ProofTask::kQr},
        {kTaskTranspose, kResultTranspose, ProofTask::kTranspose},
        {kTaskDefiniteness, kResultDefiniteness, ProofTask::kDefiniteness},
        {kTaskSymmetry, kResultSymmetry, ProofTask::kSymmetry},
        {kTaskEigen, kResultEigenvectors, ProofTask::kEigen}}) {
    Press(task);
    const ProofQuestion question = Question(result);
    EXPECT_EQ(question.task, asks) << task;
    EXPECT_TRUE(question.a.SharesWith(Array(kSlotA))) << "nothing is copied";
  }
  EXPECT_TRUE(Question(kResultSum).b.SharesWith(Array(kSlotB)));
  EXPECT_TRUE(Question(kResultQR).computed[1].SharesWith(Array(kSlotR)));
  EXPECT_EQ(Question(kResultTrace).computed[0](1, 1), 5);
  EXPECT_EQ(Question(kResultDefiniteness).definiteness, Definiteness::kPositiveDefinite);
  EXPECT_TRUE(Question(kResultSymmetry).symmetric);
  EXPECT_EQ(Question(kResultEigenvalues).computed[1].Size(), 0U);
}

TEST_F(DigitKeeperTest, FactorsAreAskedAboutInTheOrderOfTheirRows) {
  Press(kTaskLU);
  EXPECT_EQ(Question(kResultLU).exchanges, Rows({{1}, {2}}));
  runner.WriteCell(kSlotA, 2, 1, "5");
  Press(kTaskLU);
  EXPECT_EQ(Question(kResultLU).exchanges, Rows({{2}, {1}}));
  EXPECT_EQ(State(kResultExchanges), DigitState::kNone);
  EXPECT_EQ(Line(kSlotPermutation), "All digits hold: this is the order of rows that was used");
}

TEST_F(DigitKeeperTest, OnlyWhatTheTaskHasReadIsAskedAbout) {
  Press(kTaskTranspose);
  Computation computation = *workspace.computations[kResultTranspose];
  computation.aRows = 1;
  EXPECT_EQ(DigitQuestion(workspace, kResultTranspose, computation).a, Rows({{2, 1}}));
  computation.aRows = 2;
  computation.aCols = 1;
  EXPECT_EQ(DigitQuestion(workspace, kResultTranspose, computation).a, Rows({{2}, {1}}));
  computation.aCols = 3;
  EXPECT_EQ(DigitQuestion(workspace, kResultTranspose, computation).a.Size(), 0U);
}

TEST_F(DigitKeeperTest, OnlyEigenvectorsHaveNumbersAboveTheirColumns) {
  const auto headers = [this](Result result) {
    keeper.Follow(workspace);
    for (;;) {
      const std::optional<DigitCheck> next = keeper.Next(workspace);
      if (!next) return std::string("no check");
      auto finding = RunDigitCheck(prover, *next, [] { return false; });
      std::string found;
      for (const auto& cells : finding->matrices) found += cells->header == nullptr ? '-' : 'h';
      keeper.Take(workspace, *next, std::move(*finding));
      if (next->result == result) return found;
    }
  };
  Press(kTaskLU);
  EXPECT_EQ(headers(kResultLU), "--");
  Press(kTaskQR);
  EXPECT_EQ(headers(kResultQR), "--");
  Press(kTaskEigen);
  EXPECT_EQ(headers(kResultEigenvectors), "-h");
}

TEST_F(DigitKeeperTest, ASolutionIsAskedAboutAsItWasFound) {
  EnterSystem(Rows({{2, 1, 3}, {1, 3, 4}}));
  PressSolve(context);
  EXPECT_EQ(Question(kResultSolution).task, ProofTask::kSolution);
  EXPECT_TRUE(Question(kResultSolution).a.SharesWith(Array(kSlotSystem)));
  // Another way of solving is only chosen: the solution that is there was found by the first one.
  workspace.SystemMethod = kSystemOverdetermined;
  EXPECT_EQ(Question(kResultSolution).task, ProofTask::kSolution);
}

TEST_F(DigitKeeperTest, AMultipleOfAIsAskedAboutWithWhatAWas) {
  screen.Type(txtScalar, "3");
  Press(kTaskScale);
  EXPECT_EQ(State(kResultA), DigitState::kWaiting);
  const ProofQuestion question = Question(kResultA);
  EXPECT_EQ(question.task, ProofTask::kScaled);
  EXPECT_EQ(question.a, Rows({{2, 1}, {1, 3}}));
  EXPECT_EQ(question.scalar, 3);
  EXPECT_EQ(question.computed[0], Rows({{6, 3}, {3, 9}}));
  runner.WriteCell(kSlotA, 1, 1, "7");
  EXPECT_EQ(State(kResultA), DigitState::kNone);
}

TEST_F(DigitKeeperTest, AChangeTakesTheMarkAndUndoBringsItBack) {
  Press(kTaskInverse);
  CheckAll();
  runner.WriteCell(kSlotA, 1, 1, "7");
  EXPECT_EQ(State(kResultInverse), DigitState::kStale);
  EXPECT_EQ(Line(kSlotInverse), "A has changed since: no digit is proved");
  EXPECT_EQ(CheckNext(), kNoResult);
  runner.Undo();
  EXPECT_EQ(State(kResultInverse), DigitState::kKnown);
  EXPECT_EQ(Line(kSlotInverse), "All digits hold");
}

TEST_F(DigitKeeperTest, TheMarkOfAResultThatIsComputedAgainIsNotThatOfTheOldOne) {
  Press(kTaskInverse);
  CheckAll();
  Press(kTaskInverse);
  EXPECT_EQ(State(kResultInverse), DigitState::kWaiting);
  EXPECT_EQ(Line(kSlotInverse), "Not checked yet");
}

TEST_F(DigitKeeperTest, WhatTakesLongIsOffered) {
  prover.seconds = 2 * kUnaskedSeconds;
  Press(kTaskInverse);
  CheckAll();
  EXPECT_EQ(prover.proofs, 0);
  EXPECT_EQ(State(kResultInverse), DigitState::kOffered);
  keeper.Ask(workspace, kResultInverse);
  EXPECT_EQ(State(kResultInverse), DigitState::kChecking);
  keeper.Withdraw(workspace, kResultInverse);
  EXPECT_EQ(State(kResultInverse), DigitState::kOffered);
  keeper.Ask(workspace, kResultInverse);
  CheckAll();
  EXPECT_EQ(State(kResultInverse), DigitState::kKnown);
}

TEST_F(DigitKeeperTest, WhatWasAskedForComesFirst) {
  prover.seconds = 2 * kUnaskedSeconds;
  Press(kTaskInverse);
  CheckAll();
  Press(kTaskSum);
  keeper.Ask(workspace, kResultInverse);
  EXPECT_EQ(CheckNext(), kResultInverse);
}

TEST_F(DigitKeeperTest, AStoppedCheckFindsNothing) {
  Press(kTaskInverse);
  const std::optional<DigitCheck> next = keeper.Next(workspace);
  EXPECT_FALSE(RunDigitCheck(prover, *next, [] { return true; }));
}

TEST_F(DigitKeeperTest, ACheckIsUnwantedOnceItsResultOrItsOperandsAreOthers) {
  Press(kTaskInverse);
  const std::optional<DigitCheck> check = keeper.Next(workspace);
  EXPECT_TRUE(keeper.IsWanted(workspace, *check));
  runner.WriteCell(kSlotB, 1, 1, "7");
  EXPECT_TRUE(keeper.IsWanted(workspace, *check));
  runner.WriteCell(kSlotA, 1, 1, "7");
  EXPECT_FALSE(keeper.IsWanted(workspace, *check));
  Press(kTaskInverse);
  EXPECT_FALSE(keeper.IsWanted(workspace, *check));
}

TEST_F(DigitKeeperTest, FindingsAboutWhatIsGoneAreForgottenWhereTheyAreLarge) {
  keeper = DigitKeeper(2 * sizeof(ElementProof));
  runner.Step("Inverse(A)", [](Context& all) { PressTask(all, kTaskInverse); });
  CheckAll();
  runner.Step("Inverse(A)", [](Context& all) { PressTask(all, kTaskInverse); });
  CheckAll();
  runner.Undo();
  keeper.Follow(workspace);
  EXPECT_EQ(State(kResultInverse), DigitState::kWaiting) << "the first was forgotten";
}

TEST_F(DigitKeeperTest, AnOpenedProjectCountsAsUnchanged) {
  Press(kTaskInverse);
  Press(kTaskDeterminant);
  workspace.currentFileName = "p.qmx";
  ASSERT_TRUE(SaveProject(context));
  ASSERT_TRUE(OpenNamedProject(context, "p.qmx"));
  EXPECT_EQ(State(kResultInverse), DigitState::kWaiting);
  EXPECT_EQ(State(kResultDeterminant), DigitState::kWaiting);
  CheckAll();
  EXPECT_EQ(Line(kSlotInverse), "All digits hold");
}

TEST_F(DigitKeeperTest, WhatARefusedTaskLeavesIsNotTakenForTheResult) {
  Press(kTaskQR);
  const Matrix q = Array(kSlotQ);
  CheckAll();
  // The columns are dependent: the task is refused, and its slot holds something else.
  runner.WriteCell(kSlotA, 1, 1, "0");
  runner.WriteCell(kSlotA, 2, 1, "0");
  Press(kTaskQR);
  ASSERT_FALSE(screen.messages.empty());
  EXPECT_EQ(workspace.computations[kResultQR]->computed[0], q);
}

}  // namespace
}  // namespace qmx
