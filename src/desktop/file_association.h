// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// The folder that holds the running executable, without a trailing separator unless it is a root.
std::string ProgramFolder();

/// Registers ".qmx" for opening with the program of this folder: a file opened from the desktop
/// starts qmx.exe with the file's path as the only argument. Doing it again writes the same things
/// again. What cannot be written is left out in silence; the association then does not take effect.
///
/// On Windows the keys "Orvane" and ".qmx" are written to the user's part of HKEY_CLASSES_ROOT,
/// which needs no administrator, and to the machine's only where the user's has no effect. On other
/// desktops the current user gets the MIME type application/x-qmx, a desktop entry and icons under
/// XDG_DATA_HOME, and the entry becomes the type's default in XDG_CONFIG_HOME/mimeapps.list.
void AssociateProjectFiles(const std::string& programFolder);

}  // namespace qmx
