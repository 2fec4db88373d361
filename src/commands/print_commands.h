// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workspace/context.h"

namespace qmx {

// What takes more than Printer::kFewPages is announced in the status bar and can be stopped.

/// Prints the matrix of a slot.
void PrintSlot(Context& context, Slot slot);
/// Prints everything that exists.
void PrintReport(Context& context);
/// Prints lines in a font, or in the printer's own where none is named.
void PrintLines(Context& context, const std::vector<std::string>& lines, std::string_view font);

}  // namespace qmx
