// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// What a QR factorization leaves. Where it failed, both are filled up to the failing column and
/// zero from there on, the upper part of R in that column included as far as it came.
struct QrFactors {
  bool factored = false;
  Matrix Q;  ///< m x n, orthonormal columns.
  Matrix R;  ///< n x n, upper triangular with a positive diagonal.
};

/// A = Q·R of an m x n matrix with m >= n, by classical Gram-Schmidt orthogonalisation (Golub & Van
/// Loan, Matrix Computations, 5.2.7): every projection is taken against the column of A itself. No
/// pivoting, no second pass. Fails where what is left of a column has a norm of exactly zero.
QrFactors FactorQr(const Matrix& A, Progress& progress, const BlockSizes& sizes = kBlockSizes);

}  // namespace qmx
