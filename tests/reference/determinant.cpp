// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {

double Determinant(const Table& A) {
  const int n = A.Rows();
  Table W = A;
  int exchanges = 0;
  for (int i = 1; i <= n - 1; ++i) {
    double max = std::fabs(W(i, i));
    int p = i;
    for (int k = i + 1; k <= n; ++k) {
      if (std::fabs(W(k, i)) > max) {
        max = std::fabs(W(k, i));
        p = k;
      }
    }
    if (max == 0.0) break;
    if (p != i) {
      exchanges = exchanges + 1;
      for (int j = i; j <= A.Cols(); ++j) {
        const double kept = W(i, j);
        W(i, j) = W(p, j);
        W(p, j) = kept;
      }
    }
    for (int k = i + 1; k <= n; ++k) {
      const double f = W(k, i) / W(i, i);
      for (int j = i + 1; j <= A.Cols(); ++j) W(k, j) = W(k, j) - f * W(i, j);
    }
  }
  double det = 1.0;
  for (int k = 1; k <= n; ++k) det = det * W(k, k);
  return std::pow(-1.0, exchanges) * det;
}

}  // namespace qmx::reference
