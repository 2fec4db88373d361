// SPDX-License-Identifier: MIT
#include "commands/lifecycle.h"

#include "commands/grid_commands.h"
#include "commands/parameters.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;
using LifecycleTest = test::Workbench;

TEST_F(LifecycleTest, CreatingAGivesZerosAnEditorAndTheButtonsOfACreatedMatrix) {
  screen.Type(txtRowsA, "3");
  screen.Type(txtColsA, " 2 ");
  CreateOperand(context, kSlotA);
  EXPECT_EQ(Array(kSlotA), Matrix(3, 2));
  EXPECT_TRUE(workspace.ACreated);
  EXPECT_EQ(screen.windows[kSlotA], WindowState::kShown);
  for (const Control& control :
       {cmdPrint(0), cmdShow(0), cmdSave(0), cmdIntoB(0), cmdClearA, cmdResetA}) {
    EXPECT_TRUE(screen.Enabled(control)) << control.ObjectName();
  }
  for (const Control& control : {cmdCreateA, cmdRetrieveA, txtRowsA, txtColsA, cmdExchangeAandB}) {
    EXPECT_FALSE(screen.Enabled(control)) << control.ObjectName();
  }
  EXPECT_EQ(screen.timesBroughtToFront, 1);
}

TEST_F(LifecycleTest, ACreatedMatrixShowsEmptyCellsUntilItIsWritten) {
  CreateOperand(context, kSlotA);
  EXPECT_EQ(screen.grids[kSlotA].rows, 3);
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 0), "1");
  EXPECT_EQ(screen.grids[kSlotA].Text(0, 2), "2");
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 1), "");
}

TEST_F(LifecycleTest, ExchangeIsEnabledOnceBothExist) {
  CreateOperand(context, kSlotB);
  EXPECT_FALSE(screen.Enabled(cmdExchangeAandB));
  CreateOperand(context, kSlotA);
  EXPECT_TRUE(screen.Enabled(cmdExchangeAandB));
}

TEST_F(LifecycleTest, ADimensionThatIsNoCountIsRefusedByName) {
  for (const std::string text : {"", "abc", "0", "-1", "2.5", "3x", "99999999999"}) {
    screen.messages.clear();
    screen.Type(txtColsA, text);
    CreateOperand(context, kSlotA);
    ASSERT_EQ(screen.messages.size(), 1U) << text;
    EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
    EXPECT_EQ(screen.messages[0].text,
              "Columns of A: \"" + text + "\"\nThis must be a whole number of at least 1.");
    EXPECT_FALSE(workspace.ACreated);
    EXPECT_TRUE(screen.Enabled(cmdCreateA));
  }
}

TEST_F(LifecycleTest, AMatrixThatDoesNotFitIntoMemoryIsRefusedByName) {
  screen.Type(txtRowsB, "2000000000");
  screen.Type(txtColsB, "2000000000");
  CreateOperand(context, kSlotB);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_NE(screen.LastMessage().find("Rows of B: \"2000000000\""), std::string::npos);
  EXPECT_NE(screen.LastMessage().find("Columns of B: \"2000000000\""), std::string::npos);
  EXPECT_FALSE(workspace.BCreated);
}

TEST_F(LifecycleTest, ResetAsksFirst) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  screen.answers = {Answer::kNo, Answer::kCancel};
  ResetOperand(context, kSlotA);
  ResetOperand(context, kSlotA);
  ASSERT_EQ(screen.messages.size(), 2U);
  EXPECT_EQ(screen.messages[0].text,
            "This action will reset all results associated with matrix A.\r\rDo you wish to "
            "proceed?\r\r");
  EXPECT_EQ(screen.messages[0].title, "Warning!");
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(screen.messages[0].buttons, Buttons::kYesNoCancel);
}

TEST_F(LifecycleTest, ResetOfBNamesB) {
  EnterB(Rows({{1}}));
  ResetOperand(context, kSlotB);
  EXPECT_EQ(screen.LastMessage(),
            "This action will reset all results associated with matrix B.\r\rDo you wish to "
            "proceed?\r\r");
}

TEST_F(LifecycleTest, ResetAnsweredWithNoOrCancelChangesNothing) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(4);
  screen.answers = {Answer::kNo, Answer::kCancel};
  ResetOperand(context, kSlotA);
  ResetOperand(context, kSlotA);
  EXPECT_TRUE(workspace.ACreated);
  EXPECT_TRUE(workspace.TraceComputed);
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  EXPECT_EQ(screen.windows[kSlotA], WindowState::kShown);
}

