// SPDX-License-Identifier: MIT
#include "app/digit_checks.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include "commands/dispatcher.h"
#include "grids/contrast.h"
#include "support/desktop_digits.h"
#include "support/desktop_meanwhile.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

/// A program beside that of the test.
class OtherDesktop : public Desktop {
 public:
  using Desktop::Desktop;

 private:
  void TestBody() override {}
};

class DigitChecksTest : public DigitsDesktop {
 protected:
  const std::vector<std::string> oneToNine{"1", "2", "3", "4", "5", "6", "7", "8", "9"};

  void EnterRegular() { Enter(kSlotA, 2, 2, {"2", "1", "1", "3"}); }
  void Type(const std::string& text) {
    Window(kSlotA).activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
    ClickCell(kSlotA, 1, 1);
    QTest::keyClicks(&Box(kSlotA), QString::fromStdString(text));
  }
};

TEST_F(DigitChecksTest, AResultIsCheckedInTheBackground) {
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  EXPECT_EQ(LineText(kSlotInverse), "All digits hold; condition number about 1");
  EXPECT_FALSE(CheckButton(kSlotInverse)->isVisible());
}

TEST_F(DigitChecksTest, BeforeItIsCheckedNothingIsClaimed) {
  prover.CloseGate();
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  Until([&] { return prover.begun > 0; });
  EXPECT_EQ(LineText(kSlotInverse), "Not checked yet");
  EXPECT_EQ(Proved(kSlotInverse, 1, 1), 0);
  EXPECT_EQ(Tip(kSlotInverse, 1, 1), "Not checked yet");
  prover.OpenGate();
  UntilChecked();
  EXPECT_GE(Proved(kSlotInverse, 1, 1), 7);
}

TEST_F(DigitChecksTest, TheInverseOfASingularMatrixIsToldToBeNoise) {
  Enter(kSlotA, 3, 3, oneToNine);
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  EXPECT_EQ(LineText(kSlotInverse), "A is singular: this inverse is rounding noise");
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) EXPECT_EQ(Proved(kSlotInverse, i, j), 0);
  }
}

TEST_F(DigitChecksTest, AChangedOperandTakesTheMarksAndUndoBringsThemBack) {
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  const int checks = prover.begun;
  Type("5");
  EXPECT_EQ(LineText(kSlotInverse), "A has changed since: no digit is proved");
  EXPECT_EQ(Proved(kSlotInverse, 1, 1), 0);
  program.Runner().Undo();
  EXPECT_EQ(LineText(kSlotInverse), "All digits hold; condition number about 1");
  EXPECT_GE(Proved(kSlotInverse, 1, 1), 7);
  program.Runner().Redo();
  EXPECT_EQ(LineText(kSlotInverse), "A has changed since: no digit is proved");
  program.Runner().Undo();
  EXPECT_EQ(prover.begun, checks) << "what is known need not be found again";
}

TEST_F(DigitChecksTest, UndoneResultsTakeTheirMarksAlong) {
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  Window(kSlotA).activateWindow();
  Type("1e-9");
  Main().activateWindow();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  const std::string second = LineText(kSlotInverse);
  program.Runner().Undo();
  EXPECT_EQ(LineText(kSlotInverse), "A has changed since: no digit is proved");
  program.Runner().Redo();
  EXPECT_EQ(LineText(kSlotInverse), second);
}

TEST_F(DigitChecksTest, ATaskStopsACheckWhichBeginsAgainAfterwards) {
  EnterRegular();
  prover.CloseGate();
  Click(cmdTask(kTaskInverse));
  Until([&] { return prover.begun == 1; });
  Click(cmdTask(kTaskTranspose));
  Until([&] { return prover.begun == 2; });
  EXPECT_EQ(prover.stopped, 1);
  prover.OpenGate();
  UntilChecked();
  EXPECT_EQ(LineText(kSlotTranspose), "All digits hold");
  EXPECT_EQ(LineText(kSlotInverse), "All digits hold; condition number about 1");
}

TEST_F(DigitChecksTest, AChangedOperandStopsTheCheck) {
  EnterRegular();
  prover.CloseGate();
  Click(cmdTask(kTaskInverse));
  Until([&] { return prover.begun == 1; });
  Type("5");
  UntilChecked();
  EXPECT_EQ(prover.stopped, 1);
  EXPECT_EQ(prover.begun, 1);
}

TEST_F(DigitChecksTest, TheEndOfTheProgramEndsTheCheck) {
  prover.CloseGate();
  {
    OtherDesktop other(&prover);
    other.Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
    other.Click(cmdTask(kTaskInverse));
    Until([&] { return prover.begun == 1; });
  }
  EXPECT_EQ(prover.stopped, 1);
}

TEST_F(DigitChecksTest, AFalsifiedResultLosesItsClaims) {
  prover.falsify = [](ProofQuestion& question) { question.computed[0](1, 2) *= 1 + 1e-9; };
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  ClickToggle(kSlotInverse);
  UntilChecked();
  const std::string line = LineText(kSlotInverse);
  EXPECT_EQ(line.find("At least "), 0U) << line;
  EXPECT_NE(line.find("fewest at row 1, column 2"), std::string::npos) << line;
}

