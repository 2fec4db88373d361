// SPDX-License-Identifier: MIT
// Selecting a block of cells, in the grid by itself.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "grids/matrix_grid.h"
#include "support/cpu_time.h"

namespace qmx::test {
namespace {

constexpr Qt::KeyboardModifiers kShift = Qt::ShiftModifier;
constexpr Qt::KeyboardModifiers kControl = Qt::ControlModifier;

class Selecting : public ::testing::Test {
 public:
  MatrixGrid grid{true};

  void Open(int rows, int cols, int width = 500, int height = 300) {
    grid.SetUp(rows, cols, false);
    grid.Populate(Matrix(rows, cols), false);
    grid.resize(width, height);
    grid.show();
    grid.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    grid.setFocus();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) { QTest::keyClick(&grid, key, held); }
  QPoint Middle(int row, int col) const { return grid.CellRect(row, col).center(); }
  void Click(int row, int col, Qt::KeyboardModifiers held = {}) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, held, Middle(row, col));
  }
  void Press(int row, int col) {
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, Middle(row, col));
  }
  void MoveTo(const QPoint& point) {
    QMouseEvent move(QEvent::MouseMove, point, grid.viewport()->mapToGlobal(point), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grid.viewport(), &move);
  }
  void Release(const QPoint& point) {
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, point);
  }
  bool IsAt(int row, int col) const { return grid.Row() == row && grid.Col() == col; }
  void ExpectSelected(const CellBlock& block) {
    ASSERT_TRUE(grid.Selected());
    EXPECT_EQ(*grid.Selected(), block);
  }
};

TEST_F(Selecting, ShiftAndAClickSelectFromTheCurrentCell) {
  Open(4, 4);
  Click(2, 2);
  EXPECT_FALSE(grid.Selected());
  Click(3, 4, kShift);
  ExpectSelected({2, 2, 3, 4});
  EXPECT_TRUE(IsAt(2, 2));
  Click(1, 1, kShift);
  ExpectSelected({1, 1, 2, 2});
  EXPECT_TRUE(IsAt(2, 2));
}

TEST_F(Selecting, ADragSelects) {
  Open(4, 4);
  QSignalSpy chosen(&grid, &MatrixGrid::CellChosen);
  Press(3, 3);
  EXPECT_EQ(chosen.count(), 1);
  MoveTo(Middle(3, 3) + QPoint(3, 3));
  EXPECT_FALSE(grid.Selected()) << "still the same cell";
  MoveTo(Middle(2, 2));
  ExpectSelected({2, 2, 3, 3});
  MoveTo(Middle(4, 3));
  ExpectSelected({3, 3, 4, 3});
  Release(Middle(4, 3));
  MoveTo(Middle(1, 1));
  ExpectSelected({3, 3, 4, 3});
  EXPECT_EQ(chosen.count(), 1);
}

TEST_F(Selecting, ADragBeyondTheEdgeScrolls) {
  Open(200, 50);
  Press(1, 1);
  const QPoint beyond(grid.viewport()->width() + 20, grid.viewport()->height() + 20);
  MoveTo(beyond);
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.Selected() && grid.Selected()->bottom > 20; }));
  EXPECT_GT(grid.verticalScrollBar()->value(), 0);
  EXPECT_GT(grid.horizontalScrollBar()->value(), 0);
  Release(beyond);
  const auto rest = grid.Selected();
  QTest::qWait(150);
  EXPECT_EQ(grid.Selected(), rest) << "the button is up";
}

TEST_F(Selecting, ShiftAndKeysExtend) {
  Open(100, 30);
  Click(2, 2);
  Key(Qt::Key_Right, kShift);
  Key(Qt::Key_Down, kShift);
  Key(Qt::Key_Down, kShift);
  ExpectSelected({2, 2, 4, 3});
  Key(Qt::Key_Left, kShift);
  Key(Qt::Key_Left, kShift);
  Key(Qt::Key_Left, kShift);
  ExpectSelected({2, 1, 4, 2});
  Key(Qt::Key_Up, kShift);
  ExpectSelected({2, 1, 3, 2});
  Key(Qt::Key_End, kShift);
  ExpectSelected({2, 2, 3, 30});
  Key(Qt::Key_Home, kShift);
  ExpectSelected({2, 1, 3, 2});
  Key(Qt::Key_PageDown, kShift);
  EXPECT_GT(grid.Selected()->bottom, 8);
  Key(Qt::Key_PageUp, kShift);
  ExpectSelected({2, 1, 3, 2});
  Key(Qt::Key_End, kShift | kControl);
  ExpectSelected({2, 2, 100, 30});
  EXPECT_TRUE(grid.IsInSight(100, 30));
  Key(Qt::Key_Home, kShift | kControl);
  ExpectSelected({1, 1, 2, 2});
  Key(Qt::Key_Down, kShift | kControl);
  ExpectSelected({2, 1, 100, 2});
  EXPECT_TRUE(IsAt(2, 2));
}

