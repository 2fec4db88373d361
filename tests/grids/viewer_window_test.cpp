// SPDX-License-Identifier: MIT
// Viewers of results, and the Show buttons.

#include <QTest>

#include "commands/grid_commands.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class Viewer : public Desktop {
 public:
  /// A + B and its viewer.
  void ComputeSum() {
    Enter(kSlotA, 2, 3, {"1", "2", "3", "4", "5", "6"});
    Enter(kSlotB, 2, 3, {"1", "1", "1", "1", "1", "1"});
    Click(cmdTask(0));
  }
  void EnterSymmetricA() { Enter(kSlotA, 3, 3, {"2", "1", "0", "1", "3", "1", "0", "1", "4"}); }
  bool HasBox(qmx::Slot slot) { return Window(slot).findChild<EntryBox*>() != nullptr; }
  bool HasToggle(qmx::Slot slot) {
    return Window(slot).findChild<QAbstractButton*>("cmdToggleWidth") != nullptr;
  }
};

TEST_F(Viewer, ATaskShowsItsResult) {
  ComputeSum();
  EXPECT_TRUE(Window(kSlotSum).isVisible());
  EXPECT_EQ(Window(kSlotSum).windowTitle(), "A + B");
  EXPECT_EQ(Cell(kSlotSum, 2, 3), "7");
  EXPECT_TRUE(Get(fraFrame(kSlotSum))->isVisible());
  EXPECT_EQ(Text(InfoOf(kSlotSum).rows), "2");
  EXPECT_EQ(Text(InfoOf(kSlotSum).cols), "3");
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Main()))
      << "results leave the keyboard to the main window";
}

TEST_F(Viewer, TheSpecialMatrixLeavesTheKeyboardToTheMainWindow) {
  Click(cmdTask(18));
  EXPECT_TRUE(Window(kSlotCreated).isVisible());
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Main()));
}

TEST_F(Viewer, TheCloseBoxHidesAndShowBringsBack) {
  ComputeSum();
  const GridWindow* before = &Window(kSlotSum);
  CloseByBox(Window(kSlotSum));
  EXPECT_FALSE(Window(kSlotSum).isVisible());
  Click(cmdShow(kSlotSum));
  EXPECT_EQ(&Window(kSlotSum), before);
  EXPECT_TRUE(Window(kSlotSum).isVisible());
  EXPECT_EQ(Cell(kSlotSum, 1, 1), "2");
}

TEST_F(Viewer, ShowRestoresAMinimisedWindow) {
  ComputeSum();
  Window(kSlotSum).showMinimized();
  ASSERT_TRUE(Window(kSlotSum).isMinimized());
  Click(cmdShow(kSlotSum));
  EXPECT_FALSE(Window(kSlotSum).isMinimized());
  EXPECT_TRUE(Window(kSlotSum).isVisible());
}

TEST_F(Viewer, EveryCommandThatShowsAWindowShowsItOpen) {
  ComputeSum();
  Click(cmdCreateSystem);
  Slot(kSlotSystem).array(1, 1) = 1;
  Slot(kSlotSystem).array(2, 2) = 1;
  const auto opens = [&](const Control& button, const std::vector<qmx::Slot>& slots) {
    for (const qmx::Slot slot : slots) Window(slot).showMinimized();
    Click(button);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Main())) << button.ObjectName();
    for (const qmx::Slot slot : slots) {
      EXPECT_FALSE(Window(slot).isMinimized()) << button.ObjectName() << slot;
      EXPECT_TRUE(Window(slot).isVisible()) << button.ObjectName() << slot;
    }
  };
  opens(cmdTask(0), {kSlotSum});
  opens(cmdIntoA(kSlotSum), {kSlotA});
  opens(cmdExchangeAandB, {kSlotA, kSlotB});
  Click(cmdSolve);
  opens(cmdSolve, {kSlotSolution});
  Click(cmdTask(8));
  opens(cmdTask(8), {kSlotL, kSlotU});
  Click(cmdTask(18));
  opens(cmdTask(18), {kSlotCreated});
}

