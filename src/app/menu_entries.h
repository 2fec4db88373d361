// SPDX-License-Identifier: MIT
#pragma once

#include <QKeySequence>
#include <QMenu>
#include <initializer_list>

namespace qmx {

/// An entry of a menu of the main window.
struct MenuEntry {
  const char* name;  ///< Null for a line between entries.
  const char* caption;
  QKeySequence shortcut;
};

/// Adds entries to a menu. Their shortcuts serve in the windows of the matrices, too.
void AddEntries(QMenu* menu, std::initializer_list<MenuEntry> entries);

}  // namespace qmx
