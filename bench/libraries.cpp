// SPDX-License-Identifier: MIT
#include "libraries.h"

#include <cblas.h>
#include <lapacke.h>

#include <Eigen/Dense>
#include <vector>

// The libraries keep their matrices column by column: ours are handed over as their transposes,
// which takes the same work.

namespace qmx::bench {
namespace {

using EigenMatrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

}  // namespace

void UseThreads(int threads) { openblas_set_num_threads(threads); }

double OpenBlasProduct(const Matrix& A, const Matrix& B) {
  Matrix C(A.Rows(), B.Cols());
  cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, A.Rows(), B.Cols(), A.Cols(), 1.0,
              A.Data(), A.Cols(), B.Data(), B.Cols(), 0.0, C.Data(), C.Cols());
  return C(1, 1);
}

double EigenProduct(const Matrix& A, const Matrix& B) {
  Matrix C(A.Rows(), B.Cols());
  const Eigen::Map<const EigenMatrix> a(A.Data(), A.Rows(), A.Cols());
  const Eigen::Map<const EigenMatrix> b(B.Data(), B.Rows(), B.Cols());
  Eigen::Map<EigenMatrix> c(C.Data(), C.Rows(), C.Cols());
  c.noalias() = a * b;
  return C(1, 1);
}

double LapackLu(Matrix A) {
  std::vector<int> pivots(A.Rows());
  LAPACKE_dgetrf(LAPACK_COL_MAJOR, A.Rows(), A.Cols(), A.Data(), A.Rows(), pivots.data());
  return A(1, 1);
}

double LapackInverse(Matrix A) {
  const int n = A.Rows();
  std::vector<int> pivots(n);
  LAPACKE_dgetrf(LAPACK_COL_MAJOR, n, n, A.Data(), n, pivots.data());
  LAPACKE_dgetri(LAPACK_COL_MAJOR, n, A.Data(), n, pivots.data());
  return A(1, 1);
}

double LapackQr(Matrix A) {
  const int n = A.Rows();
  std::vector<double> tau(n);
  LAPACKE_dgeqrf(LAPACK_COL_MAJOR, n, n, A.Data(), n, tau.data());
  LAPACKE_dorgqr(LAPACK_COL_MAJOR, n, n, n, A.Data(), n, tau.data());
  return A(1, 1);
}

double LapackSolution(Matrix system) {
  const int n = system.Rows();
  std::vector<int> pivots(n);
  std::vector<double> x(n, 1.0);
  LAPACKE_dgesv(LAPACK_COL_MAJOR, n, 1, system.Data(), n, pivots.data(), x.data(), n);
  return x[0];
}

double LapackCholesky(Matrix A) {
  LAPACKE_dpotrf(LAPACK_COL_MAJOR, 'L', A.Rows(), A.Data(), A.Rows());
  return A(1, 1);
}

}  // namespace qmx::bench
