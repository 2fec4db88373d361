#pragma once

#include <cstddef>
#include <vector>

#include "algorithms/ordered_product.h"

namespace qmx {

/// The coefficients of projections on columns v(1), v(2), ... that are no unit vectors: C(k, j) =
/// D(k, j) / squaredNorms[k], where row k of D holds the dot products with v(k). hasZero[j] tells
/// whether a dot product of column j is exactly zero; it holds a place for each column at least.
void ProjectionCoefficients(const View& D, const double* squaredNorms, const View& C,
                            std::vector<char>& hasZero);

/// sums[0] = v·v and sums[t] = v·m(t) for t = 1..kCount, the rows taken in increasing order; m(t)
/// is the column t places behind m. Rows lie `stride` apart. All sums grow together: one alone
/// would have the processor wait for each addition.
template <int kCount>
inline void NormAndDots(const double* v, const double* m, std::ptrdiff_t stride, int rows,
                        double* sums) {
  double sum[kCount + 1] = {};
  for (int i = 0; i < rows; ++i, v += stride, m += stride) {
    const double x = *v;
    sum[0] += x * x;
    for (int t = 1; t <= kCount; ++t) sum[t] += x * m[t];
  }
  for (int t = 0; t <= kCount; ++t) sums[t] = sum[t];
}

/// w(t) = w(t) - c[t]·v for t = 1..kCount; w(t) is the column t places behind w.
template <int kCount>
inline void SubtractMultiples(const double* v, double* w, std::ptrdiff_t stride, int rows,
                              const double* c) {
  for (int i = 0; i < rows; ++i, v += stride, w += stride) {
    const double x = *v;
    for (int t = 1; t <= kCount; ++t) w[t] -= c[t] * x;
  }
}

}  // namespace qmx
