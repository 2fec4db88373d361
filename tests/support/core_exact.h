// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "base/matrix.h"

namespace qmx::testing {

__extension__ typedef __int128 Exact;

/// The determinant of a matrix of small whole numbers, without any rounding (Bareiss' fraction-free
/// elimination). Every minor has to stay below 2^63.
Exact ExactDeterminant(const Matrix& A);

/// A without row `row` and column `col`.
Matrix WithoutLines(const Matrix& A, int row, int col);

/// A·B, each sum from the first product on.
Matrix PlainProduct(const Matrix& A, const Matrix& B);

/// The largest magnitude in A - B, which have the same shape.
double LargestDifference(const Matrix& A, const Matrix& B);

/// Magnitudes of all elements.
Matrix Magnitudes(const Matrix& A);

/// A matrix from its rows.
Matrix Rows(std::initializer_list<std::initializer_list<double>> rows);

}  // namespace qmx::testing
