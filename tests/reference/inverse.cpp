// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {

Inverted Inverse(const Table& A) {
  const int n = A.Rows();
  Table W = A;
  Row<int> pivotRow(n);
  Row<int> pivotCol(n);
  double max = 0.0;
  int p = 0;
  for (int i = 1; i <= n; ++i) {
    max = 0.0;
    for (int k = 1; k <= n; ++k) {
      if (pivotCol(k) != 0) continue;
      if (std::fabs(W(k, i)) > max) {
        max = std::fabs(W(k, i));
        p = k;
      }
    }
    if (max == 0.0) break;
    const double pivot = W(p, i);
    pivotCol(p) = i;
    pivotRow(i) = p;
    for (int k = 1; k <= n; ++k) {
      if (k == p) continue;
      const double f = W(k, i) / pivot;
      for (int j = 1; j <= n; ++j) {
        if (j != i) W(k, j) = W(k, j) - f * W(p, j);
      }
      W(k, i) = -f;
    }
    for (int j = 1; j <= n; ++j) W(p, j) = W(p, j) / pivot;
    W(p, i) = 1.0 / pivot;
  }
  Inverted inverted;
  inverted.invertible = n == 0 || (max != 0.0 && W(p, n) != 0.0);
  if (!inverted.invertible) return inverted;
  inverted.result = Table(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) inverted.result(i, j) = W(pivotRow(i), pivotCol(j));
  }
  return inverted;
}

Inverted AdjointByInverse(const Table& A) {
  const int n = A.Rows();
  int exchanges = 0;
  Table W = A;
  double det = 1.0;
  double max = 0.0;
  Row<int> pivotRow(n);
  Row<int> pivotCol(n);
  for (int k = 1; k <= n; ++k) pivotRow(k) = k;
  for (int i = 1; i <= n; ++i) {
    max = std::fabs(W(i, i));
    int p = i;
    for (int k = i + 1; k <= n; ++k) {
      if (std::fabs(W(k, i)) > max) {
        max = std::fabs(W(k, i));
        p = k;
      }
    }
    if (max == 0.0) break;
    if (p != i) {
      for (int j = 1; j <= n; ++j) {
        const double kept = W(i, j);
        W(i, j) = W(p, j);
        W(p, j) = kept;
      }
      const int kept = pivotRow(i);
      pivotRow(i) = pivotRow(p);
      pivotRow(p) = kept;
      exchanges = exchanges + 1;
    }
    const double pivot = W(i, i);
    det = det * pivot;
    for (int k = 1; k <= n; ++k) {
      if (k == i) continue;
      const double f = W(k, i) / pivot;
      for (int j = 1; j <= n; ++j) {
        if (j != i) W(k, j) = W(k, j) - f * W(i, j);
      }
      W(k, i) = -f;
    }
    for (int j = 1; j <= n; ++j) W(i, j) = W(i, j) / pivot;
    W(i, i) = 1.0 / pivot;
  }
  Inverted inverted;
  inverted.invertible = n == 0 || (max != 0.0 && W(n, n) != 0.0);
  if (!inverted.invertible) return inverted;
  for (int k = 1; k <= n; ++k) pivotCol(pivotRow(k)) = k;
  inverted.result = Table(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      inverted.result(i, j) = std::pow(-1.0, exchanges) * (det * W(i, pivotCol(j)));
    }
  }
  return inverted;
}

Table AdjointByCofactors(const Table& A) {
  const int n = A.Rows();
  Table adjoint(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      Table W(n - 1, n - 1);
      for (int k = 1; k <= n - 1; ++k) {
        for (int l = 1; l <= n - 1; ++l) W(k, l) = A(k < i ? k : k + 1, l < j ? l : l + 1);
      }
      int exchanges = 0;
      for (int c = 1; c <= n - 2; ++c) {
        double max = std::fabs(W(c, c));
        int p = c;
        for (int k = c + 1; k <= n - 1; ++k) {
          if (std::fabs(W(k, c)) > max) {
            max = std::fabs(W(k, c));
            p = k;
          }
        }
        if (max == 0.0) break;
        if (p != c) {
          exchanges = exchanges + 1;
          for (int l = c; l <= n - 1; ++l) {
            const double kept = W(c, l);
            W(c, l) = W(p, l);
            W(p, l) = kept;
          }
        }
        for (int k = c + 1; k <= n - 1; ++k) {
          const double f = W(k, c) / W(c, c);
          for (int l = c + 1; l <= n - 1; ++l) W(k, l) = W(k, l) - f * W(c, l);
        }
      }
      double d = 1.0;
      for (int k = 1; k <= n - 1; ++k) d = d * W(k, k);
      d = std::pow(-1.0, exchanges) * d;
      adjoint(j, i) = std::pow(-1.0, i + j) * d;
    }
  }
  return adjoint;
}

}  // namespace qmx::reference
