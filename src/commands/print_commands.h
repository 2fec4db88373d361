// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"

namespace qmx {

// What takes more than Printer::kFewPages is announced in the status bar and can be stopped.

/// Prints the matrix of a slot.
void PrintSlot(Context& context, Slot slot);
/// Prints everything that exists.
void PrintReport(Context& context);

}  // namespace qmx
