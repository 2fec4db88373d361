// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/plain_elimination.h"

// The second half of solving a system (Golub & Van Loan, Matrix Computations, 3.1), and the normal
// equations (5.3.2). Sums are formed from 0 in increasing order of the unknowns.

namespace qmx::plain {

/// How a substitution ended.
struct Substitution {
  int failedRow = 0;  ///< The first row from below whose diagonal element is zero; 0 for none.
  bool inconsistent = false;
};

/// sum over j = first..last of x(j)·T(row, j)
template <class T>
T SumOfKnown(const Elements<T>& M, const Elements<T>& x, int row, int first, int last) {
  T sum(0.0);
  for (int j = first; j <= last; ++j) sum = sum + x(j, 1) * M(row, j);
  return sum;
}

/// Solves the upper triangle of M, n rows, for the right-hand side that `right(i)` gives;
/// `check(i)` is what a row with a zero on its diagonal is compared with. x has n rows. Before each
/// unknown is divided `told(i, rest)` hears what is left of the right-hand side.
template <class T, class Right, class Check, class Told>
Substitution SubstituteBack(const Elements<T>& M, int n, Elements<T>& x, Right&& right,
                            Check&& check, Told&& told) {
  for (int i = n; i >= 1; --i) {
    const T sum = SumOfKnown(M, x, i, i + 1, n);
    if (ValueOf(M(i, i)) == 0.0) {
      const T left = SumOfKnown(M, x, i, i, n);
      return {i, ValueOf(left) != ValueOf(check(i))};
    }
    const T rest = right(i) - sum;
    x(i, 1) = rest / M(i, i);
    told(i, rest);
  }
  return {};
}

/// x := L⁻¹·x; the diagonal of L is not read.
template <class T, class Told>
void SubstituteForward(const Elements<T>& L, Elements<T>& x, Told&& told) {
  for (int i = 1; i <= x.Rows(); ++i) {
    x(i, 1) = x(i, 1) - SumOfKnown(L, x, i, 1, i - 1);
    told(i);
  }
}

/// [AᵀA | Aᵀb] of [A | b]. Looks before each element.
template <class T, class Look>
Elements<T> NormalEquations(const Elements<T>& system, Look&& look) {
  const int c = system.Cols();
  Elements<T> M(c - 1, c);
  const auto product = [&](int i, int j) {
    look();
    T sum(0.0);
    for (int r = 1; r <= system.Rows(); ++r) sum = sum + system(r, i) * system(r, j);
    return sum;
  };
  for (int i = 1; i < c; ++i) {
    for (int j = 1; j <= i; ++j) {
      M(i, j) = product(i, j);
      M(j, i) = M(i, j);
    }
    M(i, c) = product(i, c);
  }
  return M;
}

}  // namespace qmx::plain
