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

/// What all reflections of one matrix work with.
struct Reflection {
  explicit Reflection(int order) : H(order, order), W(order, order), u(order + 1) {}
  Matrix H;  ///< The reflector.
  Matrix W;  ///< H·M.
  std::vector<double> u;
};

/// Forms H = I + β·u·uᵀ of column k; only rows and columns from k + 1 on are filled, the rest is
/// the identity. u is column k of M below the diagonal with the norm added to its first element.
void FormReflector(const Matrix& M, int k, Reflection& work) {
  const int n = M.Rows();
  double* const u = work.u.data();
  for (int i = k + 1; i <= n; ++i) u[i] = M(i, k);
  double tail = 0.0;
  for (int i = k + 2; i <= n; ++i) tail += u[i] * u[i];
  u[k + 1] = std::sqrt(u[k + 1] * u[k + 1] + tail) + u[k + 1];
  const double beta = -2.0 / (u[k + 1] * u[k + 1] + tail);

  Matrix& H = work.H;
  for (int i = k + 1; i <= n; ++i) {
    H(i, i) = beta * (u[i] * u[i]) + 1.0;
    for (int j = i + 1; j <= n; ++j) H(j, i) = H(i, j) = beta * u[i] * u[j];
  }
}

/// W := H·M, of which column k is formed only down to its subdiagonal element, the others being
/// zero. The columns before it are left out.
void ReflectRows(const Matrix& M, int k, Reflection& work) {
  const int n = M.Rows();
  const int rest = n - k;
  const Matrix& H = work.H;
  Matrix& W = work.W;
  for (int i = 1; i <= k; ++i) std::copy(M.Row(i) + (k - 1), M.Row(i) + n, W.Row(i) + (k - 1));
  for (int i = k + 1; i <= n; ++i) std::fill(W.Row(i) + (k - 1), W.Row(i) + n, 0.0);
  for (int m = k + 1; m <= n; ++m) W(k + 1, k) += M(m, k) * H(k + 1, m);
  AddProduct(Part(H, k + 1, k + 1, rest, rest), Part(M, k + 1, k + 1, rest, rest),
             Part(W, k + 1, k + 1, rest, rest));
}

/// M := W·H in the columns from k + 1 on; column k is that of W.
void ReflectColumns(const Reflection& work, int k, Matrix& M) {
  const int n = M.Rows();
  const int rest = n - k;
  for (int i = 1; i <= n; ++i) {
    M(i, k) = work.W(i, k);
    std::fill(M.Row(i) + k, M.Row(i) + n, 0.0);
  }
  AddProduct(Part(work.W, 1, k + 1, n, rest), Part(work.H, k + 1, k + 1, rest, rest),
             Part(M, 1, k + 1, n, rest));
}

}  // namespace

void ReduceToHessenberg(Matrix& M) {
  if (M.Rows() <= 2) return;
  Reflection work(M.Rows());
  for (int k = 1; k <= M.Rows() - 2; ++k) {
    if (IsReduced(M, k)) continue;
    FormReflector(M, k, work);
    ReflectRows(M, k, work);
    ReflectColumns(work, k, M);
    CheckArithmetic();
  }
}

}  // namespace qmx
