// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "workspace/result_table.h"

namespace qmx {

/// An operand's elements or shape have changed. Nothing for other slots.
void NoteChange(Workspace& workspace, Slot slot);
/// A result has been computed from the operands as they are now: what belongs to it is kept.
void NoteComputed(Workspace& workspace, Result result);

/// What says that operands of a result have changed since it was computed: "A has changed since
/// this was computed". Empty where they have not, or where there is no such result.
std::string Staleness(const Workspace& workspace, Result result);
/// The same in short: "A has changed since".
std::string ShortStaleness(const Workspace& workspace, Result result);

}  // namespace qmx
