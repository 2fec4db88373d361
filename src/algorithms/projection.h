// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>

#include "algorithms/block_sizes.h"

// What the two Gram-Schmidt processes share. A block of columns is made final from two halves, all
// projections on the left half going over the right half at once; blocks of few columns are done
// column by column, several later columns together.

namespace qmx {

/// How many of more than kColumnsAtOnce columns make up the left half of a block: half of them,
/// rounded to tiles of the kernel, or to fours at least.
inline int LeftHalf(int columns, int tile) {
  const int step = columns > 2 * tile ? tile : kColumnsAtOnce;
  return (columns / 2 + step / 2) / step * step;
}

/// No half is larger than that in any block of up to so many columns.
inline int LargestHalf(int columns, int tile) {
  return columns / 2 + std::max(tile, kColumnsAtOnce) / 2 + 1;
}

/// Calls project.template operator()<kCount>(column) for the columns first..last, as many as
/// kColumnsAtOnce in one call; once with kCount = 0 where there are none.
template <class Project>
[[gnu::always_inline]] inline void ForColumnsAtOnce(int first, int last, const Project& project) {
  int from = first;
  for (; from + kColumnsAtOnce - 1 <= last; from += kColumnsAtOnce) {
    project.template operator()<kColumnsAtOnce>(from);
  }
  switch (last - from + 1) {
    case 3:
      return project.template operator()<3>(from);
    case 2:
      return project.template operator()<2>(from);
    case 1:
      return project.template operator()<1>(from);
    default:
      if (from == first) project.template operator()<0>(from);
  }
}

/// Squares and products of a column v with the kCount columns that begin with m, the rows taken in
/// increasing order: `square` becomes v·v and dots[t] becomes v·m(t). Rows lie `stride` apart. All
/// sums grow together: one alone would have the processor wait for each addition.
template <int kCount>
inline void NormAndDots(const double* v, const double* m, std::ptrdiff_t stride, int rows,
                        double& square, double* dots) {
  double squares = 0;
  double sum[kCount + 1] = {};  // One more, since there may be none.
  for (int i = 0; i < rows; ++i, v += stride, m += stride) {
    const double x = *v;
    squares += x * x;
    for (int t = 0; t < kCount; ++t) sum[t] += x * m[t];
  }
  square = squares;
  for (int t = 0; t < kCount; ++t) dots[t] = sum[t];
}

/// w(t) = w(t) - c[t]·v for the kCount columns that begin with w.
template <int kCount>
inline void SubtractMultiples(const double* v, double* w, std::ptrdiff_t stride, int rows,
                              const double* c) {
  for (int i = 0; i < rows; ++i, v += stride, w += stride) {
    const double x = *v;
    for (int t = 0; t < kCount; ++t) w[t] -= c[t] * x;
  }
}

}  // namespace qmx
