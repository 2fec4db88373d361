// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {

Lu FactorLu(const Table& A, bool pivoting) {
  const int m = A.Rows();
  const int n = A.Cols();
  const int kmax = std::min(m, n);
  Lu lu;
  Table& U = lu.U = A;
  lu.exchanges = Table(m, 1);
  for (int k = 1; k <= m; ++k) lu.exchanges(k, 1) = k;
  for (int i = 1; i <= kmax; ++i) {
    double max = std::fabs(U(i, i));
    if (!pivoting && max == 0.0) {
      for (int k = i + 1; k <= m; ++k) {
        if (U(k, i) != 0.0) return lu;
      }
    }
    int p = i;
    if (pivoting) {
      for (int k = i + 1; k <= m; ++k) {
        if (std::fabs(U(k, i)) > max) {
          max = std::fabs(U(k, i));
          p = k;
        }
      }
    }
    if (max == 0.0) continue;
    if (p != i) {
      lu.exchangeCount = lu.exchangeCount + 1;
      for (int j = 1; j <= n; ++j) {
        const double kept = U(i, j);
        U(i, j) = U(p, j);
        U(p, j) = kept;
      }
      const double kept = lu.exchanges(i, 1);
      lu.exchanges(i, 1) = lu.exchanges(p, 1);
      lu.exchanges(p, 1) = kept;
    }
    for (int k = i + 1; k <= m; ++k) {
      const double f = U(k, i) / U(i, i);
      U(k, i) = f;
      for (int j = i + 1; j <= n; ++j) U(k, j) = U(k, j) - f * U(i, j);
    }
  }
  lu.L = Table(m, m);
  for (int r = 1; r <= m; ++r) {
    lu.L(r, r) = 1.0;
    for (int c = 1; c <= std::min(r - 1, kmax); ++c) {
      lu.L(r, c) = U(r, c);
      U(r, c) = 0.0;
    }
  }
  lu.factored = true;
  return lu;
}

}  // namespace qmx::reference
