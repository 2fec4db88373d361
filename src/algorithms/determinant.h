// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// det(A) of a square A by Gaussian elimination with partial pivoting (Golub & Van Loan, Matrix
/// Computations, 3.4): the product of the pivots from 1 in increasing order, then the sign of the
/// row exchanges. A pivot is replaced only by a strictly larger magnitude further down; an exactly
/// zero pivot column ends the elimination and gives 0 through its diagonal element. The determinant
/// of the empty matrix is 1. `A` is used up as the work matrix.
double Determinant(const Matrix& A, Progress& progress, const BlockSizes& sizes = kBlockSizes);

}  // namespace qmx
