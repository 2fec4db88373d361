// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace qmx {

/// Shows a window, which may be minimised or hidden, in front of the others and gives it the
/// keyboard.
void BringToFront(QWidget& window);

/// The window that a dialog belongs to: the one with the keyboard, or the main window where none of
/// ours has it.
QWidget& FrontWindow(QWidget& mainWindow);

}  // namespace qmx
