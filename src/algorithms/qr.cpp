#include "algorithms/qr.h"

#include <cmath>
#include <vector>

namespace qmx {
namespace {

/// d(k) = the dot product of the columns k of V and j of A, for all k < j. Taken row by row, so
/// that memory is read in the order in which it lies; every sum still grows with the row number.
void ProjectColumn(const Matrix& V, const Matrix& A, int j, std::vector<double>& d) {
  d.assign(j, 0.0);
  for (int r = 1; r <= A.Rows(); ++r) {
    for (int k = 1; k < j; ++k) d[k] += V(r, k) * A(r, j);
  }
}

/// Takes the projections off column j of V. A projection of exactly zero leaves the column alone.
void SubtractProjections(Matrix& V, int j, const std::vector<double>& d,
                         const std::vector<double>& squaredNorm) {
  for (int k = 1; k < j; ++k) {
    if (d[k] == 0) continue;
    const double c = d[k] / squaredNorm[k];
    for (int r = 1; r <= V.Rows(); ++r) V(r, j) -= c * V(r, k);
  }
}

double SquaredNorm(const Matrix& V, int j) {
  double sum = 0.0;
  for (int r = 1; r <= V.Rows(); ++r) sum += V(r, j) * V(r, j);
  return sum;
}

}  // namespace

QrFactors FactorQr(const Matrix& A, Progress& progress) {
  const int m = A.Rows();
  const int n = A.Cols();
  QrFactors factors{false, Matrix(m, n), Matrix(n, n)};
  // Column j becomes the part of column j of A that is orthogonal to the columns before.
  Matrix V = A;
  std::vector<double> d;
  std::vector<double> squaredNorm(n + 1);
  for (int j = 1; j <= n; ++j) {
    ProjectColumn(V, A, j, d);
    SubtractProjections(V, j, d, squaredNorm);
    for (int k = 1; k < j; ++k) factors.R(k, j) = d[k] / factors.R(k, k);

    squaredNorm[j] = SquaredNorm(V, j);
    if (squaredNorm[j] == 0) return factors;
    const double norm = std::sqrt(squaredNorm[j]);
    for (int r = 1; r <= m; ++r) factors.Q(r, j) = V(r, j) / norm;
    factors.R(j, j) = norm;
    progress.Report(static_cast<double>(j) / n * j / n);
  }
  factors.factored = true;
  return factors;
}

}  // namespace qmx
