// SPDX-License-Identifier: MIT
// The grid control by itself: contents, shape, keys, what is in sight.

#include "grids/matrix_grid.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QTest>

#include "grids/accessible_grid.h"

namespace qmx::test {
namespace {

class Grid : public ::testing::Test {
 public:
  MatrixGrid grid{true};

  std::string Text(int row, int col) const { return grid.TextMatrix(row, col).toStdString(); }
  void Fill(const Matrix& values, bool wide = false) {
    grid.SetUp(values.Rows(), values.Cols(), wide);
    grid.Populate(values, wide);
  }
  void ShowSized(int width, int height) {
    grid.resize(width, height);
    grid.show();
    grid.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    grid.setFocus();
  }
};

Matrix Numbered(int rows, int cols) {
  Matrix values(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) values(i, j) = 100.0 * i + j;
  }
  return values;
}

TEST_F(Grid, OneElementMakesFourCells) {
  Fill(Numbered(1, 1));
  EXPECT_EQ(grid.Model().rowCount(), 2);
  EXPECT_EQ(grid.Model().columnCount(), 2);
  EXPECT_EQ(Text(0, 0), "");
  EXPECT_EQ(Text(0, 1), "1");
  EXPECT_EQ(Text(1, 0), "1");
  EXPECT_EQ(Text(1, 1), "101");
}

TEST_F(Grid, ShowsSingleOrDoublePrecision) {
  Matrix third(1, 1);
  third(1, 1) = 1.0 / 3.0;
  Fill(third, false);
  EXPECT_EQ(Text(1, 1), "0.3333333");
  Fill(third, true);
  EXPECT_EQ(Text(1, 1), "0.333333333333333");
  EXPECT_EQ(grid.ColWidth(1), 2 * grid.DefaultColumnWidth());
}

TEST_F(Grid, NarrowCellsShowAllOfASinglePrecisionNumber) {
  const int room = grid.DefaultColumnWidth() - 12;  // Less a margin on each side.
  for (const char* text : {"-8.888888E-38", "-8.888888E+38", "-1.234568E+07"}) {
    EXPECT_LE(grid.fontMetrics().horizontalAdvance(text), room) << text;
  }
}

TEST_F(Grid, CellsAreEmptyUntilFilled) {
  grid.SetUp(2, 3, false);
  for (int i = 1; i <= 2; ++i) {
    for (int j = 1; j <= 3; ++j) EXPECT_EQ(Text(i, j), "");
  }
  EXPECT_TRUE(grid.Model().IsEmpty());
  grid.SetTextMatrix(2, 3, "7");
  EXPECT_FALSE(grid.Model().IsEmpty());
}

TEST_F(Grid, SetUpKeepsTheTextsOfCellsThatStay) {
  Fill(Numbered(3, 3));
  grid.SetTextMatrix(1, 2, "typed");
  grid.SetUp(2, 4, false);
  EXPECT_EQ(Text(1, 2), "typed");
  EXPECT_EQ(Text(2, 3), "203");
  EXPECT_EQ(Text(2, 4), "");
  grid.SetUp(3, 4, false);
  EXPECT_EQ(Text(3, 1), "") << "a row that was gone comes back empty";
  EXPECT_EQ(Text(1, 2), "typed");
}

TEST_F(Grid, SetUpNumbersHeadersAnewButNotTheCorner) {
  grid.SetUp(2, 2, false);
  grid.SetTextMatrix(0, 0, "corner");
  grid.SetTextMatrix(0, 2, "heading");
  grid.SetTextMatrix(1, 0, "label");
  EXPECT_EQ(Text(0, 2), "heading");
  grid.SetUp(2, 3, false);
  EXPECT_EQ(Text(0, 0), "corner");
  EXPECT_EQ(Text(0, 2), "2");
  EXPECT_EQ(Text(1, 0), "1");
}

TEST_F(Grid, FillingReplacesTypedTexts) {
  Fill(Numbered(2, 2));
  grid.SetTextMatrix(1, 1, "1e");
  EXPECT_EQ(Text(1, 1), "1e");
  grid.Populate(Numbered(2, 2), false);
  EXPECT_EQ(Text(1, 1), "101");
}

TEST_F(Grid, KeepsNoCopyOfTheMatrix) {
  Matrix values = Numbered(2, 2);
  Fill(values);
  grid.SetTextMatrix(1, 2, "7.50");
  values(1, 1) = -5;
  values(1, 2) = 7.5;
  EXPECT_EQ(Text(1, 1), "-5");
  EXPECT_EQ(Text(1, 2), "7.50") << "what was typed hides the element";
}

TEST_F(Grid, KeepsTheElementsOfAMatrixThatIsReplaced) {
  Matrix values = Numbered(2, 2);
  Fill(values);
  values = Matrix(2, 2);
  EXPECT_EQ(Text(1, 1), "101");
}

TEST_F(Grid, ColumnsThatAreNotFilledKeepTheirTexts) {
  Matrix values(2, 3);
  for (int j = 1; j <= 3; ++j) values(1, j) = values(2, j) = j / 3.0;
  Fill(values, false);
  const std::vector<bool> columns{true, false, true};
  grid.Populate(values, true, &columns);
  EXPECT_EQ(Text(1, 1), "0.333333333333333");
  EXPECT_EQ(Text(1, 2), "0.6666667");
  EXPECT_EQ(Text(2, 3), "1");
}

TEST_F(Grid, ColumnsNeverFilledStayEmpty) {
  grid.SetUp(2, 2, false);
  const std::vector<bool> columns{false, true};
  grid.Populate(Numbered(2, 2), false, &columns);
  EXPECT_EQ(Text(1, 1), "");
  EXPECT_EQ(Text(1, 2), "102");
}

TEST_F(Grid, ElementsOutsideTheGridAreLeftOut) {
  grid.SetUp(1, 2, false);
  grid.Populate(Numbered(3, 3), false);
  EXPECT_EQ(Text(1, 2), "102");
  EXPECT_EQ(Text(2, 1), "");
}

TEST_F(Grid, FewerElementsLeaveTheOtherTexts) {
  Fill(Numbered(3, 2), false);
  grid.Populate(Numbered(1, 1), true);
  EXPECT_EQ(Text(1, 1), "101");
  EXPECT_EQ(Text(2, 1), "201");
  EXPECT_EQ(Text(3, 2), "302");
}

TEST_F(Grid, ColoursAreTheCellsOwnOrOfAll) {
  grid.SetUp(2, 2, false);
  const auto colour = [&](int row, int col) {
    return grid.model()->index(row, col).data(Qt::ForegroundRole);
  };
  EXPECT_FALSE(colour(1, 1).isValid());
  grid.SetGridColour(Colour::kBlue);
  grid.SetCellColour(0, 1, Colour::kRed);
  EXPECT_EQ(colour(1, 1).value<QColor>(), QColor(0, 0, 255));
  EXPECT_EQ(colour(0, 1).value<QColor>(), QColor(255, 0, 0));
  EXPECT_EQ(colour(0, 0).value<QColor>(), QColor(0, 0, 255));
}

TEST_F(Grid, ASingleColumnHasLabelsAndNoHeaderRow) {
  MatrixGrid column(false);
  column.SetUp(2, 1, false);
  column.SetTextMatrix(0, 0, "  x(1) = ");
  column.Populate(Numbered(2, 1), false);
  EXPECT_EQ(column.Model().rowCount(), 2);
  EXPECT_EQ(column.TextMatrix(0, 0), "  x(1) = ");
  EXPECT_EQ(column.TextMatrix(0, 1), "101");
  EXPECT_EQ(column.TextMatrix(1, 1), "201");
  EXPECT_EQ(column.Row(), 0);
  EXPECT_EQ(column.Col(), 1);
}

TEST_F(Grid, KeysMoveTheCurrentCell) {
  Fill(Numbered(50, 20));
  ShowSized(400, 250);
  const auto at = [&](int row, int col) { return grid.Row() == row && grid.Col() == col; };
  EXPECT_TRUE(at(1, 1));
  QTest::keyClick(&grid, Qt::Key_End);
  EXPECT_TRUE(at(1, 20));
  QTest::keyClick(&grid, Qt::Key_Home);
  EXPECT_TRUE(at(1, 1));
  QTest::keyClick(&grid, Qt::Key_End, Qt::ControlModifier);
  EXPECT_TRUE(at(50, 20));
  EXPECT_TRUE(grid.IsInSight(50, 20));
  QTest::keyClick(&grid, Qt::Key_PageUp);
  EXPECT_GT(grid.Row(), 30);
  EXPECT_LT(grid.Row(), 50);
  QTest::keyClick(&grid, Qt::Key_PageDown);
  EXPECT_TRUE(at(50, 20));
  QTest::keyClick(&grid, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_TRUE(at(1, 1));
  EXPECT_TRUE(grid.IsInSight(1, 1));
}

TEST_F(Grid, ClicksFindTheCellUnderTheFixedOnes) {
  Fill(Numbered(50, 20));
  ShowSized(400, 250);
  grid.verticalScrollBar()->setValue(100);
  grid.horizontalScrollBar()->setValue(150);
  EXPECT_EQ(grid.indexAt({5, 5}), grid.model()->index(0, 0));
  const QPoint inHeaderRow(grid.viewport()->width() - 20, 5);
  EXPECT_EQ(grid.indexAt(inHeaderRow).row(), 0);
  EXPECT_GT(grid.indexAt(inHeaderRow).column(), 1);
  const int before = grid.Row();
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, inHeaderRow);
  EXPECT_EQ(grid.Row(), before) << "headers are not chosen";
  const QModelIndex below = grid.indexAt({200, 150});
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {200, 150});
  EXPECT_EQ(grid.Row(), below.row());
  EXPECT_EQ(grid.Col(), below.column());
}

