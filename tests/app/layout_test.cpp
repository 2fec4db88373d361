// SPDX-License-Identifier: MIT
// How the main window is laid out.

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <set>

#include "commands/task_table.h"
#include "support/desktop_bench.h"
#include "workspace/field_table.h"

namespace qmx::test {
namespace {

using Layout = Desktop;

std::vector<Control> NamedControls() {
  std::vector<Control> all{lblDeterminantOfA, lblTraceOfA,       lblDefiniteness, lblSymmetry,
                           cmdCreateA,        cmdCreateB,        cmdRetrieveA,    cmdRetrieveB,
                           cmdClearA,         cmdClearB,         cmdResetA,       cmdResetB,
                           cmdExchangeAandB,  cmdSolve,          cmdRetrieveLU,   cmdCreateSystem,
                           cmdClearSystem,    cmdRetrieveSystem, cmdResetSystem,  cmdSaveLU,
                           cmdShowResults,    mnuPrint};
  for (const char* name : {"fraTask",           "fraScalar",
                           "fraShift",          "fraPivot",
                           "fraRandom",         "fraEigenControls",
                           "lblScalar",         "lblShift",
                           "lblRandom",         "lblError",
                           "lblMaxcy",          "lblErs",
                           "lblPert",           "lblDeterminantOfAequals",
                           "lblTraceOfAequals", "lblNumEquations",
                           "lblNumUnknowns",    "mnuOpen",
                           "mnuSave",           "mnuSaveAs",
                           "mnuExit",           "mnuAssociate",
                           "mnuHelp",           "mnuAbout"}) {
    all.push_back({name});
  }
  return all;
}

std::vector<Control> AllControls() {
  std::vector<Control> all = NamedControls();
  for (const FieldInfo& field : kFields) all.push_back(field.control);
  for (const OptionInfo& option : kOptions) all.push_back(option.control);
  for (const TaskInfo& task : Tasks()) all.push_back(cmdTask(task.index));
  for (const SlotInfo& info : kSlots) {
    for (const Control& control : {fraFrame(info.slot), cmdShow(info.slot), cmdSave(info.slot),
                                   cmdPrint(info.slot), info.rows, info.cols}) {
      all.push_back(control);
    }
    if (info.slot != kSlotA) all.push_back(cmdIntoA(info.slot));
    if (info.slot != kSlotB) all.push_back(cmdIntoB(info.slot));
  }
  return all;
}

void ShowAllFrames(Desktop& desktop) {
  for (const qmx::Slot slot : kAllSlots) {
    desktop.program.Windows().SetFrameVisible(slot, true);
    if (HasPermanentFrame(slot)) continue;
    desktop.program.Windows().SetText(InfoOf(slot).rows, "2000");
    desktop.program.Windows().SetText(InfoOf(slot).cols, "2000");
  }
  QTest::qWait(20);
}

TEST_F(Layout, EveryControlIsThereOnce) {
  for (const Control& control : AllControls()) {
    const QString name = QString::fromStdString(control.ObjectName());
    EXPECT_EQ(Main().findChildren<QObject*>(name).size(), 1) << control.ObjectName();
  }
  EXPECT_EQ(Main().Find(cmdIntoA(kSlotA)), nullptr);
  EXPECT_EQ(Main().Find(cmdIntoB(kSlotB)), nullptr);
}

TEST_F(Layout, CaptionsOfFramesAndTasksAreTheirOwn) {
  const std::vector<std::pair<Control, const char*>> titles{
      {{"fraScalar"}, "For scalar multiplication"},
      {{"fraShift"}, "For scalar shift"},
      {{"fraPivot"}, "Partial pivoting"},
      {{"fraRandom"}, "For random matrix"},
      {{"fraEigenControls"}, "Eigenvalues/eigenvectors computation"},
      {fraFrame(kSlotCreated), "Special matrix"},
      {fraFrame(kSlotSystem), "System of linear equations"}};
  for (const auto& [control, title] : titles) EXPECT_EQ(Get<QGroupBox>(control)->title(), title);
  for (const TaskInfo& task : Tasks()) {
    const auto* button = Get<QAbstractButton>(cmdTask(task.index));
    EXPECT_EQ(button->text().toStdString(), task.caption);
    EXPECT_EQ(button->toolTip().toStdString(), task.toolTip);
  }
  EXPECT_EQ(Get<QLabel>({"lblRandom"})->text(), "<=elements<=");
  EXPECT_EQ(Get<QAbstractButton>(cmdShowResults)->text(), "Show Results");
  EXPECT_EQ(Get<QAbstractButton>(cmdSolve)->text(), "Solve");
  EXPECT_EQ(Get<QAbstractButton>(cmdRetrieveLU)->text(), "Retrieve LU factors");
  EXPECT_EQ(Get<QAbstractButton>(cmdSaveLU)->text(), "Save LU factors");
  EXPECT_EQ(Get<QAbstractButton>(cmdSaveLU)->toolTip(), "Saves LU factors in a separate file");
  EXPECT_EQ(Main().windowTitle(), "Orvane");
}

TEST_F(Layout, FitsASmallScreenWithoutScrolling) {
  ShowAllFrames(*this);
  ASSERT_EQ(Main().screen()->size(), QSize(1366, 768));
  EXPECT_LE(Main().width(), 1366);
  // A title bar and the desktop's panel take the rest.
  EXPECT_LE(Main().height(), 768 - 40 - 28);
  const auto* area = qobject_cast<QScrollArea*>(Main().centralWidget());
  EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
}

TEST_F(Layout, NothingIsClipped) {
  ShowAllFrames(*this);
  int seen = 0;
  for (const QWidget* widget : Main().findChildren<QWidget*>()) {
    const bool hasText = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                         qobject_cast<const QLabel*>(widget) != nullptr ||
                         qobject_cast<const QLineEdit*>(widget) != nullptr;
    if (!hasText || !widget->isVisible() || widget->objectName().startsWith("qt_")) continue;
    ++seen;
    EXPECT_GE(widget->width(), widget->sizeHint().width()) << widget->objectName().toStdString();
    EXPECT_GE(widget->height(), widget->sizeHint().height()) << widget->objectName().toStdString();
  }
  EXPECT_GT(seen, 150);
}

TEST_F(Layout, FramesThatAppearMoveNothing) {
  std::vector<std::pair<QWidget*, QPoint>> places;
  for (QWidget* widget : Main().findChildren<QWidget*>()) {
    if (widget->isVisible()) places.emplace_back(widget, widget->mapTo(&Main(), QPoint(0, 0)));
  }
  ASSERT_GT(places.size(), 100U);
  ShowAllFrames(*this);
  for (const auto& [widget, place] : places) {
    EXPECT_EQ(widget->mapTo(&Main(), QPoint(0, 0)), place) << widget->objectName().toStdString();
  }
}

TEST_F(Layout, OnlyTheFramesOfOperandsShowAtStart) {
  for (const qmx::Slot slot : kAllSlots) {
    EXPECT_EQ(Get(fraFrame(slot))->isVisible(), HasPermanentFrame(slot)) << slot;
  }
}

TEST_F(Layout, TabReachesEveryEnabledControl) {
  ShowAllFrames(*this);
  std::set<QWidget*> wanted;
  for (const Control& control : AllControls()) {
    auto* widget = qobject_cast<QWidget*>(Main().Find(control));
    if (widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    // Of a group of options Tab reaches the selected one, and arrows the others.
    const auto* option = qobject_cast<QRadioButton*>(widget);
    if (option != nullptr && !option->isChecked()) continue;
    widget->setEnabled(true);
    wanted.insert(widget);
  }
  ASSERT_GT(wanted.size(), 140U);
  const std::size_t most = wanted.size() + 40;
  for (std::size_t presses = 0; presses < most && !wanted.empty(); ++presses) {
    wanted.erase(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  for (const QWidget* missed : wanted) ADD_FAILURE() << missed->objectName().toStdString();
}

TEST_F(Layout, TabStartsWithTheDimensionsOfA) {
  EXPECT_EQ(QApplication::focusWidget(), Get(txtRowsA));
  for (const Control& next : {txtColsA, cmdCreateA, cmdRetrieveA, txtRowsB}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), Get(next)) << next.name;
  }
}

TEST_F(Layout, MenusHaveTheUsualShortcuts) {
  const std::vector<std::pair<const char*, const char*>> shortcuts{
      {"mnuOpen", "Ctrl+O"},  {"mnuSave", "Ctrl+S"}, {"mnuSaveAs", "Ctrl+Shift+S"},
      {"mnuPrint", "Ctrl+P"}, {"mnuExit", "Ctrl+Q"}, {"mnuWindowHelp", "F1"}};
  for (const auto& [name, keys] : shortcuts) {
    EXPECT_EQ(Main().Action(name)->shortcut(), QKeySequence(keys)) << name;
  }
}

TEST_F(Layout, FieldsAndButtonsAreNamedForThoseWhoHearThem) {
  for (const FieldInfo& info : kFields) {
    EXPECT_EQ(Get(info.control)->accessibleName().toStdString(), info.meaning);
  }
  EXPECT_EQ(Get(cmdShow(kSlotInverse))->accessibleName(), "Inverse of A: Show");
}

}  // namespace
}  // namespace qmx::test
