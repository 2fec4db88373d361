// SPDX-License-Identifier: MIT
// The fields and options of the main window, worked by mouse and keyboard.

#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>

#include "support/desktop_bench.h"
#include "workspace/field_table.h"

namespace qmx::test {
namespace {

using Parameters = Desktop;

TEST_F(Parameters, FieldsStartWithTheirTextsAndToolTips) {
  for (const FieldInfo& info : kFields) {
    const auto* field = Get<QLineEdit>(info.control);
    EXPECT_EQ(field->text().toStdString(), info.start) << info.control.name;
    EXPECT_EQ(field->toolTip().toStdString(), info.toolTip) << info.control.name;
    EXPECT_EQ(field->isEnabled(), info.control != txtUnknowns) << info.control.name;
  }
}

TEST_F(Parameters, OptionsStartWithTheirCaptionsAndMarks) {
  for (const OptionInfo& info : kOptions) {
    const auto* option = Get<QAbstractButton>(info.control);
    EXPECT_EQ(option->text().toStdString(), info.caption);
    EXPECT_EQ(option->toolTip().toStdString(), info.toolTip) << info.caption;
    EXPECT_EQ(option->isChecked(), info.selectedAtStart) << info.caption;
  }
}

TEST_F(Parameters, EveryFieldIsSelectedWholeOnFocus) {
  for (const FieldInfo& info : kFields) {
    auto* field = Get<QLineEdit>(info.control);
    field->setEnabled(true);
    field->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(field->selectedText().toStdString(), info.start) << info.control.name;
    field->clearFocus();
    QTest::mouseClick(field, Qt::LeftButton);
    EXPECT_EQ(field->selectedText().toStdString(), info.start) << info.control.name;
  }
}

TEST_F(Parameters, TypingReplacesAFieldThatWasClicked) {
  auto* field = Get<QLineEdit>(txtMaxcy);
  QTest::mouseClick(field, Qt::LeftButton);
  EXPECT_EQ(field->selectedText(), "100");
  QTest::keyClicks(field, "250");
  EXPECT_EQ(field->text(), "250");
}

TEST_F(Parameters, SeveralPastedLinesAreRefusedWithAHint) {
  auto* field = Get<QLineEdit>(txtScalar);
  const QString before = field->text();
  const auto paste = [field](const QString& text) {
    field->setFocus();
    field->selectAll();
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
  };
  for (const char* lines : {"1\n2", "1\r\n2\r\n",
                            "1\xE2\x80\xA8"
                            "2"}) {
    QToolTip::hideText();
    paste(QString::fromUtf8(lines));
    EXPECT_EQ(field->text(), before) << lines;
    EXPECT_EQ(QToolTip::text(), "A field holds one line; several were not taken.") << lines;
  }
  paste("2.5\r\n");
  EXPECT_EQ(field->text(), "2.5") << "one line with its end";
}

TEST_F(Parameters, TheSecondClickPlacesTheCaret) {
  auto* field = Get<QLineEdit>(txtMaxcy);
  QTest::mouseClick(field, Qt::LeftButton);
  QTest::mouseClick(field, Qt::LeftButton);
  EXPECT_FALSE(field->hasSelectedText());
}

TEST_F(Parameters, IdentityIsSquare) {
  Click(OptCreate(2));
  EXPECT_FALSE(IsEnabled(txtColsCreated));
  TypeInto(txtRowsCreated, "5");
  EXPECT_EQ(Text(txtColsCreated), "5");
  EXPECT_FALSE(IsEnabled(txtColsCreated));
  Click(OptCreate(3));
  EXPECT_TRUE(IsEnabled(txtColsCreated));
}

TEST_F(Parameters, ASymmetricMatrixStaysSquareWhenItsKindChanges) {
  TypeInto(txtRowsCreated, "4");
  EXPECT_EQ(Text(txtColsCreated), "2");
  Click(chkSymmetric);
  EXPECT_EQ(Text(txtColsCreated), "4");
  Click(OptCreate(2));
  Click(OptCreate(3));
  EXPECT_FALSE(IsEnabled(txtColsCreated));
  Click(chkSymmetric);
  EXPECT_TRUE(IsEnabled(txtColsCreated));
}

TEST_F(Parameters, ArrowsChooseOptionsAsClicksDo) {
  auto* zeroes = Get<QAbstractButton>(OptCreate(0));
  zeroes->setFocus();
  QTest::keyClick(zeroes, Qt::Key_Down);
  EXPECT_TRUE(Get<QAbstractButton>(OptCreate(2))->isChecked());
  EXPECT_FALSE(IsEnabled(txtColsCreated));
}

TEST_F(Parameters, AOneShotSystemIsSquare) {
  TypeInto(txtEquations, "4");
  EXPECT_EQ(Text(txtUnknowns), "4");
  Click(OptSystem(2));
  TypeInto(txtEquations, "6");
  EXPECT_EQ(Text(txtUnknowns), "4");
}

TEST_F(Parameters, SolvingByFactorsNeedsFactors) {
  Click(OptSystem(1));
  EXPECT_EQ(State().SystemMethod, 1);
  EXPECT_FALSE(IsEnabled(cmdCreateSystem));
  EXPECT_FALSE(IsEnabled(cmdRetrieveSystem));
  EXPECT_TRUE(IsEnabled(cmdRetrieveLU));
  EXPECT_FALSE(IsEnabled(txtEquations));
  Click(OptSystem(2));
  EXPECT_TRUE(IsEnabled(cmdCreateSystem));
  EXPECT_TRUE(IsEnabled(txtUnknowns));
  EXPECT_FALSE(IsEnabled(cmdRetrieveLU));
}

TEST_F(Parameters, SolvingByFactorsTakesTheirOrder) {
  Enter(kSlotA, 3, 3, {"2", "1", "0", "1", "3", "1", "0", "1", "4"});
  Click(cmdTask(8));
  Click(OptSystem(1));
  EXPECT_EQ(Text(txtEquations), "3");
  EXPECT_EQ(Text(txtUnknowns), "3");
  EXPECT_TRUE(IsEnabled(cmdCreateSystem));
}

}  // namespace
}  // namespace qmx::test