TEST_F(Grid, HeadersStayWhileTheRestScrolls) {
  Fill(Numbered(50, 20));
  ShowSized(400, 250);
  const QRect header = grid.CellRect(0, 0);
  grid.verticalScrollBar()->setValue(300);
  grid.horizontalScrollBar()->setValue(300);
  EXPECT_EQ(grid.CellRect(0, 0), header);
  EXPECT_EQ(grid.CellRect(0, 5).top(), 0);
  EXPECT_EQ(grid.CellRect(5, 0).left(), 0);
  EXPECT_LT(grid.CellRect(5, 5).top(), 0);
}

TEST_F(Grid, ScreenReadersReachEveryCell) {
  Fill(Numbered(2, 2));
  ShowSized(300, 200);
  UseAccessibleGrids();
  QAccessible::setActive(true);
  QAccessibleInterface* view = QAccessible::queryAccessibleInterface(&grid);
  ASSERT_NE(view, nullptr);
  ASSERT_NE(view->tableInterface(), nullptr);
  grid.SetTextMatrix(0, 0, "Eigenvalues =");
  grid.SetTextMatrix(0, 1, "7");
  EXPECT_EQ(view->tableInterface()->cellAt(2, 0), nullptr);
  QAccessibleInterface* cell = view->tableInterface()->cellAt(1, 0);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->text(QAccessible::Name), "201");
  EXPECT_EQ(cell->text(QAccessible::Description), "Row 2, column 1");
  QAccessibleInterface* header = cell->tableCellInterface()->columnHeaderCells().value(0);
  ASSERT_NE(header, nullptr);
  EXPECT_EQ(header->text(QAccessible::Name), "7");
  EXPECT_EQ(header->text(QAccessible::Description), "Eigenvalues =");
  QAccessible::setActive(false);
}

