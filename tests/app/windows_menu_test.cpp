// SPDX-License-Identifier: MIT
// Going through the windows, arranging them, and where they come back to.

#include "app/windows_menu.h"

#include <QMenu>
#include <QScreen>
#include <QTest>

#include "app/settings.h"
#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class WindowsMenu : public Desktop {
 protected:
  void Choose(const char* entry) { Main().Action(entry)->trigger(); }
  /// Windows of A, B, their sum and their product.
  void OpenFour() {
    Enter(kSlotA, 2, 2, {"4", "1", "1", "3"});
    Click(cmdIntoB(kSlotA));
    Click(cmdTask(kTaskSum));
    Click(cmdTask(kTaskProduct));
    ASSERT_EQ(program.Windows().ShownWindows().size(), 4U);
  }
  void ExpectActive(const QWidget& window) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(const_cast<QWidget*>(&window)))
        << window.objectName().toStdString();
  }
  QRect Screen() { return Main().screen()->availableGeometry(); }
};

TEST_F(WindowsMenu, TilesCoverNeitherEachOtherNorTheMainWindow) {
  OpenFour();
  Choose("mnuTile");
  const std::vector<QWidget*> windows = program.Windows().ShownWindows();
  for (const QWidget* one : windows) {
    EXPECT_TRUE(Screen().contains(one->frameGeometry()));
    EXPECT_FALSE(one->frameGeometry().intersects(Main().frameGeometry()));
    for (const QWidget* other : windows)
      EXPECT_TRUE(one == other || !one->frameGeometry().intersects(other->frameGeometry()));
  }
}

TEST_F(WindowsMenu, WhatIsTiledStaysWhereAPersonPutsIt) {
  OpenFour();
  Choose("mnuTile");
  GridWindow& sum = Window(kSlotSum);
  sum.move(77, 99);
  sum.resize(333, 222);
  const QRect product = Window(kSlotProduct).geometry();
  Click(cmdTask(kTaskSum));
  Click(cmdTask(kTaskTranspose));
  EXPECT_EQ(sum.pos(), QPoint(77, 99));
  EXPECT_EQ(sum.size(), QSize(333, 222));
  EXPECT_EQ(Window(kSlotProduct).geometry(), product);
}

TEST_F(WindowsMenu, ManyTilesTakeTheWholeScreen) {
  OpenFour();
  for (const Task task : {kTaskDifference, kTaskInverse, kTaskTranspose, kTaskAdjoint, kTaskLU,
                          kTaskQR, kTaskEigen, kTaskDefiniteness, kTaskSpecialMatrix})
    Click(cmdTask(task));
  Click(cmdCreateSystem);
  const std::vector<QWidget*> windows = program.Windows().ShownWindows();
  ASSERT_GE(windows.size(), 15U);
  Choose("mnuTile");
  for (const QWidget* one : windows) {
    EXPECT_TRUE(Screen().contains(one->frameGeometry()));
    EXPECT_GE(one->width(), 200);
    for (const QWidget* other : windows)
      EXPECT_TRUE(one == other || !one->frameGeometry().intersects(other->frameGeometry()));
  }
}

TEST_F(WindowsMenu, ACascadeLeavesEveryTitleInSight) {
  OpenFour();
  Choose("mnuCascade");
  const std::vector<QWidget*> windows = program.Windows().ShownWindows();
  for (std::size_t i = 1; i < windows.size(); ++i) {
    EXPECT_GE(windows[i]->y(), windows[i - 1]->y() + 20);
    EXPECT_GT(windows[i]->x(), windows[i - 1]->x());
    EXPECT_TRUE(Screen().contains(windows[i]->frameGeometry()));
  }
}

TEST_F(WindowsMenu, MinimisedWindowsAreLeftAlone) {
  OpenFour();
  Window(kSlotSum).showMinimized();
  Choose("mnuTile");
  Choose("mnuCascade");
  Choose("mnuResultsInFront");
  EXPECT_TRUE(Window(kSlotSum).isMinimized());
}

TEST_F(WindowsMenu, ResultsInFrontGivesTheLastOneTheKeyboard) {
  OpenFour();
  ExpectActive(Main());
  Choose("mnuResultsInFront");
  ExpectActive(Window(kSlotProduct));
}

TEST_F(WindowsMenu, HideAllOthersLeavesTheMainWindowAlone) {
  OpenFour();
  Choose("mnuHideAll");
  EXPECT_TRUE(program.Windows().ShownWindows().empty());
  EXPECT_TRUE(Main().isVisible());
}

