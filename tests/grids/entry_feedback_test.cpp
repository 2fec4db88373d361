// SPDX-License-Identifier: MIT
// What is told while somebody types: below an editor's grid, beside a field.

#include <QLabel>
#include <QTest>

#include "grids/announcer.h"
#include "grids/go_to_dialog.h"
#include "grids/reading_mark.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class EntryFeedback : public Desktop {
 public:
  std::string Line(qmx::Slot slot = kSlotA) {
    return Window(slot).findChild<QLabel*>("lblEntry")->text().toStdString();
  }
  /// What was said last to people who hear a window.
  static std::string Said(QWidget& window) {
    const auto* announcer = window.findChild<Announcer*>();
    return announcer == nullptr ? "" : announcer->accessibleName().toStdString();
  }
  static ReadingMark& Mark(const QWidget& field) { return *field.findChild<ReadingMark*>(); }
  static std::string Note(const QWidget& field) { return Mark(field).Note().toStdString(); }
  /// The note that is on show; empty where none is.
  static std::string Shown(QWidget& window) {
    for (const QLabel* label : window.findChildren<QLabel*>("lblReadAs")) {
      if (label->isVisible()) return label->text().toStdString();
    }
    return {};
  }
};

TEST_F(EntryFeedback, TheLineNamesTheCurrentElementAsItIsStored) {
  Enter(kSlotA, 2, 2, {"1", "2", ".333333333333333333", "4"});
  EXPECT_EQ(Line(), "A(1,1) = 1") << "the last arrow has gone round";
  Key(Qt::Key_Left);
  EXPECT_EQ(Line(), "A(2,2) = 4");
  Key(Qt::Key_Left);
  EXPECT_EQ(Line(), "A(2,1) = 0.3333333333333333: no more than 15 to 17 digits can be held");
  EXPECT_EQ(State().At(kSlotA).array(2, 1), 1.0 / 3);
  Key(Qt::Key_Up);
  EXPECT_EQ(Line(), "A(1,1) = 1");
  Window(kSlotA).HideEntryBox();
  Key(Qt::Key_End);
  EXPECT_EQ(Line(), "A(1,2) = 2");
}

TEST_F(EntryFeedback, TheLineHasAllDigitsOfWhatTheGridShowsRounded) {
  Enter(kSlotA, 1, 1, {"3"});
  Click(cmdTask(5));
  Click(cmdIntoB(kSlotInverse));
  EXPECT_EQ(Cell(kSlotB, 1, 1), "0.3333333");
  EXPECT_EQ(Line(kSlotB), "B(1,1) = 0.3333333333333333");
}

TEST_F(EntryFeedback, TheLineTellsWhatOfATextIsNotRead) {
  Enter(kSlotA, 2, 2, {});
  EXPECT_EQ(Line(), "A(1,1) = 0");
  Keys("1.2");
  EXPECT_EQ(Line(), "A(1,1) = 1.2");
  Keys(".3");
  EXPECT_EQ(Line(), "A(1,1) = 1.2: a number has one point");
  Key(Qt::Key_Right);
  Keys("1-2");
  EXPECT_EQ(Line(), "A(1,2) = 1: a sign stands in front or after E");
}

TEST_F(EntryFeedback, ARefusedKeyIsNamedWithWhatToDoInstead) {
  Enter(kSlotA, 2, 2, {});
  Keys("1/");
  EXPECT_EQ(Line(), "/ is not accepted here: type .3333333333333333 for 1/3");
  EXPECT_EQ(Said(Window(kSlotA)), Line());
  Keys("2");
  EXPECT_EQ(Line(), "A(1,1) = 12") << "the next accepted key ends the refusal";
  for (const auto& [key, name] :
       {std::pair(Qt::Key_Backspace, "Backspace"), std::pair(Qt::Key_Return, "Enter"),
        std::pair(Qt::Key_Enter, "Enter"), std::pair(Qt::Key_Escape, "Escape")}) {
    Key(key);
    EXPECT_EQ(Line().find(std::string(name) + " is not accepted here: "), 0) << Line();
    EXPECT_EQ(Said(Window(kSlotA)), Line());
  }
  Key(Qt::Key_Right);
  EXPECT_EQ(Line(), "A(1,2) = 0");
}

TEST_F(EntryFeedback, AKeyIsRefusedOnTheGridAsInTheCell) {
  Enter(kSlotA, 2, 2, {});
  Window(kSlotA).HideEntryBox();
  Keys("x");
  EXPECT_EQ(Line(), "x is not accepted here: numbers are typed with 0 to 9 + - . E");
  EXPECT_FALSE(Box(kSlotA).isVisible());
}

TEST_F(EntryFeedback, ALongReasonMovesNothing) {
  Enter(kSlotA, 2, 2, {});
  const QSize window = Window(kSlotA).size();
  const QRect grid = Grid(kSlotA).geometry();
  Key(Qt::Key_Escape);
  QTest::qWait(0);
  EXPECT_EQ(Window(kSlotA).size(), window);
  EXPECT_EQ(Grid(kSlotA).geometry(), grid);
  const auto* line = Window(kSlotA).findChild<QLabel*>("lblEntry");
  EXPECT_LE(line->heightForWidth(line->width()), line->height()) << "the whole of it is seen";
}

