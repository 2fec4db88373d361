// SPDX-License-Identifier: MIT
// Where the keys go to is seen, in one place at a time.

#include <QImage>
#include <QTest>

#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class FocusFrame : public Desktop {
 public:
  /// True if a grid shows a frame around its current cell.
  bool IsFramed(qmx::Slot slot) {
    MatrixGrid& grid = Grid(slot);
    const QImage seen = grid.viewport()->grab().toImage();
    const QRect cell = grid.CellRect(grid.Row(), grid.Col());
    const QRgb highlight = grid.palette().color(QPalette::Highlight).rgb();
    return seen.pixel(cell.left() + 1, cell.center().y()) == highlight;
  }
};

TEST_F(FocusFrame, OnlyTheGridThatHasTheKeyboardShowsOne) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "5"});
  Window(kSlotA).HideEntryBox();
  EXPECT_TRUE(IsFramed(kSlotA));
  Click(cmdTask(5));
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Main()));
  EXPECT_FALSE(IsFramed(kSlotA));
  EXPECT_FALSE(IsFramed(kSlotInverse));
  Window(kSlotInverse).activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotInverse)));
  Grid(kSlotInverse).setFocus();
  EXPECT_TRUE(IsFramed(kSlotInverse));
  EXPECT_FALSE(IsFramed(kSlotA));
}

TEST_F(FocusFrame, AnOpenCellHasItAlone) {
  Enter(kSlotA, 2, 2, {"1"});
  ASSERT_TRUE(Box(kSlotA).isVisible());
  EXPECT_FALSE(IsFramed(kSlotA));
}

}  // namespace
}  // namespace qmx::test
