#include "commands/grid_commands.h"

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
  ShowSlot(context, -1);
  ShowSlot(context, kSlotCount);
}

}  // namespace
}  // namespace qmx
