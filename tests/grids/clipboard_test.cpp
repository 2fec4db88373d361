// SPDX-License-Identifier: MIT
// Copying from and pasting into the windows of matrices.

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QTest>

#include "base/number_text.h"
#include "support/cpu_time.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers kControl = Qt::ControlModifier;

class Clipboard : public Desktop {
 public:
  double A(int row, int col) { return Slot(kSlotA).array(row, col); }
  void CreateA(int rows, int cols) { Enter(kSlotA, rows, cols, {}); }
  static std::string Text() { return QApplication::clipboard()->text().toStdString(); }
  static void Put(const std::string& text) {
    QApplication::clipboard()->setText(QString::fromStdString(text));
  }
  void Show(qmx::Slot slot) {
    Click(cmdShow(slot));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(slot)));
    Grid(slot).setFocus();
  }
  /// The entry of a menu that is open, chosen.
  static void Choose(const char* name) {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* entry : menu->actions()) {
      if (entry->objectName() != name) continue;
      entry->trigger();
      menu->close();
      return;
    }
    FAIL() << name << " is missing";
  }
  static void AskMenu(QWidget& on) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, on.rect().center(),
                            on.mapToGlobal(on.rect().center()));
    QApplication::sendEvent(&on, &event);
  }
  bool BoxIsOpen(qmx::Slot slot) { return Box(slot).isVisible(); }
};

TEST_F(Clipboard, ACopyHasAllDigitsAndTabs) {
  Enter(kSlotA, 2, 2, {"3", "0", "0", "7"});
  Click(cmdTask(5));
  Show(kSlotInverse);
  EXPECT_EQ(Cell(kSlotInverse, 1, 1), "0.3333333");
  Key(Qt::Key_A, kControl);
  Key(Qt::Key_C, kControl);
  EXPECT_EQ(Text(), "0.3333333333333333\t0\n0\t0.14285714285714285\n");
}

TEST_F(Clipboard, OneCellIsCopiedWithoutALineEnd) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(5));
  Show(kSlotInverse);
  Key(Qt::Key_Insert, kControl);
  EXPECT_EQ(Text(), "0.3333333333333333");
}

TEST_F(Clipboard, EmptyCellsAreCopiedEmpty) {
  CreateA(2, 2);
  Keys("5");
  Key(Qt::Key_Right);
  Key(Qt::Key_A, kControl);
  Key(Qt::Key_C, kControl);
  EXPECT_EQ(Text(), "5\t\n\t\n");
}

TEST_F(Clipboard, HeadersGoWithTheSelectedCells) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  Grid(kSlotA).SelectBlock({2, 1, 2, 2});
  AskMenu(Grid(kSlotA));
  Choose("mnuCopyWithHeaders");
  EXPECT_EQ(Text(), "\t1\t2\n2\t3\t4\n");
}

TEST_F(Clipboard, WindowsOfOneColumnCopyToo) {
  Enter(kSlotA, 2, 2, {"2", "0", "0", "3"});
  Click(cmdTask(14));
  Show(kSlotEigenvalues);
  Key(Qt::Key_A, kControl);
  Key(Qt::Key_C, kControl);
  const std::string first = CStr(Slot(kSlotEigenvalues).array(1, 1));
  EXPECT_EQ(Text(), first + "\n" + CStr(Slot(kSlotEigenvalues).array(2, 1)) + "\n");
  AskMenu(Grid(kSlotEigenvalues));
  Choose("mnuCopyWithHeaders");
  EXPECT_EQ(Text().substr(0, 4), "EVL(");
}

TEST_F(Clipboard, ABlockIsPastedFromTheOpenCellOn) {
  Enter(kSlotA, 3, 3, {"1", "2", "3", "4", "5", "6", "7", "8", "9"});
  ClickCell(kSlotA, 2, 2);
  ASSERT_TRUE(BoxIsOpen(kSlotA));
  Put("0.10\t-2\r\n+3e1\t.5\r\n");
  Key(Qt::Key_V, kControl);
  EXPECT_FALSE(BoxIsOpen(kSlotA));
  EXPECT_EQ(A(2, 2), 0.1);
  EXPECT_EQ(A(2, 3), -2);
  EXPECT_EQ(A(3, 2), 30);
  EXPECT_EQ(A(3, 3), 0.5);
  EXPECT_EQ(A(1, 1), 1);
  EXPECT_EQ(Cell(kSlotA, 2, 2), "0.10");
  EXPECT_EQ(Cell(kSlotA, 3, 2), "+3e1");
  EXPECT_EQ(Cell(kSlotA, 3, 1), "7");
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{2, 2, 3, 3}));
  ClickToggle(kSlotA);
  EXPECT_EQ(Cell(kSlotA, 2, 2), "0.1");
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{2, 2, 3, 3}));
}

