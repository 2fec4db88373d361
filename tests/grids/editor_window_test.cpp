// SPDX-License-Identifier: MIT
// Editors, worked by mouse and keyboard.

#include <QScrollBar>
#include <QTest>
#include <QToolTip>

#include "commands/dispatcher.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class Editor : public Desktop {
 public:
  double A(int row, int col) { return Slot(kSlotA).array(row, col); }
  void CreateA(int rows, int cols) { Enter(kSlotA, rows, cols, {}); }
  bool IsAt(int row, int col) { return Grid(kSlotA).Row() == row && Grid(kSlotA).Col() == col; }
  bool BoxLiesOverCell(qmx::Slot slot) {
    const MatrixGrid& grid = Grid(slot);
    const QPoint corner = grid.viewport()->mapTo(&Window(slot), QPoint(0, 0));
    return Box(slot).geometry() == grid.CellRect(grid.Row(), grid.Col()).translated(corner);
  }
};

TEST_F(Editor, TypingOnTheGridStartsAnEdit) {
  CreateA(2, 2);
  Keys("5");
  EXPECT_TRUE(Box(kSlotA).isVisible());
  EXPECT_EQ(Box(kSlotA).text(), "5");
  EXPECT_EQ(Box(kSlotA).cursorPosition(), 1);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "5");
  EXPECT_EQ(A(1, 1), 5.0);
}

TEST_F(Editor, TypingOnTheGridReplacesTheCell) {
  Enter(kSlotA, 1, 1, {"7"});
  Window(kSlotA).HideEntryBox();
  Keys("5");
  EXPECT_EQ(A(1, 1), 5.0);
}

TEST_F(Editor, OtherCharactersOnTheGridAreIgnored) {
  CreateA(2, 2);
  Keys("xq,/ ");
  Key(Qt::Key_Return);
  Key(Qt::Key_Backspace);
  EXPECT_FALSE(Box(kSlotA).isVisible());
  EXPECT_EQ(Cell(kSlotA, 1, 1), "");
}

TEST_F(Editor, EveryChangeIsCommittedAtOnce) {
  CreateA(2, 2);
  Keys("1e");
  EXPECT_EQ(A(1, 1), 1.0);
  Keys("3");
  EXPECT_EQ(Cell(kSlotA, 1, 1), "1e3");
  EXPECT_EQ(A(1, 1), 1000.0);
  EXPECT_EQ(Box(kSlotA).toolTip(), "A(1,1)=1e3");
}

TEST_F(Editor, TheBoxTakesOnlyTheCharactersOfNumbers) {
  CreateA(2, 2);
  Keys("0");
  Keys("1a2b3,;'xX=4 5(6)7Pi8_9+-.Ee");
  EXPECT_EQ(Box(kSlotA).text(), "0123456789+-.Ee");
}

TEST_F(Editor, BackspaceEnterAndEscapeDoNothingInTheBox) {
  CreateA(2, 2);
  Keys("12");
  for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
    Key(key);
    EXPECT_EQ(Box(kSlotA).text(), "12") << key;
    EXPECT_TRUE(Box(kSlotA).isVisible()) << key;
    EXPECT_TRUE(Box(kSlotA).hasFocus()) << key;
  }
}

TEST_F(Editor, DeleteRemovesAndCommits) {
  CreateA(2, 2);
  Keys("12");
  Key(Qt::Key_Home);
  Key(Qt::Key_Delete);
  EXPECT_EQ(A(1, 1), 2.0);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "");
  EXPECT_EQ(A(1, 1), 0.0);
}

TEST_F(Editor, AClickLaysTheBoxOverTheCell) {
  Enter(kSlotA, 2, 3, {"1", "2", "3", "4", "5", "7"});
  ClickCell(kSlotA, 2, 3);
  EXPECT_TRUE(Box(kSlotA).isVisible());
  EXPECT_TRUE(Box(kSlotA).hasFocus());
  EXPECT_EQ(Box(kSlotA).text(), "7");
  EXPECT_EQ(Box(kSlotA).toolTip(), "A(2,3)=7");
  EXPECT_TRUE(BoxLiesOverCell(kSlotA));
  Keys("8");
  EXPECT_EQ(A(2, 3), 8.0);
}

