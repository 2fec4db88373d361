// SPDX-License-Identifier: MIT
#include "app/latest_result.h"

#include <QTest>

#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class Latest : public Desktop {
 protected:
  MatrixGrid& Small() { return *Main().findChild<MatrixGrid*>("grdLatest"); }
  std::string SmallCell(int row, int col) { return Small().TextMatrix(row, col).toStdString(); }
  std::string Name() { return Small().accessibleName().toStdString(); }
  QLabel& Mark() { return *Main().findChild<QLabel*>("lblStaleLatest"); }
  void EnterA() { Enter(kSlotA, 2, 2, {"2", "0", "0", "4"}); }
};

TEST_F(Latest, NothingIsShownBeforeTheFirstResult) {
  EXPECT_FALSE(Small().isVisible());
  EnterA();
  EXPECT_FALSE(Small().isVisible()) << "A is no result";
}

TEST_F(Latest, TheLatestResultIsShownWithItsName) {
  EnterA();
  Click(cmdTask(kTaskInverse));
  EXPECT_TRUE(Small().isVisible());
  EXPECT_EQ(Name(), "Latest result: Inverse of A");
  EXPECT_EQ(SmallCell(2, 2), "0.25");
  Click(cmdTask(kTaskTranspose));
  EXPECT_EQ(Name(), "Latest result: Transpose of A");
  EXPECT_EQ(SmallCell(2, 2), "4");
}

TEST_F(Latest, OfSeveralMatricesOfOneTaskTheFirstIsShown) {
  EnterA();
  Click(cmdTask(kTaskLU));
  EXPECT_EQ(Name(), "Latest result: L");
  Click(cmdTask(kTaskQR));
  EXPECT_EQ(Name(), "Latest result: Q");
}

TEST_F(Latest, ValuesWithoutAHeaderRowAreShownWithTheirLabels) {
  EnterA();
  Click(cmdTask(kTaskEigen));
  EXPECT_EQ(Name(), "Latest result: Eigenvalues of A");
  EXPECT_EQ(Small().Model().HeaderRows(), 0);
  EXPECT_EQ(SmallCell(0, 0), Cell(kSlotEigenvalues, 0, 0));
  EXPECT_EQ(SmallCell(1, 1), Cell(kSlotEigenvalues, 1, 1));
  Click(cmdTask(kTaskTranspose));
  EXPECT_EQ(Small().Model().HeaderRows(), 1);
}

TEST_F(Latest, ItFollowsUndoAndRedo) {
  EnterA();
  Click(cmdTask(kTaskInverse));
  Click(cmdTask(kTaskTranspose));
  Main().Action("mnuUndo")->trigger();
  EXPECT_EQ(Name(), "Latest result: Inverse of A");
  EXPECT_EQ(SmallCell(1, 1), "0.5");
  Main().Action("mnuUndo")->trigger();
  EXPECT_FALSE(Small().isVisible());
  Main().Action("mnuRedo")->trigger();
  EXPECT_TRUE(Small().isVisible());
  EXPECT_EQ(SmallCell(1, 1), "0.5");
}

TEST_F(Latest, ItFollowsAResultThatIsComputedAnew) {
  EnterA();
  Click(cmdTask(kTaskInverse));
  TypeInto(txtScalar, "4");
  Click(cmdTask(kTaskScale));
  EXPECT_EQ(Mark().toolTip(), "A has changed since this was computed");
  EXPECT_TRUE(Mark().isVisible());
  EXPECT_EQ(Small().accessibleDescription(), "A has changed since this was computed");
  EXPECT_EQ(SmallCell(1, 1), "0.5");
  Click(cmdTask(kTaskInverse));
  EXPECT_EQ(SmallCell(1, 1), "0.125");
  EXPECT_FALSE(Mark().isVisible());
}

TEST_F(Latest, AResetLeavesTheLatestOfTheResultsThatRemain) {
  EnterA();
  Click(cmdCreateSystem);
  const double elements[2][3] = {{1, 0, 5}, {0, 1, 6}};
  for (int i = 1; i <= 2; ++i) {
    for (int j = 1; j <= 3; ++j) {
      program.Runner().WriteCell(kSlotSystem, i, j, std::to_string(elements[i - 1][j - 1]));
      program.Runner().EndCell();
    }
  }
  Click(cmdSolve);
  ASSERT_TRUE(State().SolutionComputed);
  ASSERT_EQ(Name(), "Latest result: Solution");
  Click(cmdTask(kTaskInverse));
  ASSERT_EQ(Name(), "Latest result: Inverse of A");
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  EXPECT_TRUE(Small().isVisible());
  EXPECT_EQ(Name(), "Latest result: Solution");
  EXPECT_EQ(SmallCell(1, 1), "6");
  Click(cmdResetSystem);
  EXPECT_FALSE(Small().isVisible());
}

TEST_F(Latest, ItHasTheWidthOfItsWindow) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(kTaskInverse));
  EXPECT_EQ(SmallCell(1, 1), "0.3333333");
  ClickToggle(kSlotInverse);
  EXPECT_EQ(SmallCell(1, 1), "0.333333333333333");
  EXPECT_EQ(Small().ColWidth(1), Grid(kSlotInverse).ColWidth(1));
}

TEST_F(Latest, AClickOrEnterOpensItsWindow) {
  EnterA();
  Click(cmdTask(kTaskInverse));
  CloseByBox(Window(kSlotInverse));
  QTest::mouseClick(Small().viewport(), Qt::LeftButton, {}, {40, 30});
  EXPECT_TRUE(Window(kSlotInverse).isVisible());
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotInverse)));
  CloseByBox(Window(kSlotInverse));
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  Small().setFocus();
  Key(Qt::Key_Return);
  EXPECT_TRUE(Window(kSlotInverse).isVisible());
}

TEST_F(Latest, ItShowsSomeRowsOnASmallScreen) {
  EnterA();
  Click(cmdTask(kTaskInverse));
  const MatrixGrid& inverse = Small();
  EXPECT_TRUE(inverse.IsInSight(1, 1));
  EXPECT_TRUE(inverse.IsInSight(2, 2));
  EXPECT_LE(Main().height(), 700);
}

}  // namespace
}  // namespace qmx::test