TEST_F(EntryFeedback, UndoBringsBackTheLine) {
  Enter(kSlotA, 1, 1, {"5"});
  Window(kSlotA).HideEntryBox();
  program.Runner().Undo();
  EXPECT_EQ(Line(), "A(1,1) = 0");
  program.Runner().Redo();
  EXPECT_EQ(Line(), "A(1,1) = 5");
}

TEST_F(EntryFeedback, AFieldIsMarkedWhileItsTextIsReadInPart) {
  const QWidget& field = *Get(txtScalar);
  TypeInto(txtScalar, "0");
  EXPECT_EQ(Note(field), "");
  EXPECT_EQ(Shown(Main()), "");
  Keys(",");
  EXPECT_EQ(Note(field), "Read as 0: the decimal sign is the point.");
  Keys("5");
  EXPECT_EQ(Shown(Main()), "Read as 0: the decimal sign is the point.");
  EXPECT_EQ(field.accessibleDescription(), "Read as 0: the decimal sign is the point.");
  EXPECT_EQ(Said(Main()), "Read as 0: the decimal sign is the point.");
  EXPECT_EQ(field.toolTip(), "For scalar multiplication");
  EXPECT_EQ(Text(txtScalar), "0,5") << "the text is the user's";
  EXPECT_TRUE(Mark(field).isVisible());
  Key(Qt::Key_A, Qt::ControlModifier);
  Keys("0.5");
  EXPECT_FALSE(Mark(field).isVisible());
  EXPECT_EQ(Shown(Main()), "");
  EXPECT_EQ(field.accessibleDescription(), "");
}

TEST_F(EntryFeedback, TheNoteIsReadAsTheTaskReadsTheField) {
  Enter(kSlotA, 1, 1, {"3"});
  TypeInto(txtScalar, "2.5.1");
  EXPECT_EQ(Note(*Get(txtScalar)), "Read as 2.5: a number has one point.");
  Click(cmdTask(16));
  EXPECT_EQ(Slot(kSlotA).array(1, 1), 7.5);
}

TEST_F(EntryFeedback, TheNoteLeavesWithTheKeyboardAndTheMarkStays) {
  TypeInto(txtRowsA, "2.5");
  EXPECT_EQ(Shown(Main()), "Not taken: this must be a whole number of at least 1.");
  Get(txtColsA)->setFocus();
  EXPECT_EQ(Shown(Main()), "");
  EXPECT_TRUE(Mark(*Get(txtRowsA)).isVisible());
  Get(txtRowsA)->setFocus();
  EXPECT_EQ(Shown(Main()), "Not taken: this must be a whole number of at least 1.");
}

TEST_F(EntryFeedback, WhatACommandWritesIsMarkedToo) {
  TypeInto(txtEquations, "3,");
  QTest::qWait(50);
  EXPECT_EQ(Text(txtUnknowns), "3,");
  EXPECT_TRUE(Mark(*Get(txtUnknowns)).isVisible());
  Key(Qt::Key_A, Qt::ControlModifier);
  Keys("3");
  QTest::qWait(50);
  EXPECT_FALSE(Mark(*Get(txtUnknowns)).isVisible());
}

TEST_F(EntryFeedback, NoteAndMarkTakeNoClicksAndLieWithinTheWindow) {
  for (const Control& control : {txtRowsA, txtScalar, txtMaxcy, txtUnknowns, txtRandHigh}) {
    if (!IsEnabled(control)) continue;
    TypeInto(control, "1,x");
    const QLabel* shown = nullptr;
    for (const QLabel* label : Main().findChildren<QLabel*>("lblReadAs")) {
      if (label->isVisible()) shown = label;
    }
    ASSERT_NE(shown, nullptr) << control.ObjectName();
    EXPECT_TRUE(shown->parentWidget()->rect().contains(shown->geometry())) << control.ObjectName();
    EXPECT_FALSE(shown->geometry().intersects(
        QRect(Get(control)->mapTo(shown->parentWidget(), QPoint(0, 0)), Get(control)->size())));
    EXPECT_TRUE(shown->testAttribute(Qt::WA_TransparentForMouseEvents));
  }
}

TEST_F(EntryFeedback, TheFieldsOfGoToTellTheirRange) {
  Enter(kSlotA, 2, 3, {});
  Window(kSlotA).HideEntryBox();
  Key(Qt::Key_G, Qt::ControlModifier);
  auto* dialog = Window(kSlotA).findChild<GoToDialog*>();
  ASSERT_NE(dialog, nullptr);
  auto* col = dialog->findChild<QLineEdit*>("txtGoToColumn");
  col->setText("4");
  EXPECT_EQ(Note(*col), "Not taken: this must be a whole number from 1 to 3.");
  col->setText("3");
  EXPECT_EQ(Note(*col), "");
}

}  // namespace
}  // namespace qmx::test