TEST_F(Editor, ToolTipsNameTheirMatrix) {
  Enter(kSlotB, 1, 1, {"3"});
  EXPECT_EQ(Box(kSlotB).toolTip(), "B(1,1)=3");
  Click(cmdTask(18));
  ClickCell(kSlotCreated, 1, 2);
  EXPECT_EQ(Box(kSlotCreated).toolTip(), "Created(1,2)=0");
  Click(cmdCreateSystem);
  ClickCell(kSlotSystem, 1, 2);
  EXPECT_EQ(Box(kSlotSystem).toolTip(), "System(1,2)=");
}

TEST_F(Editor, RightAndLeftGoThroughTheMatrixAndAround) {
  CreateA(2, 2);
  ClickCell(kSlotA, 1, 1);
  for (const auto& [row, col] : {std::pair{1, 2}, {2, 1}, {2, 2}, {1, 1}}) {
    Key(Qt::Key_Right);
    EXPECT_TRUE(IsAt(row, col)) << row << "," << col;
    EXPECT_TRUE(BoxLiesOverCell(kSlotA));
  }
  for (const auto& [row, col] : {std::pair{2, 2}, {2, 1}, {1, 2}, {1, 1}}) {
    Key(Qt::Key_Left);
    EXPECT_TRUE(IsAt(row, col)) << row << "," << col;
  }
}

TEST_F(Editor, DownAndUpStayInTheColumnAndWrap) {
  CreateA(3, 2);
  ClickCell(kSlotA, 1, 2);
  for (const int row : {2, 3, 1}) {
    Key(Qt::Key_Down);
    EXPECT_TRUE(IsAt(row, 2)) << row;
  }
  for (const int row : {3, 2, 1}) {
    Key(Qt::Key_Up);
    EXPECT_TRUE(IsAt(row, 2)) << row;
  }
}

TEST_F(Editor, GoingThroughCellsChangesNoElement) {
  Enter(kSlotA, 1, 2, {"0.123456789012345", "1.00000000000001"});
  ClickToggle(kSlotA);
  ClickToggle(kSlotA);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "0.1234568");
  ClickCell(kSlotA, 1, 1);
  for (int i = 0; i < 5; ++i) Key(Qt::Key_Right);
  EXPECT_EQ(A(1, 1), 0.123456789012345);
  EXPECT_EQ(A(1, 2), 1.00000000000001);
}

TEST_F(Editor, TextsStayAsTypedUntilTheGridIsFilledAnew) {
  CreateA(1, 1);
  Keys("1.5e");
  EXPECT_EQ(A(1, 1), 1.5);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "1.5e");
  ClickToggle(kSlotA);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "1.5");
  EXPECT_EQ(Box(kSlotA).text(), "1.5");
  EXPECT_EQ(A(1, 1), 1.5);
}

TEST_F(Editor, TheToggleSetsWidthAndPrecision) {
  Enter(kSlotA, 1, 2, {"0.123456789012345"});
  const int narrow = Grid(kSlotA).ColWidth(1);
  EXPECT_EQ(narrow, Grid(kSlotA).DefaultColumnWidth());
  ClickToggle(kSlotA);
  EXPECT_TRUE(program.Windows().IsWide(kSlotA));
  EXPECT_EQ(Grid(kSlotA).ColWidth(1), 2 * narrow);
  EXPECT_EQ(Grid(kSlotA).ColWidth(2), 2 * narrow);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "0.123456789012345");
  EXPECT_TRUE(BoxLiesOverCell(kSlotA));
  ClickToggle(kSlotA);
  EXPECT_EQ(Grid(kSlotA).ColWidth(1), narrow);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "0.1234568");
}

TEST_F(Editor, TheCloseBoxHidesAndShowBringsBack) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  const GridWindow* before = &Window(kSlotA);
  Window(kSlotA).resize(411, 333);
  CloseByBox(Window(kSlotA));
  EXPECT_FALSE(Window(kSlotA).isVisible());
  EXPECT_FALSE(Box(kSlotA).isVisibleTo(&Window(kSlotA)));
  Click(cmdShow(kSlotA));
  EXPECT_EQ(&Window(kSlotA), before);
  EXPECT_TRUE(Window(kSlotA).isVisible());
  EXPECT_EQ(Window(kSlotA).size(), QSize(411, 333));
  EXPECT_EQ(Cell(kSlotA, 2, 2), "4");
}

TEST_F(Editor, LeavingTheWindowHidesTheBox) {
  Enter(kSlotA, 2, 2, {"1"});
  ASSERT_TRUE(Box(kSlotA).isVisible());
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  EXPECT_FALSE(Box(kSlotA).isVisible());
  EXPECT_EQ(A(1, 1), 1.0);
}

