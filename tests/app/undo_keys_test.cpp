// SPDX-License-Identifier: MIT
// The keys that take steps back and do them again, wherever the keyboard is.

#include <QTest>

#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class UndoKeys : public Desktop {
 protected:
  /// With the text that such keys come with from a keyboard.
  static void Press(Qt::Key key, Qt::KeyboardModifiers held) {
    const QString text(QChar(key - Qt::Key_A + 1));
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), key, text, held);
  }
  static void PressUndo() { Press(Qt::Key_Z, Qt::ControlModifier); }
  static void PressRedo() { Press(Qt::Key_Y, Qt::ControlModifier); }
  static void PressShiftedRedo() { Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
  static void Activate(QWidget& window) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  /// A holds a number and was cleared.
  /// Opens the only cell of A and types.
  void TypeIntoCell(const std::string& text) {
    Activate(Window(kSlotA));
    ClickCell(kSlotA, 1, 1);
    Keys(text);
  }
  void ClearOne() {
    Enter(kSlotA, 1, 1, {"4"});
    Activate(Main());
    Click(cmdClearA);
    ASSERT_EQ(Slot(kSlotA).array(1, 1), 0);
  }
  double A() { return Slot(kSlotA).array(1, 1); }
};

TEST_F(UndoKeys, WorkOnTheMainWindow) {
  ClearOne();
  Activate(Main());
  Get(cmdTask(0))->setFocus();
  PressUndo();
  EXPECT_EQ(A(), 4);
  PressRedo();
  EXPECT_EQ(A(), 0);
  PressUndo();
  EXPECT_EQ(A(), 4);
  PressShiftedRedo();
  EXPECT_EQ(A(), 0);
}

TEST_F(UndoKeys, InAFieldTakeBackItsOwnTextFirst) {
  ClearOne();
  TypeInto(txtScalar, "57");
  EXPECT_EQ(Text(txtScalar), "57");
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(A(), 0) << Text(txtScalar);
    if (Text(txtScalar) == "2") break;
    PressUndo();
  }
  EXPECT_EQ(Text(txtScalar), "2");
  PressUndo();
  EXPECT_EQ(A(), 4) << "a field without anything to take back leaves the key to the steps";
}

TEST_F(UndoKeys, WorkInAWindowOfAResult) {
  ClearOne();
  Activate(Main());
  PressUndo();
  Click(cmdTask(5));
  Activate(Window(kSlotInverse));
  Grid(kSlotInverse).setFocus();
  PressUndo();
  EXPECT_EQ(program.Windows().Window(kSlotInverse), nullptr);
  EXPECT_FALSE(State().InverseComputed);
  Activate(Window(kSlotA));
  Grid(kSlotA).setFocus();
  PressRedo();
  EXPECT_TRUE(State().InverseComputed);
  EXPECT_EQ(Cell(kSlotInverse, 1, 1), "0.25");
}

TEST_F(UndoKeys, WithinAnOpenCellBelongToTheEntry) {
  ClearOne();
  TypeIntoCell("89");
  ASSERT_EQ(A(), 89);
  const std::string step = program.Runner().Steps().UndoName();
  PressUndo();
  EXPECT_NE(Box(kSlotA).text(), "89");
  EXPECT_FALSE(Box(kSlotA).isHidden());
  EXPECT_EQ(program.Runner().Steps().UndoName(), step) << "the cell's step is still the last";
  PressRedo();
  EXPECT_EQ(Box(kSlotA).text(), "89");
  PressUndo();
  PressShiftedRedo();
  EXPECT_EQ(Box(kSlotA).text(), "89");
  EXPECT_EQ(A(), 89);
  for (int i = 0; i < 9; ++i) PressUndo();
  EXPECT_EQ(program.Runner().Steps().UndoName(), step) << "not even where nothing of it is left";
}

TEST_F(UndoKeys, AfterACellIsLeftTakeItBack) {
  ClearOne();
  TypeIntoCell("89");
  Window(kSlotA).HideEntryBox();
  Grid(kSlotA).setFocus();
  PressUndo();
  EXPECT_EQ(A(), 0);
  PressUndo();
  EXPECT_EQ(A(), 4) << "then the Clear before it";
}

TEST_F(UndoKeys, ACellShowsItsElementAgainAfterAStepWasTakenBackBeforeIt) {
  Enter(kSlotA, 2, 2, {"4", "0", "0", "4"});
  Window(kSlotA).HideEntryBox();
  for (const bool pastes : {false, true}) {
    if (pastes) {
      program.Runner().Paste(kSlotA, 1, 1, "8\t8\n8\t8\n");
    } else {
      program.Runner().WriteCell(kSlotA, 1, 1, "8");
      program.Runner().EndCell();
    }
    Activate(Main());
    Click(cmdTask(kTaskTranspose));
    Get(cmdTask(0))->setFocus();
    PressUndo();
    EXPECT_EQ(Cell(kSlotA, 1, 1), "8");
    PressUndo();
    EXPECT_EQ(A(), 4);
    EXPECT_EQ(Cell(kSlotA, 1, 1), "4") << pastes;
    PressRedo();
    EXPECT_EQ(A(), 8);
    EXPECT_EQ(Cell(kSlotA, 1, 1), "8") << pastes;
    PressUndo();
  }
}

}  // namespace
}  // namespace qmx::test