TEST_F(Clipboard, ASelectionIsPastedIntoFromItsFirstCellOn) {
  CreateA(3, 3);
  ClickCell(kSlotA, 3, 3);
  Key(Qt::Key_Up, kShift);
  Key(Qt::Key_Left, kShift);
  Put("1\t2");
  Key(Qt::Key_Insert, kShift);
  EXPECT_EQ(A(2, 2), 1);
  EXPECT_EQ(A(2, 3), 2);
  EXPECT_EQ(A(3, 3), 0);
}

TEST_F(Clipboard, OneNumberIsPastedIntoTheOpenCellsText) {
  CreateA(1, 2);
  Keys("12");
  Put(" \u22125\r\n");
  Key(Qt::Key_Home);
  Key(Qt::Key_V, kControl);
  EXPECT_EQ(Box(kSlotA).text(), "-512");
  EXPECT_EQ(A(1, 1), -512);
  EXPECT_TRUE(BoxIsOpen(kSlotA));
  Put("E2");
  Key(Qt::Key_End);
  Key(Qt::Key_V, kControl);
  EXPECT_EQ(A(1, 1), -51200) << "as its characters typed";
}

TEST_F(Clipboard, WhatIsNoNumberIsRefusedAndNothingChanges) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  ClickCell(kSlotA, 1, 1);
  for (const char* text :
       {"7\t8.5\n9\t1,5", "1,5", "7\t8\t9", "1\n2\n3", "7\tx", "1E999", "1\t\t"}) {
    Put(text);
    Window(kSlotA).activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
    Grid(kSlotA).setFocus();
    const SeenBox seen =
        ActAndAnswer([&] { Key(Qt::Key_V, kControl); }, QMessageBox::StandardButton::Ok);
    EXPECT_TRUE(seen.text.starts_with("The block cannot be pasted: ")) << text;
    EXPECT_EQ(A(1, 1), 1) << text;
    EXPECT_EQ(A(2, 2), 4) << text;
    EXPECT_EQ(Cell(kSlotA, 1, 1), "1") << text;
  }
}

TEST_F(Clipboard, ADecimalCommaIsRefusedInTheOpenCellToo) {
  Enter(kSlotA, 1, 1, {"1"});
  ClickCell(kSlotA, 1, 1);
  Put("2,5");
  const SeenBox seen =
      ActAndAnswer([&] { Key(Qt::Key_V, kControl); }, QMessageBox::StandardButton::Ok);
  EXPECT_NE(seen.text.find("row 1, column 1 of it is \"2,5\""), std::string::npos) << seen.text;
  EXPECT_EQ(seen.icon, QMessageBox::Critical);
  EXPECT_EQ(A(1, 1), 1);
}

TEST_F(Clipboard, ViewersTakeNothing) {
  Enter(kSlotA, 2, 2, {"1", "0", "0", "2"});
  Click(cmdTask(5));
  Show(kSlotInverse);
  Put("7\t8\n9\t10");
  Key(Qt::Key_V, kControl);
  ClickCell(kSlotInverse, 1, 1);
  Key(Qt::Key_V, kControl);
  Put("7");
  Key(Qt::Key_V, kControl);
  EXPECT_EQ(Slot(kSlotInverse).array(1, 1), 1);
  EXPECT_EQ(Cell(kSlotInverse, 1, 1), "1");
  Grid(kSlotInverse).SelectBlock({1, 1, 2, 2});
  AskMenu(Grid(kSlotInverse));
  for (const QAction* entry : QApplication::activePopupWidget()->actions()) {
    EXPECT_NE(entry->objectName(), "mnuPaste");
  }
  QApplication::activePopupWidget()->close();
}

