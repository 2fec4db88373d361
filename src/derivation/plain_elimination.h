// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "derivation/traced.h"

// Gaussian elimination as all tasks of the program do it (Golub & Van Loan, Matrix Computations,
// 3.4), one row after the other, watched by whoever tells of it.

namespace qmx::plain {

/// Hears nothing, of any loop.
struct NoWatcher {
  template <class... Event>
  void OnPivot(Event&&... /*event*/) {}
  template <class... Event>
  void OnNoPivot(Event&&... /*event*/) {}
  template <class... Event>
  void OnSubtract(Event&&... /*event*/) {}
  template <class... Event>
  void OnDivide(Event&&... /*event*/) {}
  template <class... Event>
  void OnProjection(Event&&... /*event*/) {}
  template <class... Event>
  void OnNorm(Event&&... /*event*/) {}
  template <class... Event>
  void OnMinor(Event&&... /*event*/) {}
  void OnExchange(int /*one*/, int /*two*/) {}
  void OnColumn(int /*column*/) {}
  void OnColumnDone(int /*column*/) {}
  void OnRow(int /*row*/) {}
};

/// Calls `look` after each row and each projection, and hears nothing else.
template <class Look>
struct LookingWatcher : NoWatcher {
  explicit LookingWatcher(Look&& own) : look(std::forward<Look>(own)) {}
  template <class... Event>
  void OnSubtract(Event&&... /*event*/) {
    look();
  }
  template <class... Event>
  void OnProjection(Event&&... /*event*/) {
    look();
  }
  Look look;
};

struct EliminationRules {
  int rows = 0;     ///< Those that take part.
  int columns = 0;  ///< Those that are eliminated, from the first.
  bool pivoting = true;
  /// A column that is zero from its diagonal on ends the elimination instead of being skipped.
  bool stopsAtZero = false;
};

struct Elimination {
  int exchanges = 0;
  std::vector<int> order;  ///< order[k - 1] is the row that has become row k.
  /// Without pivoting: the column with a zero diagonal element and another one below it; else 0.
  int refusedColumn = 0;
};

/// The row of the largest magnitude in a column from its diagonal on, the upper one of equals.
template <class T>
int PivotRow(const Elements<T>& W, int column, int rows) {
  double largest = std::fabs(ValueOf(W(column, column)));
  int row = column;
  for (int k = column + 1; k <= rows; ++k) {
    if (std::fabs(ValueOf(W(k, column))) > largest) {
      largest = std::fabs(ValueOf(W(k, column)));
      row = k;
    }
  }
  return row;
}

template <class T>
void ExchangeRows(Elements<T>& W, int one, int two) {
  for (int j = 1; j <= W.Cols(); ++j) std::swap(W(one, j), W(two, j));
}

template <class T>
bool HasOtherBelow(const Elements<T>& W, int column, int rows) {
  for (int k = column + 1; k <= rows; ++k) {
    if (ValueOf(W(k, column)) != 0.0) return true;
  }
  return false;
}

/// Eliminates in place; multipliers stay where the zeros of the mathematics are.
template <class T, class Watcher>
Elimination Eliminate(Elements<T>& W, const EliminationRules& rules, Watcher& watcher) {
  Elimination done;
  done.order.resize(static_cast<std::size_t>(rules.rows));
  std::iota(done.order.begin(), done.order.end(), 1);
  for (int i = 1; i <= rules.columns; ++i) {
    const int p = rules.pivoting ? PivotRow(W, i, rules.rows) : i;
    if (ValueOf(W(p, i)) == 0.0) {
      if (!rules.pivoting && HasOtherBelow(W, i, rules.rows)) {
        done.refusedColumn = i;
        return done;
      }
      watcher.OnNoPivot(W, i);
      if (rules.stopsAtZero) return done;
      continue;
    }
    watcher.OnPivot(W, i, p);
    if (p != i) {
      ++done.exchanges;
      ExchangeRows(W, i, p);
      std::swap(done.order[i - 1], done.order[p - 1]);
      watcher.OnExchange(i, p);
    }
    for (int k = i + 1; k <= rules.rows; ++k) {
      const T f = W(k, i) / W(i, i);
      W(k, i) = f;
      for (int j = i + 1; j <= W.Cols(); ++j) W(k, j) = W(k, j) - f * W(i, j);
      watcher.OnSubtract(k, f, i);
    }
    watcher.OnColumnDone(i);
  }
  return done;
}

/// (-1)^exchanges
template <class T>
T SignOf(int exchanges) {
  return T(exchanges % 2 == 0 ? 1.0 : -1.0);
}

/// The determinant of a square W, which is used up.
template <class T, class Watcher>
T Determinant(Elements<T>& W, Watcher& watcher, int& exchanges) {
  const int n = W.Rows();
  exchanges = Eliminate(W, {n, n - 1, true, true}, watcher).exchanges;
  T product(1.0);
  for (int k = 1; k <= n; ++k) product = product * W(k, k);
  return SignOf<T>(exchanges) * product;
}

template <class T>
struct LuFactors {
  Elimination elimination;
  Elements<T> L;
  Elements<T> U;
};

/// The factors of P·A = L·U of the A that stands in lu.U; L is empty where the elimination was
/// refused.
template <class T, class Watcher>
void FactorLu(LuFactors<T>& lu, bool pivoting, Watcher& watcher) {
  const int m = lu.U.Rows();
  const int most = std::min(m, lu.U.Cols());
  lu.elimination = Eliminate(lu.U, {m, most, pivoting, false}, watcher);
  if (lu.elimination.refusedColumn != 0) return;
  lu.L = Elements<T>(m, m);
  for (int r = 1; r <= m; ++r) {
    lu.L(r, r) = T(1.0);
    for (int c = 1; c <= std::min(r - 1, most); ++c) {
      lu.L(r, c) = lu.U(r, c);
      lu.U(r, c) = T(0.0);
    }
  }
}

}  // namespace qmx::plain
