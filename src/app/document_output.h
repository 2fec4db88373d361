// SPDX-License-Identifier: MIT
#pragma once

#include "commands/command_runner.h"
#include "grids/document_window.h"

namespace qmx {

/// Shows the document of a window on pages, and prints it from there. A printer that fails is told
/// in a box.
void PrintDocument(DocumentWindow& window);

/// Asks for a file and saves the document of a window there as PDF. A file that cannot be written
/// is told in a box, and is as it was before.
void SaveDocument(DocumentWindow& window, CommandRunner& commands);

}  // namespace qmx