TEST_F(Viewer, ATaskLeavesAMaximisedWindowMaximised) {
  ComputeSum();
  Window(kSlotSum).showMaximized();
  Click(cmdTask(0));
  EXPECT_TRUE(Window(kSlotSum).isMaximized());
  Window(kSlotSum).setWindowState(Window(kSlotSum).windowState() | Qt::WindowMinimized);
  Click(cmdTask(0));
  EXPECT_TRUE(Window(kSlotSum).isMaximized());
  EXPECT_FALSE(Window(kSlotSum).isMinimized());
}

TEST_F(Viewer, AClickInspectsACell) {
  ComputeSum();
  ClickCell(kSlotSum, 2, 3);
  EXPECT_TRUE(Box(kSlotSum).isVisible());
  EXPECT_EQ(Box(kSlotSum).text(), "7");
  EXPECT_EQ(Box(kSlotSum).toolTip(), "(2,3)=7");
  const QPoint corner = Grid(kSlotSum).viewport()->mapTo(&Window(kSlotSum), QPoint(0, 0));
  EXPECT_EQ(Box(kSlotSum).geometry(), Grid(kSlotSum).CellRect(2, 3).translated(corner));
}

TEST_F(Viewer, WhatIsTypedThereReachesNothing) {
  ComputeSum();
  Click(cmdShow(kSlotSum));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotSum)));
  ClickCell(kSlotSum, 2, 3);
  Keys("99");
  EXPECT_EQ(Box(kSlotSum).text(), "99");
  EXPECT_EQ(Slot(kSlotSum).array(2, 3), 7.0);
  EXPECT_EQ(Cell(kSlotSum, 2, 3), "7");
  Box(kSlotSum).hide();
  Grid(kSlotSum).setFocus();
  Keys("5");
  EXPECT_FALSE(Box(kSlotSum).isVisible());
  EXPECT_EQ(Slot(kSlotSum).array(2, 3), 7.0);
}

TEST_F(Viewer, LeavingTheWindowHidesTheBox) {
  ComputeSum();
  Click(cmdShow(kSlotSum));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotSum)));
  ClickCell(kSlotSum, 1, 1);
  ASSERT_TRUE(Box(kSlotSum).isVisible());
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  EXPECT_FALSE(Box(kSlotSum).isVisible());
}

TEST_F(Viewer, TheToggleSetsWidthAndPrecision) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(5));
  EXPECT_EQ(Cell(kSlotInverse, 1, 1), "0.3333333");
  ClickToggle(kSlotInverse);
  EXPECT_EQ(Cell(kSlotInverse, 1, 1), "0.333333333333333");
  EXPECT_EQ(Grid(kSlotInverse).ColWidth(1), 2 * Grid(kSlotInverse).DefaultColumnWidth());
}

TEST_F(Viewer, TheWidthOutlivesTheWindow) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(5));
  ClickToggle(kSlotInverse);
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  EXPECT_EQ(program.Windows().Window(kSlotInverse), nullptr);
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(5));
  EXPECT_EQ(Cell(kSlotInverse, 1, 1), "0.333333333333333");
}

TEST_F(Viewer, EigenvectorsStandBelowTheirEigenvalues) {
  EnterSymmetricA();
  Click(cmdTask(14));
  const MatrixGrid& grid = Grid(kSlotEigenvectors);
  EXPECT_EQ(Cell(kSlotEigenvectors, 0, 0), "Eigenvalues =");
  EXPECT_EQ(Cell(kSlotEigenvectors, 1, 0), "Eigenvectors");
  EXPECT_EQ(Cell(kSlotEigenvectors, 2, 0), "2");
  for (int j = 1; j <= 3; ++j) EXPECT_NE(Cell(kSlotEigenvectors, 0, j), std::to_string(j));
  for (int c = 0; c <= 3; ++c) EXPECT_EQ(grid.Model().ColourOf(0, c), QColor(255, 0, 0)) << c;
  EXPECT_EQ(grid.Model().ColourOf(1, 0), QColor(0, 0, 255));
  EXPECT_EQ(grid.Model().ColourOf(2, 2), QColor(0, 0, 255));
}

