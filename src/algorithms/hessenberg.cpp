#include "algorithms/hessenberg.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "algorithms/ordered_product.h"
#include "base/arithmetic.h"

namespace qmx {
namespace {

bool IsReduced(const Matrix& M, int k) {
  for (int i = k + 2; i <= M.Rows(); ++i) {
    if (M(i, k) != 0) return false;
  }
  return true;
}

/// The reflector H = I + β·u·uᵀ of column k; only rows and columns from k + 1 on are filled, the
/// rest is the identity. u is column k of M below the diagonal with the norm added to its first
/// element.
Matrix Reflector(const Matrix& M, int k) {
  const int n = M.Rows();
  std::vector<double> u(n + 1);
  for (int i = k + 1; i <= n; ++i) u[i] = M(i, k);
  double tail = 0.0;
  for (int i = k + 2; i <= n; ++i) tail += u[i] * u[i];
  u[k + 1] = std::sqrt(u[k + 1] * u[k + 1] + tail) + u[k + 1];
  const double beta = -2.0 / (u[k + 1] * u[k + 1] + tail);

  Matrix H(n, n);
  for (int i = k + 1; i <= n; ++i) {
    H(i, i) = beta * (u[i] * u[i]) + 1.0;
    for (int j = i + 1; j <= n; ++j) H(j, i) = H(i, j) = beta * u[i] * u[j];
  }
  return H;
}

/// H·M, of which column k is formed only down to its subdiagonal element, the others being zero.
Matrix ReflectRows(const Matrix& H, const Matrix& M, int k) {
  const int n = M.Rows();
  const int rest = n - k;
  Matrix W(n, n);
  for (int i = 1; i <= k; ++i) std::copy(M.Row(i) + (k - 1), M.Row(i) + n, W.Row(i) + (k - 1));
  for (int m = k + 1; m <= n; ++m) W(k + 1, k) += M(m, k) * H(k + 1, m);
  AddProduct(Part(H, k + 1, k + 1, rest, rest), Part(M, k + 1, k + 1, rest, rest),
             Part(W, k + 1, k + 1, rest, rest));
  return W;
}

/// M := W·H in the columns from k + 1 on; column k is that of W.
void ReflectColumns(const Matrix& W, const Matrix& H, int k, Matrix& M) {
  const int n = M.Rows();
  const int rest = n - k;
  for (int i = 1; i <= n; ++i) {
    M(i, k) = W(i, k);
    std::fill(M.Row(i) + k, M.Row(i) + n, 0.0);
  }
  AddProduct(Part(W, 1, k + 1, n, rest), Part(H, k + 1, k + 1, rest, rest),
             Part(M, 1, k + 1, n, rest));
}

/// Number of rows that column j of an n x n Hessenberg matrix fills.
int ColumnLength(int j, int n) { return std::min(j + 1, n); }

/// Column j of V and of R above its diagonal: what is left of column j of M without its projections
/// on the earlier columns, whose norms stand on the diagonal of R.
void OrthogonaliseColumn(const Matrix& M, int j, int n, const std::vector<double>& squaredNorm,
                         HessenbergQr& work) {
  auto& [V, Q, R] = work;
  for (int i = 1; i <= ColumnLength(j, n); ++i) V(i, j) = M(i, j);
  for (int p = 1; p < j; ++p) {
    double d = 0.0;
    for (int i = 1; i <= p + 1; ++i) d += V(i, p) * M(i, j);
    const double a = squaredNorm[p];
    R(p, j) = a == 0 ? 0.0 : d / R(p, p);
    if (a == 0 || d == 0) continue;
    const double c = d / a;
    for (int i = 1; i <= p + 1; ++i) V(i, j) -= c * V(i, p);
  }
}

void NormaliseColumn(int j, int n, std::vector<double>& squaredNorm, HessenbergQr& work) {
  auto& [V, Q, R] = work;
  double sum = 0.0;
  for (int i = 1; i <= ColumnLength(j, n); ++i) sum += V(i, j) * V(i, j);
  squaredNorm[j] = sum;
  const double norm = std::sqrt(sum);
  for (int i = 1; i <= ColumnLength(j, n); ++i) Q(i, j) = norm == 0 ? 0.0 : V(i, j) / norm;
  R(j, j) = norm;
}

/// M := R·Q on and right of the subdiagonal of the leading n x n block. Column j of Q ends with row
/// j + 1, so row m of Q starts in column m - 1.
void MultiplyFactors(const HessenbergQr& work, int n, Matrix& M) {
  for (int i = 1; i <= n; ++i) {
    std::fill(M.Row(i) + std::max(0, i - 2), M.Row(i) + n, 0.0);
    for (int m = i; m <= n; ++m) {
      for (int j = std::max(1, m - 1); j <= n; ++j) M(i, j) += work.R(i, m) * work.Q(m, j);
    }
  }
}

}  // namespace

void ReduceToHessenberg(Matrix& M) {
  for (int k = 1; k <= M.Rows() - 2; ++k) {
    if (IsReduced(M, k)) continue;
    const Matrix H = Reflector(M, k);
    ReflectColumns(ReflectRows(H, M, k), H, k, M);
    CheckArithmetic();
  }
}

void StepHessenbergQr(Matrix& M, int n, HessenbergQr& work) {
  std::vector<double> squaredNorm(n + 1);
  for (int j = 1; j <= n; ++j) {
    OrthogonaliseColumn(M, j, n, squaredNorm, work);
    NormaliseColumn(j, n, squaredNorm, work);
  }
  MultiplyFactors(work, n, M);
}

}  // namespace qmx
