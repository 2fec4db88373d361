#include "algorithms/elimination.h"

#include <cmath>

#include "base/arithmetic.h"
#include "base/fault.h"

namespace qmx {

void RequireElement(bool present) {
  if (present) return;
  CheckArithmetic();
  throw RuntimeFault(Fault::kSubscriptOutOfRange);
}

Pivot FindPivot(const Matrix& W, int col) {
  RequireElement(col <= W.Cols());
  Pivot pivot{col, std::abs(W(col, col))};
  for (int k = col + 1; k <= W.Rows(); ++k) {
    const double magnitude = std::abs(W(k, col));
    if (magnitude > pivot.magnitude) pivot = {k, magnitude};
  }
  return pivot;
}

void EliminateBelow(Matrix& W, int i) {
  for (int k = i + 1; k <= W.Rows(); ++k) {
    const double f = W(k, i) / W(i, i);
    W(k, i) = f;
    for (int j = i + 1; j <= W.Cols(); ++j) W(k, j) -= f * W(i, j);
  }
}

double ReduceToDeterminant(Matrix& W, Progress& progress) {
  const int n = W.Rows();
  int exchanges = 0;
  for (int i = 1; i < n; ++i) {
    const Pivot pivot = FindPivot(W, i);
    if (pivot.magnitude == 0) break;
    if (pivot.row != i) {
      W.SwapRows(i, pivot.row, i);
      ++exchanges;
    }
    EliminateBelow(W, i);
    progress.Report(EliminatedPart(i, n));
  }
  double product = 1.0;
  for (int k = 1; k <= n; ++k) product *= W(k, k);
  return AlternatingSign(exchanges) * product;
}

}  // namespace qmx
