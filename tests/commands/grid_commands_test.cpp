// SPDX-License-Identifier: MIT
#include "commands/grid_commands.h"

#include "base/number_text.h"
#include "commands/lifecycle.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;
using GridCommandsTest = test::Workbench;

TEST_F(GridCommandsTest, EveryChangeOfTheTextIsStoredAtOnce) {
  CreateOperand(context, kSlotA);
  CommitCell(context, kSlotA, 1, 1, "5");
  EXPECT_EQ(Array(kSlotA)(1, 1), 5.0);
  CommitCell(context, kSlotA, 1, 2, "1e");
  EXPECT_EQ(Array(kSlotA)(1, 2), 1.0);
  CommitCell(context, kSlotA, 1, 2, "1e3");
  EXPECT_EQ(Array(kSlotA)(1, 2), 1000.0);
  CommitCell(context, kSlotA, 1, 2, "1.5e");
  EXPECT_EQ(Array(kSlotA)(1, 2), 1.5);
  CommitCell(context, kSlotA, 1, 2, "");
  EXPECT_EQ(Array(kSlotA)(1, 2), 0.0);
  CommitCell(context, kSlotA, 1, 2, "+-");
  EXPECT_EQ(Array(kSlotA)(1, 2), 0.0);
}

TEST_F(GridCommandsTest, ACellOutsideTheMatrixStoresNothing) {
  EnterA(Rows({{1}}));
  CommitCell(context, kSlotA, 2, 1, "5");
  CommitCell(context, kSlotA, 0, 0, "5");
  CommitCell(context, kSlotB, 1, 1, "5");
  EXPECT_EQ(Array(kSlotA), Rows({{1}}));
}

TEST_F(GridCommandsTest, ToolTipsNameTheMatrixInEditorsOnly) {
  EXPECT_EQ(CellToolTip(kSlotA, 2, 3, "7"), "A(2,3)=7");
  EXPECT_EQ(CellToolTip(kSlotB, 1, 1, "-1"), "B(1,1)=-1");
  EXPECT_EQ(CellToolTip(kSlotCreated, 1, 2, "0"), "Created(1,2)=0");
  EXPECT_EQ(CellToolTip(kSlotSystem, 4, 5, ""), "System(4,5)=");
  EXPECT_EQ(CellToolTip(kSlotSum, 2, 3, "7"), "(2,3)=7");
}

TEST_F(GridCommandsTest, TheWidthToggleChangesPrecisionAndWidth) {
  EnterA(Rows({{3}}));
  Press(5);
  EXPECT_EQ(screen.grids[kSlotInverse].Text(1, 1), "0.3333333");
  ToggleWidth(context, kSlotInverse);
  EXPECT_TRUE(screen.grids[kSlotInverse].wide);
  EXPECT_EQ(screen.grids[kSlotInverse].Text(1, 1), "0.333333333333333");
  ToggleWidth(context, kSlotInverse);
  EXPECT_FALSE(screen.grids[kSlotInverse].wide);
  EXPECT_EQ(screen.grids[kSlotInverse].Text(1, 1), "0.3333333");
}

TEST_F(GridCommandsTest, TheWidthOutlivesTheWindow) {
  EnterA(Rows({{3}}));
  Press(5);
  ToggleWidth(context, kSlotInverse);
  Reset(kSlotA);
  EnterA(Rows({{3}}));
  Press(5);
  EXPECT_TRUE(screen.grids[kSlotInverse].wide);
  EXPECT_EQ(screen.grids[kSlotInverse].Text(1, 1), "0.333333333333333");
}

TEST_F(GridCommandsTest, RefillingShowsTheStoredValueOfAnOddText) {
  CreateOperand(context, kSlotA);
  CommitCell(context, kSlotA, 1, 1, "1.5e");
  ToggleWidth(context, kSlotA);
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 1), "1.5");
}

TEST_F(GridCommandsTest, TogglingAfterARefusalShowsTheArrayThatIsThere) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(8);
  EnterB(Rows({{0, 1, 2}, {1, 0, 3}, {4, 5, 6}}));
  CopyInto(context, kSlotA, kSlotB);
  screen.Select(OptPivot(1));
  Press(8);
  EXPECT_EQ(screen.LastMessage(), "CAN'T FACTOR WITHOUT PIVOTING.");
  EXPECT_EQ(screen.grids[kSlotU].rows, 3);
  ToggleWidth(context, kSlotU);
  EXPECT_EQ(screen.grids[kSlotU].rows, 4);
  EXPECT_EQ(screen.grids[kSlotU].Text(3, 2), "5");
}

