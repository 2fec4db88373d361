// SPDX-License-Identifier: MIT
// A typed digit costs the same in a large matrix and in a small one.

#include <QAccessible>
#include <QPaintEvent>
#include <QTest>

#include "support/cpu_time.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

/// Counts what a grid is asked to paint.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QWidget* viewport) { viewport->installEventFilter(this); }
  QRegion painted;
  int requests = 0;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      painted += static_cast<QPaintEvent*>(event)->region();
      ++requests;
    }
    return QObject::eventFilter(watched, event);
  }
};

class TypingCost : public Desktop {
 public:
  /// Creates A anew, fills it, and opens the cell in the middle of what is seen of it.
  void OpenA(int size) {
    if (State().ACreated) ClickAndAnswer(cmdResetA, QMessageBox::Yes);
    Enter(kSlotA, size, size, {});
    Click(cmdClearA);
    Click(cmdShow(kSlotA));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
    ClickCell(kSlotA, 2, 2);
    Settle();
  }
  /// Waits until nothing is left to paint.
  void Settle() {
    PaintWatch watch(Grid(kSlotA).viewport());
    for (int before = -1; before != watch.requests;) {
      before = watch.requests;
      QTest::qWait(100);
    }
  }
  /// Milliseconds that many digits take until they are painted. They are measured together, since
  /// processor time may be counted in hundredths of a second.
  double TimeOfDigits() {
    return CpuTime([&] {
      for (int i = 0; i < 200; ++i) {
        // The text has always the same length.
        Box(kSlotA).selectAll();
        QCoreApplication::processEvents();
        Keys(std::to_string(i % 10));
        QCoreApplication::processEvents();
      }
    });
  }
};

TEST_F(TypingCost, ADigitPaintsItsOwnCellOnly) {
  OpenA(2000);
  const QRect cell = Grid(kSlotA).CellRect(2, 2);
  PaintWatch watch(Grid(kSlotA).viewport());
  for (const char* digit : {"7", "8", "."}) {
    Keys(digit);
    Settle();
  }
  EXPECT_TRUE(watch.painted.subtracted(QRegion(cell)).isEmpty());
  EXPECT_LE(watch.requests, 3);
}

TEST_F(TypingCost, AnArrowPaintsTwoCellsOnly) {
  OpenA(2000);
  const QRect cells = Grid(kSlotA).CellRect(2, 2) | Grid(kSlotA).CellRect(2, 3);
  PaintWatch watch(Grid(kSlotA).viewport());
  Key(Qt::Key_Right);
  Settle();
  EXPECT_TRUE(watch.painted.subtracted(QRegion(cells)).isEmpty());
}

TEST_F(TypingCost, ADigitTakesNoLongerInALargeMatrix) {
  for (const bool withScreenReader : {false, true}) {
    QAccessible::setActive(withScreenReader);
    OpenA(2);
    const double small = TimeOfDigits();
    OpenA(2000);
    const double large = TimeOfDigits();
    // Whatever goes through rows, columns or cells takes a hundred times as long.
    EXPECT_LT(large, 3 * small) << withScreenReader;
    QAccessible::setActive(false);
    ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  }
}

}  // namespace
}  // namespace qmx::test
