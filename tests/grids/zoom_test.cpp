// SPDX-License-Identifier: MIT
// The size of texts in all grids and in the results list.

#include "grids/zoom.h"

#include <QtTest/qtestspontaneevent.h>

#include <QListWidget>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "app/settings.h"
#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class ZoomTest : public Desktop {
 public:
  ZoomTest() { EXPECT_EQ(Settings().value("zoom", 100).toInt(), 100); }
  ~ZoomTest() override { Settings().remove("zoom"); }

  QAction* Entry(const char* name) {
    return Main().findChild<QMenu*>("mnuZoom")->actions().at(Of(name));
  }
  static int Of(const std::string& name) {
    return name == "mnuZoomIn" ? 0 : name == "mnuZoomOut" ? 1 : 2;
  }
  double Size(qmx::Slot slot) { return Grid(slot).font().pointSizeF(); }
  static void Turn(QWidget& widget, int angle, Qt::KeyboardModifiers held) {
    const QPointF at = widget.rect().center();
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, angle}, Qt::NoButton, held,
                      Qt::NoScrollPhase, false);
    // From outside: only such an event goes on to what lies below.
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(&widget, &wheel);
  }
};

TEST_F(ZoomTest, TheKeysServeInTheGridAndInTheOpenCell) {
  Enter(kSlotA, 2, 2, {"1", "2"});
  ASSERT_TRUE(Box(kSlotA).isVisible());
  const double normal = Size(kSlotA);
  const int width = Grid(kSlotA).ColWidth(1);
  Key(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(Size(kSlotA), normal * 1.1);
  QTest::qWait(1);
  EXPECT_EQ(Box(kSlotA).font(), Grid(kSlotA).font());
  EXPECT_TRUE(Box(kSlotA).isVisible()) << "the cell stays open";
  const QPoint corner = Grid(kSlotA).viewport()->mapTo(&Window(kSlotA), QPoint(0, 0));
  EXPECT_EQ(Box(kSlotA).geometry(),
            Grid(kSlotA).CellRect(Grid(kSlotA).Row(), Grid(kSlotA).Col()).translated(corner));
  EXPECT_GT(Grid(kSlotA).ColWidth(1), width);
  Window(kSlotA).HideEntryBox();
  Key(Qt::Key_Minus, Qt::ControlModifier);
  Key(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(Size(kSlotA), normal * 0.9);
  EXPECT_LT(Grid(kSlotA).ColWidth(0), Grid(kSlotA).ColWidth(1));
  Key(Qt::Key_0, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(Size(kSlotA), normal);
  EXPECT_EQ(Grid(kSlotA).ColWidth(1), width);
}

TEST_F(ZoomTest, AllGridsAndTheResultsHaveTheSameSize) {
  Enter(kSlotA, 2, 2, {"2", "0", "0", "2"});
  Entry("mnuZoomIn")->trigger();
  Click(cmdTask(5));
  EXPECT_EQ(Size(kSlotInverse), Size(kSlotA)) << "a window that opens later, too";
  EXPECT_EQ(Main().findChild<MatrixGrid*>("grdLatest")->font().pointSizeF(), Size(kSlotA));
  Click(cmdTask(kTaskDefiniteness));
  ASSERT_NE(program.Windows().Results(), nullptr);
  auto* list = program.Windows().Results()->findChild<QListWidget*>();
  EXPECT_EQ(list->font().pointSizeF(), Size(kSlotA));
  const QString family = list->font().family();
  Entry("mnuZoomIn")->trigger();
  EXPECT_EQ(list->font().pointSizeF(), Size(kSlotA));
  EXPECT_EQ(list->font().family(), family);
}

TEST_F(ZoomTest, TheWheelZoomsWithCtrlAlone) {
  Enter(kSlotA, 2, 2, {"1"});
  const double normal = Size(kSlotA);
  Turn(*Grid(kSlotA).viewport(), 120, Qt::ControlModifier);
  EXPECT_GT(Size(kSlotA), normal);
  Turn(*Grid(kSlotA).viewport(), -60, Qt::ControlModifier);
  EXPECT_GT(Size(kSlotA), normal) << "half a notch";
  QTest::qWait(1);
  ASSERT_TRUE(Box(kSlotA).isVisible());
  Turn(Box(kSlotA), -60, Qt::ControlModifier);
  EXPECT_EQ(Size(kSlotA), normal) << "over the open cell as well";
  Turn(*Grid(kSlotA).viewport(), 120, Qt::NoModifier);
  EXPECT_EQ(Size(kSlotA), normal);
}

TEST_F(ZoomTest, TheWheelWithCtrlDoesNotScroll) {
  Enter(kSlotA, 200, 3, {});
  Window(kSlotA).HideEntryBox();
  const double normal = Size(kSlotA);
  Turn(*Grid(kSlotA).viewport(), -240, Qt::ControlModifier);
  EXPECT_LT(Size(kSlotA), normal);
  EXPECT_EQ(Grid(kSlotA).verticalScrollBar()->value(), 0);
  Turn(*Grid(kSlotA).viewport(), -240, Qt::NoModifier);
  EXPECT_GT(Grid(kSlotA).verticalScrollBar()->value(), 0);
}

TEST_F(ZoomTest, TheWindowGrowsWithItsGrid) {
  Enter(kSlotA, 4, 4, {"1"});
  const QSize before = Window(kSlotA).size();
  for (int i = 0; i < 3; ++i) Entry("mnuZoomIn")->trigger();
  EXPECT_GT(Window(kSlotA).width(), before.width());
  EXPECT_GT(Window(kSlotA).height(), before.height());
  for (int i = 0; i < 3; ++i) Entry("mnuZoomOut")->trigger();
  EXPECT_EQ(Window(kSlotA).size(), before);
}

TEST_F(ZoomTest, ThereAreLimits) {
  Enter(kSlotA, 1, 1, {"1"});
  const double normal = Size(kSlotA);
  for (int i = 0; i < 30; ++i) Entry("mnuZoomIn")->trigger();
  EXPECT_DOUBLE_EQ(Size(kSlotA), normal * 4);
  for (int i = 0; i < 30; ++i) Entry("mnuZoomOut")->trigger();
  EXPECT_DOUBLE_EQ(Size(kSlotA), normal / 2);
}

TEST_F(ZoomTest, TheSizeIsRemembered) {
  Enter(kSlotA, 1, 1, {"1"});
  Entry("mnuZoomIn")->trigger();
  Entry("mnuZoomIn")->trigger();
  EXPECT_EQ(Settings().value("zoom").toInt(), 125);
  Program again({files, printer, random, clock, memory}, settings);
  again.Start("");
  QTest::mouseClick(qobject_cast<QAbstractButton*>(again.MainWindow().Find(cmdCreateA)),
                    Qt::LeftButton);
  ASSERT_NE(again.Windows().Window(kSlotA), nullptr);
  EXPECT_EQ(again.Windows().Window(kSlotA)->Grid().font().pointSizeF(), Size(kSlotA));
}

TEST_F(ZoomTest, TheEntriesStandInTheMenusOfTheCells) {
  Enter(kSlotA, 1, 1, {"1"});
  Window(kSlotA).HideEntryBox();
  QContextMenuEvent wanted(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
  QApplication::sendEvent(&Grid(kSlotA), &wanted);
  const auto* menu = Window(kSlotA).findChild<QMenu*>("mnuCells");
  ASSERT_NE(menu, nullptr);
  QStringList names;
  for (const QAction* action : menu->actions()) names.append(action->objectName());
  for (const char* name : {"mnuPicture", "mnuZoomIn", "mnuZoomOut", "mnuZoomNormal"})
    EXPECT_EQ(names.count(name), 1) << name;
}

}  // namespace
}  // namespace qmx::test
