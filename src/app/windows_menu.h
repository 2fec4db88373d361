// SPDX-License-Identifier: MIT
#pragma once

#include <QMenuBar>

#include "app/desktop_screen.h"

namespace qmx {

/// Adds the menu of the windows to the bar; what it lists of them comes below its fixed entries.
void AddWindowsMenu(QMenuBar* bar);

void WireWindowsMenu(frmQMX& window, DesktopScreen& screen, CommandRunner& commands);

/// Shows the results list with the keyboard, for who asks for it by hand.
void ShowResultsActivated(Context& context, DesktopScreen* screen);

}  // namespace qmx