TEST_F(LifecycleTest, ResetOfATakesItBackToAbsent) {
  EnterA(Rows({{1, 2, 3}}));
  EnterB(Rows({{1, 2, 3}}));
  Reset(kSlotA);
  EXPECT_FALSE(workspace.ACreated);
  EXPECT_EQ(workspace.A().rows, 0);
  EXPECT_EQ(Array(kSlotA).Size(), 0U);
  EXPECT_EQ(screen.windows[kSlotA], WindowState::kNone);
  EXPECT_EQ(screen.Text(txtRowsA), "2");
  EXPECT_EQ(screen.Text(txtColsA), "2");
  for (const Control& control : {cmdCreateA, cmdRetrieveA, txtRowsA, txtColsA}) {
    EXPECT_TRUE(screen.Enabled(control)) << control.ObjectName();
  }
  for (const Control& control :
       {cmdPrint(0), cmdShow(0), cmdSave(0), cmdIntoB(0), cmdClearA, cmdResetA, cmdExchangeAandB}) {
    EXPECT_FALSE(screen.Enabled(control)) << control.ObjectName();
  }
}

TEST_F(LifecycleTest, ReCreationAfterAResetStartsEmpty) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(16);
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 2), "8");
  Reset(kSlotA);
  CreateOperand(context, kSlotA);
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 2), "");
}

TEST_F(LifecycleTest, ClearKeepsDimensionsAndResults) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(5);
  screen.entryBoxes[kSlotA] = true;
  ClearOperand(context, kSlotA);
  EXPECT_EQ(Array(kSlotA), Matrix(2, 2));
  EXPECT_TRUE(workspace.InverseComputed);
  EXPECT_TRUE(screen.frames[kSlotInverse]);
  EXPECT_FALSE(screen.entryBoxes[kSlotA]);
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 1), "0");
}

TEST_F(LifecycleTest, CopyingTheSumIntoAKeepsTheSum) {
  EnterA(Rows({{1, 2}}));
  EnterB(Rows({{10, 20}}));
  Press(0);
  CopyInto(context, kSlotA, kSlotSum);
  EXPECT_EQ(Array(kSlotA), Rows({{11, 22}}));
  EXPECT_TRUE(workspace.SumComputed);
  EXPECT_EQ(Array(kSlotSum), Rows({{11, 22}}));
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 2), "22");
}

TEST_F(LifecycleTest, CopyingIntoAnAbsentMatrixCreatesIt) {
  EnterA(Rows({{1, 2, 3}}));
  CopyInto(context, kSlotB, kSlotA);
  EXPECT_TRUE(workspace.BCreated);
  EXPECT_EQ(Array(kSlotB), Rows({{1, 2, 3}}));
  EXPECT_EQ(screen.Text(txtRowsB), "1");
  EXPECT_EQ(screen.Text(txtColsB), "3");
  EXPECT_EQ(screen.windows[kSlotB], WindowState::kShown);
  EXPECT_FALSE(screen.Enabled(cmdCreateB));
  EXPECT_TRUE(screen.Enabled(cmdExchangeAandB));
}

TEST_F(LifecycleTest, WhatIsNoSlotIsCopiedNowhere) {
  EnterA(Rows({{1, 2}}));
  const int before = screen.timesBroughtToFront;
  CopyInto(context, kSlotA, static_cast<Slot>(kSlotCount));
  CopyInto(context, kSlotA, static_cast<Slot>(-1));
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}}));
  EXPECT_EQ(screen.timesBroughtToFront, before);
}

TEST_F(LifecycleTest, ExchangeSwapsArraysCountsAndFields) {
  EnterA(Rows({{1, 2, 3}}));
  EnterB(Rows({{4}, {5}}));
  ExchangeAandB(context);
  EXPECT_EQ(Array(kSlotA), Rows({{4}, {5}}));
  EXPECT_EQ(Array(kSlotB), Rows({{1, 2, 3}}));
  EXPECT_EQ(workspace.A().rows, 2);
  EXPECT_EQ(workspace.B().cols, 3);
  EXPECT_EQ(screen.Text(txtRowsA), "2");
  EXPECT_EQ(screen.Text(txtColsB), "3");
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 1), "5");
  EXPECT_EQ(screen.grids[kSlotB].cols, 4);
}

