// SPDX-License-Identifier: MIT
#pragma once

#include "commands/foreign_dialogs.h"
#include "workspace/context.h"

namespace qmx {

/// Writes the matrix of a slot to a file of another program, in a form and under a name that the
/// user chooses. The name gets the ending of its form; the current file stays what it is.
void ExportSlot(Context& context, ForeignDialogs& dialogs, Slot slot);

}  // namespace qmx