TEST_F(Clipboard, TheOpenCellIsCopiedWholeAndItsTextInParts) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(5));
  Show(kSlotInverse);
  ClickCell(kSlotInverse, 1, 1);
  EXPECT_EQ(Box(kSlotInverse).selectedText(), "0.3333333");
  Key(Qt::Key_C, kControl);
  EXPECT_EQ(Text(), "0.3333333333333333");
  Box(kSlotInverse).setSelection(0, 4);
  Key(Qt::Key_C, kControl);
  EXPECT_EQ(Text(), "0.33");
  Keys("99");
  Key(Qt::Key_A, kControl);
  Key(Qt::Key_C, kControl);
  EXPECT_EQ(Text(), "9933333") << "what was typed there is text";
}

TEST_F(Clipboard, KeysSelectTextFirstAndThenCells) {
  Enter(kSlotA, 3, 3, {"12", "2", "3", "4"});
  ClickCell(kSlotA, 1, 1);
  Key(Qt::Key_Home);
  Key(Qt::Key_Right, kShift);
  EXPECT_EQ(Box(kSlotA).selectedText(), "1");
  Key(Qt::Key_Right, kShift);
  EXPECT_EQ(Box(kSlotA).selectedText(), "12");
  EXPECT_TRUE(BoxIsOpen(kSlotA));
  Key(Qt::Key_Right, kShift);
  EXPECT_FALSE(BoxIsOpen(kSlotA));
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{1, 1, 1, 2}));
  Key(Qt::Key_Down, kShift);
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{1, 1, 2, 2}));
  Key(Qt::Key_Right);
  EXPECT_TRUE(BoxIsOpen(kSlotA));
  EXPECT_FALSE(Grid(kSlotA).Selected());
  EXPECT_EQ(Grid(kSlotA).Col(), 2);
  Key(Qt::Key_Down, kShift);
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{1, 2, 2, 2}));
  ClickCell(kSlotA, 1, 1);
  Key(Qt::Key_Home);
  Key(Qt::Key_A, kControl);
  EXPECT_EQ(Box(kSlotA).selectedText(), "12");
  Key(Qt::Key_A, kControl);
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{1, 1, 3, 3}));
}

TEST_F(Clipboard, ADragClosesTheBoxAndSelects) {
  Enter(kSlotA, 3, 3, {"1"});
  MatrixGrid& grid = Grid(kSlotA);
  QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(1, 1).center());
  EXPECT_TRUE(BoxIsOpen(kSlotA));
  const QPoint there = grid.CellRect(2, 3).center();
  QMouseEvent move(QEvent::MouseMove, there, grid.viewport()->mapToGlobal(there), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(grid.viewport(), &move);
  QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, there);
  EXPECT_FALSE(BoxIsOpen(kSlotA));
  EXPECT_TRUE(grid.hasFocus());
  EXPECT_EQ(grid.Selected(), (CellBlock{1, 1, 2, 3}));
}

TEST_F(Clipboard, DeleteLeavesSelectedCellsAlone) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  Key(Qt::Key_Down, kShift);
  ASSERT_TRUE(Grid(kSlotA).Selected());
  Key(Qt::Key_Delete);
  Key(Qt::Key_Backspace);
  EXPECT_EQ(A(1, 1), 1);
  EXPECT_EQ(A(2, 1), 3);
  EXPECT_TRUE(Grid(kSlotA).Selected());
}

TEST_F(Clipboard, TypingOnASelectionGoesToItsFirstCell) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  Grid(kSlotA).SelectBlock({1, 2, 2, 2});
  Grid(kSlotA).setFocus();
  Keys("9");
  EXPECT_EQ(A(1, 2), 9);
  EXPECT_FALSE(Grid(kSlotA).Selected());
  EXPECT_TRUE(BoxIsOpen(kSlotA));
}

