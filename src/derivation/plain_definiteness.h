// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/plain_elimination.h"

namespace qmx::plain {

/// The elimination that grows row by row and gives the leading minors of a square W: row k joins
/// the rows above it, and in each column only it and the diagonal row compete for the pivot. The
/// watcher hears of each row that joins, its pivots, exchanges and subtractions, and of each minor.
template <class T, class Watcher>
void LeadingMinors(Elements<T>& W, Elements<T>& minors, Watcher& watcher) {
  const int n = W.Rows();
  minors = Elements<T>(n, 1);
  minors(1, 1) = W(1, 1);
  watcher.OnMinor(1, minors(1, 1), 0);
  int exchanges = 0;
  for (int k = 2; k <= n; ++k) {
    watcher.OnRow(k);
    for (int i = 1; i < k; ++i) {
      const bool isNewRow = std::fabs(ValueOf(W(k, i))) > std::fabs(ValueOf(W(i, i)));
      if (ValueOf(W(isNewRow ? k : i, i)) == 0.0) {
        watcher.OnNoPivot(W, k, i);
        break;
      }
      watcher.OnPivot(W, k, i, isNewRow);
      if (isNewRow) {
        ++exchanges;
        ExchangeRows(W, i, k);
        watcher.OnExchange(i, k);
      }
      const T f = W(k, i) / W(i, i);
      for (int j = i + 1; j <= n; ++j) W(k, j) = W(k, j) - f * W(i, j);
      watcher.OnSubtract(k, f, i);
    }
    T minor = W(1, 1);
    for (int l = 2; l <= k; ++l) minor = W(l, l) * minor;
    minors(k, 1) = SignOf<T>(exchanges) * minor;
    watcher.OnMinor(k, minors(k, 1), exchanges);
  }
}

}  // namespace qmx::plain
