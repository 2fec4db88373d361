// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// The inverse of a square A by Gauss-Jordan exchange steps on one work matrix (Householder, The
/// Theory of Matrices in Numerical Analysis, 5.2): column i pivots on the largest magnitude among
/// the rows not yet used, the upper one of equals; no row moves until the result is unscrambled at
/// the end. Nothing where a pivot column is exactly zero.
std::optional<Matrix> Inverse(const Matrix& A, Progress& progress,
                              const BlockSizes& sizes = kBlockSizes);

/// The adjoint (classical adjugate) of a square A by cofactors: element (j, i) is (-1)^(i+j) times
/// the determinant of A without row i and column j, each determinant by elimination with partial
/// pivoting. Exists for every square A; of a 1 x 1 matrix it is [1]. Of the order of n^5 operations
/// when done plainly.
Matrix AdjointByCofactors(const Matrix& A, Progress& progress,
                          const BlockSizes& sizes = kBlockSizes);

/// det(A) times the inverse of a square A, from Gauss-Jordan exchange steps with rows physically
/// exchanged. Nothing for a singular A, although its adjoint exists.
std::optional<Matrix> AdjointByInverse(const Matrix& A, Progress& progress,
                                       const BlockSizes& sizes = kBlockSizes);

}  // namespace qmx
