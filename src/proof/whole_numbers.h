// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "base/matrix.h"
#include "proof/ball.h"

namespace qmx {

/// Powers of two that make the elements of a matrix whole: 2^(rows[i] + cols[j])·a(i, j) is a whole
/// number. A double is a whole number times a power of two, so every matrix of doubles has them.
///
/// They decide what no precision can, whether a number is zero. A minor of the scaled matrix is
/// whole, and the numbers of an elimination, of an inverse and of a solution are quotients of
/// minors (Cramer's rule): one whose numerator is enclosed below 1 is zero.
struct WholeScale {
  std::vector<slong> rows;
  std::vector<slong> cols;
};

/// Rows are scaled first, as little as possible.
WholeScale WholeScaleOf(const Matrix& A);
/// The same for balls that are exact.
WholeScale WholeScaleOf(const BallMatrix& A);

/// The same with one power for all rows, as products AᵀA need it: rows are 0.
WholeScale WholeColumnScaleOf(const Matrix& A);

/// True if a quotient is zero because quotient·denominator·2^exponent is a whole number below 1.
bool IsZeroQuotient(arb_srcptr quotient, const Ball& denominator, slong exponent);

}  // namespace qmx
