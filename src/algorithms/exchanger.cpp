// SPDX-License-Identifier: MIT
#include "algorithms/exchanger.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstddef>
#include <utility>

#include "algorithms/ordered_product.h"

namespace qmx {

JordanExchange Exchanger::TakeStepByStep() {
  for (int i = 1; i <= n_; ++i) {
    const double* const top = W_.Row(1) + (i - 1);
    const int p =
        PivotRow(i, [top, n = std::ptrdiff_t{W_.Cols()}](int k) { return top[(k - 1) * n]; });
    if (p == 0) {
      result_.complete = false;
      break;
    }
    if (p != i) {
      std::swap_ranges(W_.Row(i), W_.Row(i) + n_, W_.Row(p));
      NoteExchange(i, p);
    }
    if (n_ <= std::min(sizes_.shortRow, kMostShortRow)) {
      ExchangeInShortRows(i);
    } else {
      ExchangeInLongRows(i);
    }
  }
  return std::move(result_);
}

/// Two stand-ins let the column of the step change like all others: with 1 for the pivot and -0 for
/// the element of another row, -0 - f·1 is -f, whatever the sign of f, and 1 / p is the new
/// diagonal element.
void Exchanger::ExchangeInShortRows(int i) {
  double* const upper = W_.Row(i);
  const double pivot = std::exchange(upper[i - 1], 1.0);
  for (int k = 1; k <= n_; ++k) {
    if (k == i) continue;
    double* const row = W_.Row(k);
    const double f = std::exchange(row[i - 1], -0.0) / pivot;
    for (int j = 0; j < n_; ++j) row[j] -= f * upper[j];
  }
  for (int j = 0; j < n_; ++j) upper[j] /= pivot;
  // The pivot itself is divided, too. That is 1, and tells of an infinite one.
  if (std::isinf(pivot)) std::feraiseexcept(FE_INVALID);
  NotePivot(pivot);
}

void Exchanger::ExchangeInLongRows(int i) {
  double* const upper = W_.Row(i);
  const double pivot = upper[i - 1];
  EliminateRows(upper + i - 1, W_.Row(1) + i - 1, W_.Cols(), i - 1, i - 1, n_ - i);
  if (i < n_) EliminateRows(upper + i - 1, W_.Row(i + 1) + i - 1, W_.Cols(), n_ - i, i - 1, n_ - i);
  for (int k = 1; k <= n_; ++k) W_(k, i) = -W_(k, i);
  upper[i - 1] = pivot;
  for (int j = 0; j < n_; ++j) upper[j] /= pivot;
  upper[i - 1] = 1.0 / pivot;
  NotePivot(pivot);
}

}  // namespace qmx
