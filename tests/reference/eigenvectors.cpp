// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {
namespace {

/// LU factors of M in its place; returns the last pivot's magnitude.
double Factor(Table& M, Row<int>& order) {
  const int n = M.Rows();
  for (int i = 1; i <= n; ++i) order(i) = i;
  double big = 0.0;
  for (int c = 1; c <= n; ++c) {
    big = std::fabs(M(c, c));
    int best = c;
    for (int r = c + 1; r <= n; ++r) {
      if (std::fabs(M(r, c)) > big) {
        big = std::fabs(M(r, c));
        best = r;
      }
    }
    if (big == 0.0) break;
    if (best != c) {
      for (int j = 1; j <= n; ++j) {
        const double kept = M(c, j);
        M(c, j) = M(best, j);
        M(best, j) = kept;
      }
      const int kept = order(c);
      order(c) = order(best);
      order(best) = kept;
    }
    for (int r = c + 1; r <= n; ++r) {
      const double f = M(r, c) / M(c, c);
      M(r, c) = f;
      for (int j = c + 1; j <= n; ++j) M(r, j) = M(r, j) - f * M(c, j);
    }
  }
  return big;
}

}  // namespace

int FindEigenvector(const Table& A, double lambda, int origin, const EigenLimits& limits,
                    Table& x) {
  const int n = A.Rows();
  Table M = A;
  const double mu = A(origin, origin) - lambda >= 0.0 ? lambda - limits.additionalShift
                                                      : limits.additionalShift + lambda;
  for (int i = 1; i <= n; ++i) M(i, i) = M(i, i) - mu;

  Row<int> order(n);
  const double big = Factor(M, order);
  CheckFlags();
  if (big == 0.0 || M(n, n) == 0.0) return -1;

  Row<double> previous(n);
  int cycleCount = 0;
  int notConverged = 0;
  do {
    cycleCount = cycleCount + 1;
    for (int i = 1; i <= n; ++i) previous(i) = x(i, 1);
    for (int i = 1; i <= n; ++i) x(i, 1) = previous(order(i));
    for (int i = 1; i <= n; ++i) {
      double s = 0.0;
      for (int j = 1; j <= i - 1; ++j) s = s + M(i, j) * x(j, 1);
      x(i, 1) = x(i, 1) - s;
    }
    for (int i = n; i >= 1; --i) {
      double s = 0.0;
      for (int j = i + 1; j <= n; ++j) s = s + M(i, j) * x(j, 1);
      x(i, 1) = (x(i, 1) - s) / M(i, i);
    }
    double sum = 0.0;
    for (int i = 1; i <= n; ++i) sum = sum + x(i, 1) * x(i, 1);
    const double nu = std::sqrt(sum);
    for (int i = 1; i <= n; ++i) x(i, 1) = x(i, 1) / nu;
    CheckFlags();
    notConverged = 0;
    for (int i = 1; i <= n; ++i) {
      if (std::fabs(std::fabs(x(i, 1)) - std::fabs(previous(i))) > limits.tolerance) {
        notConverged = 1;
        break;
      }
    }
  } while (notConverged != 0 && cycleCount < limits.maxCycles);
  return notConverged;
}

}  // namespace qmx::reference
