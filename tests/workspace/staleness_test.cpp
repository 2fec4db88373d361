// SPDX-License-Identifier: MIT
#include "workspace/staleness.h"

#include <functional>

#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/lifecycle.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class StalenessTest : public test::RunnerBench {
 protected:
  StalenessTest() {
    EnterA(Rows({{2, 1}, {1, 3}}));
    EnterB(Rows({{1, 0}, {0, 1}}));
  }
  std::string Of(Result result) const { return Staleness(workspace, result); }
};

TEST_F(StalenessTest, AFreshResultIsNotStale) {
  for (const int task : {kTaskSum, kTaskInverse, kTaskDeterminant}) Press(task);
  for (const Result result : {kResultSum, kResultInverse, kResultDeterminant})
    EXPECT_EQ(Of(result), "");
}

TEST_F(StalenessTest, ATypedCellMakesTheResultsOfItsMatrixStale) {
  for (const int task : {kTaskSum, kTaskInverse, kTaskDeterminant, kTaskLU, kTaskSymmetry})
    Press(task);
  runner.WriteCell(kSlotA, 1, 1, "9");
  for (const Result result :
       {kResultSum, kResultInverse, kResultDeterminant, kResultLU, kResultSymmetry})
    EXPECT_EQ(Of(result), "A has changed since this was computed") << result;
  EXPECT_EQ(Of(kResultProduct), "") << "what is not there is not stale";
  Press(kTaskInverse);
  EXPECT_EQ(Of(kResultInverse), "");
}

TEST_F(StalenessTest, BothOperandsAreNamed) {
  Press(kTaskProduct);
  runner.WriteCell(kSlotB, 1, 1, "9");
  EXPECT_EQ(Of(kResultProduct), "B has changed since this was computed");
  ClearOperand(context, kSlotA);
  EXPECT_EQ(Of(kResultProduct), "A and B have changed since this was computed");
}

TEST_F(StalenessTest, EveryCommandThatChangesAIsSeen) {
  const std::vector<std::function<void()>> changes{
      [&] { ClearOperand(context, kSlotA); },
      [&] { CopyInto(context, kSlotA, kSlotB); },
      [&] { ExchangeAandB(context); },
      [&] { Press(kTaskScale); },
      [&] { Press(kTaskShift); },
      [&] { runner.Paste(kSlotA, 1, 1, "5\n"); },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    Press(kTaskTrace);
    ASSERT_EQ(Of(kResultTrace), "");
    changes[i]();
    EXPECT_EQ(Of(kResultTrace), "A has changed since this was computed") << i;
  }
}

TEST_F(StalenessTest, TheSolutionBelongsToTheSystem) {
  EnterSystem(Rows({{2, 1, 3}, {1, 3, 5}}));
  PressSolve(context);
  EXPECT_EQ(Of(kResultSolution), "");
  ClearOperand(context, kSlotA);
  EXPECT_EQ(Of(kResultSolution), "");
  runner.WriteCell(kSlotSystem, 1, 1, "4");
  EXPECT_EQ(Of(kResultSolution), "The system has changed since this was computed");
}

TEST_F(StalenessTest, UndoTakesTheMarkBackToo) {
  Press(kTaskInverse);
  runner.WriteCell(kSlotA, 1, 1, "9");
  EXPECT_NE(Of(kResultInverse), "");
  runner.Undo();
  EXPECT_EQ(Of(kResultInverse), "");
  runner.Redo();
  EXPECT_NE(Of(kResultInverse), "");
}

TEST_F(StalenessTest, AnOpenedProjectCountsAsUnchanged) {
  Press(kTaskInverse);
  runner.WriteCell(kSlotA, 1, 1, "9");
  screen.fileNames = {"p", "p"};
  SaveProjectAs(context);
  OpenProject(context);
  EXPECT_EQ(Of(kResultInverse), "");
}

}  // namespace
}  // namespace qmx
