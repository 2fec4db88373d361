// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "commands/foreign_dialogs.h"
#include "workspace/context.h"

namespace qmx {

/// True if Import reads these bytes, as far as can be told without a user who chooses.
bool IsForeign(std::string_view bytes, const Memory& memory);

/// Reads a matrix from a file of another program, which the user names, into A, B, the special
/// matrix or the System; what was there is replaced. Our own matrix and system files are taken as
/// Retrieve takes them, but for files of vectors, which give a column. What follows in the windows
/// is what follows after Retrieve.
///
/// A table for the System holds a row for each equation; which column is the right-hand side is
/// asked. It becomes a system of the kind that is selected where that fits: one with more equations
/// than unknowns is overdetermined, and where stored factors solve the System only the right-hand
/// sides are taken.
void ImportFile(Context& context, ForeignDialogs& dialogs, Slot target);
/// The same for a file that was dropped.
void ImportNamedFile(Context& context, ForeignDialogs& dialogs, Slot target,
                     const std::string& name);

}  // namespace qmx
