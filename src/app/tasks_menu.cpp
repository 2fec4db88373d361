// SPDX-License-Identifier: MIT
#include "app/tasks_menu.h"

#include <QAbstractButton>
#include <QEvent>
#include <QMenu>
#include <algorithm>

#include "commands/task_table.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

/// The last tasks of the groups that the menu shows.
constexpr std::array kGroupEnds{kTaskProduct, kTaskSymmetry, kTaskAdjointByInverse, kTaskShift,
                                kTaskEigen};

/// Keeps an entry as enabled as a button.
class Follower final : public QObject {
 public:
  Follower(QAction* entry, QAbstractButton* button)
      : QObject(entry), entry_(entry), button_(button) {
    button->installEventFilter(this);
    entry_->setEnabled(button_->isEnabled());
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange) entry_->setEnabled(button_->isEnabled());
    return QObject::eventFilter(watched, event);
  }

 private:
  QAction* entry_;
  QAbstractButton* button_;
};

QString EntryName(Task task) { return "mnuTask_" + QString::number(task); }

}  // namespace

void AddTasksMenu(QMenuBar* bar) {
  QMenu* menu = bar->addMenu(QObject::tr("Tas&ks"));
  menu->setObjectName("mnuTasks");
  for (const TaskKey& entry : kTaskKeys) {
    const TaskInfo& info = *FindTask(entry.task);
    QAction* action = menu->addAction(ToQString(info.caption));
    action->setObjectName(EntryName(entry.task));
    action->setToolTip(ToQString(info.toolTip));
    action->setShortcut(QKeySequence(static_cast<int>(Qt::CTRL | Qt::SHIFT) | entry.key));
    action->setShortcutContext(Qt::ApplicationShortcut);
    if (std::find(kGroupEnds.begin(), kGroupEnds.end(), entry.task) != kGroupEnds.end())
      menu->addSeparator();
  }
  menu->addSeparator();
  QMenu* steps = menu->addMenu(QObject::tr("St&eps of"));
  steps->setObjectName("mnuSteps");
  steps->setToolTipsVisible(true);
}

void PressByEntry(QAction* entry, QAbstractButton* button) {
  new Follower(entry, button);
  QObject::connect(entry, &QAction::triggered, button, &QAbstractButton::click);
}

void WireTasksMenu(frmQMX& window) {
  for (const TaskKey& entry : kTaskKeys) {
    auto* button = qobject_cast<QAbstractButton*>(window.Find(cmdTask(entry.task)));
    PressByEntry(window.findChild<QAction*>(EntryName(entry.task)), button);
  }
}

}  // namespace qmx
