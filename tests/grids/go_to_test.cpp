// SPDX-License-Identifier: MIT
// Going to a cell by its numbers.

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolTip>

#include "grids/go_to_dialog.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class GoTo : public Desktop {
 public:
  GoToDialog* Dialog(qmx::Slot slot) { return Window(slot).findChild<GoToDialog*>(); }
  void Ask(qmx::Slot slot) {
    Window(slot).activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &Window(slot); }));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_G, Qt::ControlModifier);
    ASSERT_NE(Dialog(slot), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == Dialog(slot); }));
  }
  std::string Field(qmx::Slot slot, const char* name) {
    return Dialog(slot)->findChild<QLineEdit*>(name)->text().toStdString();
  }
  std::string Refusal(qmx::Slot slot) {
    return Dialog(slot)->findChild<QLabel*>("lblGoToRefusal")->text().toStdString();
  }
  /// Types both numbers over the ones proposed.
  void Fill(const std::string& row, const std::string& col) {
    Keys(row);
    Key(Qt::Key_Tab);
    Keys(col);
  }
  bool IsClosed(qmx::Slot slot) {
    return QTest::qWaitFor([&] { return Dialog(slot) == nullptr; });
  }
  bool IsAt(qmx::Slot slot, int row, int col) {
    return Grid(slot).Row() == row && Grid(slot).Col() == col;
  }
};

TEST_F(GoTo, ProposesTheCurrentCellAndGoesOnEnter) {
  Enter(kSlotA, 60, 30, {});
  ClickCell(kSlotA, 2, 1);
  Ask(kSlotA);
  EXPECT_EQ(Field(kSlotA, "txtGoToRow"), "2");
  EXPECT_EQ(Field(kSlotA, "txtGoToColumn"), "1");
  Fill("60", "30");
  Key(Qt::Key_Return);
  EXPECT_TRUE(IsClosed(kSlotA));
  EXPECT_TRUE(IsAt(kSlotA, 60, 30));
  EXPECT_TRUE(Grid(kSlotA).IsInSight(60, 30));
  Window(kSlotA).activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &Window(kSlotA); }));
  EXPECT_TRUE(Grid(kSlotA).hasFocus());
  EXPECT_FALSE(Box(kSlotA).isVisible());
  Keys("5");
  EXPECT_EQ(Slot(kSlotA).array(60, 30), 5);
}

TEST_F(GoTo, EscapeLeaves) {
  Enter(kSlotA, 3, 3, {});
  Ask(kSlotA);
  Fill("2", "2");
  Key(Qt::Key_Escape);
  EXPECT_TRUE(IsClosed(kSlotA));
  EXPECT_TRUE(IsAt(kSlotA, 1, 1));
}

TEST_F(GoTo, RefusesWhatIsOutside) {
  Enter(kSlotA, 3, 4, {});
  for (const char* row : {"0", "4", "-1", "x", "1.5", "99999999999"}) {
    Ask(kSlotA);
    Fill(row, "1");
    Key(Qt::Key_Return);
    ASSERT_NE(Dialog(kSlotA), nullptr) << row;
    EXPECT_EQ(Refusal(kSlotA), std::string("There is no row \"") + row +
                                   "\": a whole number from 1 to 3 is needed.");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtGoToRow");
    Key(Qt::Key_Escape);
    EXPECT_TRUE(IsClosed(kSlotA));
    EXPECT_TRUE(IsAt(kSlotA, 1, 1));
  }
  Ask(kSlotA);
  Fill("3", "5");
  Key(Qt::Key_Return);
  ASSERT_NE(Dialog(kSlotA), nullptr);
  EXPECT_EQ(Refusal(kSlotA), "There is no column \"5\": a whole number from 1 to 4 is needed.");
  EXPECT_EQ(QApplication::focusWidget()->accessibleDescription().isEmpty(), false);
  Keys("4");
  Key(Qt::Key_Return);
  EXPECT_TRUE(IsClosed(kSlotA));
  EXPECT_TRUE(IsAt(kSlotA, 3, 4));
}

TEST_F(GoTo, CountsTheRowsOfASingleColumnFromOne) {
  Enter(kSlotA, 2, 2, {"2", "0", "0", "3"});
  Click(cmdTask(14));
  Click(cmdShow(kSlotEigenvalues));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotEigenvalues)));
  Ask(kSlotEigenvalues);
  EXPECT_EQ(Field(kSlotEigenvalues, "txtGoToRow"), "1");
  Fill("2", "1");
  Key(Qt::Key_Return);
  EXPECT_TRUE(IsClosed(kSlotEigenvalues));
  EXPECT_TRUE(IsAt(kSlotEigenvalues, 1, 1));
}

TEST_F(GoTo, RefusesSeveralLinesWithAHint) {
  Enter(kSlotA, 2, 2, {});
  Ask(kSlotA);
  QToolTip::hideText();
  static_cast<QLineEdit*>(QApplication::focusWidget())->insert("1\n2");
  EXPECT_EQ(Field(kSlotA, "txtGoToRow"), "1");
  EXPECT_EQ(QToolTip::text(), "A field holds one line; several were not taken.");
}

TEST_F(GoTo, WorksFromTheToggleAndTheMenu) {
  Enter(kSlotA, 2, 2, {});
  Window(kSlotA).findChild<QAbstractButton*>("cmdToggleWidth")->setFocus();
  Ask(kSlotA);
  Key(Qt::Key_Escape);
  EXPECT_TRUE(IsClosed(kSlotA));
  Window(kSlotA).findChild<QAction*>("mnuGoTo")->trigger();
  EXPECT_NE(Dialog(kSlotA), nullptr);
}

}  // namespace
}  // namespace qmx::test
