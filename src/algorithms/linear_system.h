// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// What solving a system of linear equations gives.
struct SystemSolution {
  bool solved = false;
  /// n x 1. Where not solved: the unknowns solved so far, the others as the method left them.
  Matrix x;
  /// Where not solved: no solution at all, rather than infinitely many.
  bool inconsistent = false;
};

/// Solves an augmented system (n equations, right-hand side in the last column) by Gaussian
/// elimination with partial pivoting and back substitution (Golub & Van Loan, Matrix
/// Computations, 3.4 and 3.1.2). Meant for n + 1 columns. A column whose pivot is exactly zero is
/// skipped; back substitution stops at the first exactly zero diagonal element from below and then
/// compares that row's left-hand side with column n + 1. Nearly singular systems are solved.
/// Faults: 9 where the method needs a column that the system does not have.
SystemSolution SolveOneShot(Matrix system, Progress& progress,
                            const BlockSizes& sizes = kBlockSizes);

/// Solves L·U·x = P·b for n right-hand sides b = column 1 of `system` (n x any). L and U are at
/// least n x n; `exchanges` (n x 1) tells for each row of U its row of b, or is empty for the
/// identity. Stops at an exactly zero diagonal element of U; x then holds the forward-substituted
/// values above it. Faults: 9 where the factors are smaller than the system, or an exchange names a
/// row it does not have.
SystemSolution SolveByFactors(const Matrix& L, const Matrix& U, const Matrix& exchanges,
                              const Matrix& system, Progress& progress);

/// The least-squares solution of an augmented system of m equations in k = cols - 1 unknowns
/// through its normal equations AᵀA·x = Aᵀb (Golub & Van Loan, Matrix Computations, 5.3.2), solved
/// as in SolveOneShot. x is k x 1. Faults: 9 where there are more unknowns than equations, or no
/// columns at all.
SystemSolution SolveLeastSquares(const Matrix& system, Progress& progress,
                                 const BlockSizes& sizes = kBlockSizes);

}  // namespace qmx
