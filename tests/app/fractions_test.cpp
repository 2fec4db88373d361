// SPDX-License-Identifier: MIT
// Results as exact fractions, switched by the button in their windows.

#include "app/fractions.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTest>

#include "app/program.h"
#include "support/desktop_steps.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class FractionsTest : public StepsDesktop {
 protected:
  FractionsTest() {
    // Of [2 1; 1 3], but for one element that is too long.
    deriver.exact = {{{"3", "5"}, {"-1", "5"}, {"-1", "5"}, {}}};
    Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
    Main().activateWindow();
    Click(cmdTask(kTaskInverse));
  }
  QPushButton& Button() { return Part(Window(kSlotInverse), "cmdFractions"); }
  void UntilFound() {
    Until([this] { return program.FractionsOfResults().Runs().IsIdle(); });
  }
  void Press() {
    QTest::mouseClick(&Button(), Qt::LeftButton);
    UntilFound();
  }
  std::string Shown(int row, int col) { return Cell(kSlotInverse, row, col); }
  void Type(const std::string& text) {
    Window(kSlotA).activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
    ClickCell(kSlotA, 1, 1);
    QTest::keyClicks(&Box(kSlotA), QString::fromStdString(text));
  }
};

TEST_F(FractionsTest, FractionsStandWhereTheyAreKnownElseDecimals) {
  EXPECT_EQ(Shown(1, 1), "0.6");
  Press();
  EXPECT_TRUE(Button().isChecked());
  EXPECT_EQ(Shown(1, 1), "3/5");
  EXPECT_EQ(Shown(1, 2), "-1/5");
  EXPECT_EQ(Shown(2, 2), "0.4");
  Press();
  EXPECT_EQ(Shown(1, 1), "0.6");
}

TEST_F(FractionsTest, LongFractionsHaveRoom) {
  deriver.exact = {{{"-123456789", "987654321"}, {"1", "5"}, {"1", "5"}, {"1", "5"}}};
  const int before = Grid(kSlotInverse).ColWidth(1);
  Press();
  const QString text = Grid(kSlotInverse).TextMatrix(1, 1);
  EXPECT_EQ(text.toStdString(), "-123456789/987654321");
  EXPECT_GT(Grid(kSlotInverse).ColWidth(1),
            Grid(kSlotInverse).fontMetrics().horizontalAdvance(text));
  Press();
  EXPECT_EQ(Grid(kSlotInverse).ColWidth(1), before);
}

TEST_F(FractionsTest, ToggleWidthKeepsThem) {
  Press();
  ClickToggle(kSlotInverse);
  EXPECT_EQ(Shown(1, 1), "3/5");
  EXPECT_TRUE(program.Windows().IsWide(kSlotInverse));
  ClickToggle(kSlotInverse);
  EXPECT_EQ(Shown(1, 1), "3/5");
  EXPECT_FALSE(program.Windows().IsWide(kSlotInverse));
}

TEST_F(FractionsTest, CopyingCopiesThem) {
  Press();
  MatrixGrid& grid = Grid(kSlotInverse);
  Window(kSlotInverse).activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotInverse)));
  grid.setFocus();
  grid.selectAll();
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "3/5\t-1/5\n-1/5\t0.4\n");
  Window(kSlotInverse).CopyAs(CopyForm::kLatex);
  EXPECT_EQ(QApplication::clipboard()->text(),
            "\\begin{bmatrix}\n\\frac{3}{5} & -\\frac{1}{5} \\\\\n-\\frac{1}{5} & 0.4\n"
            "\\end{bmatrix}\n");
  Press();
  grid.selectAll();
  QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(QApplication::clipboard()->text().contains('/'));
}

TEST_F(FractionsTest, AScreenReaderHearsTheFractionAndItsDecimal) {
  Press();
  const QAbstractItemModel& model = Grid(kSlotInverse).Model();
  const QModelIndex cell = model.index(1, 1);
  EXPECT_EQ(model.data(cell, Qt::DisplayRole).toString(), "3/5");
  EXPECT_EQ(model.data(cell, Qt::AccessibleDescriptionRole).toString(),
            "Exact; as a decimal 0.6. Row 1, column 1");
}

TEST_F(FractionsTest, AnotherResultIsShownInDecimals) {
  Press();
  Type("4");
  EXPECT_EQ(Shown(1, 1), "3/5") << "the result is what it was";
  EXPECT_TRUE(Button().isEnabled());
  Main().activateWindow();
  Click(cmdTask(kTaskInverse));
  EXPECT_FALSE(Button().isChecked());
  EXPECT_EQ(Shown(1, 1), "0.2727273");
  program.Runner().Undo();
  EXPECT_FALSE(Button().isChecked());
  EXPECT_EQ(Shown(1, 1), "0.6");
}

TEST_F(FractionsTest, UndoAndRedoOfOtherStepsKeepThem) {
  Press();
  Main().activateWindow();
  Click(cmdTask(kTaskTranspose));
  program.Runner().Undo();
  EXPECT_EQ(Shown(1, 1), "3/5");
  program.Runner().Redo();
  EXPECT_EQ(Shown(1, 1), "3/5");
  EXPECT_TRUE(Button().isChecked());
}

TEST_F(FractionsTest, WithChangedOperandsTheButtonIsOffAndSaysWhy) {
  Type("4");
  EXPECT_FALSE(Button().isEnabled());
  EXPECT_EQ(Button().toolTip(),
            "A has changed since this was computed: compute it again to see its steps");
}

TEST_F(FractionsTest, WhereThereAreNoneTheButtonGoesUpAgain) {
  deriver.exact = {};
  Press();
  EXPECT_FALSE(Button().isChecked());
  EXPECT_EQ(Shown(1, 1), "0.6");
  EXPECT_EQ(Button().toolTip(), "There are no exact fractions of this with at most 9 digits.");
  deriver.fails = true;
  Press();
  EXPECT_FALSE(Button().isChecked());
  EXPECT_EQ(Button().toolTip(), "There is not enough memory for exact fractions.");
}

TEST_F(FractionsTest, PressedUpWhileTheyAreSoughtEndsThat) {
  deriver.CloseGate();
  QTest::mouseClick(&Button(), Qt::LeftButton);
  Until([&] { return deriver.begun == 1; });
  QTest::mouseClick(&Button(), Qt::LeftButton);
  UntilFound();
  EXPECT_EQ(deriver.stopped, 1);
  EXPECT_FALSE(Button().isChecked());
  EXPECT_EQ(Shown(1, 1), "0.6");
}

TEST_F(FractionsTest, APressWhileSomethingIsComputedIsRefused) {
  const auto press = [&] { QTest::mouseClick(&Button(), Qt::LeftButton); };
  EXPECT_EQ(Meanwhile(press), kRefusal);
  EXPECT_FALSE(Button().isChecked());
  EXPECT_EQ(deriver.begun, 0);
  Press();
  EXPECT_EQ(Meanwhile(press), kRefusal);
  EXPECT_TRUE(Button().isChecked());
  EXPECT_EQ(Shown(1, 1), "3/5");
}

TEST_F(FractionsTest, AResultThatGoesMeanwhileTakesTheSearchAlong) {
  deriver.CloseGate();
  QTest::mouseClick(&Button(), Qt::LeftButton);
  Until([&] { return deriver.begun == 1; });
  program.Runner().Undo();
  UntilFound();
  EXPECT_EQ(deriver.stopped, 1);
}

}  // namespace
}  // namespace qmx::test