TEST_F(DigitChecksTest, ALongCheckIsOfferedAndCanBeAskedFor) {
  prover.estimate = 60;
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  EXPECT_EQ(prover.begun, 0);
  EXPECT_EQ(LineText(kSlotInverse), "Not checked yet");
  ASSERT_TRUE(CheckButton(kSlotInverse)->isVisible());
  EXPECT_EQ(CheckButton(kSlotInverse)->text(), "Check &digits");
  CheckButton(kSlotInverse)->click();
  UntilChecked();
  EXPECT_EQ(LineText(kSlotInverse), "All digits hold; condition number about 1");
  EXPECT_FALSE(CheckButton(kSlotInverse)->isVisible());
}

TEST_F(DigitChecksTest, ACheckThatWasAskedForCanBeStopped) {
  prover.estimate = 60;
  prover.CloseGate();
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  for (const bool byKey : {false, true}) {
    CheckButton(kSlotInverse)->click();
    Until([&] { return prover.begun == (byKey ? 2 : 1); });
    EXPECT_EQ(LineText(kSlotInverse), "Checking digits...");
    EXPECT_EQ(CheckButton(kSlotInverse)->text(), "&Stop checking");
    if (byKey) {
      QTest::keyClick(&Grid(kSlotInverse), Qt::Key_Escape);
    } else {
      CheckButton(kSlotInverse)->click();
    }
    UntilChecked();
    EXPECT_EQ(LineText(kSlotInverse), "Not checked yet");
    EXPECT_EQ(CheckButton(kSlotInverse)->text(), "Check &digits");
  }
  EXPECT_EQ(prover.stopped, 2);
}

TEST_F(DigitChecksTest, AskingWhileSomethingIsComputedIsRefused) {
  prover.estimate = 60;
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  const auto press = [&] { CheckButton(kSlotInverse)->click(); };
  EXPECT_EQ(SaidMeanwhile(program, press), kRefusal);
  EXPECT_EQ(CheckButton(kSlotInverse)->text(), "Check &digits");
  EXPECT_TRUE(program.Digits().IsIdle());
  EXPECT_EQ(prover.begun, 0);
}

TEST_F(DigitChecksTest, WhatCannotBeProvedIsNeverClaimed) {
  prover.fails = true;
  EnterRegular();
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  EXPECT_EQ(LineText(kSlotInverse), "The digits cannot be proved");
  EXPECT_EQ(Proved(kSlotInverse, 1, 1), 0);
}

TEST_F(DigitChecksTest, ACellTellsItsDigitsAndTheEnclosure) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(kTaskInverse));
  UntilChecked();
  EXPECT_EQ(Tip(kSlotInverse, 1, 1),
            "7 digits hold\nThe exact value lies between 0.3333333333333333 and "
            "0.33333333333333337");
  EXPECT_EQ(Spoken(kSlotInverse, 1, 1), "7 digits hold. Row 1, column 1");
  ClickToggle(kSlotInverse);
  EXPECT_EQ(Spoken(kSlotInverse, 1, 1), "15 digits hold. Row 1, column 1");
  EXPECT_EQ(Spoken(kSlotA, 1, 1), "Row 1, column 1") << "nothing is grey in editors";
}

TEST_F(DigitChecksTest, AMultipleOfAIsToldBelowItsEditorUntilAChanges) {
  Enter(kSlotA, 1, 2, {"0.1", "7"});
  TypeInto(txtScalar, "3");
  Click(cmdTask(kTaskScale));
  UntilChecked();
  EXPECT_EQ(LineText(kSlotA), "Multiple of A: all digits hold");
  EXPECT_EQ(Proved(kSlotA, 1, 1), -1);
  Type("4");
  EXPECT_FALSE(Line(kSlotA)->isVisible());
  program.Runner().Undo();
  EXPECT_EQ(LineText(kSlotA), "Multiple of A: all digits hold");
}

TEST_F(DigitChecksTest, AnEditorTellsOfDigitsThatItCannotHold) {
  Enter(kSlotA, 1, 2, {"9007199254740993", "1.5"});
  const auto* line = Window(kSlotA).findChild<QLabel*>("lblEntry");
  ClickCell(kSlotA, 1, 1);
  EXPECT_EQ(line->text(), "A(1,1) = 9007199254740992: no more than 15 to 17 digits can be held");
  ClickCell(kSlotA, 1, 2);
  EXPECT_EQ(line->text(), "A(1,2) = 1.5");
}

TEST_F(DigitChecksTest, EigenvectorsAreCheckedWithTheirValues) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Click(cmdTask(kTaskEigen));
  UntilChecked();
  EXPECT_EQ(prover.begun, 1);
  EXPECT_NE(LineText(kSlotEigenvalues), "Not checked yet");
  EXPECT_NE(LineText(kSlotEigenvectors), "Not checked yet");
  EXPECT_GT(Proved(kSlotEigenvectors, 0, 1), 3) << "the value above its vector";
  EXPECT_EQ(Proved(kSlotEigenvectors, 0, 0), -1);
}

