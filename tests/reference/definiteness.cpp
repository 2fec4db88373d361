// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {
namespace {

const char* Classify(const Table& minor, int n) {
  bool positiveDefinite = true;
  bool negativeDefinite = true;
  bool hasZeroMinor = false;
  bool indefinite = false;
  for (int k = 2; k <= n; k += 2) {
    if (minor(k, 1) < 0.0) {
      indefinite = true;
      positiveDefinite = false;
      negativeDefinite = false;
      break;
    }
    if (minor(k, 1) == 0.0) hasZeroMinor = true;
  }
  if (!indefinite) {
    for (int k = 1; k <= n; k += 2) {
      if (minor(k, 1) > 0.0) negativeDefinite = false;
      if (minor(k, 1) < 0.0) positiveDefinite = false;
      if (minor(k, 1) == 0.0) hasZeroMinor = true;
    }
    if (!positiveDefinite && !negativeDefinite) indefinite = true;
  }
  if (indefinite) return "Indefinite";
  if (positiveDefinite && !hasZeroMinor) return "Positive definite";
  if (negativeDefinite && !hasZeroMinor) return "Negative definite";
  if (positiveDefinite && negativeDefinite) return "Semidefinite";
  if (positiveDefinite) return "Positive Semidefinite";
  return "Negative Semidefinite";
}

}  // namespace

Definite TestDefiniteness(const Table& A) {
  const int n = A.Rows();
  Table W = A;
  Definite definite;
  Table& minor = definite.leadingMinor = Table(n, 1);
  Table& smallest = definite.smallestPivot = Table(n, 1);
  int exchanges = 0;
  minor(1, 1) = W(1, 1);
  smallest(1, 1) = std::fabs(W(1, 1));
  for (int k = 2; k <= n; ++k) {
    for (int i = 1; i <= k - 1; ++i) {
      int p = i;
      double max = std::fabs(W(i, i));
      if (std::fabs(W(k, i)) > max) {
        p = k;
        max = std::fabs(W(k, i));
      }
      if (max == 0.0) break;
      if (p != i) {
        exchanges = exchanges + 1;
        for (int j = i; j <= n; ++j) {
          const double kept = W(i, j);
          W(i, j) = W(k, j);
          W(k, j) = kept;
        }
      }
      const double f = W(k, i) / W(i, i);
      for (int j = i + 1; j <= n; ++j) W(k, j) = W(k, j) - f * W(i, j);
    }
    minor(k, 1) = W(1, 1);
    smallest(k, 1) = std::fabs(W(1, 1));
    for (int l = 2; l <= k; ++l) {
      minor(k, 1) = W(l, l) * minor(k, 1);
      if (std::fabs(W(l, l)) < smallest(k, 1)) smallest(k, 1) = std::fabs(W(l, l));
    }
    minor(k, 1) = std::pow(-1.0, exchanges) * minor(k, 1);
  }
  definite.overallSmallestPivot = smallest(1, 1);
  for (int k = 1; k <= n; ++k) {
    if (smallest(k, 1) < definite.overallSmallestPivot) {
      definite.overallSmallestPivot = smallest(k, 1);
    }
  }
  definite.verdict = Classify(minor, n);
  return definite;
}

}  // namespace qmx::reference