TEST_F(Selecting, HeadersSelectRowsColumnsAndAll) {
  Open(4, 3);
  Click(3, 2);
  Click(0, 2);
  ExpectSelected({1, 2, 4, 2});
  EXPECT_TRUE(IsAt(1, 2));
  Click(0, 3, kShift);
  ExpectSelected({1, 2, 4, 3});
  Click(3, 0);
  ExpectSelected({3, 1, 3, 3});
  EXPECT_TRUE(IsAt(3, 1));
  Click(1, 0, kShift);
  ExpectSelected({1, 1, 3, 3});
  Key(Qt::Key_Down, kShift);
  ExpectSelected({2, 1, 3, 3});
  Click(0, 0);
  ExpectSelected({1, 1, 4, 3});
}

TEST_F(Selecting, ADragAlongHeadersExtends) {
  Open(4, 4);
  Press(0, 2);
  MoveTo(Middle(3, 4));
  Release(Middle(3, 4));
  ExpectSelected({1, 2, 4, 4});
  Press(2, 0);
  MoveTo(Middle(3, 0));
  Release(Middle(3, 0));
  ExpectSelected({2, 1, 3, 4});
}

TEST_F(Selecting, KeysSelectRowColumnAndAll) {
  Open(4, 3);
  Click(2, 3);
  Key(Qt::Key_Space, kControl);
  ExpectSelected({1, 3, 4, 3});
  Key(Qt::Key_Space, kShift);
  ExpectSelected({2, 1, 2, 3});
  Key(Qt::Key_A, kControl);
  ExpectSelected({1, 1, 4, 3});
  EXPECT_TRUE(IsAt(2, 3));
}

TEST_F(Selecting, APlainClickOrKeyEndsIt) {
  Open(4, 4);
  const auto select = [&] {
    grid.SelectBlock({2, 2, 3, 3});
    return grid.Selected().has_value();
  };
  ASSERT_TRUE(select());
  Click(1, 1);
  EXPECT_FALSE(grid.Selected());
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Home, Qt::Key_PageDown, Qt::Key_Escape}) {
    ASSERT_TRUE(select());
    Key(key);
    EXPECT_FALSE(grid.Selected()) << key;
    EXPECT_FALSE(grid.selectionModel()->hasSelection()) << key;
  }
  ASSERT_TRUE(select());
  grid.SetUp(3, 3, false);
  EXPECT_FALSE(grid.Selected());
  EXPECT_FALSE(grid.selectionModel()->hasSelection());
}

TEST_F(Selecting, ASingleColumnIsSelectedByItsLabels) {
  MatrixGrid column(false);
  column.SetUp(5, 1, false);
  column.resize(300, 300);
  column.show();
  const auto click = [&](int row, int col, Qt::KeyboardModifiers held) {
    QTest::mouseClick(column.viewport(), Qt::LeftButton, held, column.CellRect(row, col).center());
  };
  click(0, 0, {});
  click(2, 0, kShift);
  EXPECT_EQ(column.Selected(), (CellBlock{0, 1, 2, 1}));
  click(1, 1, {});
  EXPECT_FALSE(column.Selected());
  QTest::keyClick(&column, Qt::Key_Down, kShift);
  EXPECT_EQ(column.Selected(), (CellBlock{1, 1, 2, 1}));
  QTest::keyClick(&column, Qt::Key_A, kControl);
  EXPECT_EQ(column.Selected(), (CellBlock{0, 1, 4, 1}));
}

TEST_F(Selecting, ThereIsNothingToSelectInAnEmptyGrid) {
  Open(0, 0);
  Key(Qt::Key_A, kControl);
  Key(Qt::Key_Down, kShift);
  Key(Qt::Key_Space, kShift);
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {5, 5});
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, kShift, {90, 90});
  EXPECT_FALSE(grid.Selected());
}