TEST_F(GridCommandsTest, ShowRestoresAWindow) {
  EnterA(Rows({{1}}));
  screen.windows[kSlotA] = WindowState::kHidden;
  ShowSlot(context, kSlotA);
  EXPECT_EQ(screen.windows[kSlotA], WindowState::kShown);
  ShowSlot(context, static_cast<Slot>(-1));
  ShowSlot(context, static_cast<Slot>(kSlotCount));
}

TEST_F(GridCommandsTest, APastedBlockIsAsIfTypedCellByCell) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
  EXPECT_EQ(PasteBlock(context, kSlotA, 2, 2, "0.10\t-2e3\r\n+5\t 1E-400 \r\n"),
            (CellRange{2, 2, 3, 3}));
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2, 3}, {4, 0.1, -2000}, {7, 5, 0}}));
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 2), "0.10");
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 3), "-2e3");
  EXPECT_EQ(screen.grids[kSlotA].Text(3, 2), "+5");
  EXPECT_EQ(screen.grids[kSlotA].Text(3, 3), "1E-400");
  EXPECT_TRUE(NoMessage());
}

TEST_F(GridCommandsTest, PastingErasesNoResult) {
  EnterA(Rows({{2}}));
  Press(5);
  PasteBlock(context, kSlotA, 1, 1, "4");
  EXPECT_TRUE(workspace.InverseComputed);
  EXPECT_EQ(Array(kSlotInverse), Rows({{0.5}}));
}

TEST_F(GridCommandsTest, AWrongBlockIsRefusedAsAWhole) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}}));
  const auto before = screen.grids[kSlotA].texts;
  EXPECT_FALSE(PasteBlock(context, kSlotA, 1, 1, "7\t8\t9.5\n7\t8\t2,5\n"));
  EXPECT_EQ(
      screen.LastMessage(),
      "The block cannot be pasted: row 2, column 3 of it is \"2,5\". A decimal point is needed, "
      "not a comma; tabs or semicolons separate numbers.\n\nNothing was changed.");
  EXPECT_EQ(screen.messages.back().icon, Icon::kCritical);
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2, 3}, {4, 5, 6}}));
  EXPECT_EQ(screen.grids[kSlotA].texts, before);
}

TEST_F(GridCommandsTest, ABlockBeyondTheMatrixIsRefused) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}}));
  EXPECT_FALSE(PasteBlock(context, kSlotA, 2, 3, "7\t8\n9\t10"));
  EXPECT_EQ(screen.LastMessage(),
            "The block cannot be pasted: it has 2 rows and 2 columns, but from A(2,3) on there is "
            "room for 1 row and 1 column.\n\n"
            "Nothing was changed. Edit > Paste as A makes a matrix of 2 rows and 2 columns of it.");
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2, 3}, {4, 5, 6}}));
  EnterB(Rows({{1}}));
  EXPECT_FALSE(PasteBlock(context, kSlotB, 1, 1, "7\t8"));
  EXPECT_TRUE(screen.LastMessage().ends_with(
      "\n\nNothing was changed. Edit > Paste as B makes a matrix of 1 row and 2 columns of it."));
  EXPECT_FALSE(PasteBlock(context, kSlotA, 3, 1, "7"));
  EXPECT_FALSE(PasteBlock(context, kSlotB, 2, 1, "7"));
}

/// What a slot's grid shows, as its window tells it.
ShownCells Shown(const test::RecordedGrid& grid, int firstRow = 1) {
  const auto text = [&grid, firstRow](int row, int col) {
    return grid.Text(row - 1 + firstRow, col);
  };
  return {text, [text](int row, int col) { return text(row, col).empty(); }};
}

TEST_F(GridCommandsTest, ACopyHasAllDigits) {
  EnterA(Rows({{3, 0.1}, {0, 1}}));
  Press(5);
  const ShownCells shown = Shown(screen.grids[kSlotInverse]);
  EXPECT_EQ(screen.grids[kSlotInverse].Text(1, 1), "0.3333333");
  EXPECT_EQ(CopyBlock(context, kSlotInverse, {1, 1, 2, 2}, shown),
            "0.3333333333333333\t-3.333333333333333E-02\n0\t1\n");
  EXPECT_EQ(CopyBlock(context, kSlotInverse, {2, 2, 2, 2}, shown, true), "\t2\n2\t1\n");
}

TEST_F(GridCommandsTest, CellsWithoutANumberAreCopiedAsTheyStand) {
  CreateOperand(context, kSlotA);
  CommitCell(context, kSlotA, 1, 2, "1.5e");
  EXPECT_EQ(CopyBlock(context, kSlotA, {1, 1, 2, 2}, Shown(screen.grids[kSlotA])), "\t1.5\n\t\n");
}