TEST_F(WindowsMenu, KeysGoThroughTheWindowsAndBack) {
  OpenFour();
  const std::vector<const QWidget*> order{&Window(kSlotA), &Window(kSlotB), &Window(kSlotSum),
                                          &Window(kSlotProduct), &Main()};
  Main().activateWindow();
  ExpectActive(Main());
  for (const QWidget* window : order) {
    Key(Qt::Key_F6);
    ExpectActive(*window);
  }
  Key(Qt::Key_Tab, Qt::ControlModifier);
  ExpectActive(*order[0]);
  Key(Qt::Key_Tab, Qt::ControlModifier);
  ExpectActive(*order[1]);
  Key(Qt::Key_F6, Qt::ShiftModifier);
  ExpectActive(*order[0]);
  Key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  ExpectActive(Main());
}

TEST_F(WindowsMenu, AKeyClosesAWindowAsItsCloseBoxDoesButNotTheMainOne) {
  OpenFour();
  Window(kSlotA).activateWindow();
  ExpectActive(Window(kSlotA));
  ClickCell(kSlotA, 1, 1);
  ASSERT_TRUE(Box(kSlotA).isVisible());
  Key(Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(Window(kSlotA).isVisible());
  EXPECT_FALSE(Box(kSlotA).isVisibleTo(&Window(kSlotA)));
  EXPECT_TRUE(State().ACreated);
  Main().activateWindow();
  ExpectActive(Main());
  Key(Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(Main().isVisible());
}

TEST_F(WindowsMenu, KeysShowAAndBOnceTheyAreThere) {
  EXPECT_FALSE(Main().Action("mnuShowA")->isEnabled());
  OpenFour();
  Choose("mnuHideAll");
  Main().activateWindow();
  ExpectActive(Main());
  Key(Qt::Key_2, Qt::ControlModifier);
  ExpectActive(Window(kSlotB));
  Key(Qt::Key_1, Qt::ControlModifier);
  ExpectActive(Window(kSlotA));
  EXPECT_TRUE(Window(kSlotB).isVisible());
}

TEST_F(WindowsMenu, APlaceAndSizeThatAPersonChoseComeBack) {
  Enter(kSlotA, 2, 2, {"4", "1", "1", "3"});
  Window(kSlotA).move(900, 310);
  Window(kSlotA).resize(350, 260);
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  Enter(kSlotA, 5, 5, {"4"});
  EXPECT_EQ(Window(kSlotA).pos(), QPoint(900, 310));
  EXPECT_EQ(Window(kSlotA).size(), QSize(350, 260));
}

TEST_F(WindowsMenu, WhatTheProgramChoseIsNotRemembered) {
  OpenFour();
  Choose("mnuTile");
  Choose("mnuHideAll");
  EXPECT_TRUE(Settings().allKeys().filter("windows/").isEmpty());
}

TEST_F(WindowsMenu, ARememberedPlaceBehindTheMainWindowIsNotTaken) {
  Settings().setValue("windows/frmA/place", QPoint(100, 100));
  Enter(kSlotA, 2, 2, {"4"});
  EXPECT_FALSE(Main().frameGeometry().intersects(Window(kSlotA).frameGeometry()));
}

TEST_F(WindowsMenu, WhatWasRememberedOnALargerScreenComesBackOntoThisOne) {
  Settings().setValue("windows/frmA/place", QPoint(2500, 1200));
  Settings().setValue("windows/frmA/size", QSize(3000, 400));
  Enter(kSlotA, 2, 2, {"4"});
  EXPECT_TRUE(Screen().contains(Window(kSlotA).frameGeometry()));
}

TEST_F(WindowsMenu, TheMainWindowComesBackToo) {
  Main().move(200, 30);
  Main().resize(900, 705);
  program.Windows().Memory().Keep(Main());
  struct Again {
    MemoryFiles files;
    RecordingPrinter printer;
    FixedRandom random;
    FixedClock clock;
    FixedMemory memory;
    PointSettings settings;
    Program program{{files, printer, random, clock, memory}, settings};
  } again;
  again.program.Start("");
  EXPECT_EQ(again.program.MainWindow().pos(), QPoint(200, 30));
  EXPECT_EQ(again.program.MainWindow().size(), QSize(900, 705));
}

TEST_F(WindowsMenu, AResultOpensOutsideOfAMainWindowThatTakesNearlyTheWholeScreen) {
  Main().setGeometry(0, 0, 1240, 740);
  Enter(kSlotA, 3, 3, {"4", "1", "1", "1", "3", "0", "0", "1", "5"});
  for (const Task task : {kTaskTranspose, kTaskQR}) Click(cmdTask(task));
  for (const QWidget* window : program.Windows().ShownWindows()) {
    EXPECT_TRUE(Screen().contains(window->frameGeometry()));
    EXPECT_GE(window->frameGeometry().right() - Main().frameGeometry().right(), 80)
        << window->objectName().toStdString();
  }
}

}  // namespace
}  // namespace qmx::test
