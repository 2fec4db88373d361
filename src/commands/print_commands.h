// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"

namespace qmx {

/// Prints the matrix of a slot.
void PrintSlot(Context& context, Slot slot);
/// Prints everything that exists.
void PrintReport(Context& context);

}  // namespace qmx
