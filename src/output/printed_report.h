#pragma once

#include "workspace/ports.h"
#include "workspace/screen.h"
#include "workspace/workspace.h"

namespace qmx {

/// Prints the section of one matrix: its heading and, row by row, a line for each element with its
/// indices; an empty line follows each row.
///   MATRIX [A]:
///   A( 1 , 1 )= 2.5
/// L is printed without the zeros above its diagonal and with ones on it, U without the zeros
/// below. Eigenvectors are printed vector by vector, with the position of their eigenvalue in A as
/// the second index. A matrix that is absent has its heading only. For a System that stored factors
/// solve, the right-hand side is printed.
void PrintMatrixSection(Printer& printer, const Workspace& workspace, int slot);

/// Prints everything whose flag is set. The Adjoint stands where the Transpose was computed.
void PrintFullReport(Printer& printer, const Workspace& workspace, const Screen& screen);

}  // namespace qmx
