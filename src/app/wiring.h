#pragma once

#include "app/desktop_screen.h"

namespace qmx {

/// Connects every control and menu entry of the main window with its command.
void WireMainWindow(frmQMX& window, DesktopScreen& screen, CommandRunner& commands);

}  // namespace qmx
