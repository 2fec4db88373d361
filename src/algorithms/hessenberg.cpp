#include "algorithms/hessenberg.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

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

// So many columns of H·M, or rows of M·H, are formed at a time.
constexpr int kStrip = 256;

/// What all reflections of one matrix work with.
struct Reflection {
  explicit Reflection(int order)
      : H(Matrix::Unset(order, order)),
        strip(Matrix::Unset(std::min(order, kStrip) + 1, order)),
        u(strip.Row(strip.Rows()) - 1) {}
  Matrix H;         ///< The reflector.
  Matrix strip;     ///< Of a product, and a row for u.
  double* const u;  ///< From 1.
};

/// Forms H = I + β·u·uᵀ of column k; only rows and columns from k + 1 on are filled, the rest is
/// the identity. u is column k of M below the diagonal with the norm added to its first element.
void FormReflector(const Matrix& M, int k, Reflection& work) {
  const int n = M.Rows();
  double* const u = work.u;
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

/// `to` becomes A·B, which is formed in the strip, since it may take the place of A or B.
void FormInPlace(const ConstView& A, const ConstView& B, Reflection& work, const View& to) {
  constexpr int kTiny = 4;
  const View product{work.strip.Data(), to.rows, to.cols, to.cols, 1};
  if (A.cols <= kTiny) {
    MultiplyTiny(A, B, product, std::plus<>(), true);
  } else {
    SetProduct(A, B, product);
  }
  for (int i = 0; i < to.rows; ++i) std::copy_n(&product(i, 0), to.cols, &to(i, 0));
}

/// M := H·M, of which column k is formed only down to its subdiagonal element, the others being
/// zero. The columns before it are left out.
void ReflectRows(int k, Reflection& work, Matrix& M) {
  const int n = M.Rows();
  const int rest = n - k;
  const Matrix& H = work.H;
  double subdiagonal = 0.0;
  for (int m = k + 1; m <= n; ++m) {
    subdiagonal += M(m, k) * H(k + 1, m);
    M(m, k) = 0.0;
  }
  M(k + 1, k) = subdiagonal;
  for (int from = k + 1; from <= n; from += kStrip) {
    const View columns = Part(M, k + 1, from, rest, std::min(kStrip, n + 1 - from));
    FormInPlace(Part(H, k + 1, k + 1, rest, rest), columns, work, columns);
  }
}

/// M := M·H in the columns from k + 1 on; the others stay as they are.
void ReflectColumns(int k, Reflection& work, Matrix& M) {
  const int n = M.Rows();
  const int rest = n - k;
  const ConstView H = Part(std::as_const(work.H), k + 1, k + 1, rest, rest);
  for (int from = 1; from <= n; from += kStrip) {
    const View rows = Part(M, from, k + 1, std::min(kStrip, n + 1 - from), rest);
    FormInPlace(rows, H, work, rows);
  }
}

}  // namespace

void ReduceToHessenberg(Matrix& M) {
  if (M.Rows() <= 2) return;
  Reflection work(M.Rows());
  for (int k = 1; k <= M.Rows() - 2; ++k) {
    if (IsReduced(M, k)) continue;
    FormReflector(M, k, work);
    ReflectRows(k, work, M);
    ReflectColumns(k, work, M);
    CheckArithmetic();
  }
}

}  // namespace qmx
