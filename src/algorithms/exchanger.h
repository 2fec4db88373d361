// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <numeric>
#include <utility>

#include "algorithms/gauss_jordan.h"
#include "algorithms/pivot_search.h"
#include "base/vector.h"

namespace qmx {

/// What the steps one by one and those in blocks have in common.
class Exchanger {
 public:
  Exchanger(Matrix& W, EqualPivots rule, const ExchangeSizes& sizes)
      : W_(W), rule_(rule), sizes_(sizes), n_(W.Rows()) {
    result_.order = Vector<int>(n_);
    std::iota(result_.order.begin(), result_.order.end(), 1);
    result_.pivots = Vector<double>(n_);
  }

  /// The textbook loop itself.
  JordanExchange TakeStepByStep();

 protected:
  template <class Element>
  int PivotRow(int i, Element element) const;
  template <class NextEqual>
  int FirstNumber(int p, NextEqual next) const;
  void NoteExchange(int i, int p) {
    std::swap(result_.order(i), result_.order(p));
    ++result_.exchanges;
  }
  void NotePivot(double pivot) { result_.pivots(++result_.steps) = pivot; }

  Matrix& W_;
  const EqualPivots rule_;
  const ExchangeSizes& sizes_;
  const int n_;
  JordanExchange result_;

 private:
  void ExchangeInShortRows(int i);
  void ExchangeInLongRows(int i);
};

/// The row of the pivot of column i by the rule, 0 for none; element(k) is that of row k.
template <class Element>
int Exchanger::PivotRow(int i, Element element) const {
  const bool upper = rule_ == EqualPivots::kUpperRow;
  // With the upper row as the rule the diagonal element leads, even where it is no number.
  int first = i;
  while (!upper && first < n_ && std::isnan(element(first))) ++first;
  const LargestElement found =
      FindLargest(n_ - first + 1, [&](int k) { return element(first + k); });
  if (found.magnitude == 0 || (!upper && std::isnan(found.magnitude))) return 0;
  const int p = first + found.place;
  if (upper || found.only) return p;
  return FirstNumber(p, [&](int k) {
    while (k <= n_ && std::abs(element(k)) != found.magnitude) ++k;
    return k;
  });
}

/// Of the rows from p on with the largest magnitude the one that stood highest in the beginning;
/// next(k) is the first of them from row k on.
template <class NextEqual>
int Exchanger::FirstNumber(int p, NextEqual next) const {
  for (int k = next(p + 1); k <= n_; k = next(k + 1)) {
    if (result_.order(k) < result_.order(p)) p = k;
  }
  return p;
}

}  // namespace qmx