TEST_F(Viewer, ColumnWindowsHaveLabelsAndNoInspection) {
  EnterSymmetricA();
  Click(cmdTask(14));
  EXPECT_EQ(Grid(kSlotEigenvalues).Model().rowCount(), 3);
  EXPECT_EQ(Cell(kSlotEigenvalues, 0, 0).substr(0, 4), "EVL(");
  EXPECT_FALSE(Cell(kSlotEigenvalues, 0, 1).empty());
  EXPECT_FALSE(HasBox(kSlotEigenvalues));
  EXPECT_TRUE(HasToggle(kSlotEigenvalues));
}

TEST_F(Viewer, WindowsHaveWhatTheirKindHas) {
  for (const SlotInfo& info : kSlots) {
    GridContent content;
    content.rows = content.cols = 1;
    program.Windows().Show(info.slot, content);
    const bool inspects = info.kind == WindowKind::kEditor || info.kind == WindowKind::kViewer;
    EXPECT_EQ(HasBox(info.slot), inspects) << info.window;
    EXPECT_EQ(HasToggle(info.slot), info.kind != WindowKind::kPlainViewer) << info.window;
    EXPECT_EQ(Window(info.slot).objectName().toStdString(), info.window);
    EXPECT_EQ(Window(info.slot).windowTitle().toStdString(), info.caption);
    EXPECT_EQ(Grid(info.slot).objectName().toStdString(), info.grid);
    EXPECT_FALSE(Window(info.slot).isVisible()) << "created hidden";
  }
}

TEST_F(Viewer, TheSystemIsHeadedByItsRightHandSide) {
  Click(cmdCreateSystem);
  EXPECT_EQ(Cell(kSlotSystem, 0, 2), "2");
  EXPECT_EQ(Cell(kSlotSystem, 0, 3), " =  R.H.S.");
}

TEST_F(Viewer, NoWindowIsShownForSlotsThatDoNotExist) {
  ShowSlot(program.Commands(), static_cast<qmx::Slot>(-1));
  ShowSlot(program.Commands(), static_cast<qmx::Slot>(kSlotCount));
  EXPECT_TRUE(program.Windows().ShownWindows().empty());
}

TEST_F(Viewer, AToggledWindowGrowsButNotBeyondTheScreen) {
  TypeInto(txtRowsA, "12");
  TypeInto(txtColsA, "3");
  Click(cmdCreateA);
  GridWindow& window = Window(kSlotA);
  const int narrow = window.width();
  ClickToggle(kSlotA);
  EXPECT_GT(window.width(), narrow);
  EXPECT_LE(window.geometry().right(), window.screen()->availableGeometry().right());
  ClickToggle(kSlotA);
  EXPECT_EQ(window.width(), narrow);
}

TEST_F(Viewer, AWindowThatWasMadeNarrowerToFitStillFollowsItsGrid) {
  Enter(kSlotA, 3, 12, {});
  Enter(kSlotB, 2, 2, {});
  const int narrowed = Window(kSlotA).width();
  ASSERT_LT(narrowed, Grid(kSlotA).FullSize().width());
  Click(cmdExchangeAandB);
  EXPECT_LT(Window(kSlotA).width(), narrowed);
  EXPECT_GE(Window(kSlotA).width(), Grid(kSlotA).FullSize().width());
}

TEST_F(Viewer, NewWindowsCoverNeitherTasksNorEachOther) {
  EnterSymmetricA();
  Click(cmdTask(8));
  Click(cmdTask(5));
  const std::vector<QWidget*> shown = program.Windows().ShownWindows();
  ASSERT_EQ(shown.size(), 4U);
  for (const QWidget* one : shown) {
    EXPECT_GT(one->x(), Main().TaskArea().right()) << one->windowTitle().toStdString();
    for (const QWidget* other : shown) {
      EXPECT_TRUE(one == other || one->pos() != other->pos());
    }
  }
}

}  // namespace
}  // namespace qmx::test
