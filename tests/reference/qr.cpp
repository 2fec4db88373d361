// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {

Qr FactorQr(const Table& A) {
  const int m = A.Rows();
  const int n = A.Cols();
  Qr qr{false, Table(m, n), Table(n, n)};
  Table V(m, n);
  for (int j = 1; j <= n; ++j) {
    for (int r = 1; r <= m; ++r) V(r, j) = A(r, j);
    for (int k = 1; k <= j - 1; ++k) {
      double d = 0.0;
      double s = 0.0;
      for (int r = 1; r <= m; ++r) {
        d = d + V(r, k) * A(r, j);
        s = s + V(r, k) * V(r, k);
      }
      if (s == 0.0) return qr;
      if (d != 0.0) {
        const double c = d / s;
        for (int r = 1; r <= m; ++r) V(r, j) = V(r, j) - c * V(r, k);
      }
    }
    for (int k = 1; k <= j - 1; ++k) {
      qr.R(k, j) = 0.0;
      double d = 0.0;
      double s = 0.0;
      for (int r = 1; r <= m; ++r) {
        d = d + V(r, k) * A(r, j);
        s = s + V(r, k) * V(r, k);
      }
      if (s == 0.0) return qr;
      qr.R(k, j) = d / std::sqrt(s);
    }
    double s = 0.0;
    for (int r = 1; r <= m; ++r) s = s + V(r, j) * V(r, j);
    if (s == 0.0) return qr;
    const double norm = std::sqrt(s);
    for (int r = 1; r <= m; ++r) qr.Q(r, j) = V(r, j) / norm;
    qr.R(j, j) = norm;
  }
  qr.factored = true;
  return qr;
}

}  // namespace qmx::reference
