// SPDX-License-Identifier: MIT
#include "workspace/reset.h"

#include "commands/dispatcher.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;
using ResetTest = test::Workbench;

TEST_F(ResetTest, ResettingALoneAOnlyErasesA) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  EnterB(Rows({{5}}));
  EnterSystem(Rows({{1, 2, 3}, {4, 5, 6}}));
  Reset(kSlotA);
  EXPECT_TRUE(workspace.BCreated);
  EXPECT_EQ(Array(kSlotB), Rows({{5}}));
  EXPECT_TRUE(workspace.SystemPresent);
  for (int k = kSlotSum; k <= kSlotExchanges; ++k) EXPECT_FALSE(screen.frames[k]) << k;
}

TEST_F(ResetTest, TheTaskIndexOutlivesAResetAndTheFieldsShowTwo) {
  EnterA(Rows({{1, 2, 3}, {0, 1, 4}, {5, 6, 0}}));
  Press(5);
  Reset(kSlotA);
  EXPECT_EQ(workspace.TaskIndex, 5);
  EXPECT_EQ(screen.Text(txtRowsA), "2");
  EXPECT_EQ(screen.Text(txtColsA), "2");
}

TEST_F(ResetTest, ResettingBErasesSumDifferenceAndProductOnly) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  EnterB(Rows({{1, 0}, {0, 1}}));
  for (const int task : {0, 1, 2, 5, 15}) Press(task);
  Reset(kSlotB);
  for (const Slot slot : {kSlotSum, kSlotDifference, kSlotProduct}) {
    EXPECT_FALSE(screen.frames[slot]);
    EXPECT_EQ(Array(slot).Size(), 0U);
  }
  EXPECT_FALSE(workspace.SumComputed || workspace.DifferenceComputed || workspace.ProductComputed);
  EXPECT_TRUE(workspace.InverseComputed);
  EXPECT_TRUE(workspace.TransposeComputed);
  EXPECT_TRUE(screen.frames[kSlotInverse]);
  EXPECT_TRUE(workspace.ACreated);
}

TEST_F(ResetTest, ResettingAErasesEveryResultOfA) {
  EnterA(Rows({{1, 3}, {3, 2}}));
  EnterB(Rows({{1, 0}, {0, 1}}));
  for (const int task : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 14, 15, 19}) Press(task);
  EXPECT_TRUE(NoMessage());
  for (int k = kSlotSum; k <= kSlotEigenvalues; ++k) EXPECT_TRUE(screen.frames[k]) << k;
  Reset(kSlotA);
  for (const Slot k : kAllSlots) {
    const bool ofA = k >= kSlotSum && k != kSlotSolution && k != kSlotCreated && k != kSlotSystem;
    if (!ofA) continue;
    EXPECT_FALSE(screen.frames[k]) << k;
    EXPECT_EQ(screen.windows[k], WindowState::kNone) << k;
    EXPECT_EQ(screen.Text(InfoOf(k).rows), "") << k;
    EXPECT_EQ(screen.Text(InfoOf(k).cols), "") << k;
    EXPECT_FALSE(screen.Enabled(cmdSave(k))) << k;
  }
  for (const Control& label : {lblDeterminantOfA, lblTraceOfA, lblDefiniteness, lblSymmetry}) {
    EXPECT_EQ(screen.Text(label), "") << label.name;
  }
  EXPECT_FALSE(workspace.DeterminantComputed || workspace.TraceComputed ||
               workspace.InverseComputed || workspace.AdjointComputed || workspace.LUComputed ||
               workspace.QRComputed || workspace.DefinitenessComputed ||
               workspace.SymmetryComputed || workspace.AIsSymmetric ||
               workspace.EigenvaluesComputed || workspace.EigenvectorsComputed ||
               workspace.TransposeComputed);
  EXPECT_EQ(workspace.eigen.ShiftIndex, 0);
}

TEST_F(ResetTest, ResettingALeavesSystemAndSolution) {
  EnterA(Rows({{1}}));
  EnterSystem(Rows({{2, 0, 4}, {0, 2, 6}}));
  PressSolve(context);
  Reset(kSlotA);
  EXPECT_TRUE(workspace.SolutionComputed);
  EXPECT_TRUE(screen.frames[kSlotSolution]);
  EXPECT_EQ(Array(kSlotSolution), Rows({{2}, {3}}));
}

TEST_F(ResetTest, StoredFactorsSurviveTheResetOfA) {
  EnterA(Rows({{2, 0}, {0, 4}}));
  Press(8);
  EXPECT_TRUE(screen.Enabled(cmdSaveLU));
  Reset(kSlotA);
  EXPECT_TRUE(screen.Enabled(cmdSaveLU));
  EXPECT_TRUE(workspace.StoredFactorsValid);
  SelectSystemMethod(context, 1);
  CreateSystem(context);
  workspace.System().array = Rows({{2}, {8}});
  PressSolve(context);
  EXPECT_EQ(Array(kSlotSolution), Rows({{1}, {2}}));
}

TEST_F(ResetTest, WithoutStoredFactorsTheSystemSideGoesBackToo) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}}));
  Press(8);
  EXPECT_FALSE(workspace.StoredFactorsValid);
  SelectSystemMethod(context, 1);
  screen.Type(txtEquations, "7");
  Reset(kSlotA);
  EXPECT_EQ(screen.Text(txtEquations), "2");
  EXPECT_EQ(screen.Text(txtUnknowns), "2");
  EXPECT_FALSE(screen.Enabled(cmdCreateSystem));
  EXPECT_FALSE(screen.Enabled(cmdRetrieveSystem));
  EXPECT_FALSE(screen.Enabled(cmdSaveLU));
}

TEST_F(ResetTest, ExchangesHaveNoRowsAndOneColumnAfterAReset) {
  EXPECT_EQ(workspace.At(kSlotExchanges).cols, 1);
  EnterA(Rows({{0, 1}, {1, 0}}));
  Press(8);
  EXPECT_EQ(workspace.At(kSlotExchanges).rows, 2);
  Reset(kSlotA);
  EXPECT_EQ(workspace.At(kSlotExchanges).rows, 0);
  EXPECT_EQ(workspace.At(kSlotExchanges).cols, 1);
}

TEST_F(ResetTest, ResettingTheSystemErasesTheSolution) {
  EnterSystem(Rows({{2, 0, 4}, {0, 2, 6}}));
  PressSolve(context);
  qmx::Reset(context, kResultSystem);
  EXPECT_FALSE(workspace.SolutionComputed);
  EXPECT_FALSE(screen.frames[kSlotSolution]);
  EXPECT_EQ(screen.windows[kSlotSystem], WindowState::kNone);
  EXPECT_EQ(screen.windows[kSlotSolution], WindowState::kNone);
  for (const Control& control :
       {cmdPrint(18), cmdShow(18), cmdSave(18), cmdClearSystem, cmdResetSystem, cmdSolve}) {
    EXPECT_FALSE(screen.Enabled(control)) << control.ObjectName();
  }
  for (const Control& control : {cmdCreateSystem, cmdRetrieveSystem, txtEquations, txtUnknowns}) {
    EXPECT_TRUE(screen.Enabled(control)) << control.ObjectName();
  }
}

TEST_F(ResetTest, ResettingWhatIsNotThereDoesNothing) {
  ResetResultsOfA(context);
  ResetResultsOfB(context);
  qmx::Reset(context, kResultSystem);
  EXPECT_TRUE(NoMessage());
  EXPECT_FALSE(workspace.ACreated);
}

}  // namespace
}  // namespace qmx
