// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/matrix.h"

namespace qmx::testing {

// How far a result in floating point may be from the exact fact it is held against. Everything is a
// multiple of n·eps times the size of the numbers that took part.

inline constexpr double kEps = std::numeric_limits<double>::epsilon();

inline double MaxMagnitude(const Matrix& A) {
  double largest = 0;
  for (std::size_t k = 0; k < A.Size(); ++k) largest = std::max(largest, std::abs(A.Data()[k]));
  return largest;
}

/// For sums of n products of this size: residuals and reconstructions.
inline double SumTolerance(int n, double size) { return 4.0 * n * kEps * size; }

/// For what an elimination of order n leaves when the entries of its factors reach `size`; pivots
/// keep the growth in check, but not to 1.
inline double EliminationTolerance(int n, double size) { return 16.0 * n * n * kEps * size; }

/// The bound of Hadamard: the product of the row lengths, which no determinant exceeds.
inline double HadamardBound(const Matrix& A) {
  double bound = 1;
  for (int i = 1; i <= A.Rows(); ++i) {
    double sum = 0;
    for (int j = 1; j <= A.Cols(); ++j) sum += A(i, j) * A(i, j);
    bound *= std::sqrt(sum);
  }
  return bound;
}

/// For results whose error is magnified by the condition number.
inline double ConditionedTolerance(int n, double condition, double size) {
  return 4.0 * n * kEps * condition * size;
}

/// For eigenvalues found by an iteration that stops at `errorBound`: what deflation neglects may
/// add up over the n eigenvalues, beside the rounding of all its cycles.
inline double EigenvalueTolerance(int n, double errorBound, double size) {
  return n * errorBound + 100.0 * n * kEps * size;
}

}  // namespace qmx::testing
