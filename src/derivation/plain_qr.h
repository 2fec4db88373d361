// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "derivation/traced.h"

namespace qmx::plain {

/// The factors of an m x n matrix by classical Gram-Schmidt orthogonalisation (Golub & Van Loan,
/// Matrix Computations, 5.2.7). V holds the orthogonal columns before they are divided by their
/// norms; roots stand in R and nowhere else.
template <class T>
struct Qr {
  using Root = decltype(RootOf(std::declval<T>()));
  Elements<T> V;
  Elements<Root> Q;
  Elements<Root> R;
  /// The first column that is zero once its projections are taken off; 0 where there is none.
  int failedColumn = 0;
};

template <class T>
T ColumnProduct(const Elements<T>& one, int i, const Elements<T>& two, int j) {
  T sum(0.0);
  for (int r = 1; r <= one.Rows(); ++r) sum = sum + one(r, i) * two(r, j);
  return sum;
}

/// The watcher hears of each projection (column, onto, product, squared norm, their quotient or 0)
/// and of each squared norm; it may change V.
template <class T, class Watcher>
void FactorQr(const Elements<T>& A, Qr<T>& qr, Watcher& watcher) {
  const int m = A.Rows();
  const int n = A.Cols();
  Elements<T>& V = qr.V = A;
  qr.Q = Elements<typename Qr<T>::Root>(m, n);
  qr.R = Elements<typename Qr<T>::Root>(n, n);
  for (int j = 1; j <= n; ++j) {
    watcher.OnColumn(j);
    for (int k = 1; k < j; ++k) {
      const T d = ColumnProduct(V, k, A, j);
      const T s = ColumnProduct(V, k, V, k);
      T c(0.0);
      if (ValueOf(d) != 0.0) {
        c = d / s;
        for (int r = 1; r <= m; ++r) V(r, j) = V(r, j) - c * V(r, k);
      }
      qr.R(k, j) = d / RootOf(s);
      watcher.OnProjection(V, j, k, d, s, c);
    }
    const T s = ColumnProduct(V, j, V, j);
    watcher.OnNorm(V, j, s);
    if (ValueOf(s) == 0.0) {
      qr.failedColumn = j;
      return;
    }
    const auto norm = RootOf(s);
    for (int r = 1; r <= m; ++r) qr.Q(r, j) = V(r, j) / norm;
    qr.R(j, j) = norm;
  }
}

}  // namespace qmx::plain