TEST_F(Grid, TheFocusIsSeen) {
  Fill(Numbered(2, 2));
  ShowSized(300, 200);
  const QImage focused = grid.grab().toImage();
  grid.clearFocus();
  const QImage left = grid.grab().toImage();
  EXPECT_NE(focused, left);
  grid.SetCurrentCell(2, 2);
  EXPECT_EQ(grid.grab().toImage(), left);
  grid.setFocus();
  EXPECT_NE(grid.grab().toImage(), left);
  EXPECT_NE(grid.grab().toImage(), focused);
}

/// Milliseconds that something takes until it is painted.
template <typename Work>
qint64 Time(QWidget& widget, Work work) {
  QElapsedTimer timer;
  timer.start();
  work();
  widget.repaint();
  return timer.elapsed();
}

TEST_F(Grid, ALargeMatrixCostsNoPause) {
  constexpr int kSize = 2000;
  constexpr qint64 kPause = 500;  // Far above what it takes; a text per cell takes seconds.
  const Matrix values = Numbered(kSize, kSize);
  grid.resize(800, 600);
  EXPECT_LT(Time(grid,
                 [&] {
                   Fill(values);
                   grid.show();
                 }),
            kPause);
  EXPECT_LT(Time(grid,
                 [&] {
                   grid.SetWide(true);
                   grid.Populate(values, true);
                 }),
            kPause);
  EXPECT_LT(Time(grid, [&] { grid.SetCurrentCell(kSize, kSize); }), kPause);
  EXPECT_EQ(Text(kSize, kSize), "202000");
  EXPECT_LT(Time(grid,
                 [&] {
                   for (int step = 0; step < 20; ++step) {
                     grid.verticalScrollBar()->setValue(step * 1000);
                     grid.repaint();
                   }
                 }),
            4 * kPause);
}

}  // namespace
}  // namespace qmx::test
