// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "commands/foreign_dialogs.h"
#include "workspace/context.h"

namespace qmx {

/// Makes a System of a table with a row for each equation. `rightColumn` holds the right-hand
/// sides, counted from 1; 0 stands for none, which gives zeros. All other columns are coefficients;
/// where stored factors solve the System they are left out. The System that was there goes, with
/// its solution. Returns why nothing was done, or nothing.
std::string TakeSystem(Context& context, Matrix table, int rightColumn);

/// True if stored factors are the coefficients of the System that is to be made.
bool TakesRightSideOnly(const Workspace& workspace);

/// A as coefficients, and B as right-hand side, become the System. Where B has several columns the
/// user is asked for one. Where stored factors solve the System, B alone is taken.
void IntoSystem(Context& context, ForeignDialogs& dialogs);

}  // namespace qmx
