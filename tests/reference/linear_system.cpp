// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {
namespace {

/// Solves the first n rows of M, the right-hand side in its last column; `solved.x` has the room.
void SolveAugmented(Table& M, int n, Solved& solved) {
  const int c = M.Cols();
  Table& x = solved.x;
  for (int k = 1; k <= n - 1; ++k) {
    double big = std::fabs(M(k, k));
    int best = k;
    for (int r = k + 1; r <= n; ++r) {
      if (std::fabs(M(r, k)) > big) {
        big = std::fabs(M(r, k));
        best = r;
      }
    }
    if (big == 0.0) continue;
    if (best != k) {
      for (int j = k; j <= c; ++j) {
        const double kept = M(k, j);
        M(k, j) = M(best, j);
        M(best, j) = kept;
      }
    }
    for (int r = k + 1; r <= n; ++r) {
      const double f = M(r, k) / M(k, k);
      for (int j = k + 1; j <= c; ++j) M(r, j) = M(r, j) - f * M(k, j);
    }
  }
  for (int i = n; i >= 1; --i) {
    double s = 0.0;
    for (int j = i + 1; j <= n; ++j) s = s + x(j, 1) * M(i, j);
    if (M(i, i) == 0.0) {
      double t = 0.0;
      for (int j = i; j <= n; ++j) t = t + x(j, 1) * M(i, j);
      solved.inconsistent = t != M(i, n + 1);
      return;
    }
    x(i, 1) = (M(i, c) - s) / M(i, i);
  }
  solved.solved = true;
}

}  // namespace

Solved SolveOneShot(const Table& system) {
  Table M = system;
  const int n = system.Rows();
  Solved solved;
  solved.x = Table(n, 1);
  SolveAugmented(M, n, solved);
  return solved;
}

Solved SolveByFactors(const Table& L, const Table& U, const Table& exchanges, const Table& system) {
  const int n = system.Rows();
  Solved solved;
  Table& x = solved.x = Table(n, 1);
  for (int i = 1; i <= n; ++i) {
    const int row = exchanges.Rows() == 0 ? i : static_cast<int>(std::rint(exchanges(i, 1)));
    if (row < 1 || system.Cols() < 1) throw SubscriptFault();
    x(i, 1) = system(row, 1);
  }
  for (int i = 1; i <= n; ++i) {
    double s = 0.0;
    for (int j = 1; j <= i - 1; ++j) s = s + L(i, j) * x(j, 1);
    x(i, 1) = x(i, 1) - s;
  }
  for (int i = n; i >= 1; --i) {
    double s = 0.0;
    for (int j = i + 1; j <= n; ++j) s = s + U(i, j) * x(j, 1);
    if (U(i, i) == 0.0) {
      double t = 0.0;
      for (int j = i; j <= n; ++j) t = t + U(i, j) * x(j, 1);
      solved.inconsistent = t != x(i, 1);
      return solved;
    }
    x(i, 1) = (x(i, 1) - s) / U(i, i);
  }
  solved.solved = true;
  return solved;
}

Solved SolveLeastSquares(const Table& system) {
  const int m = system.Rows();
  const int c = system.Cols();
  const int k = c - 1;
  if (k < 0) throw SubscriptFault();
  Table M(k, c);
  for (int i = 1; i <= k; ++i) {
    for (int j = 1; j <= i; ++j) {
      double s = 0.0;
      for (int r = 1; r <= m; ++r) s = s + system(r, i) * system(r, j);
      M(i, j) = s;
      M(j, i) = s;
    }
    double s = 0.0;
    for (int r = 1; r <= m; ++r) s = s + system(r, i) * system(r, c);
    M(i, c) = s;
  }
  Solved solved;
  // One place for each equation: with more unknowns than that the substitution leaves it.
  solved.x = Table(m, 1);
  SolveAugmented(M, k, solved);
  Table x(k, 1);
  for (int i = 1; i <= k; ++i) x(i, 1) = solved.x(i, 1);
  solved.x = x;
  return solved;
}

}  // namespace qmx::reference