TEST_F(Clipboard, TheMenusCopyAndPaste) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  Grid(kSlotA).SelectBlock({1, 1, 1, 2});
  AskMenu(Grid(kSlotA));
  Choose("mnuCopy");
  EXPECT_EQ(Text(), "1\t2\n");
  Grid(kSlotA).SelectBlock({2, 1, 2, 2});
  AskMenu(Grid(kSlotA));
  Choose("mnuPaste");
  EXPECT_EQ(A(2, 1), 1);
  EXPECT_EQ(A(2, 2), 2);
  ClickCell(kSlotA, 1, 1);
  AskMenu(Box(kSlotA));
  Choose("mnuCopyText");
  EXPECT_EQ(Text(), "1");
  Put("8\t9");
  AskMenu(Box(kSlotA));
  Choose("mnuPasteText");
  EXPECT_EQ(A(1, 1), 8);
  EXPECT_EQ(A(1, 2), 9);
  AskMenu(Grid(kSlotA));
  Choose("mnuSelectAll");
  EXPECT_EQ(Grid(kSlotA).Selected(), (CellBlock{1, 1, 2, 2}));
}

TEST_F(Clipboard, LaterTextsLieOverAPastedBlock) {
  constexpr int kSize = 100;
  CreateA(kSize, kSize);
  std::string block;
  for (int i = 0; i < kSize * kSize; ++i) block += (i + 1) % kSize == 0 ? "1.50\n" : "1.50\t";
  Keys("7");
  Put(block);
  Key(Qt::Key_V, kControl);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "1.50");
  EXPECT_EQ(Cell(kSlotA, kSize, kSize), "1.50");
  ClickCell(kSlotA, 1, 1);
  Keys("8");
  EXPECT_EQ(Cell(kSlotA, 1, 1), "8");
  Put("2.0\t3.0");
  Grid(kSlotA).SelectBlock({1, 1, 1, 1});
  Grid(kSlotA).setFocus();
  Key(Qt::Key_V, kControl);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "2.0");
  EXPECT_EQ(Cell(kSlotA, 2, 1), "1.50");
  Grid(kSlotA).SetUp(3, 3, false);
  EXPECT_EQ(Cell(kSlotA, 3, 3), "1.50");
  Grid(kSlotA).SetUp(5, 5, false);
  EXPECT_EQ(Cell(kSlotA, 3, 3), "1.50");
  EXPECT_EQ(Cell(kSlotA, 4, 4), "") << "a row that was gone comes back empty";
  Grid(kSlotA).Populate(Matrix(5, 5), false);
  EXPECT_EQ(Cell(kSlotA, 3, 3), "0");
}

TEST_F(Clipboard, AFillOfSomeColumnsKeepsAPastedBlockInTheOthers) {
  constexpr int kSize = 100;
  CreateA(kSize, kSize);
  std::string block;
  for (int i = 0; i < kSize * kSize; ++i) block += (i + 1) % kSize == 0 ? "1.50\n" : "1.50\t";
  Put(block);
  Key(Qt::Key_V, kControl);
  std::vector<bool> columns(kSize, false);
  columns[1] = true;
  Grid(kSlotA).Populate(Matrix(kSize, kSize), false, &columns);
  EXPECT_EQ(Cell(kSlotA, 5, 1), "1.50");
  EXPECT_EQ(Cell(kSlotA, 5, 2), "0");
}

TEST_F(Clipboard, ALargeBlockIsCopiedAndPastedWithoutAPause) {
  constexpr int kSize = 2000;
  constexpr double kPause = 2000 * kSlowdown;
  CreateA(kSize, kSize);
  for (int i = 1; i <= kSize; ++i) {
    for (int j = 1; j <= kSize; ++j) Slot(kSlotA).array(i, j) = 1.0 / (i + j);
  }
  const Matrix values = Slot(kSlotA).array;
  Click(cmdShow(kSlotA));
  Grid(kSlotA).Populate(values, false);
  Grid(kSlotA).setFocus();
  Key(Qt::Key_A, kControl);
  EXPECT_LT(CpuTime([] { Key(Qt::Key_C, kControl); }), kPause);
  Click(cmdClearA);
  Click(cmdShow(kSlotA));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
  Grid(kSlotA).setFocus();
  EXPECT_LT(CpuTime([] { Key(Qt::Key_V, kControl); }), kPause);
  EXPECT_TRUE(Slot(kSlotA).array == values);
  EXPECT_EQ(Cell(kSlotA, 1, 2), "0.3333333333333333");
}

}  // namespace
}  // namespace qmx::test
