// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"
#include "workspace/field_table.h"

namespace qmx {

/// Puts the main window into the state it starts with: texts of the fields, selected options, which
/// controls are enabled and which frames are hidden.
void SetStartState(Context& context);

/// What follows from a click on an option, a check box, or a change of a field's text.
void OptCreateClick(Context& context, int option);
void ChkSymmetricClick(Context& context);
void TxtRowsCreatedChange(Context& context);
void TxtEquationsChange(Context& context);
void OptSystemClick(Context& context, int method);

/// Selects a way of solving as a click on it would.
void SelectSystemMethod(Context& context, int method);

/// What stands in the fields of the eigen task's parameters.
EigenTexts ReadEigenTexts(const Panel& panel);

}  // namespace qmx
