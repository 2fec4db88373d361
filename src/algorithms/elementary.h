// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

// Element-wise and structural operations. None of them checks for arithmetic faults; the caller
// does.

/// A + B, element by element. A and B have the same shape.
Matrix Sum(const Matrix& A, const Matrix& B, Progress& progress);

/// A - B, element by element. A and B have the same shape.
Matrix Difference(const Matrix& A, const Matrix& B, Progress& progress);

/// A·B for A m x p and B p x n: element (i, j) is the sum over k = 1..p of A(i,k)·B(k,j), added up
/// from 0 in increasing k.
Matrix Product(const Matrix& A, const Matrix& B, Progress& progress,
               const BlockSizes& sizes = kBlockSizes);

/// The sum of the diagonal elements of a square A, from 0 in increasing order.
double Trace(const Matrix& A);

/// The transpose of A, cols x rows.
Matrix Transpose(const Matrix& A, Progress& progress);

/// Replaces every element a of A by c·a.
void ScaleInPlace(Matrix& A, double c, Progress& progress);

/// Adds s to the min(rows, cols) leading diagonal elements of A.
void ShiftInPlace(Matrix& A, double s);

/// True unless some element of the square A differs from its mirror element; compared exactly.
bool IsSymmetric(const Matrix& A, Progress& progress);

}  // namespace qmx
