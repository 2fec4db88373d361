// SPDX-License-Identifier: MIT
#include "app/windows_menu.h"

#include <QAbstractButton>
#include <QMenu>
#include <functional>

#include "app/menu_entries.h"
#include "app/tasks_menu.h"
#include "commands/dispatcher.h"
#include "commands/grid_commands.h"

namespace qmx {
namespace {

/// Lists the windows that are on the screen below the fixed entries.
void ListWindows(QMenu* menu, DesktopScreen& screen, CommandRunner& commands) {
  for (QAction* listed : menu->actions()) {
    if (listed->data().toBool()) delete listed;
  }
  const auto list = [&](const QWidget* window, const std::function<void(Context&)>& show) {
    if (window == nullptr || !window->isVisible()) return;
    QAction* entry = menu->addAction(window->windowTitle());
    entry->setData(true);
    QObject::connect(entry, &QAction::triggered, menu, [&commands, show] { commands.Do(show); });
  };
  for (const Slot slot : kAllSlots)
    list(screen.Window(slot), [slot](Context& context) { ShowSlot(context, slot); });
  list(screen.Results(), [&screen](Context& context) { ShowResultsActivated(context, &screen); });
}

}  // namespace

void AddWindowsMenu(QMenuBar* bar) {
  QMenu* menu = bar->addMenu(QObject::tr("&Windows"));
  menu->setObjectName("mnuWindows");
  AddEntries(menu, {{"mnuMain", "&Main window", QKeySequence(Qt::CTRL | Qt::Key_M)},
                    {"mnuShowA", "Show matrix &A", QKeySequence(Qt::CTRL | Qt::Key_1)},
                    {"mnuShowB", "Show matrix &B", QKeySequence(Qt::CTRL | Qt::Key_2)},
                    {},
                    {"mnuNextWindow", "&Next window", {}},
                    {"mnuPreviousWindow", "&Previous window", {}},
                    {"mnuCloseWindow", "&Close this window", QKeySequence(Qt::CTRL | Qt::Key_W)},
                    {},
                    {"mnuTile", "&Tile", {}},
                    {"mnuCascade", "Ca&scade", {}},
                    {"mnuResultsInFront", "&Results in front", {}},
                    {"mnuHideAll", "&Hide all others", {}},
                    {}});
  const auto entry = [menu](const char* name) { return menu->findChild<QAction*>(name); };
  entry("mnuNextWindow")
      ->setShortcuts({QKeySequence(Qt::Key_F6), QKeySequence(Qt::CTRL | Qt::Key_Tab)});
  entry("mnuPreviousWindow")
      ->setShortcuts(
          {QKeySequence(Qt::SHIFT | Qt::Key_F6), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab)});
}

void ShowResultsActivated(Context& context, DesktopScreen* screen) {
  PressShowResults(context);
  screen->Results()->activateWindow();
}

void WireWindowsMenu(frmQMX& window, DesktopScreen& screen, CommandRunner& commands) {
  auto* menu = window.findChild<QMenu*>("mnuWindows");
  QObject::connect(menu, &QMenu::aboutToShow, menu,
                   [menu, &screen, &commands] { ListWindows(menu, screen, commands); });
  const auto choose = [&window](const char* entry, auto action) {
    QObject::connect(window.Action(entry), &QAction::triggered, &window, action);
  };
  const auto press = [&window](const char* entry, const Control& button) {
    PressByEntry(window.Action(entry), qobject_cast<QAbstractButton*>(window.Find(button)));
  };
  press("mnuShowA", cmdShow(kSlotA));
  press("mnuShowB", cmdShow(kSlotB));
  choose("mnuMain", [&screen] { screen.ActivateMain(); });
  choose("mnuNextWindow", [&screen] { screen.GoToWindow(true); });
  choose("mnuPreviousWindow", [&screen] { screen.GoToWindow(false); });
  choose("mnuCloseWindow", [&screen] { screen.CloseActiveWindow(); });
  choose("mnuTile", [&screen] { screen.TileWindows(); });
  choose("mnuCascade", [&screen] { screen.CascadeWindows(); });
  choose("mnuResultsInFront", [&screen] { screen.BringResultsToFront(); });
  choose("mnuHideAll", [&screen] {
    for (QWidget* shown : screen.ShownWindows()) shown->hide();
  });
}

}  // namespace qmx
