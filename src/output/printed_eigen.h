// SPDX-License-Identifier: MIT
#pragma once

#include "output/line_composer.h"
#include "workspace/field_table.h"
#include "workspace/workspace.h"

namespace qmx {

/// The items of one component of an eigenvector: EVC( 2 , 3 )=-.5 for component 2 of the vector
/// whose eigenvalue was found at position 3 of A.
LineComposer& EigenvectorItems(LineComposer& lines, int i, double origin, double value);

/// The eigen part of the full report: the parameters as they stand in their fields, and for each
/// eigenvalue its vector, or why there is none, in a second column beside it.
void PrintEigenReport(LineComposer& lines, const Workspace& workspace, const EigenTexts& texts);

}  // namespace qmx
