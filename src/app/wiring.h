// SPDX-License-Identifier: MIT
#pragma once

#include "app/desktop_screen.h"

namespace qmx {

/// Connects every control and menu entry of the main window with its command.
void WireMainWindow(frmQMX& window, DesktopScreen& screen, CommandRunner& commands);

/// Opens the project of this name, as the command line and a drop name it.
void OpenByName(CommandRunner& commands, const std::string& name);

/// Brings what the main window tells about the state of things in line with it: the steps that can
/// be taken back and the project's file.
void ShowWhatStandsWhere(frmQMX& window, const CommandRunner& commands, const Workspace& workspace);

/// Marks the results whose operands have changed since they were computed.
void MarkStaleResults(frmQMX& window, const DesktopScreen& screen, const Workspace& workspace);

}  // namespace qmx
