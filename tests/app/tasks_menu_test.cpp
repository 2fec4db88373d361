// SPDX-License-Identifier: MIT
#include "app/tasks_menu.h"

#include <QMenu>
#include <QShortcut>
#include <QTest>
#include <map>

#include "commands/task_table.h"
#include "desktop/help_page.h"
#include "support/desktop_bench.h"
#include "workspace/result_table.h"

namespace qmx::test {
namespace {

class TasksMenu : public Desktop {
 protected:
  QAction* Entry(int task) {
    return Main().findChild<QAction*>("mnuTask_" + QString::number(task));
  }
};

TEST_F(TasksMenu, HasAnEntryForEveryTaskWithItsCaptionAndAShortcut) {
  const auto* menu = Main().findChild<QMenu*>("mnuTasks");
  ASSERT_NE(menu, nullptr);
  for (const TaskInfo& task : Tasks()) {
    QAction* entry = Entry(task.index);
    ASSERT_NE(entry, nullptr) << task.caption;
    EXPECT_TRUE(menu->actions().contains(entry));
    EXPECT_EQ(entry->text().toStdString(), task.caption);
    EXPECT_FALSE(entry->shortcut().isEmpty()) << task.caption;
    EXPECT_EQ(Get(cmdTask(task.index))->toolTip().toStdString(), task.toolTip);
  }
}

TEST_F(TasksMenu, AnEntryIsEnabledWhileItsButtonIs) {
  EXPECT_TRUE(Entry(kTaskLU)->isEnabled());
  program.Windows().SetEnabled(cmdTask(kTaskLU), false);
  EXPECT_FALSE(Entry(kTaskLU)->isEnabled());
  program.Windows().SetEnabled(cmdTask(kTaskLU), true);
  EXPECT_TRUE(Entry(kTaskLU)->isEnabled());
}

TEST_F(TasksMenu, EntriesRefuseWhatTheirButtonsRefuse) {
  for (const TaskInfo& task : Tasks()) {
    if (task.index == kTaskSpecialMatrix) continue;
    const SeenBox byButton = ClickAndAnswer(cmdTask(task.index), QMessageBox::Ok);
    const SeenBox byEntry = ActAndAnswer([&] { Entry(task.index)->trigger(); }, QMessageBox::Ok);
    EXPECT_EQ(byEntry.text, byButton.text);
    EXPECT_EQ(byEntry.icon, byButton.icon);
    EXPECT_EQ(State().TaskIndex, task.index);
  }
}

TEST_F(TasksMenu, EntriesDoWhatTheirButtonsDo) {
  Enter(kSlotA, 2, 2, {"4", "1", "1", "3"});
  Click(cmdIntoB(kSlotA));
  // The last ones first: the test of definiteness would leave nothing to do for that of symmetry.
  const std::vector<TaskInfo> backwards(Tasks().rbegin(), Tasks().rend());
  for (const TaskInfo& task : backwards) {
    Click(cmdTask(task.index));
    const Workspace byButton = State();
    Main().Action("mnuUndo")->trigger();
    Entry(task.index)->trigger();
    EXPECT_EQ(FlagsOf(State()), FlagsOf(byButton)) << task.caption;
    for (const qmx::Slot slot : kAllSlots) {
      const Matrix& one = State().At(slot).array;
      const Matrix& other = byButton.At(slot).array;
      ASSERT_EQ(one.Rows(), other.Rows()) << task.caption;
      ASSERT_EQ(one.Cols(), other.Cols()) << task.caption;
      for (int i = 1; i <= one.Rows(); ++i) {
        for (int j = 1; j <= one.Cols(); ++j) EXPECT_EQ(one(i, j), other(i, j)) << task.caption;
      }
    }
    EXPECT_EQ(Main().Action("mnuUndo")->text().toStdString(), "&Undo " + std::string(task.caption));
  }
}

TEST_F(TasksMenu, FromCreateToTheInverseItTakesFewKeysBesidesTheNumbers) {
  int keys = 0;
  const auto press = [&](Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    // Every key counts that has to go down.
    keys += 1 + held.testFlag(Qt::ControlModifier) + held.testFlag(Qt::ShiftModifier);
    Key(key, held);
  };
  Keys("2");
  press(Qt::Key_Tab);
  Keys("2");
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
  for (const char* element : {"2", "0", "0", "4"}) {
    Keys(element);
    Key(Qt::Key_Right);  // Which ends the number.
  }
  press(Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
  ASSERT_TRUE(State().InverseComputed);
  EXPECT_EQ(Cell(kSlotInverse, 2, 2), "0.25");
  EXPECT_LE(keys, 8);
}

using KeysTaken = std::multimap<QString, QString>;

/// True if the keys of an action are heard: what stands in a menu that only pops up tells them
/// alone.
bool IsHeard(const QAction& action) {
  const QList<QObject*> places = action.associatedObjects();
  return std::any_of(places.begin(), places.end(), [](const QObject* place) {
    const auto* menu = qobject_cast<const QMenu*>(place);
    return menu == nullptr || IsHeard(*menu->menuAction());
  });
}

/// Tells the keys of a window with what each of them stands for: all, or those alone that serve in
/// the other windows as well.
void CollectKeys(const QWidget& window, KeysTaken& taken, bool everywhere) {
  const auto take = [&](const QKeySequence& keys, const QString& by) {
    if (!keys.isEmpty()) taken.emplace(keys.toString(), by);
  };
  for (const QAction* action : window.findChildren<QAction*>()) {
    if (!IsHeard(*action)) continue;
    if (everywhere && action->shortcutContext() != Qt::ApplicationShortcut) continue;
    for (const QKeySequence& keys : action->shortcuts()) take(keys, action->objectName());
  }
  if (everywhere) return;
  for (const QShortcut* shortcut : window.findChildren<QShortcut*>())
    take(shortcut->key(), "a shortcut");
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
    take(button->shortcut(), button->objectName());
}

void ExpectEachOnce(const KeysTaken& taken) {
  for (const auto& [keys, by] : taken)
    EXPECT_EQ(taken.count(keys), 1U) << keys.toStdString() << " " << by.toStdString();
}

TEST_F(TasksMenu, NoKeyStandsForTwoThings) {
  Enter(kSlotA, 1, 1, {"2"});
  Click(cmdTask(kTaskInverse));
  Click(cmdTask(kTaskDefiniteness));
  KeysTaken ofMain;
  CollectKeys(Main(), ofMain, false);
  for (const QAction* menu : Main().menuBar()->actions())
    ofMain.emplace(QKeySequence::mnemonic(menu->text()).toString(), menu->text());
  ASSERT_GT(ofMain.size(), 30U);
  ExpectEachOnce(ofMain);
  const std::vector<QWidget*> windows = program.Windows().ShownWindows();
  ASSERT_EQ(windows.size(), 3U);
  for (const QWidget* window : windows) {
    KeysTaken taken;
    CollectKeys(Main(), taken, true);
    ASSERT_GT(taken.size(), 25U);
    CollectKeys(*window, taken, false);
    ExpectEachOnce(taken);
  }
}

TEST_F(TasksMenu, TheGuideNamesEveryShortcut) {
  const std::string page = ReadHelpFile("keyboard.html");
  for (const QAction* action : Main().findChildren<QAction*>()) {
    for (const QKeySequence& keys : action->shortcuts()) {
      const std::string name = keys.toString().toStdString();
      EXPECT_NE(page.find(name), std::string::npos) << name;
    }
  }
  for (const TaskInfo& task : Tasks()) {
    const std::string keys = Entry(task.index)->shortcut().toString().toStdString();
    EXPECT_NE(page.find("<tr><td>" + keys + "</td><td>" + std::string(task.caption)),
              std::string::npos)
        << task.caption;
  }
}

}  // namespace
}  // namespace qmx::test
