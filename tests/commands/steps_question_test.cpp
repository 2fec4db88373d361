// SPDX-License-Identifier: MIT
#include "commands/steps_question.h"

#include "commands/file_commands.h"
#include "support/core_bench.h"
#include "workspace/staleness.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class StepsQuestionTest : public test::Workbench {
 protected:
  DerivationQuestion Ask(Result result, int row = 1, int col = 1) {
    EXPECT_EQ(WhyNoSteps(workspace, result), "") << result;
    return StepsQuestion(workspace, result, row, col);
  }
};

TEST_F(StepsQuestionTest, AsksForTheOperandsAndTheElement) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  EnterB(Rows({{5, 6}, {7, 8}}));
  Press(kTaskProduct);
  const DerivationQuestion question = Ask(kResultProduct, 2, 1);
  EXPECT_EQ(question.task, DerivationTask::kProduct);
  EXPECT_TRUE(question.a == Rows({{1, 2}, {3, 4}}));
  EXPECT_TRUE(question.b == Rows({{5, 6}, {7, 8}}));
  EXPECT_EQ(question.row, 2);
  EXPECT_EQ(question.col, 1);
}

TEST_F(StepsQuestionTest, KnowsWhetherLAndUWereFoundWithPivoting) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  for (const bool pivoting : {true, false}) {
    screen.Select(OptPivot(pivoting ? kPivotYes : kPivotNo));
    Press(kTaskLU);
    EXPECT_EQ(Ask(kResultLU).pivoting, pivoting);
  }
}

TEST_F(StepsQuestionTest, TheOptionOfNowIsNotThatOfThen) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  screen.Select(OptPivot(kPivotNo));
  Press(kTaskLU);
  screen.Select(OptPivot(kPivotYes));
  EXPECT_FALSE(Ask(kResultLU).pivoting);
}

TEST_F(StepsQuestionTest, KnowsTheWayOfTheAdjoint) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(kTaskAdjoint);
  EXPECT_TRUE(Ask(kResultAdjoint).byCofactors);
  Press(kTaskAdjointByInverse);
  EXPECT_FALSE(Ask(kResultAdjoint).byCofactors);
}

TEST_F(StepsQuestionTest, KnowsWhatIsAboutOneElement) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  EnterB(Rows({{5, 6}, {7, 8}}));
  for (const Task task : {kTaskSum, kTaskDifference, kTaskProduct, kTaskInverse, kTaskTranspose,
                          kTaskLU, kTaskQR, kTaskEigen, kTaskAdjoint})
    Press(task);
  for (const Result result : {kResultSum, kResultDifference, kResultProduct, kResultAdjoint})
    EXPECT_TRUE(IsAboutElement(workspace, result)) << result;
  for (const Result result : {kResultInverse, kResultTranspose, kResultLU, kResultQR,
                              kResultEigenvalues, kResultEigenvectors})
    EXPECT_FALSE(IsAboutElement(workspace, result)) << result;
  Press(kTaskAdjointByInverse);
  EXPECT_FALSE(IsAboutElement(workspace, kResultAdjoint));
}

TEST_F(StepsQuestionTest, KnowsWhatSteeredTheIteration) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  screen.SetText(txtError, ".0002");
  screen.SetText(txtMaxcy, "77");
  workspace.eigen.ShiftIndex = 2;
  Press(kTaskEigen);
  for (const Result result : {kResultEigenvalues, kResultEigenvectors}) {
    const DerivationQuestion question = Ask(result);
    EXPECT_DOUBLE_EQ(question.eigen.tolerance, .0001);
    EXPECT_EQ(question.eigen.maxCycles, 77);
    EXPECT_EQ(question.shiftIndex, 2) << "as it was carried into the iteration";
  }
}

TEST_F(StepsQuestionTest, ASystemIsAskedAboutAsItWasSolved) {
  const std::vector<std::pair<SystemKind, DerivationTask>> ways{
      {kSystemOneShot, DerivationTask::kSolution},
      {kSystemOverdetermined, DerivationTask::kLeastSquares}};
  for (const auto& [kind, task] : ways) {
    workspace.SystemMethod = static_cast<std::int16_t>(kind);
    workspace.At(kSlotSystem).array = Rows({{2, 1, 3}, {1, 3, 4}});
    workspace.At(kSlotSolution).array = Rows({{1}, {1}});
    workspace.SolutionComputed = true;
    NoteComputed(workspace, kResultSolution);
    const DerivationQuestion question = Ask(kResultSolution);
    EXPECT_EQ(question.task, task);
    EXPECT_TRUE(question.a == Rows({{2, 1, 3}, {1, 3, 4}}));
  }
}

TEST_F(StepsQuestionTest, ASolutionByFactorsTakesTheFactors) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(kTaskLU);
  workspace.SystemMethod = kSystemByFactors;
  workspace.At(kSlotSystem).array = Rows({{5}, {6}});
  workspace.At(kSlotSolution).array = Rows({{1}, {1}});
  workspace.SolutionComputed = true;
  NoteComputed(workspace, kResultSolution);
  const DerivationQuestion question = Ask(kResultSolution);
  EXPECT_EQ(question.task, DerivationTask::kSolutionByFactors);
  EXPECT_TRUE(question.a == Array(kSlotL));
  EXPECT_TRUE(question.b == Array(kSlotU));
  EXPECT_TRUE(question.exchanges == Array(kSlotExchanges));
  EXPECT_TRUE(question.system == Rows({{5}, {6}}));
}

TEST_F(StepsQuestionTest, WhatIsNotThereHasNoSteps) {
  EXPECT_EQ(WhyNoSteps(workspace, kResultInverse), "This has not been computed");
  EXPECT_EQ(WhyNoSteps(workspace, kResultExchanges), "There are no steps of this");
  EXPECT_FALSE(HasDerivation(kResultA));
}

TEST_F(StepsQuestionTest, AResultOfOtherOperandsHasNoSteps) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(kTaskInverse);
  EXPECT_EQ(WhyNoSteps(workspace, kResultInverse), "");
  NoteChange(workspace, kSlotA);
  EXPECT_EQ(WhyNoSteps(workspace, kResultInverse),
            "A has changed since this was computed: compute it again to see its steps");
}

TEST_F(StepsQuestionTest, OfAFileOnlyWhatHasOneWayHasSteps) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  for (const int task : {kTaskInverse, kTaskAdjoint, kTaskEigen, kTaskLU}) Press(task);
  screen.fileNames = {"p.qmx"};
  SaveProjectAs(context);
  workspace = {};
  OpenNamedProject(context, "p.qmx");
  EXPECT_EQ(WhyNoSteps(workspace, kResultInverse), "");
  for (const Result result : {kResultAdjoint, kResultEigenvalues, kResultEigenvectors}) {
    EXPECT_EQ(WhyNoSteps(workspace, result),
              "Files do not tell how this was computed: compute it again to see its steps");
  }
  EXPECT_TRUE(Ask(kResultLU).pivoting) << "there are exchanges";
}

}  // namespace
}  // namespace qmx