TEST_F(LifecycleTest, AOneShotSystemHasAColumnForTheRightHandSide) {
  screen.Type(txtEquations, "3");
  TxtEquationsChange(context);
  CreateSystem(context);
  EXPECT_EQ(Array(kSlotSystem), Matrix(3, 4));
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 4), " =  R.H.S.");
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 3), "3");
  EXPECT_TRUE(workspace.SystemPresent);
  for (const Control& control : {cmdPrint(18), cmdShow(18), cmdSave(18), cmdIntoA(18), cmdIntoB(18),
                                 cmdClearSystem, cmdResetSystem, cmdSolve}) {
    EXPECT_TRUE(screen.Enabled(control)) << control.ObjectName();
  }
  for (const Control& control : {cmdCreateSystem, cmdRetrieveSystem, txtEquations, txtUnknowns}) {
    EXPECT_FALSE(screen.Enabled(control)) << control.ObjectName();
  }
}

TEST_F(LifecycleTest, MoreUnknownsThanEquationsAreRefusedOnlyWhenOverdetermined) {
  SelectSystemMethod(context, 2);
  screen.Type(txtEquations, "3");
  screen.Type(txtUnknowns, "4");
  CreateSystem(context);
  EXPECT_EQ(screen.LastMessage(), "Can't have more unknowns than equations");
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_FALSE(workspace.SystemPresent);
  SelectSystemMethod(context, 0);
  CreateSystem(context);
  EXPECT_EQ(Array(kSlotSystem), Matrix(3, 5));
}

TEST_F(LifecycleTest, ASystemForStoredFactorsHoldsRightHandSidesOnly) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(8);
  SelectSystemMethod(context, 1);
  CreateSystem(context);
  EXPECT_EQ(Array(kSlotSystem), Matrix(2, 1));
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 1), " =  R.H.S.");
}

TEST_F(LifecycleTest, ABadNumberOfUnknownsIsRefusedByName) {
  SelectSystemMethod(context, 2);
  screen.Type(txtUnknowns, "x");
  CreateSystem(context);
  EXPECT_EQ(screen.LastMessage(),
            "Number of unknowns: \"x\"\nThis must be a whole number of at least 1.");
  EXPECT_FALSE(workspace.SystemPresent);
}

TEST_F(LifecycleTest, ASystemCreatedOverAnotherShowsNoneOfItsNumbers) {
  EnterSystem(Rows({{1, 2, 3}, {4, 5, 6}}));
  ClearOperand(context, kSlotSystem);
  ASSERT_EQ(screen.grids[kSlotSystem].Text(1, 1), "0");
  OptSystemClick(context, 2);
  screen.Type(txtEquations, "3");
  CreateSystem(context);
  EXPECT_EQ(Array(kSlotSystem), Matrix(3, 3));
  EXPECT_EQ(screen.grids[kSlotSystem].Text(1, 1), "");
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 1), "1");
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 3), " =  R.H.S.");
}

TEST_F(LifecycleTest, ResettingTheSystemAsksNothingAndGoesBackToTheOneShotSolution) {
  SelectSystemMethod(context, 2);
  EnterSystem(Rows({{1, 1}, {1, 2}, {1, 3}}));
  ResetSystemCommand(context);
  EXPECT_TRUE(NoMessage());
  EXPECT_FALSE(workspace.SystemPresent);
  EXPECT_EQ(workspace.SystemMethod, 0);
  EXPECT_TRUE(screen.IsSelected(OptSystem(0)));
  EXPECT_EQ(screen.Text(txtEquations), "2");
  EXPECT_EQ(screen.Text(txtUnknowns), "2");
  EXPECT_TRUE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(txtEquations));
  EXPECT_FALSE(screen.Enabled(txtUnknowns));
  EXPECT_FALSE(screen.Enabled(cmdSolve));
  EXPECT_FALSE(screen.Enabled(cmdIntoA(18)));
}

TEST_F(LifecycleTest, CopyingTheSystemGivesItsAugmentedShape) {
  EnterSystem(Rows({{1, 2, 3}, {4, 5, 6}}));
  CopyInto(context, kSlotA, kSlotSystem);
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2, 3}, {4, 5, 6}}));
}

TEST_F(LifecycleTest, ARefusedTaskLeavesTheOldArrayToBeCopiedWhole) {
  EnterA(Rows({{2, 0}, {0, 4}}));
  Press(5);
  Reset(kSlotB);
  EnterB(Rows({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}));
  CopyInto(context, kSlotA, kSlotB);
  Press(5);
  EXPECT_EQ(screen.LastMessage(), "MATRIX IS NOT INVERTIBLE.");
  EXPECT_EQ(workspace.At(kSlotInverse).rows, 3);
  CopyInto(context, kSlotB, kSlotInverse);
  EXPECT_EQ(Array(kSlotB), Rows({{0.5, 0}, {0, 0.25}}));
  EXPECT_EQ(workspace.B().rows, 2);
}

}  // namespace
}  // namespace qmx
