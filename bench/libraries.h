// SPDX-License-Identifier: MIT
#pragma once

#include "base/matrix.h"

// The same tasks by tuned libraries.

namespace qmx::bench {

/// The threads that OpenBLAS and LAPACK share their work among. Eigen has one.
void UseThreads(int threads);
double OpenBlasProduct(const Matrix& A, const Matrix& B);
double EigenProduct(const Matrix& A, const Matrix& B);
/// dgetrf.
double LapackLu(Matrix A);
/// dgetrf and dgetri.
double LapackInverse(Matrix A);
/// dgeqrf and dorgqr.
double LapackQr(Matrix A);
/// dgesv with the last column as right-hand side.
double LapackSolution(Matrix system);
/// dpotrf.
double LapackCholesky(Matrix A);

}  // namespace qmx::bench