TEST_F(GridCommandsTest, HeadersAreTextsAndEigenvaluesHaveAllDigits) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  Press(14);
  const auto text = CopyBlock(context, kSlotEigenvectors, {1, 1, 1, 2},
                              Shown(screen.grids[kSlotEigenvectors]), true);
  const std::string corner = "Eigenvalues =\t";
  ASSERT_TRUE(text && text->starts_with(corner)) << *text;
  EXPECT_EQ(Val(text->substr(corner.size())), Array(kSlotEigenvalues)(1, 1));
  EXPECT_NE(text->find("\nEigenvectors\t"), std::string::npos);
  const ShownCells column = Shown(screen.grids[kSlotEigenvalues], 0);
  const auto values = CopyBlock(context, kSlotEigenvalues, {2, 1, 2, 1}, column, true);
  ASSERT_TRUE(values);
  EXPECT_TRUE(values->starts_with(column.text(2, 0) + "\t")) << *values;
}

TEST_F(GridCommandsTest, AVectorThatDidNotConvergeIsCopiedAsItIsSeen) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  Press(14);
  workspace.eigen.VectorStatus[0] = 1;
  screen.grids[kSlotEigenvectors].texts[{1, 1}] = "seen";
  EXPECT_TRUE(CopyBlock(context, kSlotEigenvectors, {1, 1, 1, 1},
                        Shown(screen.grids[kSlotEigenvectors])) == "seen\n");
}

TEST_F(GridCommandsTest, WhatIsCopiedPastesBackBitByBit) {
  EnterA(Rows({{0.1 + 0.2, 1.0 / 3}, {5e-324, -1.7976931348623157e308}}));
  ToggleWidth(context, kSlotA);
  CreateOperand(context, kSlotB);
  const auto text = CopyBlock(context, kSlotA, {1, 1, 2, 2}, Shown(screen.grids[kSlotA]));
  EXPECT_TRUE(PasteBlock(context, kSlotB, 1, 1, *text));
  EXPECT_EQ(Array(kSlotB), Array(kSlotA));
}

TEST_F(GridCommandsTest, PasteAsMakesAMatrixInTheSizeOfTheBlock) {
  PasteAs(context, kSlotA, "1\t2,5\t3\n4\t5\t6\n");
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2.5, 3}, {4, 5, 6}}));
  EXPECT_TRUE(workspace.ACreated);
  EXPECT_EQ(screen.Text(txtRowsA), "2");
  EXPECT_EQ(screen.Text(txtColsA), "3");
  EXPECT_EQ(screen.windows[kSlotA], WindowState::kShown);
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 2), "2.5");
  EXPECT_EQ(screen.grids[kSlotA].rows, 3) << "with the headers";
  PasteAs(context, kSlotA, "7");
  EXPECT_EQ(Array(kSlotA), Rows({{7}}));
  PasteAs(context, kSlotB, "8 9");
  EXPECT_EQ(Array(kSlotB), Rows({{8, 9}}));
  EXPECT_TRUE(NoMessage());
}

TEST_F(GridCommandsTest, PasteAsRefusesWhatIsNoBlock) {
  PasteAs(context, kSlotA, " \n");
  EXPECT_EQ(screen.LastMessage(), "There are no numbers in the clipboard that could be pasted.");
  PasteAs(context, kSlotA, "1\tx");
  EXPECT_EQ(screen.LastMessage(),
            "The block cannot be pasted: row 1, column 2 of it is \"x\", which is no number.\n\n"
            "Nothing was changed.");
  memory.available = 10;
  PasteAs(context, kSlotA, "1\t2");
  EXPECT_EQ(screen.LastMessage(), "There is not enough memory to paste so many cells.");
  EXPECT_FALSE(workspace.ACreated);
}

TEST_F(GridCommandsTest, ABlockIsCopiedInTheFormOfAnotherProgram) {
  EnterA(Rows({{1, 0.5}, {1.0 / 3, 4}, {5, 6}}));
  EXPECT_EQ(CopyBlockAs(context, kSlotA, {1, 1, 2, 2}, CopyForm::kMatlab),
            "[1, 0.5;\n 0.3333333333333333, 4]\n");
  EXPECT_EQ(CopyBlockAs(context, kSlotA, {2, 1, 3, 1}, CopyForm::kDecimalComma),
            "0,3333333333333333\n5\n");
  EXPECT_EQ(CopyBlockAs(context, kSlotA, {1, 1, 4, 1}, CopyForm::kText), std::nullopt);
  EXPECT_EQ(CopyBlockAs(context, kSlotB, {1, 1, 1, 1}, CopyForm::kText), std::nullopt);
  EXPECT_TRUE(NoMessage());
  memory.available = 10;
  EXPECT_EQ(CopyBlockAs(context, kSlotA, {1, 1, 3, 2}, CopyForm::kText), std::nullopt);
  EXPECT_EQ(screen.LastMessage(), "There is not enough memory to copy so many cells.");
}

}  // namespace
}  // namespace qmx
