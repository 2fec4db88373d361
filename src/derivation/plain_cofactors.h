// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/plain_elimination.h"

namespace qmx::plain {

/// A without row i and column j.
template <class T>
Elements<T> MinorOf(const Elements<T>& A, int i, int j) {
  const int n = A.Rows();
  Elements<T> minor(n - 1, n - 1);
  for (int k = 1; k < n; ++k) {
    for (int l = 1; l < n; ++l) minor(k, l) = A(k < i ? k : k + 1, l < j ? l : l + 1);
  }
  return minor;
}

/// (-1)^(i+j)·minor
template <class T>
T CofactorOf(const T& minor, int i, int j) {
  return SignOf<T>(i + j) * minor;
}

}  // namespace qmx::plain
