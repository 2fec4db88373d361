// SPDX-License-Identifier: MIT
#include <QLabel>
#include <QMenu>

#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class WhatStandsWhere : public Desktop {
 protected:
  QLabel* Label(const char* name) { return Main().findChild<QLabel*>(name); }
  std::string Status() { return Label("lblStatus")->text().toStdString(); }
  void Save(const std::string& name) {
    State().currentFileName = name;
    Main().Action("mnuSave")->trigger();
  }
};

TEST_F(WhatStandsWhere, TheStatusBarTellsTheFileAndWhetherItIsSaved) {
  EXPECT_EQ(Status(),
            "To begin, type the rows and columns of matrix A and press Create, or open a project.");
  Enter(kSlotA, 2, 2, {"1", "2"});
  EXPECT_EQ(Status(), "Not saved yet");
  Save("/somewhere/work.qmx");
  EXPECT_EQ(Status(), "work.qmx, saved");
  EXPECT_EQ(Label("lblStatus")->toolTip(), "/somewhere/work.qmx");
  Click(cmdClearA);
  EXPECT_EQ(Status(), "work.qmx, changed since it was saved");
  Main().Action("mnuUndo")->trigger();
  EXPECT_EQ(Status(), "work.qmx, saved") << "back at what was saved";
  Main().Action("mnuRedo")->trigger();
  EXPECT_EQ(Status(), "work.qmx, changed since it was saved");
}

TEST_F(WhatStandsWhere, TypingOnInACellAfterSavingIsAChange) {
  Enter(kSlotA, 1, 1, {"1"});
  Save("/somewhere/work.qmx");
  program.Runner().WriteCell(kSlotA, 1, 1, "12");
  EXPECT_EQ(Status(), "work.qmx, changed since it was saved");
}

TEST_F(WhatStandsWhere, ParametersOfEigenvaluesAndTheWayOfSolvingAreSavedToo) {
  Enter(kSlotA, 2, 2, {"4", "1", "1", "4"});
  Click(cmdTask(kTaskEigen));
  Click(cmdCreateSystem);
  Save("/somewhere/work.qmx");
  EXPECT_EQ(Status(), "work.qmx, saved");
  TypeInto(txtMaxcy, "7");
  EXPECT_EQ(Status(), "work.qmx, changed since it was saved");
  Get(txtErs)->setFocus();
  TypeInto(txtMaxcy, "100");
  EXPECT_EQ(Status(), "work.qmx, saved");
  Click(OptSystem(kSystemOverdetermined));
  EXPECT_EQ(Status(), "work.qmx, changed since it was saved");
  Click(OptSystem(kSystemOneShot));
  EXPECT_EQ(Status(), "work.qmx, saved");
}

TEST_F(WhatStandsWhere, TheEditMenuNamesItsSteps) {
  EXPECT_FALSE(Main().Action("mnuUndo")->isEnabled());
  EXPECT_EQ(Main().Action("mnuUndo")->text(), "&Undo");
  Enter(kSlotB, 1, 1, {"7"});
  Click(cmdClearB);
  EXPECT_EQ(Main().Action("mnuUndo")->text(), "&Undo Clear of matrix B");
  Main().Action("mnuUndo")->trigger();
  EXPECT_EQ(Cell(kSlotB, 1, 1), "7");
  EXPECT_EQ(Main().Action("mnuRedo")->text(), "&Redo Clear of matrix B");
  EXPECT_EQ(Main().Action("mnuUndo")->text(), "&Undo B(1,1)");
  EXPECT_EQ(Main().Action("mnuRedo")->shortcuts().size(), 2);
}

TEST_F(WhatStandsWhere, AResultSaysThatItsOperandHasChanged) {
  Enter(kSlotA, 1, 1, {"4"});
  Click(cmdTask(5));
  Click(cmdTask(3));
  auto* mark = Label("lblStale_9");
  auto* scalar = Label("lblStaleOfDeterminant");
  auto* below = Window(kSlotInverse).findChild<QLabel*>("lblStale");
  EXPECT_TRUE(mark->isHidden() && scalar->isHidden() && below->isHidden());
  Click(cmdClearA);
  for (const QLabel* label : {mark, scalar}) {
    EXPECT_FALSE(label->isHidden());
    EXPECT_EQ(label->toolTip(), "A has changed since this was computed");
    EXPECT_EQ(label->accessibleDescription(), "A has changed since this was computed");
  }
  EXPECT_FALSE(below->isHidden());
  EXPECT_EQ(below->text(), "A has changed since this was computed");
  Main().Action("mnuUndo")->trigger();
  EXPECT_TRUE(mark->isHidden() && scalar->isHidden());
}

TEST_F(WhatStandsWhere, RecentProjectsAreListedAndMissingOnesGreyed) {
  Enter(kSlotA, 1, 1, {"4"});
  Save("/somewhere/first.qmx");
  Save("/somewhere/second.qmx");
  const auto* menu = Main().findChild<QMenu*>("mnuRecent");
  ASSERT_GE(menu->actions().size(), 2);
  EXPECT_EQ(menu->actions()[0]->text(), "&1  /somewhere/second.qmx");
  EXPECT_EQ(menu->actions()[1]->text(), "&2  /somewhere/first.qmx");
  EXPECT_FALSE(menu->actions()[0]->isEnabled()) << "there is no such file";
  for (int i = 0; i < 12; ++i) Save("/somewhere/p" + std::to_string(i) + ".qmx");
  EXPECT_EQ(menu->actions().size(), 9);
}

}  // namespace
}  // namespace qmx::test
