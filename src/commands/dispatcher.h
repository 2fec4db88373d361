// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"

namespace qmx {

/// A press on the task button with this index: checks the operands, tells the first condition that
/// is not met, or runs the task. Indices without a task do nothing.
void PressTask(Context& context, int index);

/// Solves the System in the selected way.
void PressSolve(Context& context);

/// Shows the results list.
void PressShowResults(Context& context);

}  // namespace qmx