TEST_F(Selecting, IsSeenInLightAndDark) {
  Open(4, 4);
  for (const bool dark : {false, true}) {
    QPalette palette = grid.palette();
    palette.setColor(QPalette::Base, dark ? QColor(35, 35, 35) : QColor(Qt::white));
    grid.setPalette(palette);
    grid.SelectBlock({2, 2, 3, 3});
    const QImage seen = grid.viewport()->grab().toImage();
    const auto ground = [&](int row, int col) {
      return seen.pixelColor(grid.CellRect(row, col).topLeft() + QPoint(3, 4));
    };
    EXPECT_NE(ground(3, 3), ground(4, 4));
    EXPECT_EQ(ground(1, 1), ground(4, 4));
    EXPECT_EQ(ground(2, 2), ground(4, 4)) << "the current cell";
    EXPECT_NE(ground(0, 3), ground(0, 4)) << "its column's header";
    EXPECT_NE(ground(3, 0), ground(4, 0)) << "its row's header";
    EXPECT_EQ(ground(3, 3).lightness() < 128, dark);
  }
}

TEST_F(Selecting, AssistiveTechnologyKnowsTheSelection) {
  Open(4, 4);
  QAccessible::setActive(true);
  grid.SelectBlock({2, 2, 3, 3});
  QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&grid);
  ASSERT_NE(view, nullptr);
  QAccessibleTableInterface* table = view->tableInterface();
  // The table holds the data cells and counts them from 0.
  EXPECT_TRUE(table->cellAt(2, 1)->state().selected);
  EXPECT_FALSE(table->cellAt(0, 0)->state().selected);
  EXPECT_EQ(table->selectedCellCount(), 4);
  EXPECT_EQ(view->text(QAccessible::Description), "Selected: rows 2 to 3, columns 2 to 3");
  grid.EndSelection();
  EXPECT_EQ(table->selectedCellCount(), 0);
  EXPECT_EQ(view->text(QAccessible::Description), "");
  QAccessible::setActive(false);
}

TEST_F(Selecting, AssistiveTechnologyChoosesCells) {
  Open(4, 4);
  QSignalSpy chosen(&grid, &MatrixGrid::CellChosen);
  const auto select = [&](const QItemSelection& cells) {
    grid.selectionModel()->select(cells, QItemSelectionModel::Select);
  };
  const auto cell = [&](int row, int col) { return grid.model()->index(row, col); };
  select({cell(3, 2), cell(3, 2)});
  EXPECT_EQ(chosen.count(), 1);
  EXPECT_TRUE(IsAt(3, 2));
  EXPECT_FALSE(grid.Selected());
  select({cell(0, 2), cell(0, 2)});
  EXPECT_EQ(chosen.count(), 1) << "headers are not chosen";
  select({cell(2, 0), cell(2, 4)});
  ExpectSelected({2, 1, 2, 4});
  grid.selectionModel()->clearSelection();
  EXPECT_FALSE(grid.Selected());
}

TEST_F(Selecting, ALargeSelectionCostsWhatASmallOneDoes) {
  constexpr int kSize = 2000;
  Open(kSize, kSize);
  QAccessible::setActive(true);
  const auto time = [&](const CellBlock& block) {
    return CpuTime([&] {
      for (int i = 0; i < 20; ++i) {
        grid.SelectBlock(block);
        grid.viewport()->repaint();
        grid.EndSelection();
        grid.viewport()->repaint();
      }
    });
  };
  time({1, 1, 20, 20});
  const double small = time({1, 1, 20, 20});
  const double large = time({1, 1, kSize, kSize});
  QAccessible::setActive(false);
  // Going through four million cells takes a hundred times as long.
  EXPECT_LT(large, 5 * small);
}

TEST_F(Selecting, TheMenuIsForWhatIsUnderThePointer) {
  Open(4, 4);
  QSignalSpy menu(&grid, &MatrixGrid::MenuRequested);
  const auto ask = [&](int row, int col) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, Middle(row, col),
                            grid.viewport()->mapToGlobal(Middle(row, col)));
    QApplication::sendEvent(grid.viewport(), &event);
  };
  grid.SelectBlock({2, 2, 3, 3});
  ask(3, 2);
  ExpectSelected({2, 2, 3, 3});
  ask(4, 4);
  EXPECT_FALSE(grid.Selected());
  EXPECT_TRUE(IsAt(4, 4));
  ask(0, 2);
  ExpectSelected({1, 2, 4, 2});
  ask(2, 0);
  ExpectSelected({2, 1, 2, 4});
  EXPECT_EQ(menu.count(), 4);
}

}  // namespace
}  // namespace qmx::test