TEST_F(DigitChecksTest, TheLineTakesNoRoomFromTheCells) {
  const auto showsAll = [this](qmx::Slot slot) {
    const MatrixGrid& grid = Grid(slot);
    return !grid.verticalScrollBar()->isVisible() && !grid.horizontalScrollBar()->isVisible();
  };
  Enter(kSlotA, 3, 3, oneToNine);
  for (const Task task : {kTaskEigen, kTaskInverse}) Click(cmdTask(task));
  UntilChecked();
  for (const qmx::Slot slot : {kSlotEigenvalues, kSlotEigenvectors, kSlotInverse}) {
    QCoreApplication::processEvents();
    EXPECT_TRUE(showsAll(slot)) << slot;
    EXPECT_GE(Line(slot)->height(), Line(slot)->heightForWidth(Line(slot)->width())) << slot;
  }
}

TEST_F(DigitChecksTest, NumbersAndVerdictsTellTheirDigitsBesideThem) {
  Enter(kSlotA, 3, 3, oneToNine);
  for (const Task task : {kTaskDeterminant, kTaskTrace, kTaskSymmetry}) Click(cmdTask(task));
  UntilChecked();
  const auto* determinant = Get<QLabel>({"lblDigitsOfDeterminant"});
  EXPECT_EQ(Text({"lblDigitsOfDeterminant"}), "none proved") << Text(lblDeterminantOfA);
  EXPECT_EQ(determinant->toolTip(), "No digit is proved\nThe exact value is 0\nA is singular");
  EXPECT_EQ(determinant->accessibleName(),
            "No digit is proved. The exact value is 0. A is singular");
  EXPECT_EQ(Text({"lblDigitsOfTrace"}), "all digits hold");
  EXPECT_EQ(Text({"lblDigitsOfSymmetry"}), "proved");
  EXPECT_FALSE(Get<QLabel>({"lblDigitsOfDefiniteness"})->isVisible());
  Type("7");
  EXPECT_EQ(Text({"lblDigitsOfTrace"}), "A has changed");
  program.Runner().Undo();
  EXPECT_EQ(Text({"lblDigitsOfTrace"}), "all digits hold");
}

TEST_F(DigitChecksTest, AVerdictThatTheExactNumbersDisproveIsToldToBeWrong) {
  // The determinant is 2^-53 - 2^-105 or so above zero; in doubles the second pivot is zero.
  Enter(kSlotA, 2, 2, {"1", "1", "1", "1.0000000000000002"});
  Click(cmdTask(kTaskDefiniteness));
  UntilChecked();
  EXPECT_EQ(Text({"lblDigitsOfDefiniteness"}), "proved");
  prover.falsify = [](ProofQuestion& question) {
    question.definiteness = Definiteness::kNegativeDefinite;
  };
  Click(cmdTask(kTaskDefiniteness));
  UntilChecked();
  EXPECT_EQ(Text({"lblDigitsOfDefiniteness"}), "disproved");
}

TEST_F(DigitChecksTest, GreyDigitsOfANumberArePaintedOverItsLabel) {
  Enter(kSlotA, 3, 3, oneToNine);
  Click(cmdTask(kTaskDeterminant));
  auto* value = Get<QLabel>(lblDeterminantOfA);
  UntilChecked();
  const QImage picture = value->grab().toImage();
  const QColor ground = value->palette().color(QPalette::Window);
  bool isPainted = false;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor pixel = picture.pixelColor(x, y);
      isPainted |= Contrast(pixel, ground) > 1.5;
      EXPECT_LE(Contrast(pixel, ground), 6.5) << "nothing is as black as a digit that holds";
    }
  }
  EXPECT_TRUE(isPainted);
}

TEST_F(DigitChecksTest, ALongCheckOfANumberIsOfferedBesideIt) {
  prover.estimate = 60;
  EnterRegular();
  Click(cmdTask(kTaskDeterminant));
  UntilChecked();
  auto* check = Get<QPushButton>({"cmdCheckDigitsOfDeterminant"});
  ASSERT_TRUE(check->isVisible());
  EXPECT_EQ(check->text(), "Check");
  check->click();
  UntilChecked();
  EXPECT_FALSE(check->isVisible());
  EXPECT_EQ(Text({"lblDigitsOfDeterminant"}), "all digits hold");
}

TEST_F(DigitChecksTest, WithoutAProverNothingIsTold) {
  OtherDesktop plain;
  plain.Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  plain.Click(cmdTask(kTaskInverse));
  EXPECT_FALSE(plain.Window(kSlotInverse).findChild<QLabel*>("lblDigits")->isVisible());
  EXPECT_FALSE(plain.Grid(kSlotInverse).Model().ProvedDigits(1, 1));
}

}  // namespace
}  // namespace qmx::test
