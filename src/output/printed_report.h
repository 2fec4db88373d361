// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "workspace/field_table.h"
#include "workspace/workspace.h"

namespace qmx {

/// The printed section of one matrix: its heading and, row by row, a line for each element with its
/// indices; an empty line follows each row.
///   MATRIX [A]:
///   A( 1 , 1 )= 2.5
/// L is printed without the zeros above its diagonal and with ones on it, U without the zeros
/// below. Eigenvectors are printed vector by vector, with the position of their eigenvalue in A as
/// the second index. A matrix that is absent has its heading only. For a System that stored factors
/// solve, the right-hand side is printed.
std::vector<std::string> PrintedMatrix(const Workspace& workspace, Slot slot);

/// The printed report of everything whose flag is set. The Adjoint stands where the Transpose was
/// computed. `eigenTexts` are those of the eigen task's fields.
std::vector<std::string> PrintedReport(const Workspace& workspace, const EigenTexts& eigenTexts);

}  // namespace qmx
