// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/plain_elimination.h"

// Gauss-Jordan exchange steps on one matrix (Householder, The Theory of Matrices in Numerical
// Analysis, 5.2): once column i has had its pivot in row p, it holds the column of the inverse that
// belongs to row p.

namespace qmx::plain {

template <class T>
struct Jordan {
  Elements<T> W;
  std::vector<int> pivotRow;  ///< Of each column, from index 1; 0 before it has had one.
  std::vector<int> pivotCol;  ///< Of each row, the column that had its pivot there; 0 for none.
  int exchanges = 0;
  T determinant{1.0};  ///< Only where rows are exchanged: the product of the pivots.
  bool invertible = false;
};

/// Row p of column i is the pivot: the step on all rows.
template <class T, class Watcher>
void ExchangeStep(Elements<T>& W, int p, int i, Watcher& watcher) {
  const int n = W.Rows();
  const T pivot = W(p, i);
  for (int k = 1; k <= n; ++k) {
    if (k == p) continue;
    const T f = W(k, i) / pivot;
    for (int j = 1; j <= n; ++j) {
      if (j != i) W(k, j) = W(k, j) - f * W(p, j);
    }
    W(k, i) = -f;
    watcher.OnSubtract(k, f, p);
  }
  for (int j = 1; j <= n; ++j) W(p, j) = W(p, j) / pivot;
  W(p, i) = T(1.0) / pivot;
  watcher.OnDivide(p, pivot);
  watcher.OnColumnDone(i);
}

/// The inverse without moving rows: element (i, j) is W(pivotRow[i], pivotCol[j]) in the end. The
/// caller has put A into jordan.W.
template <class T, class Watcher>
void Invert(Jordan<T>& jordan, Watcher& watcher) {
  Elements<T>& W = jordan.W;
  const int n = W.Rows();
  jordan.pivotRow.assign(static_cast<std::size_t>(n) + 1, 0);
  jordan.pivotCol = jordan.pivotRow;
  int p = 0;
  for (int i = 1; i <= n; ++i) {
    double largest = 0.0;
    for (int k = 1; k <= n; ++k) {
      if (jordan.pivotCol[k] != 0) continue;
      if (std::fabs(ValueOf(W(k, i))) > largest) {
        largest = std::fabs(ValueOf(W(k, i)));
        p = k;
      }
    }
    if (largest == 0.0) return watcher.OnNoPivot(W, i);
    watcher.OnPivot(W, i, p);
    jordan.pivotCol[p] = i;
    jordan.pivotRow[i] = p;
    ExchangeStep(W, p, i, watcher);
  }
  jordan.invertible = n == 0 || ValueOf(W(p, n)) != 0.0;
}

/// The same with rows that change places so that column i has its pivot in row i; pivotRow[k] is
/// the row of A that has become row k.
template <class T, class Watcher>
void InvertExchangingRows(Jordan<T>& jordan, Watcher& watcher) {
  Elements<T>& W = jordan.W;
  const int n = W.Rows();
  jordan.pivotRow.resize(static_cast<std::size_t>(n) + 1);
  std::iota(jordan.pivotRow.begin(), jordan.pivotRow.end(), 0);
  jordan.pivotCol.assign(static_cast<std::size_t>(n) + 1, 0);
  for (int i = 1; i <= n; ++i) {
    const int p = PivotRow(W, i, n);
    if (ValueOf(W(p, i)) == 0.0) return watcher.OnNoPivot(W, i);
    watcher.OnPivot(W, i, p);
    if (p != i) {
      ExchangeRows(W, i, p);
      std::swap(jordan.pivotRow[i], jordan.pivotRow[p]);
      ++jordan.exchanges;
      watcher.OnExchange(i, p);
    }
    jordan.determinant = jordan.determinant * W(i, i);
    ExchangeStep(W, i, i, watcher);
  }
  jordan.invertible = n == 0 || ValueOf(W(n, n)) != 0.0;
  for (int k = 1; k <= n; ++k) jordan.pivotCol[jordan.pivotRow[k]] = k;
}

/// The inverse that Invert has left.
template <class T>
Elements<T> Unscrambled(const Jordan<T>& jordan) {
  const int n = jordan.W.Rows();
  Elements<T> inverse(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) inverse(i, j) = jordan.W(jordan.pivotRow[i], jordan.pivotCol[j]);
  }
  return inverse;
}

/// The adjoint from what InvertExchangingRows has left: det(A) times the inverse.
template <class T>
Elements<T> AdjointOf(const Jordan<T>& jordan) {
  const int n = jordan.W.Rows();
  Elements<T> adjoint(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      adjoint(i, j) =
          SignOf<T>(jordan.exchanges) * (jordan.determinant * jordan.W(i, jordan.pivotCol[j]));
    }
  }
  return adjoint;
}

}  // namespace qmx::plain
