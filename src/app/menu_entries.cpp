// SPDX-License-Identifier: MIT
#include "app/menu_entries.h"

#include <QAction>

namespace qmx {

void AddEntries(QMenu* menu, std::initializer_list<MenuEntry> entries) {
  for (const MenuEntry& entry : entries) {
    if (entry.name == nullptr) {
      menu->addSeparator();
      continue;
    }
    QAction* action = menu->addAction(entry.caption);
    action->setObjectName(entry.name);
    action->setShortcut(entry.shortcut);
    action->setShortcutContext(Qt::ApplicationShortcut);
  }
}

}  // namespace qmx
