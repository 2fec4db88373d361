// SPDX-License-Identifier: MIT
#pragma once

#include "base/matrix.h"

// The tasks as a textbook writes them down, without checks and without any thought for the machine:
// what the program's own algorithms are measured against. They leave the same results, apart from
// verdicts.

namespace qmx::bench {

struct PlainFactors {
  Matrix left;       ///< L or Q.
  Matrix right;      ///< U or R.
  Matrix exchanges;  ///< Of LU: for each row of U its row of A.
};

struct PlainMinors {
  Matrix minor;     ///< The leading minors.
  Matrix smallest;  ///< The smallest pivot of each.
};

Matrix PlainProduct(const Matrix& A, const Matrix& B);
double PlainDeterminant(Matrix W);
PlainFactors PlainLu(const Matrix& A);
Matrix PlainInverse(Matrix W);
/// Without a thought for its sign.
Matrix PlainAdjointByInverse(Matrix W);
Matrix PlainAdjoint(const Matrix& A);
PlainFactors PlainQr(const Matrix& A);
PlainMinors PlainDefiniteness(Matrix W);
Matrix PlainSolution(Matrix M);
/// By the normal equations.
Matrix PlainLeastSquares(const Matrix& system);
Matrix PlainHessenberg(Matrix M);
/// The work matrix after this many cycles of R·Q, reduced to Hessenberg form before.
Matrix PlainCycles(Matrix M, int cycles);

}  // namespace qmx::bench