TEST_F(Editor, TasksHideTheBox) {
  Enter(kSlotA, 2, 2, {"1"});
  ASSERT_TRUE(Box(kSlotA).isVisible());
  // Not by a click, which would leave the window and hide the box for that reason.
  PressTask(program.Commands(), 4);
  EXPECT_FALSE(Box(kSlotA).isVisible());
}

TEST_F(Editor, ScrollingKeepsBoxAndCellTogetherOrHidesIt) {
  CreateA(60, 30);
  Window(kSlotA).resize(400, 300);
  ClickCell(kSlotA, 2, 2);
  Grid(kSlotA).verticalScrollBar()->setValue(5);
  EXPECT_TRUE(Box(kSlotA).isVisible());
  EXPECT_TRUE(BoxLiesOverCell(kSlotA));
  Grid(kSlotA).verticalScrollBar()->setValue(400);
  EXPECT_FALSE(Box(kSlotA).isVisible());
  EXPECT_TRUE(Grid(kSlotA).hasFocus());
}

TEST_F(Editor, ArrowsScrollTheCellIntoSight) {
  CreateA(60, 30);
  Window(kSlotA).resize(400, 300);
  ClickCell(kSlotA, 1, 1);
  Key(Qt::Key_Left);
  EXPECT_TRUE(IsAt(60, 30));
  EXPECT_TRUE(Grid(kSlotA).IsInSight(60, 30));
  EXPECT_TRUE(Box(kSlotA).isVisible());
  EXPECT_TRUE(BoxLiesOverCell(kSlotA));
  Keys("9");
  EXPECT_EQ(A(60, 30), 9.0);
}

TEST_F(Editor, AResetUnloadsTheWindow) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  EXPECT_EQ(program.Windows().Window(kSlotA), nullptr);
  CreateA(2, 2);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "");
}

TEST_F(Editor, ClearFillsTheGridWithZeros) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  Click(cmdClearA);
  EXPECT_EQ(Cell(kSlotA, 2, 2), "0");
  EXPECT_EQ(A(2, 2), 0.0);
}

TEST_F(Editor, CreatingGivesTheKeyboardToTheEmptyEditor) {
  CreateA(2, 2);
  EXPECT_TRUE(Window(kSlotA).isActiveWindow());
  EXPECT_TRUE(Grid(kSlotA).hasFocus());
  EXPECT_TRUE(IsAt(1, 1));
}

TEST_F(Editor, PastedTextIsHeldToTheSameCharacters) {
  CreateA(1, 1);
  Keys("1");
  Box(kSlotA).insert("x");
  EXPECT_EQ(Box(kSlotA).text(), "1");
  Box(kSlotA).insert("2.5");
  EXPECT_EQ(Box(kSlotA).text(), "12.5");
}

TEST_F(Editor, AnEntryRefusesSeveralLinesWithAHint) {
  CreateA(1, 1);
  Keys("1");
  QToolTip::hideText();
  Box(kSlotA).insert("2\n3");
  EXPECT_EQ(Box(kSlotA).text(), "1");
  EXPECT_EQ(A(1, 1), 1.0);
  EXPECT_EQ(QToolTip::text(), "A cell holds one number.");
  Box(kSlotA).insert("5\r\n");
  EXPECT_EQ(Box(kSlotA).text(), "15") << "one line with its end";
  EXPECT_EQ(A(1, 1), 15.0);
}

TEST_F(Editor, TabHidesTheEntryBoxAndGoesOn) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  ClickCell(kSlotA, 2, 1);
  ASSERT_TRUE(Box(kSlotA).isVisible());
  Key(Qt::Key_Tab);
  EXPECT_FALSE(Box(kSlotA).isVisible());
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdToggleWidth");
  Key(Qt::Key_Backtab);
  EXPECT_TRUE(Grid(kSlotA).hasFocus());
  Key(Qt::Key_F2);
  ASSERT_TRUE(Box(kSlotA).isVisible());
  EXPECT_TRUE(IsAt(2, 1));
  Key(Qt::Key_Backtab);
  EXPECT_FALSE(Box(kSlotA).isVisible());
  EXPECT_TRUE(Grid(kSlotA).hasFocus());
}

TEST_F(Editor, ThePressedToggleLeavesTheEntryBoxOpen) {
  Enter(kSlotA, 1, 1, {"1"});
  ClickCell(kSlotA, 1, 1);
  ClickToggle(kSlotA);
  EXPECT_TRUE(Box(kSlotA).isVisible());
}

}  // namespace
}  // namespace qmx::test
