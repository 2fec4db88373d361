// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// What an LU factorization leaves.
struct LuFactors {
  bool factored = false;  ///< False: a zero diagonal element with a non-zero one below it, and no
                          ///< pivoting allowed.
  Matrix L;               ///< m x m, unit lower triangular; empty where not factored.
  Matrix U;  ///< m x n; where not factored, the partly reduced matrix with the multipliers found so
             ///< far.
  Matrix exchanges;  ///< m x 1: element k is the row of A that became row k of U.
  int exchangeCount = 0;
};

/// P·A = L·U of an m x n matrix of any shape, by Doolittle elimination in place (Golub & Van Loan,
/// Matrix Computations, 3.4.1). With pivoting a row is exchanged only for one with a strictly
/// larger magnitude in the column, the upper one of equals. A column that is exactly zero at and
/// below its diagonal is skipped. U is upper trapezoidal; L holds the multipliers in
/// columns 1..min(m, n).
LuFactors FactorLu(const Matrix& A, bool pivoting, Progress& progress,
                   const BlockSizes& sizes = kBlockSizes);

/// The matrix P of P·A = L·U: element (k, exchanges(k)) is 1, all others are 0. `exchanges` has one
/// column and names a row from 1 to m in each of its m elements.
Matrix PermutationOf(const Matrix& exchanges);

}  // namespace qmx
