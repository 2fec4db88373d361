// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QPalette>

#include "grids/contrast.h"
#include "grids/digit_runs.h"
#include "support/desktop_digits.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

/// The colours of what is painted in cells.
class DigitsPainting : public DigitsDesktop {
 protected:
  /// How many pixels of a cell are close to a colour.
  int Count(qmx::Slot slot, int row, int col, const QColor& colour) {
    MatrixGrid& grid = Grid(slot);
    const QImage picture = grid.viewport()->grab(grid.CellRect(row, col)).toImage();
    int count = 0;
    // The frame of the current cell and the lines between cells are no text.
    for (int y = 3; y < picture.height() - 3; ++y) {
      for (int x = 3; x < picture.width() - 3; ++x) {
        const QColor pixel = picture.pixelColor(x, y);
        const auto near = [](int one, int other) { return std::abs(one - other) < 12; };
        count += near(pixel.red(), colour.red()) && near(pixel.green(), colour.green()) &&
                 near(pixel.blue(), colour.blue());
      }
    }
    return count;
  }
  /// The last column of pixels in which a cell has a colour, or any but that of its ground.
  int LastOf(qmx::Slot slot, int row, int col, const std::function<bool(const QColor&)>& isIt) {
    MatrixGrid& grid = Grid(slot);
    const QImage picture = grid.viewport()->grab(grid.CellRect(row, col)).toImage();
    int last = -1;
    for (int y = 3; y < picture.height() - 3; ++y) {
      for (int x = 3; x < picture.width() - 3; ++x) {
        if (isIt(picture.pixelColor(x, y))) last = std::max(last, x);
      }
    }
    return last;
  }
  QColor Text() { return QApplication::palette().color(QPalette::Text); }
  QColor Base() { return QApplication::palette().color(QPalette::Base); }
  QColor Grey() { return UnprovedColour(Text(), Base()); }

  // The edges of black letters are grey, too: what tells grey ones is that nothing is black.
  void ExpectGrey(qmx::Slot slot, int row, int col) {
    EXPECT_GT(Count(slot, row, col, Grey()), 15);
    EXPECT_EQ(Count(slot, row, col, Text()), 0);
  }
};

TEST_F(DigitsPainting, DigitsThatHoldAreAsBlackAsEver) {
  Enter(kSlotA, 2, 2, {"3", "1", "1", "3"});
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  EXPECT_GT(Count(kSlotInverse, 1, 1, Text()), 5);
}

TEST_F(DigitsPainting, WhereNothingHoldsAllIsGrey) {
  Enter(kSlotA, 3, 3, {"1", "2", "3", "4", "5", "6", "7", "8", "9"});
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  ExpectGrey(kSlotInverse, 1, 1);
  ClickToggle(kSlotInverse);
  ExpectGrey(kSlotInverse, 1, 1);
}

TEST_F(DigitsPainting, TheFirstDigitsMayHoldAndTheLastOnesNot) {
  // As if the task had been done for another matrix.
  prover.falsify = [](ProofQuestion& question) { question.a(1, 1) *= 1 + 1e-4; };
  Enter(kSlotA, 2, 2, {"3", "1", "1", "4"});
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  ASSERT_EQ(Cell(kSlotInverse, 1, 1), "0.3636364");
  ASSERT_EQ(Proved(kSlotInverse, 1, 1), 4);
  const int black = LastOf(kSlotInverse, 1, 1, [this](const QColor& it) { return it == Text(); });
  const int ink = LastOf(kSlotInverse, 1, 1, [this](const QColor& it) { return it != Base(); });
  const int threeDigits = Grid(kSlotInverse).fontMetrics().horizontalAdvance("364");
  ASSERT_GT(black, 0);
  EXPECT_NEAR(ink - black, threeDigits, 3);
}

TEST_F(DigitsPainting, DarkColoursServeAsWell) {
  const QPalette light = QApplication::palette();
  QPalette dark = light;
  dark.setColor(QPalette::Base, QColor(35, 38, 41));
  dark.setColor(QPalette::Text, QColor(239, 240, 241));
  QApplication::setPalette(dark);
  Enter(kSlotA, 3, 3, {"1", "2", "3", "4", "5", "6", "7", "8", "9"});
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  ASSERT_EQ(Base(), QColor(35, 38, 41));
  ExpectGrey(kSlotInverse, 1, 1);
  EXPECT_GE(Contrast(Grey(), Text()), 3);
  EXPECT_GE(Contrast(Grey(), Base()), 3);
  QApplication::setPalette(light);
}

TEST_F(DigitsPainting, ASelectedCellHasAGreyOfItsOwn) {
  Enter(kSlotA, 3, 3, {"1", "2", "3", "4", "5", "6", "7", "8", "9"});
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  Grid(kSlotInverse).selectAll();
  const QColor ground = Mixed(Base(), Grid(kSlotInverse).palette().color(QPalette::Highlight), 0.3);
  EXPECT_GT(Count(kSlotInverse, 2, 2, ground), 50);
  EXPECT_GT(Count(kSlotInverse, 2, 2, UnprovedColour(Text(), ground)), 5);
  EXPECT_EQ(Count(kSlotInverse, 2, 2, Text()), 0);
}

TEST_F(DigitsPainting, EigenvectorsKeepTheirColoursButPaler) {
  Enter(kSlotA, 2, 2, {"2", "0", "0", "2"});
  Click(cmdTask(kTaskEigen));
  UntilChecked();
  const QColor pale = UnprovedColour(Qt::blue, Base());
  EXPECT_EQ(Proved(kSlotEigenvectors, 1, 1), 0) << "the eigenvalue is not a simple one";
  EXPECT_GE(Count(kSlotEigenvectors, 1, 1, pale), 3);
  EXPECT_EQ(Count(kSlotEigenvectors, 1, 1, Qt::blue), 0);
}

TEST_F(DigitsPainting, NothingIsGreyInAnEditor) {
  Enter(kSlotA, 1, 1, {"0.123456789012345678"});
  Window(kSlotA).HideEntryBox();
  EXPECT_GT(Count(kSlotA, 1, 1, Text()), 5);
}

}  // namespace
}  // namespace qmx::test
